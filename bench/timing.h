#pragma once

#include <time.h>

#include <algorithm>
#include <cstddef>
#include <vector>

namespace bench {

// Processor time of this thread in seconds: other programs on the machine do not count.
inline double now() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

inline double median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2), values.end());
  return values[values.size() / 2];
}

}  // namespace bench
