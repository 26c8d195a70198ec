#pragma once

#include <span>
#include <string_view>

#include "tav/math/fn/basic.h"
#include "tav/math/fn/exponential.h"
#include "tav/math/fn/logic.h"
#include "tav/math/fn/norm.h"
#include "tav/math/fn/structural.h"
#include "tav/math/fn/trigonometric.h"

namespace tav::math::fn {

// The one instance of a function class, to build calls with: addCall(the<Add>(), 3). Lives as long as the program.
template <class F>
const F& the() {
  static const F kInstance;
  return kInstance;
}

// All functions that can be looked up.
std::span<const Abstract<double>* const> catalogue();

// The function with exactly this identifier (case counts), or null.
const Abstract<double>* find(std::string_view identifier);

}  // namespace tav::math::fn
