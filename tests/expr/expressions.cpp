#include "tests/expr/expressions.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <map>
#include <set>
#include <stdexcept>

#include "brel/expr/operation.h"

namespace expr_test {

namespace {

using brel::expr::NodeId;
using brel::expr::Op;

std::string operatorText(int op) {
  std::string name = kavo_operator_name(op);
  std::replace(name.begin(), name.end(), ' ', '_');
  return name;
}

int operatorOf(std::string_view name) {
  static const auto kOperators = [] {
    std::map<std::string, int, std::less<>> result;
    for (int op = 0; op <= KAVO_OP_PIECEWISE_LINEAR_POINTS; ++op) result.emplace(operatorText(op), op);
    return result;
  }();
  return kOperators.at(std::string(name));
}

// Takes one token: a parenthesis, or what stands up to a blank or parenthesis.
std::string_view takeToken(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  const std::size_t end = text.empty() || text[0] == '(' || text[0] == ')' ? 1 : text.find_first_of(" ()");
  const std::string_view token = text.substr(0, end);
  text.remove_prefix(token.size());
  return token;
}

bool isTrue(double x) { return x != 0; }

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

// An operator of two operands, or one and a constant.
double binary(int op, double x, double y) {
  switch (op) {
    case KAVO_OP_MINUS:
      return x - y;
    case KAVO_OP_TIMES:
      return x * y;
    case KAVO_OP_DIVIDE:
      return x / y;
    case KAVO_OP_MOD:
      return x - y * std::trunc(x / y);
    case KAVO_OP_LESS:
      return std::max(x - y, 0.0);
    case KAVO_OP_LOGICAL_OR:
      return isTrue(x) || isTrue(y);
    case KAVO_OP_LOGICAL_AND:
      return isTrue(x) && isTrue(y);
    case KAVO_OP_LESS_THAN:
    case KAVO_OP_NOT_AT_MOST:
      return x < y;
    case KAVO_OP_LESS_EQUAL:
    case KAVO_OP_AT_LEAST:
      return x <= y;
    case KAVO_OP_EQUAL:
    case KAVO_OP_EXACTLY:
      return x == y;
    case KAVO_OP_GREATER_EQUAL:
    case KAVO_OP_AT_MOST:
      return x >= y;
    case KAVO_OP_GREATER_THAN:
    case KAVO_OP_NOT_AT_LEAST:
      return x > y;
    case KAVO_OP_NOT_EQUAL:
    case KAVO_OP_NOT_EXACTLY:
      return x != y;
    case KAVO_OP_ATAN2:
      return std::atan2(x, y);
    case KAVO_OP_INTEGER_DIVIDE:
      return std::trunc(x / y);
    case KAVO_OP_ROUND:
      return std::round(x * std::pow(10, y)) / std::pow(10, y);
    case KAVO_OP_TRUNC:
      return std::trunc(x * std::pow(10, y)) / std::pow(10, y);
    case KAVO_OP_IF_AND_ONLY_IF:
      return isTrue(x) == isTrue(y);
    case KAVO_OP_LOG_BASE:
      return std::log(x) / std::log(y);
    case KAVO_OP_SIGNED_POWER:
      return std::copysign(std::pow(std::fabs(x), y), x);
    default:
      return std::pow(x, y);
  }
}

double unary(int op, double x) {
  switch (op) {
    case KAVO_OP_FLOOR:
      return std::floor(x);
    case KAVO_OP_CEIL:
      return std::ceil(x);
    case KAVO_OP_ABS:
      return std::fabs(x);
    case KAVO_OP_NEGATE:
      return -x;
    case KAVO_OP_LOGICAL_NOT:
      return !isTrue(x);
    case KAVO_OP_TANH:
      return std::tanh(x);
    case KAVO_OP_TAN:
      return std::tan(x);
    case KAVO_OP_SQRT:
      return std::sqrt(x);
    case KAVO_OP_SINH:
      return std::sinh(x);
    case KAVO_OP_SIN:
      return std::sin(x);
    case KAVO_OP_LOG10:
      return std::log10(x);
    case KAVO_OP_LOG:
      return std::log(x);
    case KAVO_OP_EXP:
      return std::exp(x);
    case KAVO_OP_COSH:
      return std::cosh(x);
    case KAVO_OP_COS:
      return std::cos(x);
    case KAVO_OP_ATANH:
      return std::atanh(x);
    case KAVO_OP_ATAN:
      return std::atan(x);
    case KAVO_OP_ASINH:
      return std::asinh(x);
    case KAVO_OP_ASIN:
      return std::asin(x);
    case KAVO_OP_ACOSH:
      return std::acosh(x);
    case KAVO_OP_ACOS:
      return std::acos(x);
    case KAVO_OP_SQUARE:
      return x * x;
    case KAVO_OP_LOG2:
      return std::log2(x);
    default:
      return 1 / (1 + std::exp(-x));
  }
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
  if (arity == 1) return unary(op, x[0]);
  return arity == 2 && op != KAVO_OP_PLUS ? binary(op, x[0], x[1]) : ofMany(op, x);
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
  struct Open {
    int op, operands;
  };
  std::vector<Open> open;
  do {
    const std::string_view token = takeToken(text);
    const std::string_view number = token.substr(1);
    int index = 0;
    std::from_chars(number.data(), number.data() + number.size(), index);
    if (token == "(") {
      open.push_back({operatorOf(takeToken(text)), 0});
      continue;
    }
    if (token == ")") {
      const Open done = open.back();
      open.pop_back();
      push(static_cast<kavo_operator>(done.op), kavo_operator_arity(done.op) < 0 ? done.operands : 0);
    } else if (token[0] == 'x') {
      push(KAVO_OP_VARIABLE, index);
    } else if (token[0] == 'd') {
      push(KAVO_OP_DEFINED_VARIABLE, index);
    } else {
      push(KAVO_OP_NUMBER, 0, std::stod(std::string(token)));
    }
    if (!open.empty()) ++open.back().operands;
  } while (!open.empty());
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
