#include "tav/idx/lib/range.h"

#include "tav/util/exception.h"

namespace tav::idx::lib {

Range::Range(int first, int size) : first_(first), size_(size) {
  if (size < 0) {
    throw CheckException::failedGreaterOrEqualTo(
        "size", size, 0, util::SourceLocation::here().inFunction("tav::idx::lib::Range::Range(int,int)"));
  }
}

void Range::copyTo(std::span<int> target) const {
  for (int i = 0; i < size_; ++i) target[static_cast<std::size_t>(i)] = at(i);
}

void Range::map(std::span<int> positions) const {
  for (int& position : positions) position = at(position);
}

}  // namespace tav::idx::lib
