#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <optional>
#include <vector>

#include "kavo/api/guard.h"

namespace kavo::api {

// The results of the last solve; Error (KAVO_NO_RESULT) before one.
inline const Results& resultsOf(const trpRec* model) {
  const trpRec& record = need(model);
  if (!record.results) throw Error(KAVO_NO_RESULT, "the model has not been solved");
  return *record.results;
}

// A point of its pool; Error (KAVO_NO_RESULT) when there is no such point.
inline const PoolPoint& poolPointOf(const trpRec* model, std::size_t index) {
  const auto& pool = resultsOf(model).pool;
  if (index < pool.size()) return pool[index];
  throw Error(KAVO_NO_RESULT, fmt::format("there is no point {} in the pool: it has {}", index, pool.size()));
}

// Empties what a function that lends an array is to fill, so that it is empty when it fails.
template <class T>
void clear(const T** values, std::size_t* count) {
  need(values, "the address of the values") = nullptr;
  need(count, "the address of the count") = 0;
}

// Lends an array.
template <class T>
void lend(const std::vector<T>& array, const T** values, std::size_t* count) {
  *values = array.data();
  *count = array.size();
}

// The same for one that may not be there; Error (KAVO_NO_RESULT) when it is not. `what` names it.
template <class T>
void lend(const std::optional<std::vector<T>>& array, const char* what, const T** values, std::size_t* count) {
  if (!array) throw Error(KAVO_NO_RESULT, fmt::format("the last solve gave no {}", what));
  lend(*array, values, count);
}

}  // namespace kavo::api
