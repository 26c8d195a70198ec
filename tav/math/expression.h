#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "tav/math/linear_function.h"
#include "tav/math/symbol_kind.h"
#include "tav/math/vector.h"
#include "tav/util/exception.h"

namespace tav::math {

template <class T>
class Symbol;
template <class T>
class Expression;

// A complete sub-expression of an expression: its last element is the root, before it stand its arguments one after
// another. Borrows: the expression must outlive it, and may grow meanwhile. Cheap to copy.
template <class T>
class ExpressionView {
 public:
  // The `count` elements from `start`. Raises tav::CheckException unless they are exactly one sub-expression.
  ExpressionView(const Expression<T>& expression, std::size_t start, std::size_t count);

  std::size_t start() const { return start_; }  // in the expression
  std::size_t count() const { return count_; }
  const Expression<T>& expression() const { return *expression_; }

  // The last element. Allocates nothing.
  Symbol<T> root() const;
  // The element at a position below count().
  Symbol<T> at(std::size_t position) const;

  // How many arguments the root takes; 0 when it is not a call.
  int argumentCount() const;

  // Where the first `count` arguments of the root call start within this view, in argument order; with `withEnd` also
  // where the last of them ends. Raises tav::CheckException when `count` exceeds argumentCount(). Takes time linear in
  // the number of arguments, whatever their size.
  std::vector<unsigned long long> argumentStarts(unsigned long long count, bool withEnd = false) const;

  // Calls f(view) for each argument of the root, the last one first. Allocates nothing; over a whole walk linear.
  template <class F>
  void forEachArgumentFromLast(F&& f) const {
    std::size_t end = start_ + count_ - 1;
    for (int k = argumentCount(); k > 0; --k) {
      const std::size_t size = expression_->sizeEndingAt(end - 1);
      end -= size;
      f(ExpressionView(expression_, end, size));
    }
  }

 private:
  friend class Expression<T>;
  ExpressionView(const Expression<T>* expression, std::size_t start, std::size_t count)
      : expression_(expression), start_(start), count_(count) {}

  const Expression<T>* expression_;
  std::size_t start_;
  std::size_t count_;
};

// Symbols in postfix order: the arguments of a call come first and the call follows them. One expression may hold many
// such sequences one after another (all rows of a block); take() ends one. Elements are small and know the size of
// their sub-expression, so that a walk from the root needs no search.
template <class T>
class Expression {
 public:
  Expression() = default;
  Expression(const Expression&) = delete;  // views point to it
  Expression& operator=(const Expression&) = delete;

  void reserve(std::size_t elements);

  void addVariable(unsigned long long space, int position) {
    addLeaf({SymbolKind::kVariable, position, {.space = space}});
  }
  void addConstant(T value) { addLeaf({SymbolKind::kConstant, 0, {.constant = value}}); }
  void addVector(std::shared_ptr<const Vector<T>> vector);
  void addLinear(LinearFunction<T> function);

  // A linear function as a sub-expression: the four elements of a call of fn::Linear, with the constant in its third
  // argument and an empty vector.
  void addLinearCall(LinearFunction<T> function);

  // A call of the last `argumentCount` sub-expressions that were added since the last take(). Raises
  // tav::CheckException when there are fewer, or when the function does not take that many.
  void addCall(const fn::Abstract<T>& function, int argumentCount);

  // Takes back the last `count` elements when all of them are constants added since the last take(), in their order;
  // otherwise nothing, and the result is empty.
  std::vector<T> takeBackConstants(int count);

  // Ends a sequence. Raises tav::CheckException unless exactly one sub-expression was added since the last take().
  ExpressionView<T> take();

  std::size_t size() const { return nodes_.size(); }  // number of elements
  Symbol<T> at(std::size_t position) const;           // position below size(), not checked

  // Number of elements of the sub-expression whose root stands at `position`, itself included; not checked.
  std::size_t sizeEndingAt(std::size_t position) const { return sizes_[position]; }
  int argumentCountAt(std::size_t position) const {
    return nodes_[position].kind == SymbolKind::kCall ? nodes_[position].number : 0;
  }

  // All elements as one sub-expression; raises tav::CheckException when they are not one.
  ExpressionView<T> whole() const { return {*this, 0, size()}; }

 private:
  // `number`: the position of a variable, the argument count of a call, the place in the side table of a linear
  // function or a vector.
  struct Node {
    SymbolKind kind;
    int number;
    union {
      T constant;
      unsigned long long space;
      const fn::Abstract<T>* function;
    } payload;
  };

  void add(const Node& node, std::size_t size);
  void addLeaf(const Node& node) { add(node, 1); }

  std::vector<Node> nodes_;
  std::vector<std::uint32_t> sizes_;
  std::vector<LinearFunction<T>> linear_;
  std::vector<std::shared_ptr<const Vector<T>>> vectors_;
  std::size_t open_ = 0;  // where the sequence that is being added starts
};

extern template class ExpressionView<double>;
extern template class Expression<double>;

}  // namespace tav::math

#include "tav/math/symbol.h"  // root() and at() give symbols
