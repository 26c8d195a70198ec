#include "bench/encode/shapes.h"

#include "tav/math/fn/catalogue.h"

namespace bench {
namespace {

namespace fn = tav::math::fn;
using tav::math::Expression;

void chain(Expression<double>& target, std::uint64_t space, std::size_t n) {
  target.addVariable(space, 0);
  for (std::size_t i = 1; i < n; ++i) {
    target.addCall(i % 2 == 0 ? static_cast<const fn::Abstract<double>&>(fn::the<fn::Sin>()) : fn::the<fn::Exp>(), 1);
  }
}

void wideSum(Expression<double>& target, std::uint64_t space, std::size_t n) {
  for (std::size_t i = 1; i < n; ++i) {
    if (i % 2 == 0) {
      target.addConstant(static_cast<double>(i));
    } else {
      target.addVariable(space, static_cast<int>(i % 10));
    }
  }
  target.addCall(fn::the<fn::Add>(), static_cast<int>(n) - 1);
}

// 0 - x * log(y) - z * log(u) - ...
void formula(Expression<double>& target, std::uint64_t space, std::size_t n) {
  constexpr std::size_t kPerSummand = 5;
  target.addConstant(0);
  for (std::size_t i = 1; i < n; i += kPerSummand) {
    target.addVariable(space, static_cast<int>(i % 10));
    target.addVariable(space, static_cast<int>((i + 3) % 10));
    target.addCall(fn::the<fn::Log>(), 1);
    target.addCall(fn::the<fn::Multiply>(), 2);
    target.addCall(fn::the<fn::Subtract>(), 2);
  }
}

}  // namespace

const Shape kShapes[3]{{"chain", chain}, {"wide sum", wideSum}, {"formula", formula}};

}  // namespace bench
