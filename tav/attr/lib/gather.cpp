#include "tav/attr/lib/gather.h"

namespace tav::attr::lib {

void checkAccess(const idx::List& list, std::size_t values, std::size_t size) {
  const auto n = static_cast<std::size_t>(list.size());
  if (values < n) throw CheckException::failedGreaterOrEqualTo("values.size()", values, {"list.size()", n});
  if (n == 0) return;
  const int smallest = list.min();
  const int largest = list.max();
  if (smallest < 0) throw CheckException::failedGreaterOrEqualTo("list.min()", smallest, 0);
  if (static_cast<std::size_t>(largest) >= size) {
    throw CheckException::failedLessThan("list.max()", largest, {"size()", size});
  }
}

void checkIndex(int index, std::size_t size) {
  if (index < 0) throw CheckException::failedGreaterOrEqualTo("index", index, 0);
  if (static_cast<std::size_t>(index) >= size) throw CheckException::failedLessThan("index", index, {"size()", size});
}

}  // namespace tav::attr::lib
