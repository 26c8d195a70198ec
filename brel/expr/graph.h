#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <unordered_map>
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

struct Term {
  NodeId node;
  double coefficient;
};

// A point of a piecewise-linear function; beyond the first and last point it goes on with the slope of the first and
// last piece. Two points of one x are a jump: the function may there have either value and any between.
struct Point {
  double x, y;
};

// Degree of a node as a polynomial of the variables. Anything else, and products of sums that would have too many terms
// when multiplied out, is kNonlinear.
enum class Degree : std::uint8_t { constant, linear, quadratic, nonlinear };

// Expressions as one graph in which equal sub-expressions are one node. Making a node simplifies it: constants are
// folded (in so far as the result is finite), sums of sums are joined while they are short, and what is then the same
// as a node that exists is that node. Knows for each node bounds of its value, derived from those of the variables,
// whether it is always a whole number, and its degree. No operation recurses.
class Graph {
 public:
  Graph();
  Graph(const Graph&) = delete;
  Graph& operator=(const Graph&) = delete;

  // ---- making nodes ----
  NodeId constant(double value);
  // The node of a solver column; its bounds and kind as they are when it is made for the first time.
  NodeId variable(int column, double lower, double upper, bool isInteger);
  // Terms of one node are merged, those with coefficient 0 left out; a sum of one node with coefficient 1 is the node.
  NodeId sum(double constant, std::span<const Term> terms);
  NodeId product(NodeId a, NodeId b);          // a constant factor gives a sum
  NodeId call(Op op, NodeId a);                // of one child, no value
  NodeId call(Op op, NodeId a, NodeId b);      // of two children, no value
  NodeId call(Op op, NodeId a, double value);  // of one child and a value
  NodeId call(Op op, std::span<const NodeId> children);
  NodeId piecewise(std::span<const Point> points, NodeId a);

  // Shorthand.
  NodeId negate(NodeId a) { return scale(a, -1); }
  NodeId scale(NodeId a, double factor) { return sum(0, {{Term{a, factor}}}); }
  NodeId subtract(NodeId a, NodeId b) { return sum(0, {{Term{a, 1}, Term{b, -1}}}); }
  NodeId logicalNot(NodeId a) { return call(Op::logicalNot, a); }

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
  std::span<const Point> points(NodeId node) const;
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
  const Node& at(NodeId node) const { return nodes_[static_cast<std::size_t>(node)]; }

  std::vector<Node> nodes_;
  std::vector<NodeId> children_;
  std::vector<double> coefficients_;  // as many as children
};

}  // namespace brel::expr
