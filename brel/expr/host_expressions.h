#pragma once

#include <span>
#include <string>
#include <vector>

#include "brel/expr/graph.h"
#include "kavo/link.h"

namespace brel::expr {

// Takes the host's postfix expressions into a graph. Each is taken in once, whoever asks how often; defined variables
// are shared.
class HostExpressions {
 public:
  // The host's arrays and the graph must outlive this.
  HostExpressions(trpRec* host, const kavo_columns& columns, const kavo_expressions& expressions, Graph& graph);

  // The node of an expression. As a number, or (for logical constraints) as a truth value. Raises SupportException that
  // names `element` ("row c1") for operators that have no meaning here (imported functions, strings, precision), for
  // 0^0 and for constants that overflow.
  NodeId number(int expression, const std::string& element);
  NodeId truth(int expression, const std::string& element);
  // A column as a node; binary columns are whole and within [0, 1].
  NodeId column(int column);

 private:
  const kavo_columns& columns_;
  const kavo_expressions& expressions_;
  Graph& graph_;
};

}  // namespace brel::expr
