#pragma once

#include <memory>
#include <type_traits>

#include "grb/data.h"
#include "grb/result/callback_values.h"
#include "tav/attr/view/transform_container.h"
#include "tav/attr/view/transform_item.h"

namespace grb {

inline CallbackSource callbackSource(const Data& data) {
  const auto library = data.model->library();
  return {data.callbacks.live, std::shared_ptr<const Api>(library, &library->api())};
}

// A container or an item seen through a transform.
template <class F, class C>
  requires std::is_base_of_v<tav::attr::AbstractBaseContainer, C>
tav::attr::BaseContainer transformed(std::shared_ptr<C> container) {
  using Inner = tav::attr::Container<typename F::Inner>;
  return std::make_shared<tav::attr::view::TransformContainer<Inner, F>>(Inner(std::move(container)));
}

template <class F, class I>
  requires std::is_base_of_v<tav::attr::AbstractBaseItem, I>
tav::attr::BaseItem transformed(std::shared_ptr<I> item) {
  using Inner = tav::attr::Item<typename F::Inner>;
  return std::make_shared<tav::attr::view::TransformItem<Inner, F>>(Inner(std::move(item)));
}

}  // namespace grb
