#include "app/report/axis.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

namespace app::report {

namespace {

// The round number (1, 2 or 5 times a power of ten) that is no smaller.
double roundStep(double step) {
  const double power = std::pow(10.0, std::floor(std::log10(step)));
  for (const double factor : {1.0, 2.0, 5.0}) {
    if (factor * power >= step * (1 - 1e-9)) return factor * power;
  }
  return 10 * power;
}

std::string label(double value, double step, double largest) {
  if (largest < 1e7 && step > 1e-7) {
    const int decimals = std::max(0, -static_cast<int>(std::floor(std::log10(step) + 1e-9)));
    return fmt::format("{:.{}f}", value, decimals);
  }
  const int digits = static_cast<int>(std::ceil(std::log10(largest / step))) + 1;
  return fmt::format("{:.{}g}", value, std::clamp(digits, 2, 15));
}

}  // namespace

std::vector<Tick> ticks(double low, double high, int wanted) {
  const double step = roundStep((high - low) / wanted);
  const double largest = std::max(std::abs(low), std::abs(high));
  std::vector<Tick> found;
  const double first = std::ceil(low / step - 1e-9), last = std::floor(high / step + 1e-9);
  const int count = static_cast<int>(std::min(100.0, last - first + 1));
  for (int i = 0; i < count; ++i) {
    const double multiple = first + i;
    const double value = multiple == 0 ? 0 : multiple * step;  // no -0
    found.push_back({value, label(value, step, largest)});
  }
  return found;
}

TimeUnit timeUnit(double seconds) {
  if (seconds < 300) return {"seconds", 1};
  if (seconds < 3 * 3600.0) return {"minutes", 60};
  return {"hours", 3600};
}

}  // namespace app::report
