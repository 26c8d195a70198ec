#include "brel/load/own_group.h"

#include <fmt/core.h>

#include <cmath>
#include <limits>
#include <type_traits>
#include <unordered_map>
#include <vector>

#include "brel/host.h"
#include "brel/load/containers.h"
#include "tav/attr/lib/optional_container.h"
#include "tav/attr/lib/span_container.h"
#include "tav/util/exception.h"

namespace brel::load {
namespace {

const char* elementText(int kind) {
  if (kind == KAVO_COLUMN) return "variable";
  return kind == KAVO_ROW ? "row" : "objective";
}

template <class T>
T convert(const OwnGroupSource& source, const char* suffix, int element, double value) {
  if constexpr (std::is_same_v<T, double>) {
    return value;
  } else {
    if (value == std::trunc(value) && std::abs(value) <= std::numeric_limits<T>::max()) return static_cast<T>(value);
    throw tav::Exception(fmt::format("The value {} of suffix {} of {} {} must be a whole number.", value, suffix,
                                     elementText(source.kind), element + 1));
  }
}

// Whether larger or smaller values of the host's mean more to it. Where the larger do, 0 means nothing at all; solvers
// are told the smaller ones first.
enum class Order { asItIs, largerFirst };

// The host's values at the positions of the block, `otherwise` for elements without one. Empty when the host has none.
template <class T>
tav::attr::BaseContainer values(const OwnGroupSource& source, const char* name, T otherwise,
                                Order order = Order::asItIs) {
  kavo_suffix given{};
  checkHost(kavo_link_suffix(source.host, source.kind, name, &given));
  if (given.count == 0) return {};
  const auto container = std::make_shared<tav::attr::lib::OptionalContainer<T>>(otherwise);
  container->growTo(source.count);
  std::unordered_map<int, T> byElement;
  for (std::size_t k = 0; k < given.count; ++k) {
    if (order == Order::largerFirst && given.value[k] == 0) continue;
    const double meant = order == Order::largerFirst ? -given.value[k] : given.value[k];
    const T value = convert<T>(source, name, given.index[k], meant);
    source.element.empty() ? container->set(given.index[k], value, 0) : void(byElement[given.index[k]] = value);
  }
  for (std::size_t position = 0; position < source.element.size(); ++position) {
    const auto found = byElement.find(source.element[position]);
    if (found != byElement.end()) container->set(static_cast<int>(position), found->second, 0);
  }
  return tav::attr::BaseContainer(container);
}

// The preferences of the block's elements. What the host does not know does not give way.
std::vector<double> preferences(const OwnGroupSource& source) {
  if (source.element.empty() || source.preference.empty()) return {source.preference.begin(), source.preference.end()};
  std::vector<double> values;
  for (const int element : source.element) {
    values.push_back(element < 0 ? 0 : source.preference[static_cast<std::size_t>(element)]);
  }
  return values;
}

class GroupMaker {
 public:
  explicit GroupMaker(const OwnGroupSource& source) : source_(source) {}

  GroupMaker& preference() {
    auto all = preferences(source_);
    return set("feaspref", all.empty() ? tav::attr::BaseContainer() : tav::attr::BaseContainer(owned(all)));
  }

  GroupMaker& store(const char* name, Order order = Order::asItIs) {
    return set(name, values<double>(source_, name, std::numeric_limits<double>::quiet_NaN(), order));
  }
  GroupMaker& sent(const char* name, int otherwise) { return set(name, values<int>(source_, name, otherwise)); }
  // A value that the host knows by another name; `instead`, one per element or empty, takes its place.
  template <class T>
  GroupMaker& known(const char* name, const char* host, T otherwise, const std::vector<T>& instead = {}) {
    return set(name, instead.empty() ? values<T>(source_, host, otherwise) : tav::attr::lib::viewOf<T>(instead));
  }
  std::shared_ptr<tav::opt::BlockGroup> group() const { return group_; }

 private:
  GroupMaker& set(const char* name, const tav::attr::BaseContainer& container) {
    if (container) group_->set(group_->count(), name, container);
    return *this;
  }

  const OwnGroupSource& source_;
  std::shared_ptr<tav::opt::BlockGroup> group_ = std::make_shared<tav::opt::BlockGroup>();
};

constexpr int kNoPartition = -1;

}  // namespace

std::shared_ptr<tav::opt::BlockGroup> columnGroup(const OwnGroupSource& source) {
  return GroupMaker(source).preference().store("priority", Order::largerFirst).sent("partition", kNoPartition).group();
}

std::shared_ptr<tav::opt::BlockGroup> rowGroup(const OwnGroupSource& source) {
  return GroupMaker(source).preference().sent("lazy", 0).group();
}

std::shared_ptr<tav::opt::BlockGroup> objectiveGroup(const OwnGroupSource& source, const std::vector<double>& absTol,
                                                     const std::vector<double>& relTol) {
  return GroupMaker(source)
      .known<double>("weight", "objweight", 1.0)
      .known<int>("priority", "objpriority", 0)
      .known<double>("abstol", "objabstol", 0.0, absTol)
      .known<double>("reltol", "objreltol", 0.0, relTol)
      .group();
}

}  // namespace brel::load
