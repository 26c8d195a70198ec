#include "tav/idx/lib/range.h"

#include <algorithm>
#include <numeric>

#include "tav/util/exception.h"

namespace tav::idx::lib {

Range::Range(int first, int size) : first_(first), size_(size) {
  if (size < 0) {
    throw CheckException::failedGreaterOrEqualTo(
        "size", size, 0, util::SourceLocation::here().inFunction("tav::idx::lib::Range::Range(int,int)"));
  }
}

void Range::copyTo(std::span<int> target) const { std::iota(target.begin(), target.begin() + size_, first_); }

void Range::map(std::span<int> positions) const {
  for (int& position : positions) position = at(position);
}

}  // namespace tav::idx::lib
