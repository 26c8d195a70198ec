#pragma once

#include <span>
#include <vector>

#include "brel/expr/graph.h"
#include "brel/expr/refusal.h"

namespace brel::expr {

// The operands of expressions that come in postfix order. Sums, and, or, min and max stay open while more of the same
// may come: a chain a + b + c + ..., however it is nested, becomes one node, in linear time. What is handed out is
// closed, as a node.
class OpenStack {
 public:
  OpenStack(Graph& graph, const Refusal& refusal) : graph_(graph), refusal_(refusal) {}

  void clear();
  void push(NodeId node);
  void pushConstant(double value) { entries_.push_back({Op::sum, terms_.size(), value}); }

  // Makes one operand of the last `count`. op: sum, logicalAnd, logicalOr, min or max; the operands of and and or
  // become truth values.
  void join(Op op, std::size_t count);
  void scaleLast(double factor);
  // Multiplies the last two when one of them is a constant; false: neither is.
  bool scaleByConstant();

  // Takes the last operand, or the last `count` of them, in their order; valid until the next call.
  NodeId take();
  std::span<const NodeId> take(std::size_t count);

 private:
  // A sum constant + terms, or the operands of another operation as terms. They end where those of the next entry
  // begin.
  struct Entry {
    Op op;
    std::size_t first;
    double constant;
  };

  std::size_t endOf(std::size_t entry) const {
    return entry + 1 < entries_.size() ? entries_[entry + 1].first : terms_.size();
  }
  std::span<const Term> termsOf(std::size_t entry) const {
    return {terms_.data() + entries_[entry].first, endOf(entry) - entries_[entry].first};
  }
  bool isConstant(std::size_t entry) const { return entries_[entry].op == Op::sum && termsOf(entry).empty(); }
  bool fits(Op op, std::size_t entry) const;
  NodeId close(std::size_t entry);
  double joinFrom(std::size_t entry, Op op);

  Graph& graph_;
  const Refusal& refusal_;
  std::vector<Entry> entries_;
  std::vector<Term> terms_;
  std::vector<Term> rewritten_;
  std::vector<NodeId> nodes_, taken_;
};

// A number as a truth value: whether it is not 0. A truth value is itself.
NodeId truthOf(Graph& graph, NodeId node);

}  // namespace brel::expr
