#include "brel/settings/rewrite_settings.h"

#include <string_view>

#include "tav/attr/lib/range_info.h"

namespace brel::settings {

const std::vector<std::shared_ptr<const tav::attr::AbstractBaseInfo>>& rewriteSettings() {
  static const std::vector<std::shared_ptr<const tav::attr::AbstractBaseInfo>> kSettings{
      std::make_shared<tav::attr::lib::RangeInfo<double>>(
          "strictstep", 1, true, rewrite::RewriteOptions().strictStep, 1e-6, 1.0, std::nullopt,
          "By how much real numbers must differ where an expression says that they do: a < b is solved as a <= b minus "
          "this. Whole numbers differ by 1. Smaller values are closer to what is meant, but must stay well above the "
          "tolerances of the solver."),
  };
  return kSettings;
}

rewrite::RewriteOptions rewriteOptions(const Given& given) {
  rewrite::RewriteOptions options;
  const auto isOn = [&given](std::string_view name) { return wholeNumber(given, name).value_or(0) != 0; };
  options.ignoresBounds = isOn("iis") || isOn("feasopt");
  for (const Checked& setting : given.settings) {
    if (setting.row->owner == Owner::framework) options.strictStep = std::get<double>(setting.value);
  }
  return options;
}

}  // namespace brel::settings
