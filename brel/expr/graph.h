#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace brel::expr {

using NodeId = std::int32_t;  // number of a node in its graph; the children of a node have lower numbers

// What a node computes. "value" is the number that belongs to the node. Other operators of the host are composed of
// these when its expressions are taken in (count and numberof are sums of truth values, for example).
enum class Op : std::uint8_t {
  constant,      // value
  variable,      // a column of the solver
  sum,           // value + sum of coefficient * child
  product,       // of two children
  divide,        // child 0 / child 1
  power,         // child 0 ^ value
  exponential,   // value ^ child 0, value > 0
  generalPower,  // child 0 ^ child 1
  signedPower,   // sign(x) |x|^value
  sqrt,
  exp,
  log,
  log2,
  log10,
  logBase,  // to the base value
  sigmoid,
  tanh,
  sin,
  cos,
  tan,
  asin,
  acos,
  atan,
  sinh,
  cosh,
  asinh,
  acosh,
  atanh,
  atan2,  // of child 0 / child 1
  abs,
  min,  // of any number of children, like max and the norms
  max,
  norm1,
  norm2,
  normInf,
  floor,
  ceil,
  round,  // half away from zero
  trunc,
  mod,            // x - y * trunc(x / y)
  integerDivide,  // trunc(x / y)
  piecewise,      // of child 0, by points: those of points(node)
  ifThenElse,     // child 0 a truth value: child 1 when it is 1, else child 2
  // Truth values, 0 or 1. Their children but for those of comparisons are truth values.
  lessEqual,  // child 0 <= 0
  less,       // child 0 < 0
  equal,      // child 0 = 0
  logicalNot,
  logicalAnd,  // of any number of children
  logicalOr,
  ifAndOnlyIf,
  allDifferent,  // of the values of any number of children
};

struct Interval {
  double lower = -std::numeric_limits<double>::infinity();
  double upper = std::numeric_limits<double>::infinity();
};

// What is known of a value.
struct Range {
  Interval interval;
  bool isInteger = false;
};

struct Term {
  NodeId node;
  double coefficient;
};

// A point of a piecewise-linear function; beyond the first and last point it goes on with the slope of the first and
// last piece. Two points of one x are a jump: the function may there have either value and any between.
struct Point {
  double x, y;
};

// Child sums, minima, conjunctions and the like of at most so many children are joined with their parent. Longer ones
// stay nodes of their own, so that building a chain node by node takes linear time.
inline constexpr std::size_t kJoined = 16;

// Degree of a node as a polynomial of the variables. Anything else, and products that would have more than
// kExpandedTerms terms and four times as many as their factors when multiplied out, is nonlinear.
inline constexpr double kExpandedTerms = 1000;
enum class Degree : std::uint8_t { constant, linear, quadratic, nonlinear };

// Expressions as one graph in which equal sub-expressions are one node. Making a node simplifies it: constants are
// folded (in so far as the result is finite), sums of sums are joined while they are short, and what is then the same
// as a node that exists is that node. Simplifying takes it that every sub-expression has a value where it is evaluated:
// 0 * log(x) is 0, and sqrt(x) >= 0 is true. Knows for each node bounds of its value, derived from those of the
// variables, whether it is always a whole number, and its degree. No operation recurses.
class Graph {
 public:
  Graph();
  Graph(const Graph&) = delete;
  Graph& operator=(const Graph&) = delete;

  // ---- making nodes ----
  NodeId constant(double value);
  // The node of a solver column; its bounds and kind as they are when it is made for the first time. Bounds that
  // exclude each other count as none.
  NodeId variable(int column, double lower, double upper, bool isInteger);
  // Terms of one node are merged, those with coefficient 0 left out; a sum of one node with coefficient 1 is the node.
  NodeId sum(double constant, std::span<const Term> terms);
  NodeId product(NodeId a, NodeId b);          // a constant factor gives a sum
  NodeId call(Op op, NodeId a);                // of one child, no value
  NodeId call(Op op, NodeId a, NodeId b);      // of two children, no value
  NodeId call(Op op, NodeId a, double value);  // of one child and a value
  NodeId call(Op op, std::span<const NodeId> children);
  // At least one point; x does not decrease.
  NodeId piecewise(std::span<const Point> points, NodeId a);

  // Shorthand.
  NodeId negate(NodeId a) { return scale(a, -1); }
  NodeId scale(NodeId a, double factor) { return sum(0, {{Term{a, factor}}}); }
  NodeId subtract(NodeId a, NodeId b) { return sum(0, {{Term{a, 1}, Term{b, -1}}}); }
  NodeId complement(NodeId truth) { return sum(1, {{Term{truth, -1}}}); }  // 1 - truth, as a number
  NodeId logicalNot(NodeId a) { return call(Op::logicalNot, a); }
  NodeId truth(bool value) { return constant(value ? 1 : 0); }

  // ---- asking ----
  std::size_t size() const { return nodes_.size(); }
  Op op(NodeId node) const { return at(node).op; }
  double value(NodeId node) const { return at(node).value; }
  int column(NodeId node) const { return at(node).extra; }  // of a variable
  std::span<const NodeId> children(NodeId node) const {
    return {children_.data() + at(node).first, static_cast<std::size_t>(at(node).count)};
  }
  // Of a sum: as many as children.
  std::span<const double> coefficients(NodeId node) const {
    return {coefficients_.data() + at(node).first, static_cast<std::size_t>(at(node).count)};
  }
  // Of a piecewise-linear function.
  std::span<const Point> points(NodeId node) const { return pointsOf(at(node).extra); }
  Interval interval(NodeId node) const { return {at(node).lower, at(node).upper}; }
  bool isInteger(NodeId node) const { return at(node).isInteger; }
  bool isConstant(NodeId node) const { return at(node).op == Op::constant; }
  bool isVariable(NodeId node) const { return at(node).op == Op::variable; }
  // Whether it is 0 or 1 whatever the variables are: a truth value, or a whole number within these bounds.
  bool isTruth(NodeId node) const {
    const Node& n = at(node);
    return n.isInteger && n.lower >= 0 && n.upper <= 1;
  }
  Degree degree(NodeId node) const { return at(node).degree; }

 private:
  struct Node {
    Op op;
    Degree degree;
    bool isInteger;
    int count;          // of children
    std::size_t first;  // of children
    int extra;          // column of a variable, number of the points
    double value;
    double lower, upper;
    double termBound;  // how many terms it may have when multiplied out
  };
  // What tells a node from others.
  struct Key {
    explicit Key(Op o, double v = 0, std::span<const NodeId> of = {}) : op(o), value(v), children(of) {}
    Op op;
    double value;
    int column = -1;  // of a variable
    std::span<const NodeId> children;
    std::span<const double> coefficients;  // of a sum, as many as children
    std::span<const Point> points;         // of a piecewise-linear function
  };
  struct Slot {
    NodeId node = -1;
    std::uint32_t hash = 0;
  };

  const Node& at(NodeId node) const { return nodes_[static_cast<std::size_t>(node)]; }
  std::span<const Point> pointsOf(int number) const {
    const auto n = static_cast<std::size_t>(number);
    return {points_.data() + pointStart_[n], pointStart_[n + 1] - pointStart_[n]};
  }

  // Simplified, and the node.
  NodeId make(Op op, double value, std::span<const NodeId> children);
  // The constant that a call of constants is, or -1.
  NodeId folded(const Key& key);
  void addTerm(const Term& term, double& constant, std::vector<Term>& terms) const;
  NodeId internSum(double value, std::span<const Term> terms);
  // The node with this key, made if there is none.
  NodeId intern(const Key& key);
  NodeId append(const Key& key);
  Range rangeOf(const Key& key) const;
  bool matches(NodeId node, const Key& key) const;
  void setDegree(Node& node) const;
  void grow();

  std::vector<Node> nodes_;
  std::vector<NodeId> children_;
  std::vector<double> coefficients_;  // as many as children
  std::vector<std::size_t> pointStart_{0};
  std::vector<Point> points_;
  std::vector<Slot> slots_;        // open addressing, a power of two of them, at most half of them taken
  std::vector<NodeId> variables_;  // the node of each column, -1: not made yet
  double variableCount_ = 0;

  // Working memory of calls; taken by whoever needs it, so that a call within a call has its own.
  std::vector<NodeId> nodeList_;
  std::vector<Term> termList_;
  std::vector<double> numbers_;
};

}  // namespace brel::expr
