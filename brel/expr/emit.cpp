#include "brel/expr/emit.h"

#include <fmt/format.h>

#include <cmath>
#include <vector>

#include "brel/expr/operation.h"
#include "tav/math/fn/catalogue.h"
#include "tav/opt/support_exception.h"

namespace brel::expr {

namespace {

namespace fn = tav::math::fn;
using Function = fn::Abstract<double>;

// The function of the catalogue for operations that differ from it in name only; null for others.
const Function* sameFunction(Op op) {
  switch (op) {
    case Op::divide:
      return &fn::the<fn::Divide>();
    case Op::sqrt:
      return &fn::the<fn::SquareRoot>();
    case Op::exp:
      return &fn::the<fn::Exp>();
    case Op::log:
      return &fn::the<fn::Log>();
    case Op::log2:
      return &fn::the<fn::Log2>();
    case Op::log10:
      return &fn::the<fn::Log10>();
    case Op::sigmoid:
      return &fn::the<fn::Sigmoid>();
    case Op::tanh:
      return &fn::the<fn::TanH>();
    case Op::sin:
      return &fn::the<fn::Sin>();
    case Op::cos:
      return &fn::the<fn::Cos>();
    case Op::tan:
      return &fn::the<fn::Tan>();
    default:
      return nullptr;
  }
}

// Writes what waits on a stack: the last item first. A call is put there below its arguments, the first of which is the
// last item.
class Emitter {
 public:
  Emitter(const Graph& graph, std::uint64_t space, tav::math::Expression<double>& target)
      : graph_(graph), space_(space), target_(target) {}

  void emit(NodeId node) {
    push(node);
    while (!items_.empty()) {
      const Item item = items_.back();
      items_.pop_back();
      if (item.function != nullptr) {
        target_.addCall(*item.function, item.argumentCount);
      } else if (item.node < 0) {
        target_.addConstant(item.constant);
      } else {
        open(item.node);
      }
    }
  }

 private:
  // A call whose arguments are written, a node that is not, or a constant.
  struct Item {
    const Function* function = nullptr;
    int argumentCount = 0;
    NodeId node = -1;
    double constant = 0;
  };

  template <class F>
  void pushCall(int argumentCount) {
    items_.push_back({.function = &fn::the<F>(), .argumentCount = argumentCount});
  }
  void push(NodeId node) { items_.push_back({.node = node}); }
  void pushConstant(double value) { items_.push_back({.constant = value}); }

  void open(NodeId node) {
    const std::span<const NodeId> of = graph_.children(node);
    const double value = graph_.value(node);
    switch (graph_.op(node)) {
      case Op::constant:
        return target_.addConstant(value);
      case Op::variable:
        return target_.addVariable(space_, graph_.column(node));
      case Op::sum:
        return openSum(node);
      case Op::product:
        of[0] == of[1] ? pushCall<fn::Square>(1) : pushCall<fn::Multiply>(2);
        if (of[0] != of[1]) push(of[1]);
        return push(of[0]);
      case Op::power:
        pushCall<fn::Power>(2), pushConstant(value);
        return push(of[0]);
      case Op::exponential:
        pushCall<fn::Power>(2), push(of[0]);
        return pushConstant(value);
      case Op::generalPower:
        pushCall<fn::Exp>(1), pushCall<fn::Multiply>(2), pushCall<fn::Log>(1), push(of[0]);
        return push(of[1]);
      case Op::signedPower:
        pushCall<fn::SignPower>(2), pushConstant(value);
        return push(of[0]);
      case Op::logBase:
        pushCall<fn::Multiply>(2), pushCall<fn::Log>(1), push(of[0]);
        return pushConstant(1 / std::log(value));
      default:
        return openFunction(node);
    }
  }

  void openFunction(NodeId node) {
    const Op op = graph_.op(node);
    const Function* function = sameFunction(op);
    if (function == nullptr) {
      throw tav::opt::SupportException(
          fmt::format("The solver does not take {} within an expression.", operationName(op)),
          tav::util::SourceLocation::here());
    }
    const std::span<const NodeId> of = graph_.children(node);
    items_.push_back({.function = function, .argumentCount = static_cast<int>(of.size())});
    for (std::size_t k = of.size(); k-- > 0;) push(of[k]);
  }

  // A difference when one of two parts is negative, otherwise a sum of terms and constant.
  void openSum(NodeId node) {
    const std::span<const NodeId> of = graph_.children(node);
    const std::span<const double> coefficients = graph_.coefficients(node);
    const double constant = graph_.value(node);
    const std::size_t parts = of.size() + (constant != 0 ? 1 : 0);
    if (parts == 2) {
      const double second = constant != 0 ? constant : coefficients[1];
      if ((coefficients[0] < 0) != (second < 0)) return openDifference(node, second < 0);
    }
    if (parts > 1) pushCall<fn::Add>(static_cast<int>(parts));
    if (constant != 0) pushConstant(constant);
    for (std::size_t k = of.size(); k-- > 0;) pushTerm(of[k], coefficients[k]);
  }

  // Of a sum of two parts with different signs.
  void openDifference(NodeId node, bool isSecondNegative) {
    const std::span<const NodeId> of = graph_.children(node);
    const std::span<const double> coefficients = graph_.coefficients(node);
    const auto pushFirst = [&] { pushTerm(of[0], std::fabs(coefficients[0])); };
    const auto pushSecond = [&] {
      of.size() == 2 ? pushTerm(of[1], std::fabs(coefficients[1])) : pushConstant(std::fabs(graph_.value(node)));
    };
    pushCall<fn::Subtract>(2);
    isSecondNegative ? pushSecond() : pushFirst();
    isSecondNegative ? pushFirst() : pushSecond();
  }

  void pushTerm(NodeId node, double coefficient) {
    if (coefficient == -1) pushCall<fn::Negate>(1);
    if (std::fabs(coefficient) != 1) pushCall<fn::Multiply>(2);
    push(node);
    if (std::fabs(coefficient) != 1) pushConstant(coefficient);
  }

  const Graph& graph_;
  std::uint64_t space_;
  tav::math::Expression<double>& target_;
  std::vector<Item> items_;
};

}  // namespace

void emit(const Graph& graph, NodeId node, std::uint64_t space, tav::math::Expression<double>& target) {
  Emitter(graph, space, target).emit(node);
}

}  // namespace brel::expr
