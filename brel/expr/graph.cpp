#include "brel/expr/graph.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <utility>

#include "brel/expr/operation.h"
#include "brel/expr/range.h"
#include "brel/expr/simplify.h"

namespace brel::expr {

namespace {

constexpr std::size_t kFirstSlots = 64;

// A member's vector, empty, for as long as this lives; then it gets it back with its memory.
template <class T>
class Borrowed {
 public:
  explicit Borrowed(std::vector<T>& owner) : owner_(owner), list_(std::move(owner)) { list_.clear(); }
  ~Borrowed() { owner_ = std::move(list_); }
  Borrowed(const Borrowed&) = delete;
  Borrowed& operator=(const Borrowed&) = delete;
  std::vector<T>& operator*() { return list_; }
  std::vector<T>* operator->() { return &list_; }

 private:
  std::vector<T>& owner_;
  std::vector<T> list_;
};

class Hash {
 public:
  void add(std::uint64_t bits) {
    state_ = (state_ ^ bits) * 0x9e3779b97f4a7c15;
    state_ ^= state_ >> 32;
  }
  void add(double value) { add(std::bit_cast<std::uint64_t>(value)); }
  std::uint32_t value() const { return static_cast<std::uint32_t>(state_ ^ (state_ >> 29)); }

 private:
  std::uint64_t state_ = 0x243f6a8885a308d3;
};

bool sameBits(double a, double b) { return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b); }

}  // namespace

Graph::Graph() : slots_(kFirstSlots) {}

NodeId Graph::constant(double value) {
  return intern(Key(Op::constant, value == 0 ? 0.0 : value));  // no negative zero
}

NodeId Graph::variable(int column, double lower, double upper, bool isInteger) {
  const auto c = static_cast<std::size_t>(column);
  if (c >= variables_.size()) variables_.resize(std::max(c + 1, 2 * variables_.size()), -1);
  if (variables_[c] >= 0) return variables_[c];
  Interval bounds{lower, upper};
  if (isInteger) bounds = wholeBounds(bounds);
  if (!(bounds.lower <= bounds.upper)) bounds = kEverything;
  Key key(Op::variable);
  key.column = column;
  const NodeId node = append(key);
  Node& made = nodes_.back();
  made.lower = bounds.lower;
  made.upper = bounds.upper;
  made.isInteger = isInteger;
  made.degree = Degree::linear;
  ++variableCount_;
  return variables_[c] = node;
}

NodeId Graph::product(NodeId a, NodeId b) { return call(Op::product, a, b); }

NodeId Graph::call(Op op, NodeId a) { return make(op, 0, {&a, 1}); }

NodeId Graph::call(Op op, NodeId a, NodeId b) {
  const NodeId both[]{a, b};
  return make(op, 0, both);
}

NodeId Graph::call(Op op, NodeId a, double value) { return make(op, value, {&a, 1}); }

NodeId Graph::call(Op op, std::span<const NodeId> children) { return make(op, 0, children); }

NodeId Graph::piecewise(std::span<const Point> points, NodeId a) {
  if (points.size() == 1) return constant(points[0].y);
  const std::vector<Point> copy(points.begin(), points.end());  // they may be those of another node
  Key key(Op::piecewise, 0, {&a, 1});
  key.points = copy;
  const NodeId known = folded(key);
  return known == kAsItStands ? intern(key) : known;
}

NodeId Graph::make(Op op, double value, std::span<const NodeId> children) {
  Borrowed list(nodeList_);  // a copy: the caller's span may be one of ours, which moves when nodes are made
  list->assign(children.begin(), children.end());
  NodeId simpler = folded(Key(op, value, *list));
  if (simpler != kAsItStands) return simpler;
  simpler = isTruthOperation(op) ? simplifyTruth(*this, op, *list) : simplifyNumber(*this, op, value, *list);
  return simpler == kAsItStands ? intern(Key(op, value, *list)) : simpler;
}

NodeId Graph::folded(const Key& key) {
  if (!std::all_of(key.children.begin(), key.children.end(), [&](NodeId child) { return isConstant(child); })) {
    return kAsItStands;
  }
  Borrowed numbers(numbers_);
  for (const NodeId child : key.children) numbers->push_back(value(child));
  const double result = apply(key.op, key.value, *numbers, key.points);
  return std::isfinite(result) ? constant(result) : kAsItStands;
}

NodeId Graph::intern(const Key& key) {
  Hash hash;
  hash.add(static_cast<std::uint64_t>(key.op));
  hash.add(key.value);
  for (const NodeId child : key.children) hash.add(static_cast<std::uint64_t>(child));
  for (const double coefficient : key.coefficients) hash.add(coefficient);
  for (const Point& point : key.points) hash.add(point.x), hash.add(point.y);
  const std::size_t mask = slots_.size() - 1;
  std::size_t place = hash.value() & mask;
  for (; slots_[place].node >= 0; place = (place + 1) & mask) {
    if (slots_[place].hash == hash.value() && matches(slots_[place].node, key)) return slots_[place].node;
  }
  slots_[place] = {append(key), hash.value()};
  const NodeId node = slots_[place].node;
  if (2 * size() > slots_.size()) grow();
  return node;
}

bool Graph::matches(NodeId node, const Key& key) const {
  const Node& n = at(node);
  if (n.op != key.op || !sameBits(n.value, key.value)) return false;
  if (!std::ranges::equal(children(node), key.children)) return false;
  if (key.op == Op::sum) return std::ranges::equal(coefficients(node), key.coefficients, sameBits);
  if (key.op != Op::piecewise) return true;
  return std::ranges::equal(points(node), key.points,
                            [](const Point& a, const Point& b) { return sameBits(a.x, b.x) && sameBits(a.y, b.y); });
}

Range Graph::rangeOf(const Key& key) const {
  if (key.op == Op::sum) return rangeOfSum(*this, key.value, key.children, key.coefficients);
  if (!key.children.empty()) return rangeOfCall(*this, key.op, key.value, key.children, key.points);
  return {{key.value, key.value}, key.value == std::round(key.value)};
}

NodeId Graph::append(const Key& key) {
  const auto [interval, isInteger] = rangeOf(key);
  Node node{.op = key.op,
            .degree = Degree::nonlinear,
            .isInteger = isInteger,
            .count = static_cast<int>(key.children.size()),
            .first = children_.size(),
            .extra = key.column,
            .value = key.value,
            .lower = interval.lower,
            .upper = interval.upper,
            .termBound = 1};
  children_.insert(children_.end(), key.children.begin(), key.children.end());
  coefficients_.insert(coefficients_.end(), key.coefficients.begin(), key.coefficients.end());
  coefficients_.resize(children_.size(), 1);
  if (key.op == Op::piecewise) {
    node.extra = static_cast<int>(pointStart_.size()) - 1;
    points_.insert(points_.end(), key.points.begin(), key.points.end());
    pointStart_.push_back(points_.size());
  }
  nodes_.push_back(node);
  setDegree(nodes_.back());
  return static_cast<NodeId>(nodes_.size()) - 1;
}

void Graph::setDegree(Node& node) const {
  const std::span<const NodeId> of(children_.data() + node.first, static_cast<std::size_t>(node.count));
  if (node.op == Op::constant) {
    node.degree = Degree::constant;
  } else if (node.op == Op::sum) {
    node.degree = Degree::constant;
    node.termBound = node.value == 0 ? 0 : 1;
    for (const NodeId child : of) node.degree = std::max(node.degree, degree(child));
    for (const NodeId child : of) node.termBound += at(child).termBound;
    if (node.degree == Degree::linear) node.termBound = std::min(node.termBound, variableCount_ + 1);
  } else if (node.op == Op::product && std::max(degree(of[0]), degree(of[1])) == Degree::linear) {
    const double a = at(of[0]).termBound, b = at(of[1]).termBound;
    node.termBound = of[0] == of[1] ? a * (a + 1) / 2 : a * b;
    const bool isLong = node.termBound > kExpandedTerms && node.termBound > 4 * (a + b);
    node.degree = isLong ? Degree::nonlinear : Degree::quadratic;
  }
}

void Graph::grow() {
  std::vector<Slot> old(2 * slots_.size());
  old.swap(slots_);
  const std::size_t mask = slots_.size() - 1;
  for (const Slot& slot : old) {
    if (slot.node < 0) continue;
    std::size_t place = slot.hash & mask;
    while (slots_[place].node >= 0) place = (place + 1) & mask;
    slots_[place] = slot;
  }
}

// ---- sums ----

void Graph::addTerm(const Term& term, double& constant, std::vector<Term>& terms) const {
  const auto [node, factor] = term;
  if (factor == 0) return;
  const double shifted = constant + factor * value(node);
  if (isConstant(node) && std::isfinite(shifted)) {
    constant = shifted;
    return;
  }
  const std::span<const double> inner = coefficients(node);
  const bool isJoined =
      op(node) == Op::sum && inner.size() <= kJoined && std::isfinite(shifted) &&
      std::all_of(inner.begin(), inner.end(), [factor = factor](double c) { return std::isfinite(factor * c); });
  if (!isJoined) {
    terms.push_back(term);
    return;
  }
  constant = shifted;
  for (std::size_t k = 0; k < inner.size(); ++k) terms.push_back({children(node)[k], factor * inner[k]});
}

NodeId Graph::sum(double constant, std::span<const Term> terms) {
  Borrowed list(termList_);
  for (const Term& term : terms) addTerm(term, constant, *list);
  const auto byNode = [](const Term& a, const Term& b) { return a.node < b.node; };
  if (!std::is_sorted(list->begin(), list->end(), byNode)) std::sort(list->begin(), list->end(), byNode);
  std::size_t kept = 0;
  for (std::size_t k = 0; k < list->size();) {
    Term merged = (*list)[k];
    for (++k; k < list->size() && (*list)[k].node == merged.node; ++k) merged.coefficient += (*list)[k].coefficient;
    if (merged.coefficient != 0) (*list)[kept++] = merged;
  }
  list->resize(kept);
  return internSum(constant, *list);
}

NodeId Graph::internSum(double value, std::span<const Term> terms) {
  if (terms.empty()) return constant(value);
  if (terms.size() == 1 && value == 0 && terms[0].coefficient == 1) return terms[0].node;
  Borrowed nodes(nodeList_);
  Borrowed numbers(numbers_);
  for (const Term& term : terms) {
    nodes->push_back(term.node);
    numbers->push_back(term.coefficient);
  }
  Key key(Op::sum, value == 0 ? 0.0 : value, *nodes);
  key.coefficients = *numbers;
  return intern(key);
}

}  // namespace brel::expr
