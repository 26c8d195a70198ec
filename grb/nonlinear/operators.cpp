#include "grb/nonlinear/operators.h"

#include "grb/gurobi/constants.h"
#include "tav/math/fn/catalogue.h"

namespace grb {
namespace {

namespace fn = tav::math::fn;

Operation operationOf(std::string_view identifier, int code) {
  if (code == opcode::kSignPow) return {CallKind::signedPower, code};
  if (code != opcode::kPow) return {CallKind::plain, code};
  return {identifier == fn::the<fn::PowerConst>().identifier() ? CallKind::constantPower : CallKind::power, code};
}

}  // namespace

const std::unordered_map<std::string_view, int>& opcodeTable() {
  static const std::unordered_map<std::string_view, int> kTable{
      {"tav:function:basic:Add", opcode::kPlus},
      {"tav:function:basic:Subtract", opcode::kMinus},
      {"tav:function:basic:Multiply", opcode::kMultiply},
      {"tav:function:basic:Divide", opcode::kDivide},
      {"tav:function:basic:Negate", opcode::kUminus},
      {"tav:function:exponential:Square", opcode::kSquare},
      {"tav:function:exponential:SquareRoot", opcode::kSqrt},
      {"tav:function:trigonometric:Sin", opcode::kSin},
      {"tav:function:trigonometric:Cos", opcode::kCos},
      {"tav:function:trigonometric:Tan", opcode::kTan},
      {"tav:function:exponential:Power", opcode::kPow},
      {"tav:function:exponential:Power0", opcode::kPow},
      {"tav:function:exponential:PowerConst", opcode::kPow},
      {"tav:function:exponential:Exp", opcode::kExp},
      {"tav:function:exponential:Log", opcode::kLog},
      {"tav:function:exponential:Log2", opcode::kLog2},
      {"tav:function:exponential:Log10", opcode::kLog10},
      {"tav:function:exponential:Sigmoid", opcode::kLogistic},
      {"tav:function:trigonometric:tanh", opcode::kTanh},
      {"tav:function:exponential:SignPower", opcode::kSignPow},
  };
  return kTable;
}

Operations::Operations() {
  const auto note = [this](const Function& function, const Operation& operation) {
    std::size_t place = placeOf(&function);
    while (known_[place].function != nullptr) place = (place + 1) % kSize;
    known_[place] = {&function, operation};
  };
  for (const auto& [identifier, code] : opcodeTable()) note(*fn::find(identifier), operationOf(identifier, code));
  note(fn::the<fn::Linear>(), {CallKind::linear, 0});
}

const Operations& Operations::get() {
  static const Operations kOperations;
  return kOperations;
}

const Operation* Operations::lookUp(std::string_view identifier) const {
  const Function* function = fn::find(identifier);
  return function != nullptr ? knownOf(function) : nullptr;
}

}  // namespace grb
