#include "grb/adder/domain_types.h"

#include <array>
#include <span>

#include "tav/opt/support_exception.h"

namespace grb {
namespace {

template <class T>
T map(std::span<const T> table, int type, tav::util::SourceLocation at = tav::util::SourceLocation::here()) {
  if (type < 0 || type >= static_cast<int>(table.size())) {
    throw tav::opt::SupportException("Domain type not supported.", at);
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
