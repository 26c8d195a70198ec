#include <fmt/format.h>

#include "kavo/error.h"
#include "kavo/model/append_nonlinear.h"
#include "kavo/model/append_parts.h"
#include "kavo/model/check_nodes.h"

namespace kavo {

namespace {

void checkNodes(const Model& model, const NodeData& data, bool defining) {
  checkCount("expressions", model.expressions.size(), data.count);
  checkStarts("expression", data.count, data.start);
  if (data.count > 0 && data.start[data.count] > 0 && !(data.op && data.index && data.value)) {
    throw Error(KAVO_INVALID, "the operators, indices or values of the nodes are null");
  }
  NodeChecker checker({data.op, data.index, data.value}, model.columns.size());
  const std::size_t defined = model.definedVariables.size();
  for (std::size_t i = 0; i < data.count; ++i) {
    const std::size_t begin = data.start[i], end = data.start[i + 1];
    if (defining) {
      checker.check("defined variable", defined + i, begin, end, defined + i);
    } else {
      checker.check("expression", model.expressions.size() + i, begin, end, defined);
    }
  }
}

// Appends nodes that were checked; what an operator does not use is 0.
void takeNodes(Expressions& all, const NodeData& data) {
  const std::size_t nodes = data.count > 0 ? data.start[data.count] : 0;
  const std::size_t before = all.op.size();
  for (std::size_t i = 0; i < data.count; ++i) all.start.push_back(before + data.start[i + 1]);
  all.op.resize(before + nodes);
  all.index.resize(before + nodes);
  all.value.resize(before + nodes);
  for (std::size_t k = 0; k < nodes; ++k) {
    const int op = data.op[k];
    const bool counts = arity(op) < 0 || op == KAVO_OP_VARIABLE || op == KAVO_OP_DEFINED_VARIABLE;
    all.op[before + k] = static_cast<Operator>(op);
    all.index[before + k] = counts ? data.index[k] : 0;
    all.value[before + k] = op == KAVO_OP_NUMBER ? data.value[k] : 0;
  }
}

int append(Model& model, const NodeData& data, bool defining) {
  checkNodes(model, data, defining);
  Expressions& all = model.expressions;
  const std::size_t expressions = all.size(), nodes = all.op.size(), defined = model.definedVariables.size();
  Rollback rollback([&] {
    all.start.resize(expressions + 1);
    all.op.resize(nodes);
    all.index.resize(nodes);
    all.value.resize(nodes);
    model.definedVariables.resize(defined);
  });
  takeNodes(all, data);
  for (std::size_t i = 0; defining && i < data.count; ++i) {
    model.definedVariables.push_back(static_cast<int>(expressions + i));
  }
  rollback.keep();
  return static_cast<int>(defining ? defined : expressions);
}

void checkExpression(const Model& model, const Place& place, std::size_t i, int expression, int least) {
  const std::size_t count = model.expressions.size();
  if (expression >= least && (expression < 0 || static_cast<std::size_t>(expression) < count)) return;
  place.fail(i, fmt::format("there is no expression {}: the model has {}", expression, count));
}

}  // namespace

int appendExpressions(Model& model, const NodeData& data) { return append(model, data, false); }

int appendDefinedVariables(Model& model, const NodeData& data) { return append(model, data, true); }

void setExpressions(Model& model, int kind, std::size_t count, const int* element, const int* expression) {
  if (count > 0 && (element == nullptr || expression == nullptr)) {
    throw Error(KAVO_INVALID, "the elements or their expressions are null");
  }
  for (std::size_t i = 0; i < count; ++i) {
    checkExpression(model, ExistingPlace(model, kind, element[i]), 0, expression[i], -1);
  }
  if (count == 0) return;
  auto& rows = model.rows.expression;
  if (kind == KAVO_ROW && rows.empty()) rows.assign(model.rows.size(), -1);
  for (std::size_t i = 0; i < count; ++i) {
    const auto e = static_cast<std::size_t>(element[i]);
    (kind == KAVO_ROW ? rows[e] : model.objectives[e].expression) = expression[i];
  }
}

void appendLogical(Model& model, std::size_t count, const int* expression, const char* const* names) {
  const std::size_t present = model.logical.size();
  checkCount("logical constraints", present, count);
  if (count > 0 && expression == nullptr) throw Error(KAVO_INVALID, "the expressions are null");
  const Place place{"logical constraint", present, names};
  for (std::size_t i = 0; i < count; ++i) checkExpression(model, place, i, expression[i], 0);
  const auto mark = model.logicalNames.mark();
  Rollback rollback([&] {
    model.logical.resize(present);
    model.logicalNames.revert(mark);
  });
  extend(model.logical, expression, count, 0);
  appendNames(model.logicalNames, names, count, present);
  rollback.keep();
}

}  // namespace kavo
