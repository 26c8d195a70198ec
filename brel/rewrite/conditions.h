#pragma once

#include <vector>

#include "brel/rewrite/rewriter.h"

namespace brel::rewrite {

// When the value of a node matters: always, or only where a condition holds. In "if x >= 0 then sqrt(x) else -1" the
// square root matters where x >= 0, and x must not be kept from negative values by it.
class Conditions {
 public:
  using Id = int;
  static constexpr Id kNever = 0;  // nobody needs it
  static constexpr Id kAlways = 1;

  explicit Conditions(Rewriter& rewriter) : rewriter_(rewriter) {}

  // Within `outer`: where a truth value is 1 (positive) or 0, or where a literal is true.
  Id whenTruth(NodeId truth, bool positive, Id outer) { return add({truth, {0, positive}, outer, kNever}); }
  Id whenLiteral(Literal literal, Id outer) { return add({kNoNode, literal, outer, kNever}); }
  // Where one or the other holds.
  Id either(Id a, Id b);

  // A binary column that is 1 wherever the condition holds; where it does not it may be anything.
  Literal literal(Id condition);

  // Ties the columns that were handed out to what they stand for. lowered: gives the lowered form of a truth value.
  template <class Lowered>
  void close(const Lowered& lowered);

 private:
  struct Condition {
    NodeId truth;     // kNoNode: `literal` tells, or it is either of two
    Literal literal;  // of a truth value only its sign
    Id outer;         // or the first of two
    Id second;        // kNever: not of two
    int column = -1;
  };

  Id add(const Condition& condition) {
    all_.push_back(condition);
    return static_cast<Id>(all_.size()) + 1;
  }
  Condition& at(Id id) { return all_[static_cast<std::size_t>(id) - 2]; }
  void tie(Literal column, NodeId inner, Id outer);

  Rewriter& rewriter_;
  std::vector<Condition> all_;  // each refers to earlier ones only
};

template <class Lowered>
void Conditions::close(const Lowered& lowered) {
  for (auto id = static_cast<Id>(all_.size()) + 1; id >= 2; --id) {
    const Condition condition = at(id);
    if (condition.column < 0) continue;
    rewriter_.setMakerOf(condition.column);
    const Literal own{condition.column, true};
    if (condition.second != kNever) {
      tie(own, kNoNode, condition.outer);
      tie(own, kNoNode, condition.second);
    } else if (condition.truth == kNoNode) {
      tie(own, rewriter_.literalNode(condition.literal), condition.outer);
    } else {
      const NodeId truth = lowered(condition.truth);
      tie(own, condition.literal.positive ? truth : rewriter_.graph().complement(truth), condition.outer);
    }
  }
}

}  // namespace brel::rewrite
