#pragma once

#include <mutex>
#include <string_view>
#include <vector>

#include "grb/data.h"
#include "grb/gurobi/exception.h"
#include "tav/attr/container_dict.h"
#include "tav/opt/block.h"

namespace grb {

// The tag of the link's own groups, and the names of what stands there.
inline constexpr std::string_view kOwnGroup = "grb";
inline constexpr std::string_view kPreference = "feaspref";
inline constexpr std::string_view kPriority = "priority";
inline constexpr std::string_view kPartition = "partition";
inline constexpr std::string_view kLazy = "lazy";

// All values of a container of a block; none when the block has no such container.
template <class T>
std::vector<T> readAll(const tav::attr::BaseContainer& container) {
  return container.as<T>().getAll();
}

// Copies the values that a block carries into a store, at the new elements' positions; nothing when it carries none.
template <class T>
void copyToStore(const tav::attr::BaseContainer& source, const tav::idx::List& positions,
                 const tav::attr::Container<T>& store) {
  const auto values = source.as<T>();
  if (values) store.set(positions, values);
}

// The names of a block's elements, empty when names are off or the block has none.
std::vector<const char*> readNames(const Data& data, const tav::attr::BaseContainer& names);

// Holds the model lock from its making on, and checks that Gurobi holds exactly what is registered. The reading makes
// the pending update, so that a failing call of this block cannot discard what came before.
class LockedModel {
 public:
  explicit LockedModel(Data& data) : data_(data), lock_(data.modelLock) { data.requireInStep(); }

  // Runs calls that add to the model. rowsSent: how many linear rows they have sent so far, kept by them. When Gurobi
  // refuses one, the record finds out what Gurobi has left before the error goes on its way.
  template <class Calls>
  void addTo(const int& rowsSent, const Calls& calls) {
    try {
      calls(*data_.model);
    } catch (const GurobiException&) {
      data_.settleAfterError(rowsSent);
      throw;
    }
  }

 private:
  Data& data_;
  std::lock_guard<std::mutex> lock_;
};

}  // namespace grb
