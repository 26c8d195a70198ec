#pragma once

#include <algorithm>
#include <span>

#include "tav/idx/list.h"
#include "tav/idx/visit.h"
#include "tav/util/exception.h"

// Reads and writes of the listed entries of a contiguous array, shared by the containers that hold one.
namespace tav::attr::lib {

// Raises tav::CheckException unless every index of the list is at least 0 and below `size`, and `values` (the length of
// the caller's span) covers the list.
void checkAccess(const idx::List& list, std::size_t values, std::size_t size);

// Raises tav::CheckException unless 0 <= index < size.
void checkIndex(int index, std::size_t size);

// target[k] = source[list[k]].
template <class T>
void gather(const idx::List& list, std::span<const T> source, std::span<T> target) {
  checkAccess(list, target.size(), source.size());
  if (list.kind() == idx::Kind::kContiguous) {
    std::copy_n(source.begin() + list.front(), list.size(), target.begin());
  } else {
    idx::visit(
        list, [&](int k, int index) { target[static_cast<std::size_t>(k)] = source[static_cast<std::size_t>(index)]; });
  }
}

// target[list[k]] = source[k].
template <class T>
void scatter(const idx::List& list, std::span<const T> source, std::span<T> target) {
  checkAccess(list, source.size(), target.size());
  if (list.kind() == idx::Kind::kContiguous) {
    std::copy_n(source.begin(), list.size(), target.begin() + list.front());
  } else {
    idx::visit(
        list, [&](int k, int index) { target[static_cast<std::size_t>(index)] = source[static_cast<std::size_t>(k)]; });
  }
}

}  // namespace tav::attr::lib
