#pragma once

#include <vector>

#include "brel/expr/graph.h"

namespace brel::expr {

// A node as a sum: constant, linear terms (columns in rising order, merged), quadratic terms (merged, first <= second),
// and whatever is neither, as nodes with a factor (never sums; each node once). Terms with coefficient 0 are left out.
struct Parts {
  struct Quadratic {
    int first, second;
    double value;
  };
  struct Linear {
    int column;
    double value;
  };
  double constant = 0;
  std::vector<Linear> linear;
  std::vector<Quadratic> quadratic;
  std::vector<Term> rest;
};

// Splits nodes; keeps its working memory from one to the next. Every node of a sum is looked at once, however often it
// is used, so that shared sums cost no more than their terms.
class Splitter {
 public:
  explicit Splitter(const Graph& graph) : graph_(graph) {}
  // withQuadratic: products and squares are multiplied out as far as their degree is quadratic; otherwise they stay in
  // `rest`, for functions that are nonlinear anyway. The result is valid until the next call.
  const Parts& split(NodeId node, bool withQuadratic);

 private:
  const Graph& graph_;
  Parts parts_;
};

}  // namespace brel::expr
