#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "brel/expr/graph.h"
#include "tav/math/expression.h"
#include "tav/opt/codes.h"

// What is sent to the solver besides plain columns and linear rows as the host has them: the work of the rules.
namespace brel::rewrite {

inline constexpr int kNoUserRow = -1;

// Linear functions, one after another: the terms of function i stand at start[i] .. start[i+1]-1.
struct LinearTerms {
  std::vector<std::size_t> start{0};
  std::vector<int> column;
  std::vector<double> value;

  std::size_t size() const { return start.size() - 1; }
  void push(int c, double v) { column.push_back(c), value.push_back(v); }
  void end() { start.push_back(column.size()); }
};

// Sums of value * first * second, as LinearTerms.
struct QuadraticTerms {
  std::vector<std::size_t> start{0};
  std::vector<int> first, second;
  std::vector<double> value;

  std::size_t size() const { return start.size() - 1; }
  void push(int a, int b, double v) { first.push_back(a), second.push_back(b), value.push_back(v); }
  void end() { start.push_back(value.size()); }
};

// For which of the user's elements (Beyond::elements) something was made that stands for none itself. node: of the
// graph, whose value it gives to all elements that need the node; -1: it is a part of what the element demands.
struct Maker {
  int element = -1;
  expr::NodeId node = -1;
};

// What rows of every kind have: function, sense, side.
struct RowHeads {
  std::vector<tav::opt::RowType> type;
  std::vector<double> side;
  std::vector<int> user;           // the user's row that it stands for, kNoUserRow for a row that only helps
  std::vector<int> rangeColumn;    // the column whose bounds are the user's two sides, -1: none
  std::vector<Maker> maker;        // of a row that only helps
  std::vector<std::string> names;  // as many as rows, or none at all when the model has no names

  std::size_t size() const { return type.size(); }
};

struct LinearRows {
  RowHeads heads;
  LinearTerms terms;
};

struct QuadraticRows {
  RowHeads heads;
  LinearTerms terms;
  QuadraticTerms quadratic;
};

// Rows that hold when a binary column has a value. Linear.
struct IndicatorRows {
  RowHeads heads;
  LinearTerms terms;
  std::vector<int> binary;
  std::vector<unsigned char> active;  // 0 or 1
};

// function(i) stands in `expressions`: a call of Add with the linear part (a call of Linear) first, or a linear
// function only; or, with tryNonlinear 0, the result variable minus a call of a function that the solver takes as a
// constraint.
struct NonlinearRows {
  RowHeads heads;
  std::vector<tav::math::ExpressionView<double>> functions;
  std::vector<int> tryNonlinear;  // 0 or 1
};

struct OrderedSets {
  std::vector<unsigned char> type;  // 1 or 2
  LinearTerms members;              // values: the weights, which rise within a set
  std::vector<Maker> maker;
};

// Columns behind those of the user. `definition`: the node of the graph that the column stands for; its value at a
// point is the column's. It was made before the column's own node and may use auxiliary columns before this one, so
// that one sweep over the graph in which every auxiliary column takes its value from its definition gives all of them.
// -1 when the column follows from no expression.
struct AuxiliaryColumns {
  std::vector<double> lower, upper;
  std::vector<unsigned char> isInteger;
  std::vector<expr::NodeId> definition;
  std::vector<Maker> maker;
  std::vector<std::string> names;  // as many as columns, or none at all

  std::size_t size() const { return lower.size(); }
};

// The objective, when the user's is not linear or was changed.
struct BeyondObjective {
  enum class Kind { asTheUsers, linear, quadratic, nonlinear };
  Kind kind = Kind::asTheUsers;
  double constant = 0;
  LinearTerms terms;                                        // one function
  QuadraticTerms quadratic;                                 // one function, when kind is quadratic
  std::vector<tav::math::ExpressionView<double>> function;  // one, when kind is nonlinear: linear part and constant too
};

// An element of the user's that was taken into the graph.
struct UserElement {
  int kind;           // KAVO_ROW, KAVO_LOGICAL or KAVO_OBJECTIVE
  std::size_t index;  // of its kind
  expr::NodeId root;  // its function
};

// A node for which a column of the user's stands, since an element says that they are equal.
struct JoinedResult {
  expr::NodeId node;
  int element;
};

struct Beyond {
  explicit Beyond(std::size_t userRows) : moved(userRows, 0) {}

  AuxiliaryColumns columns;
  std::vector<unsigned char>
      moved;  // per user row: 1 when it is not sent as the host has it but stands below, or nowhere
  LinearRows linear;
  QuadraticRows quadratic;
  IndicatorRows indicator;
  NonlinearRows nonlinear;
  OrderedSets sets;  // of rules; the user's sets are sent as they are
  BeyondObjective objective;
  std::shared_ptr<tav::math::Expression<double>> expressions = std::make_shared<tav::math::Expression<double>>();
  std::shared_ptr<const expr::Graph> graph;  // of the user's expressions and of what the rules made of them
  std::vector<UserElement> elements;
  std::vector<JoinedResult> joined;
  std::vector<std::string> notes;  // for the user, about what was taken otherwise than it is written
};

}  // namespace brel::rewrite
