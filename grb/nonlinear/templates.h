#pragma once

#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "tav/math/symbol.h"

namespace grb {

// How the arguments of a call are taken.
enum class Pattern {
  symbols,          // as they stand
  vector,           // one vector of variables, as a linear function
  constantFirst,    // only when the first one is a constant, which is captured second
  withCoefficients  // the second one is a vector of constants
};

// y = function(...), as one kind of a family.
struct Template {
  std::string_view id;
  int kind;
  std::string_view function;  // identifier
  Pattern pattern;
};

// The templates of a family, 1 to 5, in the order in which they are tried.
std::span<const Template> templatesOf(int family);

// What a template has captured: the result variable, and the arguments.
struct Match {
  int kind;
  tav::math::Symbol<double> result;
  std::vector<tav::math::Symbol<double>> arguments;
};

// The first template of a family that an expression, which is required to be 0, matches; nothing when none does. Which
// expressions do is said in gen_constr.h.
std::optional<Match> match(std::span<const Template> templates, const tav::math::Symbol<double>& expr);

}  // namespace grb
