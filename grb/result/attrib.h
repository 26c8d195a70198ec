#pragma once

#include <memory>
#include <string>

#include "grb/gurobi/model.h"
#include "tav/attr/item.h"

namespace grb {

// Where a scalar comes from.
inline constexpr int kModelAttribute = 0;
inline constexpr int kParameter = 1;

// Reads and writes one kind of scalar by its Gurobi name.
template <int Source, class T>
struct Scalar;

template <>
struct Scalar<kModelAttribute, int> {
  static int get(GurobiModel& model, const char* name) { return model.getIntAttr(name); }
  static void set(GurobiModel& model, const char* name, int value) { model.setIntAttr(name, value); }
};
template <>
struct Scalar<kModelAttribute, double> {
  static double get(GurobiModel& model, const char* name) { return model.getDblAttr(name); }
  static void set(GurobiModel& model, const char* name, double value) { model.setDblAttr(name, value); }
};
template <>
struct Scalar<kModelAttribute, std::string> {
  static std::string get(GurobiModel& model, const char* name) { return model.getStrAttr(name); }
  static void set(GurobiModel& model, const char* name, const std::string& value) {
    model.setStrAttr(name, value.c_str());
  }
};
template <>
struct Scalar<kParameter, int> {
  static int get(GurobiModel& model, const char* name) { return model.getIntParam(name); }
  static void set(GurobiModel& model, const char* name, int value) { model.setIntParam(name, value); }
};
template <>
struct Scalar<kParameter, double> {
  static double get(GurobiModel& model, const char* name) { return model.getDblParam(name); }
  static void set(GurobiModel& model, const char* name, double value) { model.setDblParam(name, value); }
};
template <>
struct Scalar<kParameter, std::string> {
  static std::string get(GurobiModel& model, const char* name) { return model.getStrParam(name); }
  static void set(GurobiModel& model, const char* name, const std::string& value) {
    model.setStrParam(name, value.c_str());
  }
};

// A scalar of a model, read on demand: Source 0 a model attribute, 1 a parameter of the model's environment. It holds
// the model weakly; once the model is gone it reads 0 or "" and has no value. A model attribute has a value while
// Gurobi says that it is available; a read that is tried anyway raises GurobiException.
template <int Source, class T>
class Attrib : public tav::attr::AbstractItem<T> {
 public:
  Attrib(std::weak_ptr<GurobiModel> model, std::string name) : model_(std::move(model)), name_(std::move(name)) {}

  bool isSettable() const override { return true; }

  int solutionCount() const override {
    const auto model = model_.lock();
    if (!model) return 0;
    if constexpr (Source == kModelAttribute) return model->isAttrAvailable(name_.c_str()) ? 1 : 0;
    return 1;
  }

  T get(int /*solution*/) const override {
    const auto model = model_.lock();
    return model ? Scalar<Source, T>::get(*model, name_.c_str()) : T();
  }

  void set(const T& value, int /*solution*/) override {
    if (const auto model = model_.lock()) Scalar<Source, T>::set(*model, name_.c_str(), value);
  }

 private:
  std::weak_ptr<GurobiModel> model_;
  std::string name_;
};

}  // namespace grb
