#include "grb/result/callback_values.h"

#include <algorithm>
#include <vector>

#include "tav/attr/lib/gather.h"

namespace grb {

void CallbackSource::get(int what, void* value) const {
  if (const auto callback = live.lock()) api->GRBcbget(callback->cbdata, callback->where, what, value);
}

bool CallbackSource::isAt(int where) const {
  const auto callback = live.lock();
  return callback && callback->where == where;
}

double CallbackAttrib<double>::get(int /*solution*/) const {
  double value = 0;
  source_.get(what_, &value);
  return value;
}

int CallbackDoubleAttributeContainer::size() const {
  const auto callback = source_.live.lock();
  int count = 0;
  if (callback && callback->model) source_.api->GRBgetintattr(callback->model, "NumVars", &count);
  return count;
}

double CallbackDoubleAttributeContainer::get(int index, int solution) const {
  double value = 0;
  get(tav::idx::lib::Range(index, 1), std::span<double>(&value, 1), solution);
  return value;
}

void CallbackDoubleAttributeContainer::get(const tav::idx::List& list, std::span<double> values, int solution) const {
  std::vector<double> all(static_cast<std::size_t>(size()));
  if (all.empty()) return;  // outside a callback
  getAll(all, solution);
  tav::attr::lib::gather<double>(list, all, values);
}

void CallbackDoubleAttributeContainer::getAll(std::span<double> values, int /*solution*/) const {
  if (values.size() < static_cast<std::size_t>(size())) {
    throw tav::CheckException::failedGreaterOrEqualTo("values.size()", values.size(), {"size()", size()});
  }
  source_.get(what_, values.data());
}

}  // namespace grb
