#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "brel/load/loader.h"
#include "brel/rewrite/evaluate.h"
#include "kavo/link.h"
#include "tav/opt/solver.h"
#include "tav/opt/solver_services.h"

namespace brel::result {

// How much of what the solver knows belongs to the user's model.
enum class Extent {
  basis,  // no point was found: a basis at most
  point,  // a point alone, and what follows from it by the user's own functions: another model was solved
  all     // the point, and the solver's activities, duals, reduced costs and basis, as far as it has them
};

inline constexpr double kInfiniteValue = 1e30;  // where a solver stands that walks to infinity

// Whether an objective or values of columns are no numbers of a point: the objective is infinite, or the size of some
// value is `most` or more.
bool isInfinite(double objective, std::span<const double> columns, double most);

// Reads what the solver knows after a solve and hands it to the host on the user's own elements. Asks before it reads:
// what the solver does not have is not given.
//
// Signs: duals are Gurobi's, the change of the objective per unit of right-hand side, for minimise and maximise alike.
class Reader {
 public:
  // of: added to the numbers of the quantities and bases that are given: 0, or KAVO_OF_FIXED. All must outlive this.
  Reader(trpRec* host, tav::opt::AbstractSolver& solver, const load::TranslatedModel& model, int of = 0);

  // Status, stop, objective, bound, counts and times of the solve. Gives nothing to the host.
  kavo_finish facts() const;

  // The values of the user's columns at the point, which there must be. Gives nothing to the host.
  std::span<const double> columns();

  // Gives values, reduced costs, activities, duals, slacks and basis.
  void read(Extent extent);
  // After `read`: the user's functions at the point; null without a point.
  const rewrite::UserPoint* point() const { return point_ ? &*point_ : nullptr; }
  // After `read`: whether duals or reduced costs, and a basis, were given.
  bool hasDuals() const { return hasDuals_; }

  // Gives the sensitivity ranges; says why not when the solver has none, "" when it has. Comes last: a solver may
  // forget everything else for it.
  std::string readRanges();

 private:
  std::span<double> values(int quantity);
  std::span<int> basis(int kind);
  void readPoint();
  bool giveColumns(const tav::attr::Container<double>& from, int quantity);
  void readColumns(Extent extent);
  void readRows(Extent extent);
  void evaluateRows();
  void writeSlacks(std::span<const double> activity);
  tav::attr::ContainerDict rowPart() const;
  std::vector<double> quadraticDuals() const;
  struct EndValues {
    std::vector<double> low, high;
    bool isEmpty() const { return low.empty() || high.empty(); }
  };
  EndValues endsOf(const tav::attr::ContainerDict& part, int low, int high, std::size_t count) const;
  void giveEnds(const EndValues& from, int low, int high);
  template <class T>
  std::pair<std::span<const T>, std::span<const T>> split(const std::vector<T>& sent) const;
  template <class T>
  void scatter(std::span<const T> from, std::span<T> to) const;

  trpRec* host_;
  tav::opt::AbstractSolver& solver_;
  const tav::opt::AbstractSolverServices* services_;  // null when the solver has none
  const load::TranslatedModel& model_;
  int of_;
  std::vector<double> primal_;    // per solver column; empty without a point
  std::vector<int> columnBasis_;  // per solver column; empty without a basis
  std::optional<rewrite::UserPoint> point_;
  bool hasDuals_ = false;
};

}  // namespace brel::result
