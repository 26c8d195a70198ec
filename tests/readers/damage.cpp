#include "tests/readers/damage.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>

#include "kavo/error.h"
#include "kavo/model/operators.h"
#include "tests/readers/model_text.h"

namespace kavo::reader {

namespace {

class Chance {
 public:
  std::size_t below(std::size_t limit) { return generator_() % limit; }

 private:
  std::mt19937 generator_{22};
};

std::string damaged(std::string text, std::string_view bytes, Chance& chance) {
  for (std::size_t k = 1 + chance.below(4); k > 0 && !text.empty(); --k) {
    const std::size_t at = chance.below(text.size());
    const std::size_t length = 1 + chance.below(12);
    switch (chance.below(5)) {
      case 0:
        text[at] = bytes[chance.below(bytes.size())];
        break;
      case 1:
        text.erase(at, length);
        break;
      case 2:
        text.insert(at, text.substr(chance.below(text.size()), 5 * length));
        break;
      case 3:
        text.insert(at, 1, bytes[chance.below(bytes.size())]);
        break;
      default:
        text.resize(chance.below(8) == 0 ? at : text.size());
    }
  }
  return text;
}

// Expression e leaves one value when its nodes are worked off.
void expectTree(const Model& model, std::size_t e) {
  const Expressions& all = model.expressions;
  long depth = 0;
  for (std::size_t k = all.start[e]; k < all.start[e + 1]; ++k) {
    const int operands = arity(all.op[k]) < 0 ? all.index[k] : arity(all.op[k]);
    ASSERT_GE(depth, operands);
    depth += 1 - operands;
    const auto column = static_cast<std::size_t>(all.index[k]);
    ASSERT_TRUE(all.op[k] != KAVO_OP_VARIABLE || column < model.columns.size());
    ASSERT_TRUE(all.op[k] != KAVO_OP_NUMBER || std::isfinite(all.value[k]));
  }
  ASSERT_EQ(depth, 1);
}

void expectSoundBeyondLinear(const Model& model) {
  const auto columns = model.columns.size(), rows = model.rows.size();
  for (const std::size_t size : {model.rows.expression.size(), model.rows.quadratic.size(), model.rows.indicator.size(),
                                 model.rows.indicatorValue.size()}) {
    ASSERT_TRUE(size == 0 || size == rows);
  }
  ASSERT_EQ(model.expressions.start.back(), model.expressions.op.size());
  for (std::size_t e = 0; e < model.expressions.size(); ++e) expectTree(model, e);
  const Quadratics& q = model.quadratics;
  ASSERT_EQ(q.start.back(), q.value.size());
  for (std::size_t k = 0; k < q.value.size(); ++k) {
    ASSERT_TRUE(q.first[k] >= 0 && q.first[k] <= q.second[k] && static_cast<std::size_t>(q.second[k]) < columns);
    ASSERT_LT(std::abs(q.value[k]), kInfinity);
  }
  const OrderedSets& sets = model.sets;
  ASSERT_EQ(sets.start.back(), sets.column.size());
  for (std::size_t s = 0; s < sets.size(); ++s) {
    for (std::size_t k = sets.start[s] + 1; k < sets.start[s + 1]; ++k) ASSERT_LT(sets.weight[k - 1], sets.weight[k]);
  }
  for (const int column : model.rows.indicator) ASSERT_LT(column, static_cast<int>(columns));
}

// A model that a link could take without checking it again.
void expectSound(const Model& model) {
  const auto columns = model.columns.size(), rows = model.rows.size();
  ASSERT_EQ(model.columns.upper.size(), columns);
  ASSERT_EQ(model.columns.names.size(), columns);
  ASSERT_EQ(model.rows.start.size(), rows + 1);
  ASSERT_EQ(model.rows.start[rows], model.rows.column.size());
  ASSERT_EQ(model.rows.value.size(), model.rows.column.size());
  for (std::size_t i = 0; i < rows; ++i) {
    ASSERT_FALSE(std::isnan(model.rows.lower[i]) || std::isnan(model.rows.upper[i]));
    ASSERT_FALSE(model.rows.lower[i] >= kInfinity || model.rows.upper[i] <= -kInfinity);
    std::set<int> seen;
    for (std::size_t k = model.rows.start[i]; k < model.rows.start[i + 1]; ++k) {
      ASSERT_TRUE(model.rows.column[k] >= 0 && static_cast<std::size_t>(model.rows.column[k]) < columns);
      ASSERT_TRUE(seen.insert(model.rows.column[k]).second);
      ASSERT_LT(std::abs(model.rows.value[k]), kInfinity);
    }
  }
}

}  // namespace

void expectSoundOrError(const std::string& name, const std::vector<std::string>& texts, std::string_view bytes) {
  constexpr int kRounds = 4000, kLeast = 500;
  Chance chance;
  int read = 0, refused = 0;
  for (int round = 0; round < kRounds; ++round) {
    for (const std::string& whole : texts) {
      const std::string text = damaged(whole, bytes, chance);
      try {
        const Model model = readAs(name, text);
        expectSound(model);
        expectSoundBeyondLinear(model);
        ++read;
      } catch (const Error&) {
        ++refused;
      }
      if (testing::Test::HasFatalFailure()) FAIL() << text;
    }
  }
  EXPECT_GT(read, kLeast);
  EXPECT_GT(refused, kLeast);
}

}  // namespace kavo::reader
