// Expressions as text: what goes into a graph, and what is in it.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "brel/expr/graph.h"
#include "brel/expr/host_expressions.h"
#include "kavo/link.h"

namespace expr_test {

/// Columns of a host, its expressions, and the graph that they are taken into.
class Model {
 public:
  struct Column {
    double lower, upper;
    unsigned char type = KAVO_CONTINUOUS;
  };

  explicit Model(const std::vector<Column>& columns);

  /// Adds an expression in the notation of brel_test::nodesOf. Returns its number.
  int add(std::string_view text);
  /// Adds an expression as a defined variable.
  void define(std::string_view text) { defined_.push_back(add(text)); }

  /// The same, from postfix nodes.
  void push(kavo_operator op, int index = 0, double value = 0);
  int end();

  /// The graph's node, as a number or a truth value.
  brel::expr::NodeId number(int expression) { return host().number(expression, "row r"); }
  brel::expr::NodeId truth(int expression) { return host().truth(expression, "row r"); }
  brel::expr::NodeId column(int index) { return host().column(index); }

  /// The value of an expression at a point, computed from its postfix nodes alone; `largest` grows to the absolute
  /// value of any operand.
  double naive(int expression, const std::vector<double>& point, double& largest) const;

  brel::expr::Graph graph;

 private:
  // Made when first asked for: expressions must not be added after that.
  brel::expr::HostExpressions& host();

  std::vector<double> lower_, upper_;
  std::vector<unsigned char> type_;
  std::vector<std::size_t> start_{0};
  std::vector<kavo_operator> op_;
  std::vector<int> index_, defined_;
  std::vector<double> value_;
  kavo_columns columns_{};
  kavo_expressions expressions_{};
  std::unique_ptr<brel::expr::HostExpressions> host_;
};

/// A node in the notation of the tables: sums as "2*x0 - x1 + 3", others as "op(child, child)", a value behind ";".
std::string text(const brel::expr::Graph& graph, brel::expr::NodeId node);

}  // namespace expr_test
