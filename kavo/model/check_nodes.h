#pragma once

#include <cstddef>
#include <vector>

#include "kavo/model/model.h"

namespace kavo {

// Checks expressions in postfix order, as a host gives them, node by node: operators and their operands, columns,
// numbers, and that constants stand where they must. Takes time linear in the nodes, and recurses nowhere.
class NodeChecker {
 public:
  // Node k of the arrays that are checked.
  struct Nodes {
    const int *op, *index;
    const double* value;
  };

  NodeChecker(const Nodes& nodes, std::size_t columns) : nodes_(nodes), columns_(columns) {}

  // Checks nodes begin .. end-1, which may use the first `defined` defined variables. Throws Error: what is wrong and
  // at which node, counted from 0; `what` and `number` say whose nodes they are.
  void check(const char* what, std::size_t number, std::size_t begin, std::size_t end, std::size_t defined);

 private:
  [[noreturn]] void fail(std::size_t node, const std::string& message, kavo_status status = KAVO_INVALID) const;
  void checkLeaf(std::size_t node) const;
  void takeOperands(std::size_t node);
  void checkNumbers(std::size_t node, std::size_t operands) const;
  void checkOrder(std::size_t node, std::size_t operands) const;
  void checkPoints(std::size_t node, std::size_t operands) const;

  // The value of operand i, a number, of the `operands` that a node takes.
  double number(std::size_t operands, std::size_t i) const {
    return nodes_.value[waiting_[waiting_.size() - operands + i]];
  }

  Nodes nodes_;
  std::size_t columns_;
  std::size_t begin_ = 0, defined_ = 0, number_ = 0;
  const char* what_ = "";
  std::vector<std::size_t> waiting_;  // the roots of the operands so far that no operator has taken
};

}  // namespace kavo
