#pragma once

#include <utility>
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
// is used, so that shared sums cost no more than their terms. No recursion.
class Splitter {
 public:
  explicit Splitter(const Graph& graph) : graph_(graph) {}
  // withQuadratic: products and squares are multiplied out as far as their degree is quadratic; otherwise they stay in
  // `rest`, for functions that are nonlinear anyway. The result is valid until the next call.
  const Parts& split(NodeId node, bool withQuadratic);

 private:
  // A factor of a product: constant + terms of variables.
  struct Factor {
    double constant = 0;
    std::vector<Term> terms;
  };

  // What the nodes reached from a start are multiplied by. Nodes still to be taken apart wait in a heap, the highest
  // number first: when a node's turn comes, all that use it had theirs.
  class Sweep {
   public:
    explicit Sweep(const Graph& graph) : graph_(graph) {}
    // Adds factor * node.
    void add(NodeId node, double factor, bool isOpened);
    bool isDone() const { return heap_.empty(); }
    // The next node to be taken apart and its factor.
    Term next();
    void addChildren(const Term& term, bool withProducts);
    void addConstant(double value) { constant_ += value; }
    double takeConstant() { return std::exchange(constant_, 0.0); }
    // The nodes that were not taken apart, in the order of their numbers, each once. Ends the sweep.
    const std::vector<Term>& finish();
    bool opens(NodeId node, bool withProducts) const {
      return graph_.op(node) == Op::sum ||
             (withProducts && graph_.op(node) == Op::product && graph_.degree(node) == Degree::quadratic);
    }

   private:
    const Graph& graph_;
    double constant_ = 0;
    std::vector<double> factor_;          // per node
    std::vector<unsigned char> reached_;  // per node
    std::vector<NodeId> heap_, kept_;
    std::vector<Term> result_;
  };

  void split(NodeId node, Factor& factor);
  void multiply(const Term& product);
  void mergeQuadratic();

  const Graph& graph_;
  Sweep outer_{graph_}, inner_{graph_};
  Factor first_, second_;
  Parts parts_;
};

}  // namespace brel::expr
