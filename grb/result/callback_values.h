#pragma once

#include <memory>
#include <span>

#include "grb/callback/live_callback_data.h"
#include "grb/gurobi/api.h"
#include "tav/attr/container.h"
#include "tav/attr/item.h"

namespace grb {

// Where values of a running solve come from: the callback that is being told, and the library that tells it.
struct CallbackSource {
  std::weak_ptr<LiveCallbackData> live;
  std::shared_ptr<const Api> api;

  // Asks Gurobi for `what`. Outside a callback, and when Gurobi refuses, `value` stays as it is.
  void get(int what, void* value) const;
  // Whether a callback with this code is being told right now.
  bool isAt(int where) const;
};

template <class T>
class CallbackAttrib;

// One double of the running solve; 0 when it cannot be read.
template <>
class CallbackAttrib<double> : public tav::attr::AbstractItem<double> {
 public:
  CallbackAttrib(CallbackSource source, int where, int what) : source_(std::move(source)), where_(where), what_(what) {}
  int solutionCount() const override { return source_.isAt(where_) ? 1 : 0; }
  double get(int /*solution*/) const override;

 private:
  CallbackSource source_;
  int where_, what_;
};

// A value per variable of the model in the running solve, such as the new incumbent. Gurobi hands out all values at
// once, so a few of them cost as much as all.
class CallbackDoubleAttributeContainer : public tav::attr::AbstractContainer<double> {
 public:
  CallbackDoubleAttributeContainer(CallbackSource source, int where, int what)
      : source_(std::move(source)), where_(where), what_(what) {}

  int size() const override;
  int solutionCount() const override { return source_.isAt(where_) ? 1 : 0; }
  double get(int index, int solution) const override;
  void get(const tav::idx::List& list, std::span<double> values, int solution) const override;
  // values: size() entries or more.
  void getAll(std::span<double> values, int solution) const override;

 private:
  CallbackSource source_;
  int where_, what_;
};

}  // namespace grb
