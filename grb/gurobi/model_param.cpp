#include <array>

#include "grb/gurobi/constants.h"
#include "grb/gurobi/model.h"

namespace grb {

int GurobiModel::getIntParam(const char* name) {
  updateIfPending();
  int value = 0;
  check(api_->GRBgetintparam(envInUse(), name, &value), "GRBgetintparam");
  return value;
}

double GurobiModel::getDblParam(const char* name) {
  updateIfPending();
  double value = 0;
  check(api_->GRBgetdblparam(envInUse(), name, &value), "GRBgetdblparam");
  return value;
}

std::string GurobiModel::getStrParam(const char* name) {
  updateIfPending();
  std::array<char, kStringParamSize> value{};
  check(api_->GRBgetstrparam(envInUse(), name, value.data()), "GRBgetstrparam");
  return value.data();
}

void GurobiModel::setIntParam(const char* name, int value) {
  dirty_ = true;
  check(api_->GRBsetintparam(envInUse(), name, value), "GRBsetintparam");
}

void GurobiModel::setDblParam(const char* name, double value) {
  dirty_ = true;
  check(api_->GRBsetdblparam(envInUse(), name, value), "GRBsetdblparam");
}

void GurobiModel::setStrParam(const char* name, const char* value) {
  dirty_ = true;
  check(api_->GRBsetstrparam(envInUse(), name, value), "GRBsetstrparam");
}

ParamInfo<int> GurobiModel::getIntParamInfo(const char* name) const {
  ParamInfo<int> info;
  check(api_->GRBgetintparaminfo(envInUse(), name, &info.value, &info.minimum, &info.maximum, &info.defaultValue),
        "GRBgetintparaminfo");
  return info;
}

ParamInfo<double> GurobiModel::getDblParamInfo(const char* name) const {
  ParamInfo<double> info;
  check(api_->GRBgetdblparaminfo(envInUse(), name, &info.value, &info.minimum, &info.maximum, &info.defaultValue),
        "GRBgetdblparaminfo");
  return info;
}

StringParamInfo GurobiModel::getStrParamInfo(const char* name) const {
  std::array<char, kStringParamSize> value{};
  std::array<char, kStringParamSize> defaultValue{};
  check(api_->GRBgetstrparaminfo(envInUse(), name, value.data(), defaultValue.data()), "GRBgetstrparaminfo");
  return {value.data(), defaultValue.data()};
}

int GurobiModel::getNumParams() const { return api_->GRBgetnumparams(envInUse()); }

std::string GurobiModel::getParamName(int i) const {
  char* name = nullptr;
  check(api_->GRBgetparamname(envInUse(), i, &name), "GRBgetparamname");
  return name != nullptr ? name : "";
}

int GurobiModel::getParamType(const char* name) const { return api_->GRBgetparamtype(envInUse(), name); }

void GurobiModel::readParams(const char* filename) {
  check(api_->GRBreadparams(envInUse(), filename), "GRBreadparams");
}

void GurobiModel::writeParams(const char* filename) const {
  check(api_->GRBwriteparams(envInUse(), filename), "GRBwriteparams");
}

bool GurobiModel::isGpuSupported() const { return api_->GRBisgpusupported(envInUse()) != 0; }

}  // namespace grb
