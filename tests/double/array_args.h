// Which arguments of the Gurobi functions are arrays, and where their lengths stand.
#pragma once

#include <array>

#include "grb/gurobi/api.h"

namespace gurobi_double {

/// Lengths that are no arguments: one entry per variable or linear row of the model, queued ones included.
inline constexpr int kPerVariable = -1;
inline constexpr int kPerRow = -2;

/// One input array: the place of the argument, counted from 0, and the place of its length.
struct ArrayArg {
  int place;
  int length;
};

/// The input arrays of a function. Buffers that the function fills are none.
template <grb::Fn>
inline constexpr std::array<ArrayArg, 0> kArrayArgs{};

// Rows of functions that share one shape.
inline constexpr std::array kMembers{ArrayArg{4, 3}};
inline constexpr std::array kListRead{ArrayArg{3, 2}};
inline constexpr std::array kListWrite{ArrayArg{3, 2}, ArrayArg{4, 2}};
inline constexpr std::array kTriplets{ArrayArg{2, 1}, ArrayArg{3, 1}, ArrayArg{4, 1}};

using grb::Fn;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddvar>{ArrayArg{2, 1}, ArrayArg{3, 1}};
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddvars>{ArrayArg{3, 1}, ArrayArg{4, 2}, ArrayArg{5, 2}, ArrayArg{6, 1},
                                                       ArrayArg{7, 1}, ArrayArg{8, 1}, ArrayArg{9, 1}, ArrayArg{10, 1}};
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddconstr>{ArrayArg{2, 1}, ArrayArg{3, 1}};
template <>
inline constexpr std::array kArrayArgs<Fn::GRBXchgcoeffs> = kTriplets;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddqpterms> = kTriplets;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddqconstr>{ArrayArg{2, 1}, ArrayArg{3, 1}, ArrayArg{5, 4},
                                                          ArrayArg{6, 4}, ArrayArg{7, 4}};
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddsos>{ArrayArg{3, 1}, ArrayArg{4, 1}, ArrayArg{5, 2}, ArrayArg{6, 2}};
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddgenconstrMax> = kMembers;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddgenconstrMin> = kMembers;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddgenconstrAnd> = kMembers;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddgenconstrOr> = kMembers;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddgenconstrNorm> = kMembers;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddgenconstrNL>{ArrayArg{4, 3}, ArrayArg{5, 3}, ArrayArg{6, 3}};
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddgenconstrIndicator>{ArrayArg{5, 4}, ArrayArg{6, 4}};
template <>
inline constexpr std::array kArrayArgs<Fn::GRBaddgenconstrPoly>{ArrayArg{5, 4}};
template <>
inline constexpr std::array kArrayArgs<Fn::GRBsetintattrarray>{ArrayArg{4, 3}};
template <>
inline constexpr std::array kArrayArgs<Fn::GRBsetdblattrarray>{ArrayArg{4, 3}};
template <>
inline constexpr std::array kArrayArgs<Fn::GRBgetintattrlist> = kListRead;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBgetdblattrlist> = kListRead;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBgetcharattrlist> = kListRead;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBsetintattrlist> = kListWrite;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBsetdblattrlist> = kListWrite;
template <>
inline constexpr std::array kArrayArgs<Fn::GRBfeasrelax>{ArrayArg{3, kPerVariable}, ArrayArg{4, kPerVariable},
                                                         ArrayArg{5, kPerRow}};
template <>
inline constexpr std::array kArrayArgs<Fn::GRBtunemodels>{ArrayArg{2, 1}};

/// The place of the length of the array at a place; nothing (kNoArray) when there is no input array.
inline constexpr int kNoArray = -3;
template <Fn kFn>
constexpr int lengthPlace(int place) {
  for (const ArrayArg& array : kArrayArgs<kFn>) {
    if (array.place == place) return array.length;
  }
  return kNoArray;
}

}  // namespace gurobi_double
