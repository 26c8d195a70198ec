#pragma once

#include <string_view>
#include <vector>

#include "kavo/model/model.h"

namespace kavo::reader {

// The nodes of an expression as files of Gurobi list them: each names an operator, a column or a number, and its
// parent by position, counted from 0; the root comes first and has the parent -1. An operator is followed by all that
// is below it (depth first), operands from left to right. The nodes are pushed on the current expression of the model,
// which is in postfix order: an operator waits on a stack until a node with a parent further up arrives, so nothing
// recurses however deep the tree is.
//
// Error (KAVO_INVALID) tells what is wrong with a node; the expression is unfinished then.
class NodeTree {
 public:
  explicit NodeTree(Model& model) : nodes_(model.expressions) {}

  // word: an operator such as "PLUS", in any case.
  void addOperator(std::string_view word, int parent);
  void addColumn(int column, int parent);
  void addNumber(double value, int parent);
  // Pushes the operators that still wait. The caller ends the expression.
  void finish();

 private:
  struct Frame {
    std::size_t entry;  // in the table of operators
    int node;
    int operands;
    bool firstIsNumber;
  };

  void placeUnder(int parent);
  void addLeaf(Operator op, int index, double value, int parent);
  // Tells the parent that an operand is complete.
  void complete();
  void close();

  Expressions& nodes_;
  std::vector<Frame> open_;  // operators that may get more operands, each below the one before
  int count_ = 0;
};

}  // namespace kavo::reader
