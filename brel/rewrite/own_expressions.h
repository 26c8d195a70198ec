#pragma once

#include "brel/expr/graph.h"
#include "brel/expr/host_expressions.h"
#include "brel/user_model.h"

namespace brel::rewrite {

// The user's expressions as he has written them: nothing is simplified by bounds of columns, so that they are his own
// also where a point breaks these, or when they move.
class OwnExpressions {
 public:
  // The host's arrays must outlive this.
  explicit OwnExpressions(const UserModel& user);
  OwnExpressions(const OwnExpressions&) = delete;
  OwnExpressions& operator=(const OwnExpressions&) = delete;

  const expr::Graph& graph() const { return graph_; }
  // The node of an expression as a number or as a truth value, -1 for one that has no meaning here.
  expr::NodeId number(int expression) { return made(expression, &expr::HostExpressions::number); }
  expr::NodeId truth(int expression) { return made(expression, &expr::HostExpressions::truth); }

 private:
  using Make = expr::NodeId (expr::HostExpressions::*)(int expression, const std::string& element);
  expr::NodeId made(int expression, Make make);

  kavo_columns columns_;
  kavo_expressions all_{};
  expr::Graph graph_;
  expr::HostExpressions expressions_;
};

// Whether the user's rows and objective are linear but for their quadratic terms, whatever the bounds are.
bool areExpressionsLinear(const UserModel& user);

}  // namespace brel::rewrite
