#include "brel/settings/settings.h"

#include <fmt/core.h>

#include <algorithm>

#include "brel/host.h"
#include "tav/attr/lib/range_info.h"

namespace brel::settings {
namespace {

// "command line: " or "run.opt, line 3: ", as far as it is known.
std::string place(const kavo_setting& setting) {
  if (*setting.source == '\0') return {};
  return setting.line > 0 ? fmt::format("{}, line {}: ", setting.source, setting.line)
                          : fmt::format("{}: ", setting.source);
}

[[noreturn]] void refuse(const kavo_setting& setting, const std::string& why) {
  throw tav::Exception("Setting", place(setting) + why, std::nullopt, "", tav::util::SourceLocation::here());
}

template <class T>
const char* kindOf() {
  return std::is_same_v<T, int> ? "a whole number" : "a number";
}

// "inf" is the largest number that a solver takes for infinity.
double finite(double value) {
  constexpr double kSolverInfinity = 1e100;
  return std::clamp(value, -kSolverInfinity, kSolverInfinity);
}
int finite(int value) { return value; }

template <class T>
T checkedNumber(const kavo_setting& setting, const tav::attr::lib::RangeInfo<T>& info) {
  T value{};
  if (parse(setting.value, value) && info.accepts(finite(value))) return finite(value);
  refuse(setting, fmt::format("{}={}: the value must be {} from {} to {}", info.name(), setting.value, kindOf<T>(),
                              info.lower(), info.upper()));
}

Checked checkOne(const kavo_setting& setting, const tav::attr::AbstractItemDict& known) {
  const auto info = known.info(std::string_view(setting.name));
  if (!info) refuse(setting, fmt::format("unknown option '{}'", setting.name));
  if (const auto* range = dynamic_cast<const tav::attr::lib::RangeInfo<int>*>(info.get())) {
    return {info->name(), checkedNumber(setting, *range)};
  }
  if (const auto* range = dynamic_cast<const tav::attr::lib::RangeInfo<double>*>(info.get())) {
    return {info->name(), checkedNumber(setting, *range)};
  }
  return {info->name(), std::string(setting.value)};
}

bool isOverridden(const kavo_setting* setting, const kavo_setting* end) {
  return std::any_of(setting + 1, end,
                     [&](const kavo_setting& later) { return tav::attr::isSameName(later.name, setting->name); });
}

}  // namespace

std::vector<Checked> check(const trpRec* host, const tav::attr::AbstractItemDict& known) {
  const kavo_setting* first = nullptr;
  std::size_t count = 0;
  checkHost(kavo_link_settings(host, &first, &count));
  std::vector<Checked> result;
  for (const kavo_setting* setting = first; setting != first + count; ++setting) {
    Checked checked = checkOne(*setting, known);
    if (!isOverridden(setting, first + count)) result.push_back(std::move(checked));
  }
  return result;
}

void apply(const std::vector<Checked>& settings, const tav::attr::AbstractItemDict& known) {
  for (const Checked& setting : settings) {
    const auto item = known.get(std::string_view(setting.name));
    std::visit([&](const auto& value) { item.as<std::decay_t<decltype(value)>>().set(value); }, setting.value);
  }
}

}  // namespace brel::settings
