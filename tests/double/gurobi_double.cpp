#include "tests/double/gurobi_double.h"

#include <algorithm>
#include <atomic>
#include <stdexcept>
#include <utility>

namespace gurobi_double {
namespace {

std::atomic<GurobiDouble*> living{nullptr};

}  // namespace

std::shared_ptr<GurobiDouble> GurobiDouble::make() {
  const std::shared_ptr<GurobiDouble> made(new GurobiDouble);
  GurobiDouble* none = nullptr;
  if (!living.compare_exchange_strong(none, made.get())) throw std::logic_error("another double still lives");
  return made;
}

GurobiDouble::~GurobiDouble() {
  GurobiDouble* self = this;
  living.compare_exchange_strong(self, nullptr);
}

GurobiDouble& GurobiDouble::current() {
  GurobiDouble* const found = living.load();
  if (found == nullptr) throw std::logic_error("no double lives");
  return *found;
}

std::shared_ptr<const grb::Library> GurobiDouble::library() {
  return grb::Library::fromTable(recordingTable(), "Gurobi 13.0.2 (recording double)", shared_from_this());
}

std::vector<std::string> GurobiDouble::calls() const {
  const std::lock_guard lock(mutex_);
  std::vector<std::string> result;
  for (const Call& call : calls_) {
    if (!hidden_.contains(call.function)) result.push_back(call.text);
  }
  return result;
}

std::vector<std::string> GurobiDouble::takeCalls() {
  std::vector<std::string> result = calls();
  const std::lock_guard lock(mutex_);
  calls_.clear();
  return result;
}

int GurobiDouble::count(Fn function) const {
  const std::lock_guard lock(mutex_);
  return static_cast<int>(
      std::count_if(calls_.begin(), calls_.end(), [&](const Call& call) { return call.function == function; }));
}

void GurobiDouble::failCall(Fn function, int code, std::string message, int nth) {
  const std::lock_guard lock(mutex_);
  failure_ = Failure{function, nth, code, std::move(message)};
}

void GurobiDouble::failAnyCall(int nth, int code, std::string message) {
  const std::lock_guard lock(mutex_);
  failure_ = Failure{std::nullopt, nth, code, std::move(message)};
}

int GurobiDouble::enter(Fn function, std::string text, bool returnsCode) {
  int code = 0;
  {
    const std::lock_guard lock(mutex_);
    calls_.push_back({function, std::move(text)});
    const bool concerned = returnsCode && failure_ && failure_->function.value_or(function) == function;
    if (concerned && --failure_->remaining == 0) {
      code = failure_->code;
      failureMessage_ = failure_->message;
      lastFailed_ = function;
      failure_.reset();
    }
  }
  // Outside the lock: an action may well call Gurobi functions.
  if (const auto action = actions_.find(function); action != actions_.end()) action->second();
  return code;
}

void GurobiDouble::scriptAttr(const std::string& name, double value) {
  state_.scripted.numbers[lower(name.c_str())] = value;
}

void GurobiDouble::scriptAttr(const std::string& name, const std::string& value) {
  state_.scripted.texts[lower(name.c_str())] = value;
}

void GurobiDouble::scriptElements(const std::string& name, const std::vector<double>& values) {
  std::map<int, double>& stored = state_.scripted.elementNumbers[lower(name.c_str())];
  stored.clear();
  for (std::size_t i = 0; i < values.size(); ++i) stored[static_cast<int>(i)] = values[i];
}

void GurobiDouble::unscript(const std::string& name) {
  const std::string key = lower(name.c_str());
  state_.scripted.numbers.erase(key);
  state_.scripted.texts.erase(key);
  state_.scripted.elementNumbers.erase(key);
  state_.available.erase(key);
}

void GurobiDouble::scriptAvailable(const std::string& name, bool isAvailable) {
  state_.available[lower(name.c_str())] = isAvailable;
}

void GurobiDouble::defineParam(ParamDefinition definition) {
  const std::string key = lower(definition.name.c_str());
  if (!state_.params.contains(key)) state_.paramOrder.push_back(key);
  state_.params[key] = std::move(definition);
}

std::vector<std::string> GurobiDouble::openHandles() const {
  std::vector<std::string> result;
  for (const auto& env : state_.envs) {
    if (!env->freed) result.push_back(env->label);
  }
  for (const auto& model : state_.models) {
    if (!model->freed) result.push_back(model->label);
  }
  return result;
}

void GurobiDouble::fireLog(GRBmodel& model, std::string text) {
  if (model.logCallback != nullptr) model.logCallback(text.data(), model.logContext);
}

int GurobiDouble::fireCallback(GRBmodel& model, int where) {
  const bool asked = where == 0 || (model.callbackMask >> where & 1U) != 0;
  if (model.callback == nullptr || !asked) return 0;
  return model.callback(&model, this, where, model.callbackContext);
}

}  // namespace gurobi_double
