#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "tav/attr/lib/span_container.h"

namespace brel::load {

// A container that keeps its values.
template <class T>
tav::attr::Container<T> owned(std::vector<T> values) {
  const auto kept = std::make_shared<const std::vector<T>>(std::move(values));
  return tav::attr::lib::viewOf<T>(*kept, kept);
}

}  // namespace brel::load
