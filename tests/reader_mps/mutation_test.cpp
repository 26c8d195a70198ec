// Whatever a file says, reading it ends in a sound model or in an Error.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "kavo/error.h"
#include "kavo/model/operators.h"
#include "tests/reader_mps/mps_text.h"

namespace kavo::reader {
namespace {

class Chance {
 public:
  std::size_t below(std::size_t limit) { return generator_() % limit; }

 private:
  std::mt19937 generator_{22};
};

std::string damaged(std::string text, Chance& chance) {
  static constexpr char kBytes[] = " \n\t\r*'.-+019eEdDNLGEx_\0\x01\x7f\xff";
  for (std::size_t k = 1 + chance.below(4); k > 0 && !text.empty(); --k) {
    const std::size_t at = chance.below(text.size());
    const std::size_t length = 1 + chance.below(12);
    switch (chance.below(5)) {
      case 0:
        text[at] = kBytes[chance.below(sizeof kBytes)];
        break;
      case 1:
        text.erase(at, length);
        break;
      case 2:
        text.insert(at, text.substr(chance.below(text.size()), 5 * length));
        break;
      case 3:
        text.insert(at, 1, kBytes[chance.below(sizeof kBytes)]);
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
    for (std::size_t k = model.rows.start[i]; k < model.rows.start[i + 1]; ++k) {
      ASSERT_TRUE(model.rows.column[k] >= 0 && static_cast<std::size_t>(model.rows.column[k]) < columns);
      ASSERT_TRUE(k == model.rows.start[i] || model.rows.column[k - 1] < model.rows.column[k]);
      ASSERT_LT(std::abs(model.rows.value[k]), kInfinity);
    }
  }
}

TEST(MpsMutation, DamagedFilesEndInASoundModelOrAnError) {
  Chance chance;
  int read = 0, refused = 0;
  for (int round = 0; round < 12000; ++round) {
    const std::string text = damaged(round % 3 == 0 ? kSample : round % 3 == 1 ? kBlankSample : kBeyondSample, chance);
    try {
      const Model model = readText(text);
      expectSound(model);
      expectSoundBeyondLinear(model);
      ++read;
    } catch (const Error&) {
      ++refused;
    }
    if (HasFatalFailure()) FAIL() << text;
  }
  EXPECT_GT(read, 500);
  EXPECT_GT(refused, 500);
}

}  // namespace
}  // namespace kavo::reader
