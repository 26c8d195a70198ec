#pragma once

#include <utility>
#include <vector>

#include "tav/attr/item.h"
#include "tav/attr/transform.h"
#include "tav/util/spelling.h"

namespace tav::attr::view {

template <class ItemType, class F>
class TransformItem;

// An item of F::Inner shown as an item of F::Outer. It can be written where the item can and F says how.
template <class T, transform::Readable F>
class TransformItem<Item<T>, F> final : public AbstractItem<typename F::Outer> {
 public:
  static_assert(std::is_same_v<T, typename F::Inner>);
  using Outer = typename F::Outer;

  explicit TransformItem(Item<T> item) : item_(std::move(item)) {}

  bool isSettable() const override { return transform::Writable<F> && item_.isSettable(); }
  bool isResettable() const override { return item_.isResettable(); }
  bool hasDefault() const override { return item_.hasDefault(); }
  bool hasSolution(int solution) const override { return item_.hasSolution(solution); }
  int solutionCount() const override { return item_.solutionCount(); }
  void reset() override { item_.reset(); }
  std::optional<Outer> toOptional(const Outer& raw) const override { return transform::convert<F>(raw); }
  Outer getDefault() const override { return F::read(item_.getDefault()); }
  Outer get(int solution) const override { return F::read(item_.get(solution)); }

  std::vector<Outer> getAll() const override {
    std::vector<Outer> values;
    for (const T& value : item_.getAll()) values.push_back(F::read(value));
    return values;
  }

  void set(const Outer& value, int solution) override {
    if constexpr (transform::Writable<F>) {
      item_.set(F::write(value), solution);
    } else {
      const auto owner = fmt::format("tav::attr::view::TransformItem<class {},struct {}>",
                                     signature::ownerOf<T>("tav::attr::Item"), util::typeName<F>());
      throw Exception::unsupportedSet(signature::set<Outer>(owner));
    }
  }

 private:
  Item<T> item_;
};

}  // namespace tav::attr::view
