#pragma once

#include <string>
#include <vector>

namespace app::report {

// Maps values from low to high (low < high) to places on the paper.
struct Scale {
  double low, high;
  double lowPlace, highPlace;
  double operator()(double value) const { return lowPlace + (value - low) / (high - low) * (highPlace - lowPlace); }
};

struct Tick {
  double value;
  std::string label;
};

// Round values within [low, high], about `wanted` of them, with as many digits as tell them apart.
std::vector<Tick> ticks(double low, double high, int wanted);

// The unit in which a time of so many seconds is best read.
struct TimeUnit {
  const char* name;
  double seconds;
};
TimeUnit timeUnit(double seconds);

}  // namespace app::report
