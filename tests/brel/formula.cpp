#include "tests/brel/formula.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>

namespace brel_test {
namespace {

int operatorNamed(const std::string& wanted) {
  static const auto kNumbers = [] {
    std::map<std::string, int> numbers;
    for (int op = 0; op <= KAVO_OP_PIECEWISE_LINEAR_POINTS; ++op) {
      std::string name = kavo_operator_name(op);
      std::replace(name.begin(), name.end(), ' ', '_');
      numbers.emplace(std::move(name), op);
    }
    return numbers;
  }();
  return kNumbers.at(wanted);
}

class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text) {}

  void node() {
    const std::string word = next();
    if (word == "(") {
      const int number = operatorNamed(next());
      int operands = 0;
      for (; text_.find_first_not_of(' ') != text_.find(')'); ++operands) node();
      next();
      push(number, kavo_operator_arity(number) < 0 ? operands : 0, 0);
    } else if (word[0] == 'x' || word[0] == 'd') {
      push(word[0] == 'x' ? KAVO_OP_VARIABLE : KAVO_OP_DEFINED_VARIABLE, std::stoi(word.substr(1)), 0);
    } else {
      push(KAVO_OP_NUMBER, 0, std::stod(word));
    }
  }

  Nodes nodes;

 private:
  std::string next() {
    text_.remove_prefix(text_.find_first_not_of(' '));
    const bool isBracket = text_[0] == '(' || text_[0] == ')';
    const std::size_t length = isBracket ? 1 : std::min(text_.find_first_of(" )"), text_.size());
    const std::string word(text_.substr(0, length));
    text_.remove_prefix(length);
    return word;
  }
  void push(int op, int index, double value) {
    nodes.op.push_back(op), nodes.index.push_back(index), nodes.value.push_back(value);
  }

  std::string_view text_;
};

}  // namespace

Nodes nodesOf(std::string_view text) {
  Parser parser(text);
  parser.node();
  return parser.nodes;
}

int addFormula(trpRec* model, std::string_view text) {
  const Nodes nodes = nodesOf(text);
  const std::size_t start[] = {0, nodes.op.size()};
  int first = -1;
  EXPECT_EQ(kavo_add_expressions(model, 1, start, nodes.op.data(), nodes.index.data(), nodes.value.data(), &first),
            KAVO_OK)
      << kavo_last_error() << " in " << text;
  return first;
}

}  // namespace brel_test
