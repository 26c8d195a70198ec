// Whatever a file says, reading it ends in a sound model or in an Error that tells the place.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "kavo/error.h"
#include "kavo/reader/nl/nl.h"
#include "tests/reader_nl/model_of_all.h"
#include "tests/reader_nl/nl_text.h"

namespace kavo::reader {
namespace {

bool inRange(const std::vector<int>& numbers, std::size_t limit) {
  for (int i : numbers) {
    if (i < 0 || static_cast<std::size_t>(i) >= limit) return false;
  }
  return true;
}

// What is unsound about expression e: its nodes must be a postfix tree over things that exist, and the first `defined`
// defined variables.
std::string unsoundExpression(const Model& m, std::size_t e, std::size_t defined) {
  const Expressions& all = m.expressions;
  int operands = 0;
  for (std::size_t k = all.start[e]; k < all.start[e + 1]; ++k) {
    const Operator op = all.op[k];
    const auto index = static_cast<std::size_t>(all.index[k]);
    const int takes = arity(op) < 0 ? all.index[k] : arity(op);
    if (takes < 0 || takes > operands) return "operands are missing";
    if (op == KAVO_OP_VARIABLE && index >= m.columns.size()) return "no such variable";
    if (op == KAVO_OP_STRING && index >= all.strings.size()) return "no such string";
    if (op == KAVO_OP_CALL && !(all.value[k] >= 0 && all.value[k] < static_cast<double>(m.functions.size()))) {
      return "no such function";
    }
    if (op == KAVO_OP_DEFINED_VARIABLE && index >= defined) return "a defined variable is not defined before its use";
    operands += 1 - takes;
  }
  return operands == 1 ? "" : "not one tree";
}

std::string unsoundSets(const Model& m) {
  const OrderedSets& sets = m.sets;
  if (sets.start.size() != sets.size() + 1 || sets.start.back() != sets.column.size()) return "sets";
  if (sets.weight.size() != sets.column.size() || !inRange(sets.column, m.columns.size())) return "members";
  for (std::size_t s = 0; s < sets.size(); ++s) {
    if (sets.start[s + 1] < sets.start[s] + 2 || (sets.type[s] != 1 && sets.type[s] != 2)) return "a set";
    for (std::size_t k = sets.start[s] + 1; k < sets.start[s + 1]; ++k) {
      if (!(sets.weight[k - 1] < sets.weight[k])) return "the order of a set";
    }
  }
  return "";
}

std::string unsound(const Model& m) {
  const std::size_t columns = m.columns.size(), rows = m.rows.size(), expressions = m.expressions.size();
  if (m.columns.upper.size() != columns || m.columns.type.size() != columns) return "columns";
  if (m.rows.upper.size() != rows || m.rows.start.size() != rows + 1) return "rows";
  for (std::size_t i = 0; i < rows; ++i) {
    if (m.rows.start[i] > m.rows.start[i + 1]) return "starts";
  }
  if (m.rows.start[rows] != m.rows.column.size() || m.rows.column.size() != m.rows.value.size()) return "terms";
  if (!inRange(m.rows.column, columns)) return "a column of a row";
  for (int e : m.rows.expression) {
    if (e < -1 || e >= static_cast<int>(expressions)) return "the expression of a row";
  }
  for (const Objective& o : m.objectives) {
    if (!inRange(o.column, columns) || o.column.size() != o.value.size()) return "an objective";
    if (o.expression < -1 || o.expression >= static_cast<int>(expressions)) return "the expression of an objective";
  }
  if (!inRange(m.logical, expressions) || !inRange(m.definedVariables, expressions)) return "expressions";
  for (const Suffix& s : m.suffixes) {
    const std::size_t sizes[] = {columns, rows, m.objectives.size(), 1};
    if (s.index.size() != s.value.size() || !inRange(s.index, sizes[s.kind])) return "a suffix";
  }
  std::vector<std::size_t> usable(expressions, m.definedVariables.size());
  for (std::size_t d = 0; d < m.definedVariables.size(); ++d)
    usable[static_cast<std::size_t>(m.definedVariables[d])] = d;
  for (std::size_t e = 0; e < expressions; ++e) {
    if (const std::string text = unsoundExpression(m, e, usable[e]); !text.empty()) return text;
  }
  return unsoundSets(m);
}

class Mutator {
 public:
  Mutator() : seeds_{textOfAll(), bytesOfAll(false), bytesOfAll(true), withBody("o5\nv0\nn2\n")} {}

  std::string next() {
    std::string text = pick(seeds_);
    for (std::size_t i = 1 + below(3); i > 0 && !text.empty(); --i) mutate(text);
    return text;
  }

 private:
  std::size_t below(std::size_t limit) { return random_() % limit; }
  template <class T>
  const T& pick(const std::vector<T>& of) {
    return of[below(of.size())];
  }

  void mutate(std::string& text) {
    const std::size_t at = below(text.size());
    const std::size_t length = 1 + below(12);
    switch (below(6)) {
      case 0:
        text[at] = static_cast<char>(below(256));
        break;
      case 1:
        text.erase(at, length);
        break;
      case 2:
        text.insert(at, text.substr(below(text.size()), length));
        break;
      case 3:
        text.replace(at, 1 + below(2), pick(pieces_));
        break;
      case 4:
        text.insert(at, pick(pieces_));
        break;
      default:
        text.resize(at);
        break;
    }
  }

  std::mt19937 random_{20240517};
  std::vector<std::string> seeds_;
  std::vector<std::string> pieces_ = {"0",
                                      "1",
                                      "2",
                                      "9",
                                      "-1",
                                      "2147483647",
                                      "-2147483648",
                                      "1e20",
                                      "nan",
                                      "inf",
                                      "\n",
                                      " ",
                                      "#",
                                      "o",
                                      "v",
                                      "n",
                                      "f",
                                      "h",
                                      "o54\n2\n",
                                      "o64\n2\n",
                                      "o65\n",
                                      "v2\n",
                                      "n1\n",
                                      "J0 1\n",
                                      "C0\n",
                                      "b\n",
                                      "r\n",
                                      "V2 0 0\n",
                                      "S1 9 x\n",
                                      std::string(4, '\0'),
                                      std::string(4, '\xff'),
                                      std::string("\x7f\xff\xff\xff"),
                                      std::string("\xff\xff\xff\x7f")};
};

TEST(NlMutation, SoundModelOrError) {
  Mutator mutator;
  int sound = 0, refused = 0;
  for (int i = 0; i < 60000; ++i) {
    const std::string text = mutator.next();
    try {
      const Model model = nl::readText(text, "m.nl");
      ASSERT_EQ(unsound(model), "") << text;
      ++sound;
    } catch (const Error& error) {
      ASSERT_THAT(error.what(), testing::StartsWith("m.nl, ")) << text;
      ASSERT_THAT(error.what(), testing::Not(testing::HasSubstr("\n"))) << text;
      ++refused;
    }
  }
  // Both happen, so the mutations are neither harmless nor hopeless.
  EXPECT_GT(sound, 1000);
  EXPECT_GT(refused, 10000);
}

}  // namespace
}  // namespace kavo::reader
