#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tav/opt/codes.h"

namespace tav::opt {

// Bounds, rows and other parts of a model that contradict each other, by their positions among their kind.
struct Conflict {
  bool isMinimal = true;  // without any one of its members it would be none; false when the search was cut short
  std::vector<int> lowerBounds, upperBounds;  // variables
  std::vector<int> rows, quadraticRows, sets;
  std::vector<int> indicators, nonlinearRows;
};

// What a solver may tell beyond AbstractSolver. The framework asks for it by a dynamic cast; without it these features
// are absent.
class AbstractSolverServices {
 public:
  virtual ~AbstractSolverServices() = default;
  // The solver library in use, for people.
  virtual std::string libraryText() const = 0;
  // Why the last solve ended.
  virtual StopReason stopReason() const = 0;

  // Whether the solver's model is still the one that was loaded: false once it was relaxed or its integers were fixed,
  // until it starts anew.
  virtual bool structureIntact() const = 0;
  // Whether the model, as the solver holds it, is a search: one that has more than continuous variables, linear and
  // convex quadratic parts, so that its point has no duals. Only once there is a model.
  virtual bool isSearch() const = 0;

  // What the last solve found out besides a point, if it was asked to: parts of the model that contradict each other;
  // what the cheapest relaxation costs; the condition number of the basis at the end.
  virtual std::optional<Conflict> conflict() const = 0;
  // Why there is none although it was asked for, a sentence without its end; empty otherwise. The solve may then have
  // ended with an error; what it has found stands all the same.
  virtual std::string conflictFailure() const = 0;
  // A file that the last solve was to write at its end and has not, with its name and the reason; empty otherwise. The
  // solve has then ended with an error; what it has found stands all the same.
  virtual std::string lostFile() const = 0;
  // Why a trace of the library's calls ends early, with the name of its file; empty when none does.
  virtual std::string traceFailure() const = 0;
  virtual std::optional<double> relaxation() const = 0;
  // Whether the solve was to find the cheapest relaxation first, and that search ended before it had it. The relaxation
  // is then the best that was found.
  virtual bool isRelaxationCutShort() const = 0;
  virtual std::optional<double> conditionNumber(bool exact) const = 0;

  // New coefficients of a linear row, or of the linear objective, or the new right-hand side of a linear row, which the
  // next solve begins with: as many values as columns. The last value for a place counts. Raises tav::CheckException
  // for a row or column that does not exist and for a value that is not finite.
  virtual void queueCoefficients(int row, const std::vector<int>& columns, const std::vector<double>& values) = 0;
  virtual void queueObjective(const std::vector<int>& columns, const std::vector<double>& values) = 0;
  virtual void queueSide(int row, double value) = 0;

  // The heading under which people look for a setting of the solver's own dictionary (AbstractSolver::shortName); empty
  // for a key that is not provided.
  virtual std::string settingGroup(int key) const = 0;
  // Whether the solver takes this setting only before `setup`.
  virtual bool isSetBeforeSetup(int key) const = 0;
  // The longest text, in bytes, that the solver takes for a setting of its dictionary.
  virtual std::size_t longestText(int key) const = 0;
  // Whether the solver has a parameter of this name, in any case, be it in the dictionary or not.
  virtual bool knowsParameter(std::string_view name) const = 0;
};

}  // namespace tav::opt
