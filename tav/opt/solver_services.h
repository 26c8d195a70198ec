#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "tav/opt/codes.h"

namespace tav::opt {

// What a solver may tell beyond AbstractSolver. The framework asks for it by a dynamic cast; without it these features
// are absent.
class AbstractSolverServices {
 public:
  virtual ~AbstractSolverServices() = default;
  // The solver library in use, for people.
  virtual std::string libraryText() const = 0;
  // Why the last solve ended.
  virtual StopReason stopReason() const = 0;

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
