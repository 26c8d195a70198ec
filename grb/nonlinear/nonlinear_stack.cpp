#include "grb/nonlinear/nonlinear_stack.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory_resource>

#include "grb/data.h"
#include "grb/gurobi/constants.h"
#include "grb/nonlinear/counted_adds.h"
#include "grb/nonlinear/operators.h"
#include "grb/nonlinear/refusal.h"

namespace grb {
namespace {

using tav::math::Expression;
using tav::math::Symbol;
using tav::math::SymbolKind;

// Callers are told of the operation that they asked for, wherever in it a refusal comes from.
constexpr std::string_view kLoad =
    "static grb::NonlinearStack grb::NonlinearStack::load(const tav::math::Symbol<double>&, grb::Data*)";

[[noreturn]] void refuse(std::string message, const std::source_location& at = std::source_location::current()) {
  throw tav::opt::SupportException(std::move(message), nonlinearLocation(at).inFunction(kLoad));
}

}  // namespace

class NonlinearStack::Encoder {
 public:
  // All sub-expressions that are encoded are of one expression.
  Encoder(NonlinearStack& stack, const Expression<double>& expression, const Data& data)
      : stack_(stack), expression_(expression), space_(data.variableSpace()), variables_(data.variables.count()) {
    work_.reserve(kFrames);
  }

  void run(const tav::math::ExpressionView<double>& view, int parent) {
    push(view.start() + view.count() - 1, parent);
    while (!work_.empty()) {
      const Frame frame = work_.back();
      work_.pop_back();
      node(frame);
    }
  }

  // Gurobi takes a power of two varying operands and gives up when it solves.
  void finish() const {
    if (!hasOpenPowers_) return;
    std::vector<bool> varies(stack_.opcodes_.size());
    for (std::size_t i = varies.size(); i-- > 1;) {
      if (!varies[i] && stack_.opcodes_[i] != opcode::kVariable) continue;
      const auto parent = static_cast<std::size_t>(stack_.parents_[i]);
      if (varies[parent] && stack_.opcodes_[parent] == opcode::kPow) {
        refuse("A power needs a constant base or a constant exponent.");
      }
      varies[parent] = true;
    }
  }

 private:
  // A sub-expression that is still to come, by the position of its root, and the node that it belongs to.
  struct Frame {
    std::uint32_t root;  // expressions have no more elements than fit an int
    int parent;
  };

  void push(std::size_t root, int parent) { work_.push_back({static_cast<std::uint32_t>(root), parent}); }

  void node(const Frame& frame) {
    const Symbol<double> symbol = expression_.at(frame.root);
    if (symbol.is(SymbolKind::kCall)) return call(symbol.asCall(), frame);
    leaf(symbol, frame.parent);
  }

  void leaf(const Symbol<double>& symbol, int parent) {
    switch (symbol.kind()) {
      case SymbolKind::kVariable:
        return variable(symbol.asVariable(), parent);
      case SymbolKind::kConstant:
        return constant(symbol.asConstant(), parent);
      default:
        refuse("Expression contains unsupported symbol: " + std::string(kindName(symbol.kind())));
    }
  }

  void variable(const tav::math::Variable& variable, int parent) {
    if (variable.space != space_) refuse("Input expression contains unsupported variable.");
    if (variable.position < 0 || variable.position >= variables_) {
      refuse(fmt::format("Expression contains variable {}, which does not exist.", variable.position));
    }
    stack_.emit(opcode::kVariable, parent, variable.position);
  }

  void constant(double value, int parent) {
    if (!std::isfinite(value)) refuse(fmt::format("Expression contains the constant {}, which is not finite.", value));
    stack_.emit(opcode::kConstant, parent, value);
  }

  void call(const tav::math::Call<double>& call, const Frame& frame) {
    const Operation* operation = operations_.of(*call.function);
    if (operation == nullptr) refuse("Function not supported: " + std::string(call.function->identifier()));
    if (operation->kind == CallKind::plain) [[likely]] {
      return arguments(call.argumentCount, frame.root, stack_.emit(operation->opcode, frame.parent, kNoData));
    }
    if (operation->kind == CallKind::linear) return linear(frame);
    const Symbol<double> exponent = expression_.at(frame.root - 1);
    if (operation->kind == CallKind::constantPower && isWhole(exponent)) return wholePower(frame);
    if (operation->kind == CallKind::signedPower &&
        !(exponent.is(SymbolKind::kConstant) && exponent.asConstant() >= 1)) {
      refuse("A signed power needs a constant exponent of at least 1.");
    }
    hasOpenPowers_ = hasOpenPowers_ || !exponent.is(SymbolKind::kConstant);
    arguments(call.argumentCount, frame.root, stack_.emit(operation->opcode, frame.parent, kNoData));
  }

  static bool isWhole(const Symbol<double>& exponent) {
    if (!exponent.is(SymbolKind::kConstant)) return false;
    return exponent.asConstant() >= 0 && exponent.asConstant() == std::round(exponent.asConstant());
  }

  // Put on the stack the last one first, so that the first one is the next to be taken. Plain operands need no stack.
  void arguments(int count, std::size_t root, int parent) {
    const auto operands = static_cast<std::size_t>(count);
    if (expression_.sizeEndingAt(root) == operands + 1) {
      for (std::size_t i = root - operands; i < root; ++i) leaf(expression_.at(i), parent);
      return;
    }
    std::size_t next = root - 1;
    for (int k = 0; k < count; ++k) {
      push(next, parent);
      next -= expression_.sizeEndingAt(next);
    }
  }

  void wholePower(const Frame& frame) {
    const int exp = stack_.emit(opcode::kExp, frame.parent, kNoData);
    const int product = stack_.emit(opcode::kMultiply, exp, kNoData);
    const int log = stack_.emit(opcode::kLog, product, kNoData);
    push(frame.root - 1, product);
    push(frame.root - 2, log);
  }

  void linear(const Frame& frame) {
    const std::size_t elements = expression_.sizeEndingAt(frame.root);
    auto function = linearCall({expression_, frame.root + 1 - elements, elements});
    if (!function || function->space != space_) refuse("Input expression contains unsupported linear function.");
    if (!isUsable(*function, variables_)) {
      refuse("A linear function in an expression has a variable that does not exist or a number that is not finite.");
    }
    stack_.auxiliaries_.push_back({stack_.opcodes_.size(), *std::move(function)});
    stack_.emit(opcode::kVariable, frame.parent, kNoData);
  }

  static constexpr double kNoData = -1;
  static constexpr std::size_t kFrames = 10;

  NonlinearStack& stack_;
  const Expression<double>& expression_;
  std::uint64_t space_;
  int variables_;
  bool hasOpenPowers_ = false;  // a power whose exponent is no plain constant
  const Operations& operations_ = Operations::get();
  // Most expressions need no more frames than there is room for here.
  alignas(Frame) std::array<std::byte, kFrames * sizeof(Frame)> room_;
  std::pmr::monotonic_buffer_resource memory_{room_.data(), room_.size()};
  std::pmr::vector<Frame> work_{&memory_};
};

NonlinearStack NonlinearStack::load(const Symbol<double>& expr, Data* data) {
  NonlinearStack stack = encode(expr, *data);
  stack.addAuxiliaries(*data);
  return stack;
}

NonlinearStack NonlinearStack::encode(const Symbol<double>& expr, const Data& data) {
  if (!expr.isExpression()) refuse("Input must be expression.");
  const Summand whole{expr.asExpression()};
  return encodeSum({&whole, 1}, data);
}

NonlinearStack NonlinearStack::encodeSum(std::span<const Summand> summands, const Data& data) {
  NonlinearStack stack;
  if (summands.empty()) {
    stack.emit(opcode::kConstant, -1, 0);
    return stack;
  }
  const bool isSum = summands.size() > 1;
  std::size_t nodes = isSum ? 1 : 0;
  for (const Summand& summand : summands) nodes += summand.view.count() + (summand.isNegated ? 1 : 0);
  stack.reserve(nodes);
  Encoder encoder(stack, summands.front().view.expression(), data);
  const int sum = isSum ? stack.emit(opcode::kPlus, -1, -1) : -1;
  for (const Summand& summand : summands) {
    encoder.run(summand.view, summand.isNegated ? stack.emit(opcode::kUminus, sum, -1) : sum);
  }
  encoder.finish();
  return stack;
}

void NonlinearStack::addAuxiliaries(Data& data) {
  for (const auto& [node, function] : auxiliaries_) {
    const int row = addCountedRow(data, {function.positions, function.coefficients, function.constant}, 'E', nullptr);
    data_[node] = addFreeVariable(data, RowEntry{row, -1}, 0);
  }
  auxiliaries_.clear();
}

// Some room beyond the elements for what becomes several nodes.
void NonlinearStack::reserve(std::size_t nodes) {
  constexpr std::size_t kLeast = 25;
  const auto room = std::max(static_cast<std::size_t>(std::llround(1.2 * static_cast<double>(nodes))), kLeast);
  opcodes_.reserve(room);
  parents_.reserve(room);
  data_.reserve(room);
}

int NonlinearStack::emit(int opcode, int parent, double value) {
  const int node = static_cast<int>(opcodes_.size());
  opcodes_.push_back(opcode);
  parents_.push_back(parent);
  data_.push_back(value);
  return node;
}

}  // namespace grb
