#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "kavo/model/model.h"

namespace kavo::reader {

// Takes in the tree of a nonlinear constraint as files of Gurobi list it: node after node, every one behind its parent
// and all nodes below it right behind it. parent: the number of the parent, counted from 0 in the order of the calls;
// -1 for the root, which comes first. Pushes the nodes on the current expression of the model, operands before their
// operator. Errors (KAVO_INVALID) tell what is wrong with the node, or with the one that it ends.
class NonlinearTree {
 public:
  explicit NonlinearTree(Model& model) : nodes_(model.expressions) {}

  void addNumber(double value, int parent);
  void addColumn(int column, int parent);
  // word: PLUS, MINUS, MULTIPLY, DIVIDE, UMINUS, SQUARE, SQRT, SIN, COS, TAN, POW, EXP, LOG, LOG2, LOG10, LOGISTIC,
  // TANH or SIGNPOW, in capitals.
  void addOperator(std::string_view word, int parent);
  // Ends the tree, which must have a node. The nodes are complete then, and nothing can be added any more.
  void finish();

 private:
  struct Function {
    std::string_view word;
    Operator op;
    std::size_t operands;  // 0: one or more
  };
  // An operator whose operands are still coming.
  struct Open {
    const Function* function;
    int number;
    std::size_t operands;
    std::size_t first, second;  // where the nodes of these operands begin
  };

  static const Function& functionOf(std::string_view word);
  // Makes the next node an operand of its parent, and closes the operators that end before it.
  void attach(int parent);
  void closeLast();
  Operator powerOf(const Open& open) const;

  Expressions& nodes_;
  std::vector<Open> open_;
  int count_ = 0;  // nodes so far
};

}  // namespace kavo::reader
