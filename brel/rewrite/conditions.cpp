#include "brel/rewrite/conditions.h"

namespace brel::rewrite {

Conditions::Id Conditions::either(Id a, Id b) {
  if (a == kNever || a == b) return b;
  if (b == kNever) return a;
  if (a == kAlways || b == kAlways) return kAlways;
  return add({kNoNode, {0, true}, a, b});
}

Literal Conditions::literal(Id condition) {
  if (at(condition).column < 0) {
    const int column = rewriter_.graph().column(rewriter_.addBinary(kNoNode, "matters"));
    at(condition).column = column;
  }
  return {at(condition).column, true};
}

// column >= inner, or where there is an outer condition: column >= inner + outer - 1. inner kNoNode: always true.
void Conditions::tie(Literal column, NodeId inner, Id outer) {
  Graph& graph = rewriter_.graph();
  std::vector<expr::Term> terms{{rewriter_.literalNode(column), 1}};
  for (const NodeId part : {inner, outer == kAlways ? kNoNode : rewriter_.literalNode(literal(outer))}) {
    if (part != kNoNode) terms.push_back({part, -1});
  }
  rewriter_.addRow(graph.sum(static_cast<double>(terms.size()) - 2, terms), RowType::greaterOrEqual, "matters");
}

}  // namespace brel::rewrite
