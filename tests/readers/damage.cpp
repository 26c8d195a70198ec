#include "tests/readers/damage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <random>
#include <set>

#include "kavo/error.h"
#include "kavo/model/operators.h"
#include "kavo/reader/reader.h"
#include "tests/readers/folder.h"

namespace kavo::reader {

namespace {

class Chance {
 public:
  std::size_t below(std::size_t limit) { return generator_() % limit; }

 private:
  std::mt19937 generator_{22};
};

std::string damaged(std::string text, std::string_view bytes, const std::vector<std::string>& words, Chance& chance) {
  for (std::size_t k = 1 + chance.below(4); k > 0 && !text.empty(); --k) {
    const std::size_t at = chance.below(text.size());
    const std::size_t length = 1 + chance.below(12);
    switch (chance.below(words.empty() ? 5 : 7)) {
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
      case 5:
      case 6:
        text.replace(at, chance.below(3), words[chance.below(words.size())]);
        break;
      default:
        text.resize(chance.below(8) == 0 ? at : text.size());
    }
  }
  return text;
}

bool areBelow(std::size_t limit, const std::vector<int>& numbers) {
  return std::all_of(numbers.begin(), numbers.end(),
                     [=](int i) { return i >= 0 && static_cast<std::size_t>(i) < limit; });
}

// Expression e leaves one value when its nodes are worked off, and uses what exists: of the defined variables the first
// `defined`.
void expectTree(const Model& model, std::size_t e, std::size_t defined) {
  const Expressions& all = model.expressions;
  long depth = 0;
  for (std::size_t k = all.start[e]; k < all.start[e + 1]; ++k) {
    const Operator op = all.op[k];
    const int operands = arity(op) < 0 ? all.index[k] : arity(op);
    ASSERT_TRUE(operands >= 0 && depth >= operands);
    depth += 1 - operands;
    const auto index = static_cast<std::size_t>(all.index[k]);
    ASSERT_TRUE(op != KAVO_OP_VARIABLE || index < model.columns.size());
    ASSERT_TRUE(op != KAVO_OP_NUMBER || std::isfinite(all.value[k]));
    ASSERT_TRUE(op != KAVO_OP_STRING || index < all.strings.size());
    ASSERT_TRUE(op != KAVO_OP_CALL || static_cast<std::size_t>(all.value[k]) < model.functions.size());
    ASSERT_TRUE(op != KAVO_OP_DEFINED_VARIABLE || index < defined);
  }
  ASSERT_EQ(depth, 1);
}

void expectExpressions(const Model& model) {
  const std::size_t count = model.expressions.size();
  ASSERT_EQ(model.expressions.start.back(), model.expressions.op.size());
  ASSERT_TRUE(areBelow(count, model.logical) && areBelow(count, model.definedVariables));
  std::vector<std::size_t> defined(count, model.definedVariables.size());
  for (std::size_t d = 0; d < model.definedVariables.size(); ++d) {
    defined[static_cast<std::size_t>(model.definedVariables[d])] = d;
  }
  for (std::size_t e = 0; e < count; ++e) expectTree(model, e, defined[e]);
  for (const int e : model.rows.expression) ASSERT_LT(e, static_cast<int>(count));
  for (const Objective& o : model.objectives) {
    ASSERT_TRUE(o.expression < static_cast<int>(count) && o.value.size() == o.column.size());
    ASSERT_TRUE(areBelow(model.columns.size(), o.column));
  }
}

void expectSoundBeyondLinear(const Model& model) {
  const auto columns = model.columns.size(), rows = model.rows.size();
  for (const std::size_t size : {model.rows.expression.size(), model.rows.quadratic.size(), model.rows.indicator.size(),
                                 model.rows.indicatorValue.size()}) {
    ASSERT_TRUE(size == 0 || size == rows);
  }
  expectExpressions(model);
  const Quadratics& q = model.quadratics;
  ASSERT_EQ(q.start.back(), q.value.size());
  for (std::size_t k = 0; k < q.value.size(); ++k) {
    ASSERT_TRUE(q.first[k] >= 0 && q.first[k] <= q.second[k] && static_cast<std::size_t>(q.second[k]) < columns);
    ASSERT_LT(std::abs(q.value[k]), kInfinity);
  }
  const OrderedSets& sets = model.sets;
  ASSERT_EQ(sets.start.back(), sets.column.size());
  ASSERT_TRUE(areBelow(columns, sets.column));
  for (std::size_t s = 0; s < sets.size(); ++s) {
    ASSERT_GE(sets.start[s + 1], sets.start[s] + 2);
    for (std::size_t k = sets.start[s] + 1; k < sets.start[s + 1]; ++k) ASSERT_LT(sets.weight[k - 1], sets.weight[k]);
  }
  for (const int column : model.rows.indicator) ASSERT_LT(column, static_cast<int>(columns));
  const std::size_t sizes[] = {columns, rows, model.objectives.size(), 1};
  for (const Suffix& suffix : model.suffixes) {
    ASSERT_TRUE(suffix.index.size() == suffix.value.size() && areBelow(sizes[suffix.kind], suffix.index));
  }
}

void expectSound(const Model& model) {
  const auto columns = model.columns.size(), rows = model.rows.size();
  ASSERT_EQ(model.columns.upper.size(), columns);
  ASSERT_TRUE(model.columns.names.size() == 0 || model.columns.names.size() == columns);
  ASSERT_EQ(model.rows.start.size(), rows + 1);
  ASSERT_EQ(model.rows.start[rows], model.rows.column.size());
  ASSERT_EQ(model.rows.value.size(), model.rows.column.size());
  for (std::size_t i = 0; i < rows; ++i) {
    ASSERT_FALSE(std::isnan(model.rows.lower[i]) || std::isnan(model.rows.upper[i]));
    // A .nl file may hold such sides, which are for the link to refuse.
    ASSERT_FALSE(!model.ampl && (model.rows.lower[i] >= kInfinity || model.rows.upper[i] <= -kInfinity));
    std::set<int> seen;
    for (std::size_t k = model.rows.start[i]; k < model.rows.start[i + 1]; ++k) {
      ASSERT_TRUE(model.rows.column[k] >= 0 && static_cast<std::size_t>(model.rows.column[k]) < columns);
      ASSERT_TRUE(seen.insert(model.rows.column[k]).second);
      ASSERT_LT(std::abs(model.rows.value[k]), kInfinity);
    }
  }
}

}  // namespace

void expectSoundOrError(const std::string& name, const std::vector<std::string>& texts, std::string_view bytes,
                        const std::vector<std::string>& words) {
  const kavo_test::Folder folder;
  constexpr int kRounds = 4000, kLeast = 500;
  Chance chance;
  int sound = 0, refused = 0;
  for (int round = 0; round < kRounds; ++round) {
    for (const std::string& whole : texts) {
      const std::string text = damaged(whole, bytes, words, chance);
      try {
        std::filesystem::remove(folder / name);  // quicker than to write over it
        const Model model = read(folder.write(name, text));
        expectSound(model);
        expectSoundBeyondLinear(model);
        ++sound;
      } catch (const Error& error) {
        ASSERT_THAT(error.what(), testing::AllOf(testing::HasSubstr(name), testing::Not(testing::HasSubstr("\n"))))
            << text;
        ++refused;
      }
      if (testing::Test::HasFatalFailure()) FAIL() << text;
    }
  }
  EXPECT_GT(sound, kLeast);
  EXPECT_GT(refused, kLeast);
}

}  // namespace kavo::reader
