#include "brel/settings/plugin_values.h"

#include "tav/attr/lib/range_info.h"

namespace brel::settings {
namespace {

using Value = std::variant<int, double, std::string>;

template <class T>
Value initial(const tav::attr::AbstractBaseInfo& info) {
  const auto& typed = dynamic_cast<const tav::attr::AbstractInfo<T>&>(info);
  return typed.hasDefault() ? typed.getDefault() : T{};
}

Value initial(const tav::attr::AbstractBaseInfo& info) {
  switch (info.valueType()) {
    case tav::attr::ValueType::kInt:
      return initial<int>(info);
    case tav::attr::ValueType::kDouble:
      return initial<double>(info);
    default:
      return initial<std::string>(info);
  }
}

}  // namespace

PluginValues::PluginValues(const Table& table, const Given& given) {
  for (const PluginSetting& setting : table.plugins()) values_.emplace(setting.attribute, initial(*setting.info));
  for (const Checked& checked : given.settings) {
    if (checked.row->owner != Owner::plugin) continue;
    const PluginAttrib attribute = table.plugins()[static_cast<std::size_t>(checked.row->key)].attribute;
    values_[attribute] = checked.value;
    headings_[attribute] = checked.place + checked.row->name() + ": ";
  }
}

std::string PluginValues::heading(PluginAttrib attribute) const {
  const auto found = headings_.find(attribute);
  return found == headings_.end() ? std::string() : found->second;
}

}  // namespace brel::settings
