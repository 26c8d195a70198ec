#include "brel/expr/host_operators.h"

#include <algorithm>
#include <cmath>

#include "brel/expr/open_stack.h"

namespace brel::expr {

namespace {

using Operands = std::span<const NodeId>;

// Makes one operator; the operands outlive it, whatever nodes are made.
class OperatorMaker {
 public:
  OperatorMaker(Graph& graph, const Refusal& refusal, kavo_operator op, Operands operands)
      : graph_(graph), refusal_(refusal), op_(op), x_(operands) {}

  NodeId make() const {
    if (op_ <= KAVO_OP_LESS || op_ >= KAVO_OP_INTEGER_DIVIDE) return makeOther();
    if (op_ >= KAVO_OP_LOGICAL_OR && op_ <= KAVO_OP_IF_THEN_ELSE) return makeTruth();
    return graph_.call(function(), x_);
  }

 private:
  // Operators that are a node with the same operands.
  Op function() const;
  NodeId makeTruth() const;
  NodeId makeOther() const;
  NodeId makeCount() const;

  NodeId truth(std::size_t operand) const { return truthOf(graph_, x_[operand]); }
  NodeId complement(NodeId node) const { return graph_.logicalNot(node); }
  NodeId difference(std::size_t a, std::size_t b) const { return graph_.subtract(x_[a], x_[b]); }
  NodeId compare(Op op, std::size_t a, std::size_t b) const { return graph_.call(op, difference(a, b)); }

  double constant(std::size_t operand) const;
  std::vector<double> constants() const;
  NodeId divided(Op op) const;
  NodeId power() const;
  NodeId signedPower() const;
  NodeId logBase() const;
  NodeId rounded(Op op) const;
  NodeId implies() const;
  NodeId polynomial() const;
  NodeId piecewise(std::span<const Point> points) const { return graph_.piecewise(points, x_.back()); }
  std::vector<Point> points() const;
  NodeId sumOfTruths(std::span<const NodeId> truths) const;
  [[noreturn]] void refuse(std::string_view what) const { refusal_.raise(what); }

  Graph& graph_;
  const Refusal& refusal_;
  kavo_operator op_;
  Operands x_;
};

Op OperatorMaker::function() const {
  switch (op_) {
    case KAVO_OP_FLOOR:
      return Op::floor;
    case KAVO_OP_CEIL:
      return Op::ceil;
    case KAVO_OP_ABS:
      return Op::abs;
    case KAVO_OP_TANH:
      return Op::tanh;
    case KAVO_OP_TAN:
      return Op::tan;
    case KAVO_OP_SQRT:
      return Op::sqrt;
    case KAVO_OP_SINH:
      return Op::sinh;
    case KAVO_OP_SIN:
      return Op::sin;
    case KAVO_OP_LOG10:
      return Op::log10;
    case KAVO_OP_LOG:
      return Op::log;
    case KAVO_OP_EXP:
      return Op::exp;
    case KAVO_OP_COSH:
      return Op::cosh;
    case KAVO_OP_COS:
      return Op::cos;
    case KAVO_OP_ATANH:
      return Op::atanh;
    case KAVO_OP_ATAN2:
      return Op::atan2;
    case KAVO_OP_ATAN:
      return Op::atan;
    case KAVO_OP_ASINH:
      return Op::asinh;
    case KAVO_OP_ASIN:
      return Op::asin;
    case KAVO_OP_ACOSH:
      return Op::acosh;
    case KAVO_OP_ACOS:
      return Op::acos;
    case KAVO_OP_LOG2:
      return Op::log2;
    case KAVO_OP_SIGMOID:
      return Op::sigmoid;
    case KAVO_OP_NORM1:
      return Op::norm1;
    case KAVO_OP_NORM2:
      return Op::norm2;
    case KAVO_OP_NORM_INF:
      return Op::normInf;
    case KAVO_OP_ALL_DIFFERENT:
      return Op::allDifferent;
    default:
      refuse(fmt::format("the operator {} cannot be given to the solver", kavo_operator_name(op_)));
  }
}

NodeId OperatorMaker::makeTruth() const {
  switch (op_) {
    case KAVO_OP_LESS_THAN:
      return compare(Op::less, 0, 1);
    case KAVO_OP_LESS_EQUAL:
      return compare(Op::lessEqual, 0, 1);
    case KAVO_OP_GREATER_EQUAL:
      return compare(Op::lessEqual, 1, 0);
    case KAVO_OP_GREATER_THAN:
      return compare(Op::less, 1, 0);
    case KAVO_OP_NOT_EQUAL:
      return complement(compare(Op::equal, 0, 1));
    case KAVO_OP_LOGICAL_NOT:
      return complement(truth(0));
    case KAVO_OP_IF_THEN_ELSE: {
      const NodeId choice[]{truth(0), x_[1], x_[2]};
      return graph_.call(Op::ifThenElse, choice);
    }
    default:
      return compare(Op::equal, 0, 1);
  }
}

NodeId OperatorMaker::makeOther() const {
  switch (op_) {
    case KAVO_OP_TIMES:
      return graph_.product(x_[0], x_[1]);
    case KAVO_OP_DIVIDE:
      return divided(Op::divide);
    case KAVO_OP_MOD:
      return divided(Op::mod);
    case KAVO_OP_INTEGER_DIVIDE:
      return divided(Op::integerDivide);
    case KAVO_OP_POWER:
    case KAVO_OP_POWER_CONSTANT_EXPONENT:
    case KAVO_OP_POWER_CONSTANT_BASE:
      return power();
    case KAVO_OP_SQUARE:
      return graph_.product(x_[0], x_[0]);
    case KAVO_OP_LESS:
      return graph_.call(Op::max, difference(0, 1), graph_.constant(0));
    case KAVO_OP_ROUND:
      return rounded(Op::round);
    case KAVO_OP_TRUNC:
      return rounded(Op::trunc);
    case KAVO_OP_IMPLIES:
      return implies();
    case KAVO_OP_IF_AND_ONLY_IF:
      return graph_.call(Op::ifAndOnlyIf, truth(0), truth(1));
    case KAVO_OP_NOT_ALL_DIFFERENT:
      return complement(graph_.call(Op::allDifferent, x_));
    case KAVO_OP_LOG_BASE:
      return logBase();
    case KAVO_OP_SIGNED_POWER:
      return signedPower();
    case KAVO_OP_POLYNOMIAL:
      return polynomial();
    case KAVO_OP_PIECEWISE_LINEAR:
      return piecewise(pointsOfSlopes(constants()));
    case KAVO_OP_PIECEWISE_LINEAR_POINTS:
      return piecewise(points());
    default:
      return op_ >= KAVO_OP_COUNT && op_ <= KAVO_OP_NOT_EXACTLY ? makeCount() : graph_.call(function(), x_);
  }
}

NodeId OperatorMaker::makeCount() const {
  std::vector<NodeId> truths;
  switch (op_) {
    case KAVO_OP_COUNT:
      for (std::size_t k = 0; k < x_.size(); ++k) truths.push_back(truth(k));
      return sumOfTruths(truths);
    case KAVO_OP_NUMBER_OF:
      for (std::size_t k = 1; k < x_.size(); ++k) truths.push_back(compare(Op::equal, k, 0));
      return sumOfTruths(truths);
    case KAVO_OP_AT_LEAST:
      return compare(Op::lessEqual, 0, 1);
    case KAVO_OP_AT_MOST:
      return compare(Op::lessEqual, 1, 0);
    case KAVO_OP_EXACTLY:
      return compare(Op::equal, 0, 1);
    case KAVO_OP_NOT_AT_LEAST:
      return compare(Op::less, 1, 0);
    case KAVO_OP_NOT_AT_MOST:
      return compare(Op::less, 0, 1);
    case KAVO_OP_NOT_EXACTLY:
      return complement(compare(Op::equal, 0, 1));
    default:
      return graph_.call(function(), x_);
  }
}

NodeId OperatorMaker::sumOfTruths(std::span<const NodeId> truths) const {
  std::vector<Term> terms;
  for (const NodeId node : truths) terms.push_back({node, 1});
  return graph_.sum(0, terms);
}

double OperatorMaker::constant(std::size_t operand) const {
  if (graph_.isConstant(x_[operand])) return graph_.value(x_[operand]);
  refuse(fmt::format("operand {} of {} must be a number", operand + 1, kavo_operator_name(op_)));
}

// All operands but the last.
std::vector<double> OperatorMaker::constants() const {
  std::vector<double> result;
  for (std::size_t k = 0; k + 1 < x_.size(); ++k) result.push_back(constant(k));
  return result;
}

NodeId OperatorMaker::divided(Op op) const {
  if (graph_.isConstant(x_[1]) && graph_.value(x_[1]) == 0) {
    refuse(fmt::format("the second operand of {} is 0", kavo_operator_name(op_)));
  }
  return graph_.call(op, x_[0], x_[1]);
}

NodeId OperatorMaker::power() const {
  const bool isBaseFixed = graph_.isConstant(x_[0]);
  if (isBaseFixed && graph_.isConstant(x_[1]) && graph_.value(x_[0]) == 0 && graph_.value(x_[1]) == 0) {
    refuse("a power 0^0 has no value");
  }
  if (isBaseFixed && !graph_.isConstant(x_[1]) && !(graph_.value(x_[0]) > 0)) {
    refuse(fmt::format("the base {} of a power with a variable exponent must be positive", graph_.value(x_[0])));
  }
  return graph_.call(Op::generalPower, x_[0], x_[1]);
}

NodeId OperatorMaker::signedPower() const {
  const double exponent = constant(1);
  if (!(exponent >= 1)) refuse(fmt::format("the exponent {} of a signed power must be 1 or more", exponent));
  return graph_.call(Op::signedPower, x_[0], exponent);
}

NodeId OperatorMaker::logBase() const {
  const double base = constant(1);
  if (!(base > 0) || base == 1) refuse(fmt::format("the base {} of a logarithm must be above 0 and not 1", base));
  return graph_.call(Op::logBase, x_[0], base);
}

// To a number of digits behind the point: what is rounded is the value times 10^digits.
NodeId OperatorMaker::rounded(Op op) const {
  const double digits = constant(1);
  const double scale = std::pow(10, std::fabs(digits));
  if (digits != std::round(digits) || !std::isfinite(scale)) {
    refuse(
        fmt::format("{} to {} digits: the number of digits must be whole and small", kavo_operator_name(op_), digits));
  }
  const NodeId factor = graph_.constant(scale);
  if (digits >= 0) return graph_.call(Op::divide, graph_.call(op, graph_.product(x_[0], factor)), factor);
  return graph_.product(graph_.call(op, graph_.call(Op::divide, x_[0], factor)), factor);
}

NodeId OperatorMaker::implies() const {
  const NodeId choice[]{truth(0), truth(1), truth(2)};
  const NodeId condition = choice[0], then = choice[1], otherwise = choice[2];
  if (graph_.isConstant(then) || graph_.isConstant(otherwise)) return graph_.call(Op::ifThenElse, choice);
  return graph_.call(Op::logicalAnd, graph_.call(Op::logicalOr, complement(condition), then),
                     graph_.call(Op::logicalOr, condition, otherwise));
}

// A sum of powers: they are shared among polynomials of the same argument, and degree two is seen as such.
NodeId OperatorMaker::polynomial() const {
  const std::vector<double> coefficients = constants();
  std::vector<Term> terms;
  for (std::size_t k = 0; k < coefficients.size(); ++k) {
    const auto exponent = static_cast<double>(coefficients.size() - 1 - k);
    if (coefficients[k] != 0) terms.push_back({graph_.call(Op::power, x_.back(), exponent), coefficients[k]});
  }
  return graph_.sum(0, terms);
}

std::vector<Point> OperatorMaker::points() const {
  const std::vector<double> given = constants();
  std::vector<Point> result;
  for (std::size_t k = 0; k + 1 < given.size(); k += 2) result.push_back({given[k], given[k + 1]});
  return result;
}

}  // namespace

NodeId makeOperator(Graph& graph, const Refusal& refusal, kavo_operator op, Operands operands) {
  const NodeId result = OperatorMaker(graph, refusal, op, operands).make();
  const bool isFixed = std::all_of(operands.begin(), operands.end(), [&](NodeId x) { return graph.isConstant(x); });
  if (isFixed && !graph.isConstant(result)) {
    refusal.raise(fmt::format("{} of constants has no finite value", kavo_operator_name(op)));
  }
  return result;
}

}  // namespace brel::expr
