#include "grb/result/model_attributes.h"

#include "grb/result/attrib.h"
#include "grb/result/transforms.h"
#include "tav/attr/view/transform_item.h"
#include "tav/attr/view/with_info_item.h"

namespace grb {
namespace {

using Info = std::shared_ptr<const tav::attr::AbstractBaseInfo>;
using tav::attr::Item;

template <class T>
Item<T> withInfo(Item<T> item, const Info& info) {
  using View = tav::attr::view::WithInfoItem<Item<T>>;
  return Item<T>::template make<View>(std::move(item),
                                      std::static_pointer_cast<const tav::attr::AbstractInfo<T>>(info));
}

template <class T>
Item<T> parameter(const std::weak_ptr<GurobiModel>& model, const Info& info) {
  return Item<T>::template make<Attrib<kParameter, T>>(model, info->name());
}

template <class F>
Item<std::string> seenThrough(const Item<std::string>& item) {
  return Item<std::string>::make<tav::attr::view::TransformItem<Item<std::string>, F>>(item);
}

Item<std::string> textParameter(const std::weak_ptr<GurobiModel>& model, const Info& info) {
  const auto item = parameter<std::string>(model, info);
  return isSecret(*info) ? seenThrough<transform::Secret>(item) : seenThrough<transform::ParameterText>(item);
}

}  // namespace

std::optional<Entry> ModelAttributes::entry(int key) const { return model_.expired() ? std::nullopt : entryOf(key); }

std::vector<int> ModelAttributes::keys() const { return model_.expired() ? std::vector<int>() : entryKeys(); }

std::string ModelAttributes::name(int key) const {
  const auto found = entry(key);
  return found ? found->info->name() : "";
}

Info ModelAttributes::info(int key) const {
  const auto found = entry(key);
  return found ? found->info : nullptr;
}

std::optional<int> ModelAttributes::find(std::string_view wanted) const {
  if (model_.expired()) return std::nullopt;
  const auto found = findEntry(wanted);
  return found ? std::optional<int>(found->key()) : std::nullopt;
}

tav::attr::BaseItem ModelAttributes::get(int key) const {
  const auto found = entry(key);
  if (!found) return empty();
  switch (found->kind) {
    case EntryKind::intOption:
      return options_.item(static_cast<IntOption>(found->index));
    case EntryKind::fileOption:
      return options_.item(static_cast<FileOption>(found->index));
    case EntryKind::doubleParameter:
      return withInfo(parameter<double>(model_, found->info), found->info);
    case EntryKind::intParameter:
      return withInfo(parameter<int>(model_, found->info), found->info);
    default:
      return withInfo(textParameter(model_, found->info), found->info);
  }
}

}  // namespace grb
