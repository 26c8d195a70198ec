#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "brel/rewrite/conditions.h"
#include "brel/rewrite/rewriter.h"

namespace brel::rewrite {

// Turns the nodes of the user's expressions into nodes of operators that the solver knows, with the rules of
// expression_rules.h. All nodes that something needs are found first, from the roots downward, with what is needed of
// them; then they are lowered from the leaves upward, each once, so that what several rows share is made once. Nothing
// recurses.
//
// Of a truth value often one direction is enough: where only a true value is asked for ("b or x <= 5"), a binary column
// z with z = 1 => x <= 5 does, and z = 0 need not mean x > 5. This saves rows, and strict comparisons of real values.
class Lowering {
 public:
  explicit Lowering(Rewriter& rewriter);

  // ---- before run: what is wanted ----
  // An element whose expressions follow, by the name that auxiliary elements get from it; in the order of
  // Beyond::elements. isObjective: what others need too is made for these.
  void setElement(std::string name, bool isObjective = false) {
    elements_.push_back(std::move(name));
    if (isObjective) objective_ = lastElement();
  }
  void needValue(NodeId node) { need(node, kBoth); }
  void needTrue(NodeId node) { need(node, kTrue); }
  // Lets a column be the result of a node: the user's row "column = node", the element set last, says no more than
  // that. False when the node is no result of a rule, or has a result already.
  bool setResult(NodeId node, NodeId column) { return setResult(node, column, lastElement()); }

  void run();

  // The lowered form, after run or, for children, in a rule.
  NodeId lowered(NodeId node) const { return lowered_[index(node)]; }

  // ---- for rules ----
  Rewriter& rewriter() { return rewriter_; }
  Graph& graph() { return rewriter_.graph(); }
  std::vector<NodeId> loweredChildren(NodeId node);
  // The lowered form of child k. Where the node matters under a condition only and its function is not defined for all
  // values of the child, a column that is the child's value under that condition and anything allowed elsewhere.
  NodeId argument(NodeId node, std::size_t k);
  // The column for the result of a rule: the user's own or a new one, with the bounds of the node.
  NodeId result(NodeId node, std::string_view what);
  // For rules whose result is no column but a lowered node: the node, or the user's column after a row that makes it
  // equal.
  NodeId finish(NodeId node, NodeId value);
  // Whether result = 1 must mean that the node is true, and whether 0 must mean that it is false.
  bool needsOne(NodeId node) const { return (need_[index(node)] & kOne) != 0; }
  bool needsZero(NodeId node) const { return (need_[index(node)] & kZero) != 0; }

 private:
  enum Need : std::uint8_t { kOne = 1, kZero = 2, kBoth = 3, kTrue = 4, kFalse = 8 };

  // `node` must be true wherever a binary column has a value.
  struct Guard {
    Literal literal;
    int element;  // that says so
    int next;     // of the same node, -1
  };

  static std::size_t index(NodeId node) { return static_cast<std::size_t>(node); }
  int lastElement() const { return static_cast<int>(elements_.size()) - 1; }
  bool setResult(NodeId node, NodeId column, int element);
  void need(NodeId node, std::uint8_t what);
  void passOn(NodeId node);
  void passTo(NodeId child, NodeId parent, std::uint8_t what) { passTo(child, parent, what, matters_[index(parent)]); }
  void passTo(NodeId child, NodeId parent, std::uint8_t what, Conditions::Id where);
  void passToOperand(NodeId node);
  void passOnOr(NodeId node, std::uint8_t needed);
  void passGuardsOn(NodeId node);
  void joinEquivalent(NodeId node);
  void guard(NodeId node, Literal literal, int element);
  void makeFor(NodeId node);
  bool isSimple(NodeId node, Literal& literal);
  NodeId guardedOperand(NodeId node, Literal& when);

  void countUses();
  bool isToBeShared(NodeId node) const;
  NodeId lower(NodeId node);
  NodeId copyWithLoweredChildren(NodeId node);
  void enforce(NodeId node);
  int& enforcer(NodeId node, bool holds) { return enforcer_[static_cast<std::size_t>(node)][holds ? 1 : 0]; }
  void enforceAlways(NodeId node, bool holds);
  void enforceClause(NodeId node, bool isOneTrue);

  Rewriter& rewriter_;
  std::size_t sources_;  // number of nodes before anything was made of them
  std::vector<std::uint8_t> need_;
  std::vector<int> element_;                  // by node: what it was first needed for
  std::vector<std::array<int, 2>> enforcer_;  // by node: the element that says that it is false, that it is true
  std::vector<int> firstGuard_;               // by node, -1
  std::vector<Guard> guards_;
  std::vector<NodeId> result_;  // by node: its result when the user has it, kNoNode
  std::vector<int> joiner_;     // by node: the element that says so
  int objective_ = -1;          // among the elements
  std::vector<NodeId> lowered_;
  Conditions conditions_;
  std::vector<Conditions::Id> matters_;  // by node: where its value matters
  std::vector<int> uses_;                // by node: by how many others its text would be repeated
  std::vector<float> treeSize_;          // by node: the number of nodes when it is written out
  std::deque<std::string> elements_;     // a deque, since names are lent
};

}  // namespace brel::rewrite
