#include "brel/expr/polynomial.h"

#include <algorithm>

namespace brel::expr {

namespace {

bool byColumn(const Parts::Linear& a, const Parts::Linear& b) { return a.column < b.column; }

}  // namespace

void Splitter::Sweep::add(NodeId node, double factor, bool isOpened) {
  if (graph_.isConstant(node)) {
    constant_ += factor * graph_.value(node);
    return;
  }
  const auto n = static_cast<std::size_t>(node);
  if (n >= factor_.size()) {
    factor_.resize(graph_.size(), 0);
    reached_.resize(graph_.size(), 0);
  }
  factor_[n] += factor;
  if (reached_[n] != 0) return;
  reached_[n] = 1;
  if (!isOpened) return kept_.push_back(node);
  heap_.push_back(node);
  std::push_heap(heap_.begin(), heap_.end());
}

Term Splitter::Sweep::next() {
  std::pop_heap(heap_.begin(), heap_.end());
  const NodeId node = heap_.back();
  heap_.pop_back();
  reached_[static_cast<std::size_t>(node)] = 0;
  return {node, std::exchange(factor_[static_cast<std::size_t>(node)], 0.0)};
}

void Splitter::Sweep::addChildren(const Term& term, bool withProducts) {
  constant_ += term.coefficient * graph_.value(term.node);
  const std::span<const NodeId> children = graph_.children(term.node);
  const std::span<const double> coefficients = graph_.coefficients(term.node);
  for (std::size_t k = 0; k < children.size(); ++k) {
    add(children[k], term.coefficient * coefficients[k], opens(children[k], withProducts));
  }
}

const std::vector<Term>& Splitter::Sweep::finish() {
  if (!std::is_sorted(kept_.begin(), kept_.end())) std::sort(kept_.begin(), kept_.end());
  result_.clear();
  for (const NodeId node : kept_) {
    const auto n = static_cast<std::size_t>(node);
    reached_[n] = 0;
    const double factor = std::exchange(factor_[n], 0.0);
    if (factor != 0) result_.push_back({node, factor});
  }
  kept_.clear();
  return result_;
}

const Parts& Splitter::split(NodeId node, bool withQuadratic) {
  parts_.linear.clear();
  parts_.quadratic.clear();
  parts_.rest.clear();
  outer_.add(node, 1, outer_.opens(node, withQuadratic));
  while (!outer_.isDone()) {
    const Term term = outer_.next();
    if (term.coefficient == 0) continue;
    graph_.op(term.node) == Op::sum ? outer_.addChildren(term, withQuadratic) : multiply(term);
  }
  parts_.constant = outer_.takeConstant();
  for (const Term& term : outer_.finish()) {
    if (graph_.isVariable(term.node)) {
      parts_.linear.push_back({graph_.column(term.node), term.coefficient});
    } else {
      parts_.rest.push_back(term);
    }
  }
  auto& linear = parts_.linear;
  if (!std::is_sorted(linear.begin(), linear.end(), byColumn)) std::sort(linear.begin(), linear.end(), byColumn);
  mergeQuadratic();
  return parts_;
}

// Of a linear node.
void Splitter::split(NodeId node, Factor& factor) {
  inner_.add(node, 1, inner_.opens(node, false));
  while (!inner_.isDone()) inner_.addChildren(inner_.next(), false);
  factor.constant = inner_.takeConstant();
  factor.terms = inner_.finish();
}

// Adds a product of two linear nodes, multiplied out.
void Splitter::multiply(const Term& product) {
  const std::span<const NodeId> nodes = graph_.children(product.node);
  split(nodes[0], first_);
  split(nodes[1], second_);
  const auto addLinear = [&](const Factor& factor, double other) {
    if (other == 0) return;
    for (const Term& term : factor.terms) outer_.add(term.node, product.coefficient * other * term.coefficient, false);
  };
  outer_.addConstant(product.coefficient * first_.constant * second_.constant);
  addLinear(first_, second_.constant);
  addLinear(second_, first_.constant);
  for (const Term& a : first_.terms) {
    for (const Term& b : second_.terms) {
      const auto [low, high] = std::minmax({graph_.column(a.node), graph_.column(b.node)});
      parts_.quadratic.push_back({low, high, product.coefficient * a.coefficient * b.coefficient});
    }
  }
}

void Splitter::mergeQuadratic() {
  auto& terms = parts_.quadratic;
  const auto key = [](const Parts::Quadratic& term) { return std::pair(term.first, term.second); };
  std::stable_sort(terms.begin(), terms.end(), [&](const auto& a, const auto& b) { return key(a) < key(b); });
  std::size_t kept = 0;
  for (std::size_t k = 0; k < terms.size();) {
    Parts::Quadratic merged = terms[k];
    for (++k; k < terms.size() && key(terms[k]) == key(merged); ++k) merged.value += terms[k].value;
    if (merged.value != 0) terms[kept++] = merged;
  }
  terms.resize(kept);
}

}  // namespace brel::expr
