#include "grb/mip_starts.h"

#include <algorithm>

#include "tav/util/exception.h"

namespace grb {

int MipStarts::size() const {
  int size = 0;
  for (const auto& start : starts_) size = std::max(size, start.size());
  return size;
}

int MipStarts::itemCount() const {
  int count = 0;
  for (const auto& start : starts_) count = std::max(count, start.itemCount());
  return count;
}

void MipStarts::set(const tav::idx::List& list, std::span<const double> values, int solution) {
  if (solution == solutionCount()) starts_.push_back(makeStore<double>());
  at(solution).set(list, values);
}

const tav::attr::Container<double>& MipStarts::at(int solution) const {
  if (!hasSolution(solution)) {
    throw tav::CheckException::failedLessThan("solution", solution, {"solutionCount()", solutionCount()});
  }
  return starts_[static_cast<std::size_t>(solution)];
}

}  // namespace grb
