#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <memory>
#include <vector>

#include "tav/idx/lib/list.h"
#include "tav/idx/lib/range.h"
#include "tav/idx/list.h"
#include "tav/idx/visit.h"
#include "tests/tav/thrown.h"

using tav::CheckException;
using tav::idx::AbstractList;
using tav::idx::Kind;
using tav::idx::List;
namespace lib = tav::idx::lib;
using Ints = std::vector<int>;

namespace {

// Offers nothing but the required operations, so that the general bodies run, for any kind.
class Plain final : public AbstractList {
 public:
  Plain(Kind kind, Ints elements) : kind_(kind), elements_(std::move(elements)) {}
  Kind kind() const override { return kind_; }
  int size() const override { return static_cast<int>(elements_.size()); }
  int front() const override { return elements_.empty() ? 0 : elements_.front(); }
  int back() const override { return elements_.empty() ? -1 : elements_.back(); }
  int at(int i) const override { return elements_[static_cast<std::size_t>(i)]; }

 private:
  Kind kind_;
  Ints elements_;
};

struct Case {
  const char* name;
  std::shared_ptr<const AbstractList> list;
  Kind kind;
  Ints elements;
  int min;
  int max;
};

std::vector<Case> cases() {
  const auto range = [](int first, int size) { return std::make_shared<const lib::Range>(first, size); };
  const auto list = [](Ints v) { return std::make_shared<const lib::List>(std::move(v)); };
  const auto plain = [](Kind k, Ints v) { return std::make_shared<const Plain>(k, std::move(v)); };
  return {
      {"nothing", std::make_shared<const List>(), Kind::kContiguous, {}, 0, -1},
      {"empty range", range(5, 0), Kind::kContiguous, {}, 5, 4},
      {"lowest empty range", range(INT_MIN, 0), Kind::kContiguous, {}, INT_MIN, INT_MAX},
      {"range", range(3, 4), Kind::kContiguous, {3, 4, 5, 6}, 3, 6},
      {"range to the top", range(INT_MAX - 1, 2), Kind::kContiguous, {INT_MAX - 1, INT_MAX}, INT_MAX - 1, INT_MAX},
      {"empty list", list({}), Kind::kUnordered, {}, INT_MAX, INT_MIN},
      {"list", list({5, 1, 9, 1}), Kind::kUnordered, {5, 1, 9, 1}, 1, 9},
      {"plain contiguous", plain(Kind::kContiguous, {3, 4, 5}), Kind::kContiguous, {3, 4, 5}, 3, 5},
      {"plain unordered", plain(Kind::kUnordered, {5, 1, 9}), Kind::kUnordered, {5, 1, 9}, 1, 9},
      {"plain empty unordered", plain(Kind::kUnordered, {}), Kind::kUnordered, {}, INT_MAX, INT_MIN},
      {"increasing", plain(Kind::kIncreasing, {1, 4, 6, 9, 12}), Kind::kIncreasing, {1, 4, 6, 9, 12}, 1, 12},
      {"one increasing", plain(Kind::kIncreasing, {4}), Kind::kIncreasing, {4}, 4, 4},
      {"no increasing", plain(Kind::kIncreasing, {}), Kind::kIncreasing, {}, 0, -1},
  };
}

void expectElements(const AbstractList& list, const Case& c) {
  EXPECT_EQ(list.kind(), c.kind);
  ASSERT_EQ(list.size(), static_cast<int>(c.elements.size()));
  EXPECT_EQ(list.min(), c.min);
  EXPECT_EQ(list.max(), c.max);
  Ints copied(c.elements.size() + 1, -7);
  list.copyTo(copied);
  EXPECT_EQ(copied.back(), -7) << "wrote past the end";
  copied.pop_back();
  EXPECT_EQ(copied, c.elements);
  const auto values = list.values();
  EXPECT_EQ(Ints(values.begin(), values.end()), c.elements);
  Ints visited;
  tav::idx::visit(list, [&](int position, int element) {
    EXPECT_EQ(position, static_cast<int>(visited.size()));
    visited.push_back(element);
  });
  EXPECT_EQ(visited, c.elements);
  EXPECT_FALSE(list.contains(INT_MIN));
  for (int value = 0; value < 15; ++value) {
    EXPECT_EQ(list.contains(value), std::count(c.elements.begin(), c.elements.end(), value) > 0) << value;
  }
  Ints positions;
  for (int i = list.size(); i-- > 0;) positions.push_back(i);
  list.map(positions);
  EXPECT_EQ(positions, Ints(c.elements.rbegin(), c.elements.rend()));
}

}  // namespace

TEST(IndexListTest, EveryListGivesItsElementsAlsoThroughAHandle) {
  for (const Case& c : cases()) {
    SCOPED_TRACE(c.name);
    expectElements(*c.list, c);
    expectElements(List(c.list), c);
  }
}

TEST(IndexListTest, OnlyAStoredListShowsItsOwnStorage) {
  const List stored(std::make_shared<const lib::List>(Ints{5, 1}));
  EXPECT_FALSE(stored.values().isOwning());
  EXPECT_EQ(stored.values().data(), stored.values().data());
  auto values = List(lib::Range(3, 2)).values();
  EXPECT_TRUE(values.isOwning());
  const auto moved = std::move(values);
  EXPECT_EQ(Ints(moved.begin(), moved.end()), (Ints{3, 4}));
}

TEST(IndexListTest, AHandleAlwaysHoldsAList) {
  EXPECT_EQ(List(std::shared_ptr<const AbstractList>()).size(), 0);
  List source(lib::Range(2, 3));
  const List taken = static_cast<List&&>(source);
  EXPECT_EQ(taken.size(), 3);
  EXPECT_EQ(source.size(), 3) << "a moved-from handle still works";
}

TEST(IndexListTest, RefusesANegativeSize) {
  const auto error = thrown<CheckException>([] { lib::Range(5, -1); });
  EXPECT_EQ(error.message(), "'size' (which is -1) must be greater or equal to 0.");
  EXPECT_EQ(error.location().file(), "tav/idx/lib/range");
  EXPECT_EQ(error.location().function(), "tav::idx::lib::Range::Range(int,int)");
}
