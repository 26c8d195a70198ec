#include "grb/adder/domain_types.h"

#include <array>
#include <source_location>
#include <span>

#include "grb/adder/adder.h"
#include "tav/opt/support_exception.h"

namespace grb {
namespace {

template <class T>
T map(std::span<const T> table, int type, const std::source_location& at = std::source_location::current()) {
  if (type < 0 || type >= static_cast<int>(table.size())) [[unlikely]] {
    throw tav::opt::SupportException("Domain type not supported.", adderLocation(at));
  }
  return table[static_cast<std::size_t>(type)];
}

}  // namespace

char varTypeToGurobi(unsigned char type) {
  static constexpr std::array kTypes{'C', 'I', 'S', 'N'};
  return map<char>(kTypes, type);
}

// Letters and not the symbols that Gurobi reads back.
char constrTypeToGurobi(int type) {
  static constexpr std::array kSenses{'G', 'L', 'E'};
  return map<char>(kSenses, type);
}

int objTypeToGurobi(int type) {
  static constexpr std::array kSenses{1, -1};
  return map<int>(kSenses, type);
}

}  // namespace grb
