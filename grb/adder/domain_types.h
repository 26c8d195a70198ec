#pragma once

#include <array>
#include <cstddef>
#include <source_location>

namespace grb {

// Raises the support error "Domain type not supported.".
[[noreturn]] void refuseDomainType(const std::source_location& at);

// An entry of a table of Gurobi's terms by domain type; any number beyond the table is refused.
template <class T, std::size_t kSize>
T gurobiTerm(const std::array<T, kSize>& table, int type,
             const std::source_location& at = std::source_location::current()) {
  if (type < 0 || type >= static_cast<int>(kSize)) [[unlikely]]
    refuseDomainType(at);
  return table[static_cast<std::size_t>(type)];
}

inline constexpr std::array kVariableTypes{'C', 'I', 'S', 'N'};
inline constexpr std::array kRowSenses{'G', 'L', 'E'};  // letters, not the symbols that Gurobi reads back
inline constexpr std::array kModelSenses{1, -1};
inline constexpr std::array kSosTypes{1, 2};
inline constexpr std::array kSwitchValues{0, 1};

// 0 continuous, 1 integer, 2 semicontinuous, 3 semi-integer.
inline char varTypeToGurobi(unsigned char type) { return gurobiTerm(kVariableTypes, type); }
// 0 greater or equal, 1 less or equal, 2 equal.
inline char constrTypeToGurobi(int type) { return gurobiTerm(kRowSenses, type); }
// 0 minimise, 1 maximise.
inline int objTypeToGurobi(int type) { return gurobiTerm(kModelSenses, type); }
// An ordered set of type 0 is Gurobi's type 1, one of type 1 is its type 2.
inline int sosTypeToGurobi(int type) { return gurobiTerm(kSosTypes, type); }
// The value of the linked variable that switches a row on: for a link of type 2 it is 0, of type 3 it is 1.
inline int indicTypeToGurobi(int type) { return gurobiTerm(kSwitchValues, type < 2 ? -1 : type - 2); }

}  // namespace grb
