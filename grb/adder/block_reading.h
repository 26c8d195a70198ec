#pragma once

#include <algorithm>
#include <array>
#include <mutex>
#include <span>
#include <string_view>
#include <vector>

#include "grb/data.h"
#include "grb/gurobi/exception.h"
#include "tav/attr/container_dict.h"
#include "tav/attr/lib/span_container.h"
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

// The values of a block's container: where they stand when that is a plain array, which must outlive this, and read
// otherwise.
template <class T>
class BlockValues {
 public:
  explicit BlockValues(const tav::attr::BaseContainer& container) {
    const auto* array = dynamic_cast<const tav::attr::lib::SpanContainer<T>*>(container.pointer().get());
    if (array == nullptr) read_ = readAll<T>(container);
    values_ = array == nullptr ? std::span<const T>(read_) : array->span();
  }
  BlockValues(const BlockValues&) = delete;
  BlockValues& operator=(const BlockValues&) = delete;

  std::span<const T> span() const { return values_; }

 private:
  std::vector<T> read_;
  std::span<const T> values_;
};

// Calls use(i, value) for the first `count` values of a container in order, which are read in portions.
template <class T, int kPortion = 256, class Use>
void forEachValue(const tav::attr::Container<T>& container, int count, const Use& use) {
  std::array<T, kPortion> portion;
  for (int first = 0; first < count; first += kPortion) {
    const int size = std::min(kPortion, count - first);
    container.get(tav::idx::lib::Range(first, size), std::span(portion).first(static_cast<std::size_t>(size)));
    for (int k = 0; k < size; ++k) use(first + k, portion[static_cast<std::size_t>(k)]);
  }
}

// The values that a block carries, `otherwise` for elements without one; none when it carries no value at all.
template <class T>
std::vector<T> readGiven(const tav::attr::BaseContainer& container, T otherwise) {
  std::vector<T> result;
  if (container.itemCount() == 0) return result;
  const auto values = container.as<T>();
  for (const auto& value : values.getOptional(tav::idx::lib::Range(0, values.size()))) {
    result.push_back(value.value_or(otherwise));
  }
  return result;
}

// Raises tav::CheckException unless `what` has as many values as the block has elements.
void requireCount(std::string_view what, int size, int count);

// The number of elements of a block: that of its largest container.
int elementCount(const tav::attr::ContainerDict& standard);

// Raises tav::CheckException unless every container of a group has `count` values, so that none is found to be short
// when half of the block has been sent.
void requireCounts(const tav::attr::ContainerDict& group, int count);

// Copies the values that a block carries into a store, at the new elements' positions; nothing when it carries none.
template <class T>
void copyToStore(const tav::attr::BaseContainer& source, const tav::idx::List& positions,
                 const tav::attr::Container<T>& store) {
  const auto values = source.as<T>();
  if (values) store.set(positions, values);
}

// Gurobi's terms for the domain types of a block, by one of the maps in domain_types.h, which is inlined.
template <auto kToGurobi>
auto readTypes(const tav::attr::BaseContainer& types, int count) {
  const auto values = types.as<int>();
  requireCount("type", values.size(), count);
  std::vector<decltype(kToGurobi(0))> result(static_cast<std::size_t>(count));
  forEachValue<int>(values, count, [&](int i, int type) { result[static_cast<std::size_t>(i)] = kToGurobi(type); });
  return result;
}

// The names of a block's elements: all of them, or none when names are off or the block has none.
class BlockNames {
 public:
  // Raises a support error when a name is longer than Gurobi takes.
  BlockNames(const Data& data, const tav::attr::BaseContainer& names);

  std::span<const char* const> span() const { return names_.span(); }
  // The empty text for an element without a name.
  const char* at(int i) const { return names_.span().empty() ? "" : names_.span()[static_cast<std::size_t>(i)]; }

 private:
  BlockValues<const char*> names_;
};

// Holds the model lock from its making on, and checks that Gurobi holds exactly what is registered. The reading makes
// the pending update, so that a failing call of this block cannot discard what came before.
class LockedModel {
 public:
  explicit LockedModel(Data& data) : data_(data), lock_(data.modelLock) { data.requireInStep(); }

  // Runs calls that add to the model; each element must be registered as soon as Gurobi has taken it. When Gurobi
  // refuses one, the record finds out what is left before the error goes on its way.
  template <class Calls>
  void add(const Calls& calls) {
    try {
      calls(*data_.model);
    } catch (const GurobiException&) {
      data_.isInStepAfterError();
      throw;
    }
  }

 private:
  Data& data_;
  std::lock_guard<std::mutex> lock_;
};

}  // namespace grb
