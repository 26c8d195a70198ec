#pragma once

#include <span>
#include <vector>

#include "grb/nonlinear/summands.h"
#include "tav/math/symbol.h"

namespace grb {

struct Data;

// An expression as GRBaddgenconstrNL takes it: three arrays of equal length with an entry per node, in depth-first
// pre-order, so that every node stands before its arguments and these in their order.
//
// A function of the catalogue is an operator node. Two things are not:
// - a linear function inside an expression is a variable node: an auxiliary variable (free, unnamed) that an auxiliary
//   row ties to the linear function;
// - a power with a constant whole exponent of at least 0 under the name PowerConst is exp(exponent * log(base)), which
//   is right for a positive base only. Whoever cannot vouch for that writes Power.
//
// Takes time linear in the size of the expression, uses no recursion and allocates nothing per node. Takes no lock:
// callers hold the model lock of the record.
//
// Refusals are support errors. Besides those for what is no expression, for functions without an operator and for
// variables and linear functions of another solver these are refused because Gurobi would discard everything queued, or
// accept them and fail in the solve: constants that are not finite, variables that do not exist, powers in which base
// and exponent both vary, signed powers whose exponent is not a constant of at least 1.
class NonlinearStack {
 public:
  // Encodes an expression, or a view of one, and adds its auxiliary rows and variables to the model and to the
  // registries. A refused expression adds nothing. After a GurobiException what was added is registered; it is the
  // caller's duty to find out whether it is still there.
  static NonlinearStack load(const tav::math::Symbol<double>& expr, Data* data);

  // The two halves of load, for those who must know that an expression is sound before the first call: the first one
  // calls nothing in Gurobi, and leaves the positions of auxiliary variables open until the second one has run. The
  // expression must live that long.
  static NonlinearStack encode(const tav::math::Symbol<double>& expr, const Data& data);
  void addAuxiliaries(Data& data);

  // The sum of sub-expressions of one expression as the first half does it. An empty sum is the constant 0; one summand
  // that is added is encoded as it stands.
  static NonlinearStack encodeSum(std::span<const Summand> summands, const Data& data);

  // Gurobi's operators; the constant, the variable's position, or -1 for an operator; the node's parent, -1 for the
  // root.
  const std::vector<int>& opcodes() const { return opcodes_; }
  const std::vector<double>& data() const { return data_; }
  const std::vector<int>& parents() const { return parents_; }

 private:
  class Encoder;

  // A linear function that needs a row and a variable, and the node of that variable.
  struct Auxiliary {
    std::size_t node;
    tav::math::LinearFunction<double> function;
  };

  void reserve(std::size_t nodes);
  int emit(int opcode, int parent, double value);

  std::vector<int> opcodes_, parents_;
  std::vector<double> data_;
  std::vector<Auxiliary> auxiliaries_;
};

}  // namespace grb
