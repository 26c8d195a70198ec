#pragma once

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <span>

#include "grb/gurobi/model.h"
#include "tav/attr/container.h"

namespace grb {

// Reads and writes one Gurobi attribute of many elements, or of one.
template <class T>
struct ElementAccess;

template <>
struct ElementAccess<int> {
  static constexpr int kUnread = std::numeric_limits<int>::min();
  static bool isUnread(int value) { return value == kUnread; }
  static int get(GurobiModel& model, const char* name, int element) { return model.getIntAttrElement(name, element); }
  static void get(GurobiModel& model, const char* name, const tav::idx::List& list, std::span<int> values) {
    model.getIntAttrArray(name, list, values);
  }
  static void set(GurobiModel& model, const char* name, int element, int value) {
    model.setIntAttrElement(name, element, value);
  }
  static void set(GurobiModel& model, const char* name, const tav::idx::List& list, std::span<const int> values) {
    model.setIntAttrArray(name, list, values);
  }
};

template <>
struct ElementAccess<double> {
  static constexpr double kUnread = std::numeric_limits<double>::quiet_NaN();
  static bool isUnread(double value) { return std::isnan(value); }
  static double get(GurobiModel& model, const char* name, int element) {
    return model.getDblAttrElement(name, element);
  }
  static void get(GurobiModel& model, const char* name, const tav::idx::List& list, std::span<double> values) {
    model.getDblAttrArray(name, list, values);
  }
  static void set(GurobiModel& model, const char* name, int element, double value) {
    model.setDblAttrElement(name, element, value);
  }
  static void set(GurobiModel& model, const char* name, const tav::idx::List& list, std::span<const double> values) {
    model.setDblAttrArray(name, list, values);
  }
};

// Raises the error of a bulk read that left its values as they were.
[[noreturn]] void failUnread(const char* name);

// Reads a list of elements as all containers do: the pending update first, and with the first value preset to "unread",
// by which a read that failed is known, since the bulk calls are not checked and write all values or none. Nothing is
// read for an empty list; while Gurobi does not hold the attribute, all values become "unread".
template <class T>
void readElements(GurobiModel& model, const char* name, const tav::idx::List& list, std::span<T> values) {
  if (list.size() == 0) return;
  const auto wanted = values.first(static_cast<std::size_t>(list.size()));
  model.updateIfPending();
  if (!model.isAttrAvailable(name)) {
    std::fill(wanted.begin(), wanted.end(), ElementAccess<T>::kUnread);
    return;
  }
  wanted.front() = ElementAccess<T>::kUnread;
  ElementAccess<T>::get(model, name, list, wanted);
  if (ElementAccess<T>::isUnread(wanted.front())) failUnread(name);
}

enum class Access { readOnly, readWrite };

// A Gurobi attribute of elements as a container: raw values, read on demand, the model held weakly. Once the model is
// gone, it reads 0, leaves lists as they are, and has no solutions.
template <class T>
class AttributeContainer : public tav::attr::AbstractContainer<T> {
 public:
  // name: the attribute; count: the model attribute that tells the number of elements. Both literals.
  AttributeContainer(std::weak_ptr<GurobiModel> model, const char* name, const char* count, Access access)
      : model_(std::move(model)), name_(name), count_(count), access_(access) {}

  bool isSettable() const override { return access_ == Access::readWrite; }

  int size() const override {
    const auto model = model_.lock();
    return model ? model->getIntAttr(count_) : 0;
  }

  int solutionCount() const override {
    const auto model = model_.lock();
    return model && model->isAttrAvailable(name_) ? 1 : 0;
  }

  using tav::attr::AbstractContainer<T>::get;
  using tav::attr::AbstractContainer<T>::set;

  T get(int index, int /*solution*/) const override {
    const auto model = model_.lock();
    return model ? ElementAccess<T>::get(*model, name_, index) : T();
  }

  void get(const tav::idx::List& list, std::span<T> values, int /*solution*/) const override {
    if (const auto model = model_.lock()) readElements<T>(*model, name_, list, values);
  }

  void set(int index, const T& value, int solution) override {
    if (!isSettable()) return tav::attr::AbstractContainer<T>::set(index, value, solution);  // refuses
    if (const auto model = model_.lock()) ElementAccess<T>::set(*model, name_, index, value);
  }

  void set(const tav::idx::List& list, std::span<const T> values, int solution) override {
    if (!isSettable()) return tav::attr::AbstractContainer<T>::set(list, values, solution);  // refuses
    const auto model = model_.lock();
    if (model && list.size() > 0) ElementAccess<T>::set(*model, name_, list, values);
  }

 private:
  std::weak_ptr<GurobiModel> model_;
  const char* name_;
  const char* count_;
  Access access_;
};

using IntAttributeContainer = AttributeContainer<int>;
using DoubleAttributeContainer = AttributeContainer<double>;

}  // namespace grb
