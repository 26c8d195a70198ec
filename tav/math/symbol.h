#pragma once

#include <memory>
#include <utility>
#include <variant>

#include "tav/math/expression.h"
#include "tav/math/linear_function.h"
#include "tav/math/quadratic_function.h"
#include "tav/math/symbol_kind.h"
#include "tav/math/vector.h"

namespace tav::math {

// One symbol of a model function: a tagged value of exactly one kind. Test the kind before reading the payload: reading
// another kind's raises tav::CheckException. Making and copying one allocates nothing. Default: the constant 0.
template <class T>
class Symbol {
 public:
  using Kind = SymbolKind;

  Symbol() : Symbol(std::in_place_index<1>, T()) {}

  static Symbol ofVariable(unsigned long long space, int position) { return make<0>(Variable{space, position}); }
  static Symbol ofConstant(T value) { return make<1>(value); }
  static Symbol ofVector(std::shared_ptr<const Vector<T>> vector) { return make<2>(std::move(vector)); }
  static Symbol ofLinear(LinearFunction<T> function) { return make<3>(std::move(function)); }
  static Symbol ofCall(const fn::Abstract<T>& function, int argumentCount) {
    return make<4>(Call<T>{&function, argumentCount});
  }
  // A whole expression; it must be one sub-expression (Expression::whole()).
  static Symbol ofExpression(std::shared_ptr<const Expression<T>> expression) { return make<5>(std::move(expression)); }
  // A part of an expression. `owner` keeps the expression alive; empty, somebody else does.
  static Symbol ofView(ExpressionView<T> view, std::shared_ptr<const Expression<T>> owner = nullptr) {
    return make<6>(Part{view, std::move(owner)});
  }
  // Not null. A function that stands in an array of many is given as a pointer that shares the array's owner, or none
  // (the aliasing constructor): that allocates nothing.
  static Symbol ofQuadratic(std::shared_ptr<const QuadraticFunction<T>> function) {
    return make<7>(std::move(function));
  }

  Kind kind() const { return static_cast<Kind>(payload_.index()); }
  bool is(Kind kind) const { return this->kind() == kind; }
  // An expression or a view of one.
  bool isExpression() const { return is(Kind::kExpression) || is(Kind::kExpressionView); }

  const Variable& asVariable() const { return payload<0>(); }
  T asConstant() const { return payload<1>(); }
  const std::shared_ptr<const Vector<T>>& asVector() const { return payload<2>(); }
  const LinearFunction<T>& asLinear() const { return payload<3>(); }
  const Call<T>& asCall() const { return payload<4>(); }
  // What is to be walked, of either kind of expression. Valid as long as this symbol, or the expression.
  ExpressionView<T> asExpression() const { return is(Kind::kExpression) ? payload<5>()->whole() : payload<6>().view; }
  const QuadraticFunction<T>& asQuadratic() const { return *payload<7>(); }

 private:
  struct Part {
    ExpressionView<T> view;
    std::shared_ptr<const Expression<T>> owner;
  };
  // In the order of SymbolKind.
  using Payload = std::variant<Variable, T, std::shared_ptr<const Vector<T>>, LinearFunction<T>, Call<T>,
                               std::shared_ptr<const Expression<T>>, Part, std::shared_ptr<const QuadraticFunction<T>>>;

  template <std::size_t kIndex, class V>
  Symbol(std::in_place_index_t<kIndex> index, V&& value) : payload_(index, std::forward<V>(value)) {}

  template <std::size_t kIndex, class V>
  static Symbol make(V&& value) {
    return Symbol(std::in_place_index<kIndex>, std::forward<V>(value));
  }

  template <std::size_t kIndex>
  const auto& payload() const {
    const auto* found = std::get_if<kIndex>(&payload_);
    if (!found) [[unlikely]] {
      throw CheckException::failedEqualTo("kind", kindName(kind()), {"expected", kindName(static_cast<Kind>(kIndex))});
    }
    return *found;
  }

  Payload payload_;
};

}  // namespace tav::math
