// The variables, rows, sets and constraints of a model as Python objects, in the order of their C indices.
#pragma once

#include <pybind11/pybind11.h>

namespace bridge {

/// Kinds of elements that attributes belong to, in gurobipy's numbering.
enum class Kind { kModel = 0, kVar = 1, kConstr = 2, kSos = 3, kQConstr = 4, kGenConstr = 5 };
inline constexpr int kNumKinds = 6;

/// The elements of one kind, pending ones included. An index outside throws Failure 10006 before Python is called.
class Elements {
 public:
  int size() const { return static_cast<int>(PyList_GET_SIZE(list_.ptr())); }
  void append(const pybind11::object& element) { list_.append(element); }
  void assign(pybind11::list list) { list_ = std::move(list); }

  /// The whole list itself: for reading only.
  const pybind11::list& all() const { return list_; }

  pybind11::object at(int index) const;

  /// `len` elements from `first` on. The whole range is the list itself, without a copy.
  pybind11::list slice(int first, int len) const;

  /// The elements at ind[0], ..., ind[len - 1], in that order. `ind` is not looked at when len is 0.
  pybind11::list pick(int len, const int* ind) const;

 private:
  void check(int index) const;

  pybind11::list list_;
};

}  // namespace bridge
