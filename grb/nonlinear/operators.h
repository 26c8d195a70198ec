#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <unordered_map>

#include "tav/math/fn/abstract.h"

namespace grb {

// Gurobi's opcode by function identifier, for the functions that have one.
const std::unordered_map<std::string_view, int>& opcodeTable();

// What is made of a call. Most calls are one node of the table; these are not, or not always.
enum class CallKind { plain, linear, power, constantPower, signedPower };

struct Operation {
  CallKind kind;
  int opcode;  // none for `linear`
};

// Finds the operation of a function by its identifier, of the functions of the catalogue by their address, since every
// call of every expression is looked up.
class Operations {
 public:
  // The one instance.
  static const Operations& get();

  // Null for a function that Gurobi has no operator for.
  const Operation* of(const tav::math::fn::Abstract<double>& function) const {
    const Operation* known = knownOf(&function);
    return known != nullptr ? known : lookUp(function.identifier());
  }

 private:
  using Function = tav::math::fn::Abstract<double>;
  struct Entry {
    const Function* function = nullptr;
    Operation operation{};
  };
  static constexpr int kBits = 7;
  static constexpr std::size_t kSize = std::size_t{1} << kBits;  // several times the catalogue

  Operations();
  const Operation* knownOf(const Function* function) const {
    std::size_t place = placeOf(function);
    while (known_[place].function != function) {
      if (known_[place].function == nullptr) return nullptr;
      place = (place + 1) % kSize;
    }
    return &known_[place].operation;
  }
  const Operation* lookUp(std::string_view identifier) const;
  // A multiplication spreads neighbours; its highest bits are the place.
  static std::size_t placeOf(const Function* function) {
    return reinterpret_cast<std::uintptr_t>(function) * 0x9E3779B97F4A7C15U >> (64 - kBits);
  }

  std::array<Entry, kSize> known_;
};

}  // namespace grb
