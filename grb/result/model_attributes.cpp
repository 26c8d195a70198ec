#include "grb/result/model_attributes.h"

#include <array>

#include "grb/gurobi/constants.h"
#include "grb/result/attrib.h"
#include "tav/attr/lib/range_info.h"

namespace grb {
namespace {

constexpr std::array<std::string_view, 2> kWithheld{"LogToConsole", "LogFile"};

// The type of a parameter that is provided, otherwise "unknown".
int typeOf(const GurobiModel& model, const std::string& name) {
  for (const std::string_view withheld : kWithheld) {
    if (tav::attr::isSameName(withheld, name)) return paramtype::kUnknown;
  }
  return model.getParamType(name.c_str());
}

template <class T>
std::shared_ptr<const tav::attr::AbstractBaseInfo> rangeInfo(const std::string& name, const ParamInfo<T>& told) {
  return std::make_shared<tav::attr::lib::RangeInfo<T>>(name, 1, true, told.defaultValue, told.minimum, told.maximum,
                                                        std::nullopt, "");
}

std::shared_ptr<const tav::attr::AbstractBaseInfo> infoOf(const GurobiModel& model, const std::string& name) {
  switch (typeOf(model, name)) {
    case paramtype::kInt:
      return rangeInfo(name, model.getIntParamInfo(name.c_str()));
    case paramtype::kDouble:
      return rangeInfo(name, model.getDblParamInfo(name.c_str()));
    case paramtype::kString:
      return std::make_shared<tav::attr::lib::Info<std::string>>(
          name, 1, true, model.getStrParamInfo(name.c_str()).defaultValue, std::nullopt, "");
    default:
      return nullptr;
  }
}

}  // namespace

bool ModelAttributes::has(std::string_view name) const {
  const auto model = model_.lock();
  return model && typeOf(*model, std::string(name)) != paramtype::kUnknown;
}

tav::attr::BaseItem ModelAttributes::get(std::string_view name) const {
  const auto model = model_.lock();
  if (!model) return empty();
  const std::string parameter(name);
  const auto info = infoOf(*model, parameter);
  if (!info) return empty();
  switch (info->valueType()) {
    case tav::attr::ValueType::kInt:
      return std::make_shared<Attrib<kParameter, int>>(model, parameter, info);
    case tav::attr::ValueType::kDouble:
      return std::make_shared<Attrib<kParameter, double>>(model, parameter, info);
    default:
      return std::make_shared<Attrib<kParameter, std::string>>(model, parameter, info);
  }
}

std::shared_ptr<const tav::attr::AbstractBaseInfo> ModelAttributes::info(std::string_view name) const {
  const auto model = model_.lock();
  return model ? infoOf(*model, std::string(name)) : nullptr;
}

}  // namespace grb
