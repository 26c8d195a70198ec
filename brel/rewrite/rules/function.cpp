#include <algorithm>

#include "brel/rewrite/expression_rules.h"

namespace brel::rewrite {
namespace {

std::string_view wordFor(Op op) {
  switch (op) {
    case Op::abs:
      return "abs";
    case Op::min:
      return "min";
    case Op::max:
      return "max";
    default:
      return "norm";
  }
}

}  // namespace

NodeId lowerFunction(Lowering& in, NodeId node) {
  Rewriter& rewriter = in.rewriter();
  const Op op = in.graph().op(node);
  std::vector<NodeId> arguments;
  for (const NodeId child : in.loweredChildren(node)) {
    NodeId column = rewriter.asColumn(child);
    if (std::find(arguments.begin(), arguments.end(), column) != arguments.end()) {  // a norm may hold one twice
      const NodeId copy = rewriter.addColumn(in.graph().interval(column), in.graph().isInteger(column), column, "copy");
      rewriter.addRow(in.graph().subtract(copy, column), RowType::equal, "def");
      column = copy;
    }
    arguments.push_back(column);
  }
  const NodeId result = in.result(node, wordFor(op));
  rewriter.addFunction(op, result, arguments);
  return result;
}

}  // namespace brel::rewrite
