#include "tests/expr/expressions.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>

#include "brel/expr/operation.h"
#include "tests/brel/formula.h"

namespace expr_test {

namespace {

using brel::expr::NodeId;
using brel::expr::Op;

bool isTrue(double x) { return x != 0; }
double truth(bool is) { return is ? 1 : 0; }

double piecewise(const std::vector<double>& points, double x) {
  std::size_t k = 2;
  while (k + 3 < points.size() && x > points[k]) k += 2;
  return points[k - 1] + (x - points[k - 2]) * (points[k + 1] - points[k - 1]) / (points[k] - points[k - 2]);
}

// The integral of the slopes from 0 to x.
double slopes(const std::vector<double>& given, double x) {
  const double from = std::min(x, 0.0), to = std::max(x, 0.0);
  double sum = 0, left = -HUGE_VAL;
  for (std::size_t k = 0; k < given.size(); k += 2) {
    const double right = k + 1 < given.size() ? given[k + 1] : HUGE_VAL;
    sum += given[k] * std::max(0.0, std::min(right, to) - std::max(left, from));
    left = right;
  }
  return x < 0 ? -sum : sum;
}

struct Unary {
  int op;
  double (*value)(double x);
};
const Unary kUnary[]{{KAVO_OP_FLOOR, std::floor},
                     {KAVO_OP_CEIL, std::ceil},
                     {KAVO_OP_ABS, std::fabs},
                     {KAVO_OP_NEGATE, [](double x) { return -x; }},
                     {KAVO_OP_LOGICAL_NOT, [](double x) { return x == 0 ? 1.0 : 0.0; }},
                     {KAVO_OP_TANH, std::tanh},
                     {KAVO_OP_TAN, std::tan},
                     {KAVO_OP_SQRT, std::sqrt},
                     {KAVO_OP_SINH, std::sinh},
                     {KAVO_OP_SIN, std::sin},
                     {KAVO_OP_LOG10, std::log10},
                     {KAVO_OP_LOG, std::log},
                     {KAVO_OP_EXP, std::exp},
                     {KAVO_OP_COSH, std::cosh},
                     {KAVO_OP_COS, std::cos},
                     {KAVO_OP_ATANH, std::atanh},
                     {KAVO_OP_ATAN, std::atan},
                     {KAVO_OP_ASINH, std::asinh},
                     {KAVO_OP_ASIN, std::asin},
                     {KAVO_OP_ACOSH, std::acosh},
                     {KAVO_OP_ACOS, std::acos},
                     {KAVO_OP_SQUARE, [](double x) { return x * x; }},
                     {KAVO_OP_LOG2, std::log2},
                     {KAVO_OP_SIGMOID, [](double x) { return 1 / (1 + std::exp(-x)); }}};

double toDigits(double (*toWhole)(double), double x, double digits) {
  return toWhole(x * std::pow(10, digits)) / std::pow(10, digits);
}

// Of two operands, or one and a constant.
struct Binary {
  int op;
  double (*value)(double x, double y);
};
const Binary kBinary[]{
    {KAVO_OP_MINUS, [](double x, double y) { return x - y; }},
    {KAVO_OP_TIMES, [](double x, double y) { return x * y; }},
    {KAVO_OP_DIVIDE, [](double x, double y) { return x / y; }},
    {KAVO_OP_MOD, [](double x, double y) { return x - y * std::trunc(x / y); }},
    {KAVO_OP_LESS, [](double x, double y) { return std::max(x - y, 0.0); }},
    {KAVO_OP_LOGICAL_OR, [](double x, double y) { return truth(isTrue(x) || isTrue(y)); }},
    {KAVO_OP_LOGICAL_AND, [](double x, double y) { return truth(isTrue(x) && isTrue(y)); }},
    {KAVO_OP_LESS_THAN, [](double x, double y) { return truth(x < y); }},
    {KAVO_OP_NOT_AT_MOST, [](double x, double y) { return truth(x < y); }},
    {KAVO_OP_LESS_EQUAL, [](double x, double y) { return truth(x <= y); }},
    {KAVO_OP_AT_LEAST, [](double x, double y) { return truth(x <= y); }},
    {KAVO_OP_EQUAL, [](double x, double y) { return truth(x == y); }},
    {KAVO_OP_EXACTLY, [](double x, double y) { return truth(x == y); }},
    {KAVO_OP_GREATER_EQUAL, [](double x, double y) { return truth(x >= y); }},
    {KAVO_OP_AT_MOST, [](double x, double y) { return truth(x >= y); }},
    {KAVO_OP_GREATER_THAN, [](double x, double y) { return truth(x > y); }},
    {KAVO_OP_NOT_AT_LEAST, [](double x, double y) { return truth(x > y); }},
    {KAVO_OP_NOT_EQUAL, [](double x, double y) { return truth(x != y); }},
    {KAVO_OP_NOT_EXACTLY, [](double x, double y) { return truth(x != y); }},
    {KAVO_OP_ATAN2, std::atan2},
    {KAVO_OP_INTEGER_DIVIDE, [](double x, double y) { return std::trunc(x / y); }},
    {KAVO_OP_ROUND, [](double x, double y) { return toDigits(std::round, x, y); }},
    {KAVO_OP_TRUNC, [](double x, double y) { return toDigits(std::trunc, x, y); }},
    {KAVO_OP_IF_AND_ONLY_IF, [](double x, double y) { return truth(isTrue(x) == isTrue(y)); }},
    {KAVO_OP_LOG_BASE, [](double x, double y) { return std::log(x) / std::log(y); }},
    {KAVO_OP_SIGNED_POWER, [](double x, double y) { return std::copysign(std::pow(std::fabs(x), y), x); }},
    {KAVO_OP_POWER, std::pow},
    {KAVO_OP_POWER_CONSTANT_EXPONENT, std::pow},
    {KAVO_OP_POWER_CONSTANT_BASE, std::pow}};

template <class Table>
auto valueOfOperator(const Table& table, int op) {
  const auto found = std::find_if(std::begin(table), std::end(table), [op](const auto& row) { return row.op == op; });
  EXPECT_NE(found, std::end(table)) << kavo_operator_name(op);
  return found->value;
}

double polynomial(const std::vector<double>& coefficients, double x) {
  double sum = 0;
  for (const double coefficient : coefficients) sum = sum * x + coefficient;
  return sum;
}

double ofMany(int op, const std::vector<double>& x) {
  const std::vector<double> front(x.begin(), x.end() - 1);
  double sum = 0, squares = 0, largest = 0, nonzero = 0;
  for (const double v : x) {
    sum += v, squares += v * v, nonzero += isTrue(v);
    largest = std::max(largest, std::fabs(v));
  }
  const bool areDifferent = std::set<double>(x.begin(), x.end()).size() == x.size();
  switch (op) {
    case KAVO_OP_PLUS:
    case KAVO_OP_SUM:
      return sum;
    case KAVO_OP_MIN:
      return *std::min_element(x.begin(), x.end());
    case KAVO_OP_MAX:
      return *std::max_element(x.begin(), x.end());
    case KAVO_OP_COUNT:
      return nonzero;
    case KAVO_OP_NUMBER_OF:
      return static_cast<double>(std::count(x.begin() + 1, x.end(), x[0]));
    case KAVO_OP_FOR_ALL:
      return nonzero == static_cast<double>(x.size());
    case KAVO_OP_EXISTS:
      return nonzero > 0;
    case KAVO_OP_IMPLIES:
      return isTrue(x[0]) ? isTrue(x[1]) : isTrue(x[2]);
    case KAVO_OP_IF_THEN_ELSE:
      return isTrue(x[0]) ? x[1] : x[2];
    case KAVO_OP_ALL_DIFFERENT:
      return areDifferent;
    case KAVO_OP_NOT_ALL_DIFFERENT:
      return !areDifferent;
    case KAVO_OP_NORM1: {
      double norm = 0;
      for (const double v : x) norm += std::fabs(v);
      return norm;
    }
    case KAVO_OP_NORM2:
      return std::sqrt(squares);
    case KAVO_OP_NORM_INF:
      return largest;
    case KAVO_OP_POLYNOMIAL:
      return polynomial(front, x.back());
    case KAVO_OP_PIECEWISE_LINEAR:
      return slopes(front, x.back());
    default:
      return piecewise(front, x.back());
  }
}

double valueOf(int op, const std::vector<double>& x) {
  const bool isUnknown = std::any_of(x.begin(), x.end(), [](double v) { return std::isnan(v); });
  if (isUnknown && (op != KAVO_OP_IF_THEN_ELSE || std::isnan(x[0]))) return std::numeric_limits<double>::quiet_NaN();
  const int arity = kavo_operator_arity(op);
  if (arity == 1) return valueOfOperator(kUnary, op)(x[0]);
  return arity == 2 && op != KAVO_OP_PLUS ? valueOfOperator(kBinary, op)(x[0], x[1]) : ofMany(op, x);
}

std::string sumText(const brel::expr::Graph& graph, NodeId node) {
  std::string result;
  const auto add = [&](double factor, const std::string& term) {
    const char* sign = factor < 0 ? "- " : "+ ";
    if (!result.empty()) result += fmt::format(" {}", sign);
    if (result.empty() && factor < 0) result += '-';
    if (term.empty() || std::fabs(factor) != 1)
      result += fmt::format("{:g}{}", std::fabs(factor), term.empty() ? "" : "*");
    result += term;
  };
  for (std::size_t k = 0; k < graph.children(node).size(); ++k) {
    const NodeId child = graph.children(node)[k];
    const std::string inner = text(graph, child);
    add(graph.coefficients(node)[k], graph.op(child) == Op::sum ? fmt::format("({})", inner) : inner);
  }
  if (graph.value(node) != 0) add(graph.value(node), "");
  return result;
}

}  // namespace

std::string text(const brel::expr::Graph& graph, NodeId node) {
  const Op op = graph.op(node);
  if (op == Op::constant) return fmt::format("{:g}", graph.value(node));
  if (op == Op::variable) return fmt::format("x{}", graph.column(node));
  if (op == Op::sum) return sumText(graph, node);
  std::string inner;
  for (const NodeId child : graph.children(node)) inner += (inner.empty() ? "" : ", ") + text(graph, child);
  if (op == Op::piecewise) {
    for (const auto& [x, y] : graph.points(node)) inner += fmt::format("; {:g} {:g}", x, y);
  } else if (graph.value(node) != 0) {
    inner += fmt::format("; {:g}", graph.value(node));
  }
  return fmt::format("{}({})", brel::expr::operationName(op), inner);
}

Model::Model(const std::vector<Column>& columns) {
  for (const Column& column : columns) {
    lower_.push_back(column.lower);
    upper_.push_back(column.upper);
    type_.push_back(column.type);
  }
}

void Model::push(kavo_operator op, int index, double value) {
  op_.push_back(op);
  index_.push_back(index);
  value_.push_back(value);
}

int Model::end() {
  start_.push_back(op_.size());
  return static_cast<int>(start_.size()) - 2;
}

int Model::add(std::string_view text) {
  const brel_test::Nodes nodes = brel_test::nodesOf(text);
  for (std::size_t k = 0; k < nodes.op.size(); ++k) {
    push(static_cast<kavo_operator>(nodes.op[k]), nodes.index[k], nodes.value[k]);
  }
  return end();
}

double Model::naive(int expression, const std::vector<double>& point, double& largest) const {
  std::vector<double> stack;
  const auto e = static_cast<std::size_t>(expression);
  for (std::size_t k = start_[e]; k < start_[e + 1]; ++k) {
    const auto index = static_cast<std::size_t>(index_[k]);
    if (op_[k] == KAVO_OP_NUMBER) {
      stack.push_back(value_[k]);
    } else if (op_[k] == KAVO_OP_VARIABLE) {
      stack.push_back(point[index]);
    } else if (op_[k] == KAVO_OP_DEFINED_VARIABLE) {
      stack.push_back(naive(defined_[index], point, largest));
    } else {
      const int arity = kavo_operator_arity(op_[k]);
      const auto first = stack.end() - (arity < 0 ? index_[k] : arity);
      const std::vector<double> operands(first, stack.end());
      stack.erase(first, stack.end());
      stack.push_back(valueOf(op_[k], operands));
    }
    if (!std::isnan(stack.back())) largest = std::max(largest, std::fabs(stack.back()));
  }
  return stack.back();
}

brel::expr::HostExpressions& Model::host() {
  if (!host_) {
    columns_ = {lower_.size(), lower_.data(), upper_.data(), type_.data(), {}};
    expressions_ = {start_.size() - 1, start_.data(),   op_.data(),     index_.data(),
                    value_.data(),     defined_.size(), defined_.data()};
    host_ = std::make_unique<brel::expr::HostExpressions>(nullptr, columns_, expressions_, graph);
  }
  return *host_;
}

}  // namespace expr_test
