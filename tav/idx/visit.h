#pragma once

#include "tav/idx/abstract_list.h"

namespace tav::idx {

// Calls f(position, element) for every element in order: position counts from 0 (where the value of the element stands
// in a parallel array). No virtual call per element; a contiguous list is not even written out.
template <class F>
void visit(const AbstractList& list, F&& f) {
  const int n = list.size();
  if (list.kind() == Kind::kContiguous) {
    const int first = list.front();
    for (int k = 0; k < n; ++k) f(k, first + k);
    return;
  }
  const Values values = list.values();
  const int* elements = values.data();
  for (int k = 0; k < n; ++k) f(k, elements[k]);
}

}  // namespace tav::idx
