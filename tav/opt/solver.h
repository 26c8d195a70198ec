#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tav/attr/abstract_dict.h"
#include "tav/attr/container_dict.h"
#include "tav/opt/adder.h"
#include "tav/opt/callback.h"
#include "tav/opt/codes.h"
#include "tav/opt/command.h"
#include "tav/opt/log.h"

namespace tav::opt {

// Where a quantity is read: an empty name is the model and its last solve, "tav:context" the event of kind `kind`
// (ContextEntry) that is being told right now.
struct Context {
  std::string_view name;
  int kind = 0;
};

// A part of the model and, beside it, the functions of its elements.
using ContainerPair = std::pair<attr::ContainerDict, attr::ContainerDict>;

// A solver as the framework sees it. Pointers to what the solver does not offer are empty; the framework then reports
// that part of the model as unsupported.
class AbstractSolver {
 public:
  virtual ~AbstractSolver() = default;

  virtual std::string name() const = 0;
  virtual std::pair<std::int32_t, bool> capabilities() const = 0;
  // Also the tag of the solver's own groups and attributes.
  virtual std::string shortName() const = 0;

  virtual bool hasModel() const = 0;
  // Makes the environment and an empty model; true at once when there is a model. Takes the licence.
  virtual bool setup() = 0;
  // Replaces the model by an empty one in the same environment.
  virtual void clear() = 0;

  // False, and nothing stored, for an empty pointer. A log must be set before `solve`.
  virtual bool setLog(std::shared_ptr<AbstractLog> log) = 0;
  virtual std::shared_ptr<AbstractLog> log() const = 0;
  virtual bool setCallback(std::shared_ptr<AbstractCallback> callback) = 0;
  virtual std::shared_ptr<void> callbackData() const = 0;
  // Subscribes to an event; false for a tag or index that the solver does not tell of.
  virtual bool addContext(std::string_view tag, int index, ContextEntry entry) = 0;

  virtual std::shared_ptr<AbstractVariableAdder> makeVariableAdder(std::string_view domain,
                                                                   std::optional<std::string_view> function) = 0;
  virtual std::shared_ptr<AbstractConstraintAdder> makeConstraintAdder(std::string_view domain,
                                                                       std::string_view function) = 0;
  virtual std::shared_ptr<AbstractLinkedConstraintAdder> makeLinkAdder(std::string_view domain,
                                                                       std::string_view function,
                                                                       std::string_view link) = 0;

  virtual attr::ContainerDict makeVariableContainers(const Context& context) = 0;
  // part: the adder that took these constraints in; further: must be absent. Empty dictionaries for other parts.
  virtual ContainerPair makeConstraintContainers(const std::shared_ptr<const AbstractAdder>& part,
                                                 std::optional<std::string_view> further, const Context& context) = 0;
  virtual ContainerPair makeEmptyContainers() = 0;
  // "tav:solver": the standard attributes; the short name: the solver's own parameters, by name.
  virtual std::shared_ptr<attr::AbstractItemDict> makeModelAttributes(std::string_view tag, const Context& context) = 0;
  virtual std::shared_ptr<AbstractCommand> makeCommand(std::string_view tag, int index,
                                                       std::optional<std::string_view> argument) = 0;

  virtual Termination solve() = 0;
  // Stops a running solve; from any thread. Without one it does nothing.
  virtual void interrupt() = 0;
};

}  // namespace tav::opt
