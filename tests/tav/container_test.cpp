#include "tav/attr/lib/container.h"

#include <cmath>
#include <functional>
#include <limits>
#include <map>

#include "tav/attr/container_dict.h"
#include "tav/attr/lib/list_container.h"
#include "tav/attr/lib/optional_container.h"
#include "tav/attr/lib/span_container.h"
#include "tav/idx/lib/list.h"
#include "tests/tav/thrown.h"

namespace attr = tav::attr;
using tav::CheckException;
using tav::idx::List;
using tav::idx::lib::Range;
using Doubles = std::vector<double>;
using Ints = std::vector<int>;

namespace {

List listOf(Ints indices) { return List(std::make_shared<const tav::idx::lib::List>(std::move(indices))); }

// What a container with nothing but the required operations does.
struct Bare final : attr::AbstractContainer<double> {
  int size() const override { return 2; }
  void get(const List& /*list*/, std::span<double> values, int /*solution*/) const override { values[0] = 7; }
  double get(int /*index*/, int /*solution*/) const override { return 7; }
};

struct Dict final : attr::AbstractContainerDict {
  std::map<int, std::string> names = {{3, "Level"}, {5, ""}, {9, "marginal"}};
  int count() const override { return static_cast<int>(names.size()); }
  Ints keys() const override { return {3, 5, 9}; }
  std::string name(int key) const override { return has(key) ? names.at(key) : ""; }
  std::shared_ptr<const attr::AbstractBaseInfo> info(int /*key*/) const override { return nullptr; }
  using AbstractDict::has;
  bool has(int key) const override { return names.contains(key); }
  using AbstractDict::get;
  attr::BaseContainer get(int key) const override {
    return has(key) ? attr::Container<int>::make<attr::lib::Container<int>>(Ints{key}) : attr::Container<int>();
  }
};

}  // namespace

TEST(ContainerTest, BulkReadsFollowTheListAndCheckIt) {
  const Doubles array = {10, 11, 12, 13, 14};
  const attr::Container<double> containers[] = {
      attr::lib::viewOf(std::span<const double>(array)),
      attr::Container<double>::make<attr::lib::Container<double>>(array),
      attr::Container<double>::make<attr::lib::ListContainer<double>>(array),
  };
  for (const auto& container : containers) {
    EXPECT_EQ(container.getValues(Range(3, 2)), (Doubles{13, 14}));
    EXPECT_EQ(container.getValues(listOf({4, 0, 4})), (Doubles{14, 10, 14}));
    EXPECT_EQ(container.getValues(List()), Doubles());
    EXPECT_EQ(container.getAll(), array);
    EXPECT_EQ(container.get(2), 12);
    Doubles wide(3, -1);
    container.get(Range(1, 2), wide);
    EXPECT_EQ(wide, (Doubles{11, 12, -1}));
    EXPECT_EQ(messageOf<CheckException>([&] { container.getValues(Range(3, 3)); }),
              "'list.max()' (which is 5) must be less than 'size()' (which is 5).");
    EXPECT_EQ(messageOf<CheckException>([&] { container.getValues(listOf({1, -1})); }),
              "'list.min()' (which is -1) must be greater or equal to 0.");
    EXPECT_EQ(messageOf<CheckException>([&] { container.get(Range(0, 4), wide); }),
              "'values.size()' (which is 3) must be greater or equal to 'list.size()' (which is 4).");
    for (const int index : {-1, 5}) EXPECT_THROW(container.get(index), CheckException);
  }
}

TEST(ContainerTest, AViewSeesItsSourceAndKeepsItsOwner) {
  auto owner = std::make_shared<Doubles>(Doubles{1, 2});
  const std::weak_ptr<Doubles> watch = owner;
  auto view = attr::lib::viewOf(std::span<const double>(*owner), owner);
  (*owner)[1] = 5;
  owner.reset();
  EXPECT_EQ(view.get(1), 5);
  view = {};
  EXPECT_TRUE(watch.expired());
}

TEST(ListContainerTest, WritesThroughEveryForm) {
  const auto container = attr::Container<double>::make<attr::lib::ListContainer<double>>(Doubles(4));
  container.set(listOf({3, 1}), Doubles{30, 10});
  container.set(0, 5.0);
  EXPECT_EQ(container.getAll(), (Doubles{5, 10, 0, 30}));
  container.setAll(Doubles{1, 2, 3, 4});
  container.set(listOf({2, 0}), attr::Container<double>::make<attr::lib::Container<double>>(Doubles{8, 9}));
  EXPECT_EQ(container.getAll(), (Doubles{9, 2, 8, 4}));
  EXPECT_THROW(container.set(4, 1.0), CheckException);
  EXPECT_THROW(container.setAll(Doubles{1, 2, 3}), CheckException);
  EXPECT_EQ(messageOf<CheckException>([&] { container.set(Range(0, 3), container); }),
            "'list.size()' (which is 3) must be equal to 'other.size()' (which is 4).");
  EXPECT_EQ(container.getAll(), (Doubles{9, 2, 8, 4}));
}

TEST(OptionalContainerTest, GrowsPaddedAndTellsSetFromUnset) {
  const auto doubles = attr::Container<double>::make<attr::lib::OptionalContainer<double>>();
  EXPECT_EQ(doubles.itemCount(), 0);
  EXPECT_TRUE(std::isnan(doubles.get(100))) << "beyond the end is unset";
  doubles.itemAdd(3, 1.5);
  doubles.set(listOf({5, 1}), Doubles{50, 10});
  EXPECT_EQ(doubles.size(), 6);
  EXPECT_EQ(doubles.itemCount(), 3);
  const auto values = doubles.getOptional(listOf({5, 4, 1, 9}));
  EXPECT_EQ(values[0], 50);
  EXPECT_EQ(values[1], std::nullopt);
  EXPECT_EQ(values[2], 10);
  EXPECT_EQ(values[3], std::nullopt);
  doubles.set(3, std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(doubles.itemCount(), 2) << "writing the mark takes the value away";
  doubles.reset();
  EXPECT_EQ(doubles.itemCount(), 0);
  EXPECT_EQ(doubles.size(), 6);
}

TEST(OptionalContainerTest, MarksOfIntegers) {
  const auto marked = attr::Container<int>::make<attr::lib::OptionalContainer<int>>(0);
  marked.itemAdd(2, 3);
  EXPECT_EQ(marked.getAll(), (Ints{0, 0, 3}));
  EXPECT_EQ(marked.itemCount(), 1);
  EXPECT_EQ(marked.toOptional(0), std::nullopt);
  const auto plain = attr::Container<int>::make<attr::lib::OptionalContainer<int>>();
  plain.itemAdd(1, 0);
  EXPECT_EQ(plain.itemCount(), 1) << "zero is a value";
  EXPECT_EQ(plain.toOptional(plain.get(0)), std::nullopt);
  plain.set(List(), Ints());
  EXPECT_EQ(plain.size(), 2);
  EXPECT_THROW(plain.itemAdd(-1, 0), CheckException);
  EXPECT_THROW(plain.set(listOf({7, -1}), Ints{1, 2}), CheckException);
  EXPECT_EQ(plain.size(), 2) << "a refused write changes nothing";
}

TEST(ContainerTest, WhatIsNotOverriddenIsRefusedByItsSignature) {
  const auto bare = attr::Container<double>::make<Bare>();
  const auto& inner = *bare.pointer();
  const Doubles two(2);
  struct Case {
    std::function<void()> call;
    const char* signature;
  };
  const Case cases[] = {
      {[&] { bare.reset(); }, "void __cdecl tav::attr::AbstractBaseContainer::reset(void)"},
      {[&] { bare.itemAdd(1, 2.0); }, "void __cdecl tav::attr::AbstractContainer<double>::itemAdd(int,const double &)"},
      {[&] { inner.getDefault(); }, "double __cdecl tav::attr::AbstractContainer<double>::getDefault(void) const"},
      {[&] { bare.getDefault(); }, "double __cdecl tav::attr::Container<double>::getDefault(void) const"},
      {[&] { bare.set(1, 2.0); }, "void __cdecl tav::attr::AbstractContainer<double>::set(int,const double &,int)"},
      {[&] { bare.setAll(two); },
       "void __cdecl tav::attr::AbstractContainer<double>::setAll(class std::span<double const ,-1>,int)"},
      {[&] { bare.set(Range(0, 2), bare); },
       "void __cdecl tav::attr::AbstractContainer<double>::set(const class tav::idx::List &,class std::span<double "
       "const ,-1>,int)"},
      {[&] { attr::Container<const char*>().set(1, "a"); },
       "void __cdecl tav::attr::Container<char const *>::set(int,char const * const &,int)"},
  };
  for (const auto& c : cases) EXPECT_EQ(thrown<attr::Exception>(c.call).context(), c.signature);
  EXPECT_EQ(thrown([&] { bare.reset(); }).location().file(), "tav/attr/abstract_container");
}

TEST(ContainerTest, AnEmptyHandleCountsNothingAndReadsNothing) {
  const attr::Container<double> empty;
  EXPECT_FALSE(empty);
  EXPECT_EQ(empty.size() + empty.solutionCount() + empty.itemCount(), 0);
  Doubles values = {1, 2};
  empty.get(Range(0, 2), values);
  EXPECT_EQ(values, (Doubles{1, 2}));
  EXPECT_EQ(messageOf<CheckException>([&] { empty.get(0); }), "'bool(container)' must be true.");
  EXPECT_EQ(attr::BaseContainer(empty).valueType(), attr::ValueType::kNone);
}

TEST(ContainerDictTest, FindsByKeyAndByNameInAnyCase) {
  const auto dict = attr::ContainerDict::make<Dict>();
  EXPECT_EQ(dict.get("LEVEL").as<int>().get(0), 3);
  EXPECT_EQ(dict.get("Marginal").as<int>().get(0), 9);
  EXPECT_EQ(dict.get(5).as<int>().get(0), 5);
  EXPECT_TRUE(dict.has("level"));
  for (const char* unknown : {"leve", "levels", "l\xe9vel"}) EXPECT_FALSE(dict.has(unknown)) << unknown;
  EXPECT_FALSE(dict.get(4));
  EXPECT_FALSE(dict.get("level").as<double>()) << "another type is not given out";
  const attr::ContainerDict none;
  EXPECT_EQ(none.count(), 0);
  EXPECT_FALSE(none.get("level"));
  EXPECT_FALSE(none.has(3));
}
