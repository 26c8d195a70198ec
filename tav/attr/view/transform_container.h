#pragma once

#include <type_traits>
#include <utility>
#include <vector>

#include "tav/attr/container.h"
#include "tav/attr/transform.h"
#include "tav/util/spelling.h"

namespace tav::attr::view {

template <class ContainerType, class F>
class TransformContainer;

// A container of F::Inner shown as a container of F::Outer. It can be written where the container can and F says how.
// Where the two types are one, values are read into the caller's span and transformed there.
template <class T, transform::Readable F>
class TransformContainer<Container<T>, F> final : public AbstractContainer<typename F::Outer> {
 public:
  static_assert(std::is_same_v<T, typename F::Inner>);
  using Outer = typename F::Outer;

  explicit TransformContainer(Container<T> container) : container_(std::move(container)) {}

  bool isSettable() const override { return transform::Writable<F> && container_.isSettable(); }
  bool isResettable() const override { return container_.isResettable(); }
  bool hasDefault() const override { return container_.hasDefault(); }
  bool hasSolution(int solution) const override { return container_.hasSolution(solution); }
  bool hasSettableSolution(int solution) const override { return container_.hasSettableSolution(solution); }
  int size() const override { return container_.size(); }
  int solutionCount() const override { return container_.solutionCount(); }
  int itemCount() const override { return container_.itemCount(); }
  void reset() override { container_.reset(); }

  std::optional<Outer> toOptional(const Outer& raw) const override { return transform::convert<F>(raw); }
  Outer getDefault() const override { return F::read(container_.getDefault()); }
  Outer getDefault(int index) const override { return F::read(container_.getDefault(index)); }

  Outer get(int index, int solution) const override { return F::read(container_.get(index, solution)); }

  void get(const idx::List& list, std::span<Outer> values, int solution) const override {
    readThrough(values.first(static_cast<std::size_t>(list.size())),
                [&](std::span<T> inner) { container_.get(list, inner, solution); });
  }

  void getAll(std::span<Outer> values, int solution) const override {
    readThrough(values.first(static_cast<std::size_t>(size())),
                [&](std::span<T> inner) { container_.getAll(inner, solution); });
  }

  using AbstractContainer<Outer>::set;

  void set(const idx::List& list, std::span<const Outer> values, int solution) override {
    if constexpr (transform::Writable<F>) {
      container_.set(list, std::span<const T>(written(values)), solution);
    } else {
      throw Exception::unsupportedSet(signature::setList<Outer>(owner()));
    }
  }

  void set(int index, const Outer& value, int solution) override {
    if constexpr (transform::Writable<F>) {
      container_.set(index, F::write(value), solution);
    } else {
      throw Exception::unsupportedSet(signature::setOne<Outer>(owner()));
    }
  }

  void setAll(std::span<const Outer> values, int solution) override {
    if constexpr (transform::Writable<F>) {
      container_.setAll(std::span<const T>(written(values)), solution);
    } else {
      throw Exception::unsupportedSet(signature::setAll<Outer>(owner()));
    }
  }

 private:
  // Reading from an empty container leaves the values as they are.
  template <class Read>
  void readThrough(std::span<Outer> values, const Read& read) const {
    if (!container_) return;
    if constexpr (std::is_same_v<T, Outer>) {
      read(values);
      for (Outer& value : values) value = F::read(value);
    } else {
      std::vector<T> inner(values.size());
      read(std::span<T>(inner));
      for (std::size_t k = 0; k < values.size(); ++k) values[k] = F::read(inner[k]);
    }
  }

  static std::vector<T> written(std::span<const Outer> values)
    requires transform::Writable<F>
  {
    std::vector<T> inner(values.size());
    for (std::size_t k = 0; k < values.size(); ++k) inner[k] = F::write(values[k]);
    return inner;
  }

  static std::string owner() {
    return fmt::format("tav::attr::view::TransformContainer<class {},struct {}>",
                       signature::ownerOf<T>("tav::attr::Container"), util::typeName<F>());
  }

  Container<T> container_;
};

}  // namespace tav::attr::view
