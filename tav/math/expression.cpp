#include "tav/math/expression.h"

#include <limits>

#include "tav/math/fn/catalogue.h"

namespace tav::math {

template <class T>
ExpressionView<T>::ExpressionView(const Expression<T>& expression, std::size_t start, std::size_t count)
    : expression_(&expression), start_(start), count_(count) {
  if (count == 0) throw CheckException::failedGreaterThan("count", count, 0);
  if (start >= expression.size()) throw CheckException::failedLessThan("start", start, {"size()", expression.size()});
  if (count > expression.size() - start) {
    throw CheckException::failedLessOrEqualTo("count", count, {"size() - start", expression.size() - start});
  }
  const std::size_t actual = expression.sizeEndingAt(start + count - 1);
  if (count != actual) throw CheckException::failedEqualTo("count", count, {"size of the root", actual});
}

template <class T>
Symbol<T> ExpressionView<T>::root() const {
  return expression_->at(start_ + count_ - 1);
}

template <class T>
Symbol<T> ExpressionView<T>::at(std::size_t position) const {
  if (position >= count_) throw CheckException::failedLessThan("position", position, {"count()", count_});
  return expression_->at(start_ + position);
}

template <class T>
int ExpressionView<T>::argumentCount() const {
  return expression_->argumentCountAt(start_ + count_ - 1);
}

template <class T>
std::vector<unsigned long long> ExpressionView<T>::argumentStarts(unsigned long long count, bool withEnd) const {
  const auto available = static_cast<unsigned long long>(argumentCount());
  if (count > available) throw CheckException::failedLessOrEqualTo("count", count, {"argumentCount()", available});
  std::vector<unsigned long long> starts(available + 1);
  starts[available] = count_ - 1;
  auto next = starts.rbegin() + 1;
  forEachArgumentFromLast([&](const ExpressionView& argument) { *next++ = argument.start() - start_; });
  starts.resize(withEnd ? count + 1 : count);
  return starts;
}

template <class T>
void Expression<T>::reserve(std::size_t elements) {
  nodes_.reserve(elements);
  sizes_.reserve(elements);
}

template <class T>
void Expression<T>::addVector(std::shared_ptr<const Vector<T>> vector) {
  if (!vector) throw CheckException::failedTrue("bool(vector)");
  addLeaf({SymbolKind::kVector, static_cast<int>(vectors_.size()), {}});
  vectors_.push_back(std::move(vector));
}

template <class T>
void Expression<T>::addLinear(LinearFunction<T> function) {
  addLeaf({SymbolKind::kLinear, static_cast<int>(linear_.size()), {}});
  linear_.push_back(std::move(function));
}

template <class T>
void Expression<T>::addLinearCall(LinearFunction<T> function) {
  static const auto kEmpty = std::make_shared<const Vector<T>>();
  const T constant = std::exchange(function.constant, T());
  addLinear(std::move(function));
  addVector(kEmpty);
  addConstant(constant);
  addCall(fn::the<fn::Linear>(), 3);
}

template <class T>
void Expression<T>::addCall(const fn::Abstract<T>& function, int argumentCount) {
  if (!function.takes(argumentCount)) {
    throw CheckException::failedTrue(fmt::format("{} takes {} arguments", function.identifier(), argumentCount));
  }
  std::size_t begin = nodes_.size();
  for (int k = 0; k < argumentCount; ++k) {
    if (begin == open_)
      throw CheckException::failedLessOrEqualTo("argumentCount", argumentCount, {"open arguments", k});
    begin -= sizes_[begin - 1];
  }
  add({SymbolKind::kCall, argumentCount, {.function = &function}}, nodes_.size() - begin + 1);
}

template <class T>
std::vector<T> Expression<T>::takeBackConstants(int count) {
  const auto wanted = static_cast<std::size_t>(count);
  if (wanted > size() - open_) return {};
  const std::size_t first = size() - wanted;
  std::vector<T> values;
  values.reserve(wanted);
  for (std::size_t i = first; i < size(); ++i) {
    if (nodes_[i].kind != SymbolKind::kConstant) return {};
    values.push_back(nodes_[i].payload.constant);
  }
  nodes_.resize(first);
  sizes_.resize(first);
  return values;
}

template <class T>
ExpressionView<T> Expression<T>::take() {
  const ExpressionView<T> view(*this, open_, size() - open_);
  open_ = size();
  return view;
}

template <class T>
Symbol<T> Expression<T>::at(std::size_t position) const {
  const Node& node = nodes_[position];
  switch (node.kind) {
    case SymbolKind::kVariable:
      return Symbol<T>::ofVariable(node.payload.space, node.number);
    case SymbolKind::kConstant:
      return Symbol<T>::ofConstant(node.payload.constant);
    case SymbolKind::kVector:
      return Symbol<T>::ofVector(vectors_[static_cast<std::size_t>(node.number)]);
    case SymbolKind::kLinear:
      return Symbol<T>::ofLinear(linear_[static_cast<std::size_t>(node.number)]);
    default:
      return Symbol<T>::ofCall(*node.payload.function, node.number);
  }
}

template <class T>
void Expression<T>::add(const Node& node, std::size_t size) {
  constexpr auto kLargest = static_cast<std::size_t>(std::numeric_limits<int>::max());
  if (nodes_.size() >= kLargest) throw CheckException::failedLessThan("size()", nodes_.size(), kLargest);
  nodes_.push_back(node);
  sizes_.push_back(static_cast<std::uint32_t>(size));
}

template class ExpressionView<double>;
template class Expression<double>;

}  // namespace tav::math
