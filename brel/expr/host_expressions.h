#pragma once

#include <string>
#include <vector>

#include "brel/expr/graph.h"
#include "brel/expr/open_stack.h"
#include "brel/expr/refusal.h"
#include "kavo/link.h"

namespace brel::expr {

// Whether the graph may rely on the bounds of the host's columns. Where these may be broken, or moved, it may not; then
// only the type of a column tells something of its values.
enum class Bounds { known, ignored };

// Takes the host's postfix expressions into a graph. Each is taken in once, whoever asks how often; defined variables
// are shared. However deep they are, nothing recurses.
class HostExpressions {
 public:
  // The host's arrays and the graph must outlive this.
  HostExpressions(trpRec* host, const kavo_columns& columns, const kavo_expressions& expressions, Graph& graph,
                  Bounds bounds = Bounds::known);

  // The node of an expression. As a number, or (for logical constraints) as a truth value; a number is true when it is
  // not 0. Raises SupportException that names `element` ("row c1") for
  //   - operators that have no meaning here: imported functions (by name), strings, precision;
  //   - a power 0^0, a division by 0, a power whose base is a constant that is not positive while its exponent varies,
  //     a signed power with an exponent below 1, digits of round and trunc that are no constant whole number;
  //   - constants that overflow or lie outside of a function's domain.
  NodeId number(int expression, const std::string& element);
  NodeId truth(int expression, const std::string& element);
  // A column as a node; binary columns are whole and within [0, 1], semi-continuous ones may be 0. It is a truth value
  // when the solver lets it switch rows: a binary or integer column whose bounds lie within [0, 1] as they are.
  NodeId column(int column);

 private:
  bool pushMissing(int expression);
  NodeId takeIn(int expression);
  void takeNode(std::size_t node);
  void takeOperator(std::size_t node, std::size_t operands);
  [[noreturn]] void refuseCall(int function) const;

  trpRec* host_;
  const kavo_columns& columns_;
  const kavo_expressions& expressions_;
  Graph& graph_;
  Bounds bounds_;
  Refusal refusal_;
  OpenStack operands_;
  std::vector<NodeId> known_;        // per expression, -1: not taken in yet
  std::vector<NodeId> columnNodes_;  // per column, -1: not made yet
  std::vector<int> waiting_;         // expressions that are being taken in, each needs those behind it
};

}  // namespace brel::expr
