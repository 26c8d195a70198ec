#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <vector>

#include "tav/attr/container_dict.h"
#include "tav/opt/solver.h"
#include "tav/opt/tags.h"

namespace grb {

// A quantity that a view can provide.
struct Quantity {
  int number;
  const char* name;
};

// Answers the queries that all views of model parts share from the list of what a view provides in its context. A view
// implements provided() and make().
class QuantityView : public tav::attr::AbstractContainerDict {
 public:
  int count() const override { return static_cast<int>(provided().size()); }
  std::vector<int> keys() const override {
    std::vector<int> result;
    for (const Quantity& quantity : provided()) result.push_back(quantity.number);
    return result;
  }
  std::string name(int key) const override {
    const Quantity* found = find(key);
    return found ? found->name : "";
  }
  std::shared_ptr<const tav::attr::AbstractBaseInfo> info(int /*key*/) const override { return nullptr; }
  bool has(int key) const override { return find(key) != nullptr; }
  tav::attr::BaseContainer get(int key) const override { return has(key) ? make(key) : empty(); }

  using tav::attr::AbstractContainerDict::find;
  using tav::attr::AbstractContainerDict::get;
  using tav::attr::AbstractContainerDict::has;
  using tav::attr::AbstractContainerDict::info;

 protected:
  virtual std::span<const Quantity> provided() const = 0;
  // A container for a quantity that is provided.
  virtual tav::attr::BaseContainer make(int key) const = 0;

 private:
  const Quantity* find(int key) const {
    const auto all = provided();
    const auto found = std::find_if(all.begin(), all.end(), [key](const Quantity& q) { return q.number == key; });
    return found == all.end() ? nullptr : &*found;
  }
};

// The kinds of events in which values of a running solve are read.
enum class Event { none, node, incumbent };

// Event::none for the empty context; nothing for contexts that do not exist.
inline std::optional<Event> eventOf(const tav::opt::Context& context) {
  if (context.name.empty()) return Event::none;
  if (context.name != tav::opt::tag::kContext || context.kind < 0 || context.kind > 2) return std::nullopt;
  return context.kind == 2 ? Event::incumbent : Event::node;
}

}  // namespace grb
