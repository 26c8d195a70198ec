#include "tav/idx/list.h"

namespace tav::idx {

namespace {

// Never freed: lists may outlive every static object.
const std::shared_ptr<const AbstractList>& emptyList() {
  static const auto* const kEmpty = new std::shared_ptr<const AbstractList>(std::make_shared<const List::EmptyList>());
  return *kEmpty;
}

}  // namespace

List::List() : list_(emptyList()) {}

List::List(const lib::Range& range) : list_(std::make_shared<const lib::Range>(range)) {}

List::List(std::shared_ptr<const AbstractList> list) : list_(std::move(list)) {
  if (!list_) list_ = emptyList();
}

}  // namespace tav::idx
