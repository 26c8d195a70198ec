#include "brel/expr/evaluate.h"

#include <limits>

#include "brel/expr/operation.h"

namespace brel::expr {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

double valueOfSum(const Graph& graph, NodeId node, const std::vector<double>& values) {
  const std::span<const NodeId> children = graph.children(node);
  const std::span<const double> coefficients = graph.coefficients(node);
  double sum = graph.value(node);
  for (std::size_t k = 0; k < children.size(); ++k) {
    sum += coefficients[k] * values[static_cast<std::size_t>(children[k])];
  }
  return sum;
}

struct Columns {
  std::span<const double> point;
  std::span<const NodeId> definitions;

  double value(std::size_t column, const std::vector<double>& values) const {
    if (column < point.size()) return point[column];
    const std::size_t behind = column - point.size();
    if (behind >= definitions.size() || definitions[behind] < 0) return kNaN;
    return values[static_cast<std::size_t>(definitions[behind])];
  }
};

}  // namespace

void evaluate(const Graph& graph, std::span<const double> point, std::vector<double>& values, double tolerance,
              std::span<const NodeId> definitions) {
  values.resize(graph.size());
  const Columns columns{point, definitions};
  std::vector<double> arguments;
  for (std::size_t n = 0; n < graph.size(); ++n) {
    const auto node = static_cast<NodeId>(n);
    const Op op = graph.op(node);
    if (op == Op::constant) {
      values[n] = graph.value(node);
    } else if (op == Op::variable) {
      values[n] = columns.value(static_cast<std::size_t>(graph.column(node)), values);
    } else if (op == Op::sum) {
      values[n] = valueOfSum(graph, node, values);
    } else {
      arguments.clear();
      for (const NodeId child : graph.children(node)) arguments.push_back(values[static_cast<std::size_t>(child)]);
      const std::span<const Point> points = op == Op::piecewise ? graph.points(node) : std::span<const Point>{};
      values[n] = apply(op, graph.value(node), arguments, points, tolerance);
    }
  }
}

}  // namespace brel::expr
