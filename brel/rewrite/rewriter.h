#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "brel/expr/graph.h"
#include "brel/expr/polynomial.h"
#include "brel/rewrite/beyond.h"

namespace brel::rewrite {

using expr::Graph;
using expr::Interval;
using expr::NodeId;
using expr::Op;
using tav::opt::RowType;

inline constexpr NodeId kNoNode = -1;

struct RewriteOptions {
  double strictStep = 1e-4;  // a < b of real values is sent as a <= b - strictStep
  // What is sent follows from the user's expressions alone, not also from the bounds of his columns: a conflict could
  // not tell which of these it needs, and a relaxation may give them up.
  bool ignoresBounds = false;
};

// Where the solver's columns are, and where auxiliary ones begin.
struct ColumnPlace {
  std::uint64_t space;  // the variable space of the solver's adders
  int firstColumn;      // the position of the first auxiliary column
};

// A binary column, or its complement.
struct Literal {
  int column;
  bool positive;
};

// What a row is sent for.
struct RowOrigin {
  int user = kNoUserRow;
  std::string name;      // "" for none
  int rangeColumn = -1;  // see RowHeads
};

// The workshop of the rules: makes auxiliary columns and rows and keeps them. The nodes that its functions take are of
// operators that the solver knows in nonlinear functions; a rule gets its children in this form.
class Rewriter {
 public:
  // The graph, and what is filled, must outlive this.
  Rewriter(Graph& graph, Beyond& beyond, ColumnPlace place, bool hasNames, RewriteOptions options);

  Graph& graph() { return graph_; }

  // The user's element for which something is made now; names begin with it.
  void setElement(std::string_view name) { element_ = name; }  // which must live on
  // What things are made for from now on; or for what an auxiliary column was made.
  void setMaker(const Maker& maker) { maker_ = maker; }
  void setMakerOf(int column) { maker_ = beyond_.columns.maker[static_cast<std::size_t>(column - place_.firstColumn)]; }
  // A column of the user's stands for a node because of an element.
  void noteJoined(NodeId node, int element) { beyond_.joined.push_back({node, element}); }

  // Tells the user something about the element.
  void note(std::string_view what);

  // ---- columns ----
  // An auxiliary column as a node. definition: see AuxiliaryColumns. what: a word for its name.
  NodeId addColumn(Interval bounds, bool isInteger, NodeId definition, std::string_view what);
  NodeId addBinary(NodeId definition, std::string_view what) { return addColumn({0, 1}, true, definition, what); }
  // The node when it is a column, else an auxiliary column that a row makes equal to it. One per node.
  NodeId asColumn(NodeId node);
  // The node with every summand that is not linear replaced by a column.
  NodeId asAffine(NodeId node);
  // A truth value as a binary column or the complement of one.
  Literal asLiteral(NodeId truth);
  NodeId literalNode(Literal literal);

  // ---- rows; origin or a word for the name ----
  // node (type) 0, as the simplest kind of row that takes it.
  void addRow(NodeId node, RowType type, const RowOrigin& origin);
  void addRow(NodeId node, RowType type, std::string_view what) { addRow(node, type, helping(what)); }
  // node (type) 0 wherever the literal is true.
  void addIndicator(Literal when, NodeId node, RowType type, const RowOrigin& origin);
  void addIndicator(Literal when, NodeId node, RowType type, std::string_view what) {
    addIndicator(when, node, type, helping(what));
  }
  // result = op(arguments), all of them columns. op: abs, min, max, norm1, norm2, normInf, logicalAnd, logicalOr.
  void addFunction(Op op, NodeId result, std::span<const NodeId> arguments);
  // At most two of the columns, neighbours in this order, differ from 0.
  void addOrderedSet(std::span<const NodeId> members);
  void setObjective(NodeId node);

  // By how much the node must at least differ from 0 when it does.
  double stepOf(NodeId node) const { return graph_.isInteger(node) ? 1 : options_.strictStep; }
  double strictStep() const { return options_.strictStep; }

 private:
  using View = tav::math::ExpressionView<double>;

  RowOrigin helping(std::string_view what);
  std::string nameFor(std::string_view what);
  void pushHead(RowHeads& heads, RowType type, double side, const RowOrigin& origin) const;
  View emitNonlinear(const expr::Parts& parts);

  Graph& graph_;
  Beyond& beyond_;
  ColumnPlace place_;
  bool hasNames_;
  RewriteOptions options_;
  expr::Splitter splitter_;
  std::string_view element_;
  Maker maker_;
  std::vector<NodeId> columnOf_;  // by node: the column made for it, kNoNode
  int named_ = 0;
};

}  // namespace brel::rewrite
