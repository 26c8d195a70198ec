#include "brel/expr/open_stack.h"

#include <cmath>

namespace brel::expr {

namespace {

bool isJunction(Op op) { return op == Op::logicalAnd || op == Op::logicalOr; }

}  // namespace

NodeId truthOf(Graph& graph, NodeId node) {
  return graph.isTruth(node) ? node : graph.logicalNot(graph.call(Op::equal, node));
}

void OpenStack::clear() {
  entries_.clear();
  terms_.clear();
}

void OpenStack::push(NodeId node) {
  if (graph_.isConstant(node)) return pushConstant(graph_.value(node));
  entries_.push_back({Op::sum, terms_.size(), 0});
  terms_.push_back({node, 1});
}

// Whether the terms of the entry can stand among those of a larger one.
bool OpenStack::fits(Op op, std::size_t entry) const {
  const Entry& e = entries_[entry];
  if (e.op == op) return true;
  const std::span<const Term> terms = termsOf(entry);
  const bool isNode = e.op == Op::sum && e.constant == 0 && terms.size() == 1 && terms[0].coefficient == 1;
  return isNode && (!isJunction(op) || graph_.isTruth(terms[0].node));
}

void OpenStack::join(Op op, std::size_t count) {
  const std::size_t first = entries_.size() - count;
  std::size_t entry = first;
  double constant = 0;
  for (; entry < entries_.size() && fits(op, entry); ++entry) constant += entries_[entry].constant;
  if (entry < entries_.size()) constant += joinFrom(entry, op);
  entries_.resize(first + 1);
  entries_[first].op = op;
  entries_[first].constant = constant;
}

// Writes the terms from an entry on anew, those that do not fit as nodes. Long lists that would have to be moved are
// closed, or else a chain of them would be moved again and again.
double OpenStack::joinFrom(std::size_t entry, Op op) {
  const std::size_t first = entries_[entry].first;
  double constant = 0;
  rewritten_.clear();
  for (; entry < entries_.size(); ++entry) {
    const std::span<const Term> terms = termsOf(entry);
    if (fits(op, entry) && terms.size() <= kJoined) {
      rewritten_.insert(rewritten_.end(), terms.begin(), terms.end());
      constant += entries_[entry].constant;
    } else {
      const NodeId node = close(entry);
      rewritten_.push_back({isJunction(op) ? truthOf(graph_, node) : node, 1});
    }
  }
  terms_.resize(first);
  terms_.insert(terms_.end(), rewritten_.begin(), rewritten_.end());
  return constant;
}

void OpenStack::scaleLast(double factor) {
  const std::size_t last = entries_.size() - 1;
  if (entries_[last].op != Op::sum || termsOf(last).size() > kJoined) push(take());
  for (std::size_t k = entries_[last].first; k < terms_.size(); ++k) terms_[k].coefficient *= factor;
  entries_[last].constant *= factor;
}

bool OpenStack::scaleByConstant() {
  const std::size_t last = entries_.size() - 1;
  const bool isLast = isConstant(last);
  if (!isLast && !isConstant(last - 1)) return false;
  const auto constant = entries_.begin() + static_cast<std::ptrdiff_t>(isLast ? last : last - 1);
  const double factor = constant->constant;
  entries_.erase(constant);  // it has no terms
  scaleLast(factor);
  return true;
}

NodeId OpenStack::take() { return take(1)[0]; }

std::span<const NodeId> OpenStack::take(std::size_t count) {
  const std::size_t first = entries_.size() - count;
  taken_.clear();
  for (std::size_t entry = first; entry < entries_.size(); ++entry) taken_.push_back(close(entry));
  terms_.resize(entries_[first].first);
  entries_.resize(first);
  return taken_;
}

NodeId OpenStack::close(std::size_t entry) {
  const std::span<const Term> terms = termsOf(entry);
  const auto [op, first, constant] = entries_[entry];
  if (op != Op::sum) {
    nodes_.clear();
    for (const Term& term : terms) nodes_.push_back(term.node);
    return graph_.call(op, nodes_);
  }
  double size = std::fabs(constant);
  for (const Term& term : terms) size += std::fabs(term.coefficient);
  if (!std::isfinite(size)) refusal_.raise("constants of a sum or product overflow");
  return graph_.sum(constant, terms);
}

}  // namespace brel::expr
