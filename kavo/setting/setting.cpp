#include "kavo/setting/setting.h"

#include <fmt/format.h>

#include <algorithm>

#include "kavo/error.h"

namespace kavo {

namespace {

std::string needText(const char* text, const char* what) {
  if (text == nullptr) throw Error(KAVO_INVALID, fmt::format("the {} of a setting is null", what));
  return text;
}

char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

SettingInfo::SettingInfo(const kavo_setting_info& given)
    : name_(needText(given.name, "name")),
      default_(given.default_text != nullptr ? given.default_text : ""),
      group_(needText(given.group, "group")),
      help_(needText(given.help, "help")),
      hasDefault_(given.default_text != nullptr),
      type_(given.type),
      lower_(given.lower),
      upper_(given.upper) {
  if (name_.empty()) throw Error(KAVO_INVALID, "the name of a setting is empty");
  if (type_ < KAVO_SETTING_INT || type_ > KAVO_SETTING_TEXT) {
    throw Error(KAVO_INVALID, fmt::format("there is no type {} of settings", type_));
  }
}

kavo_setting_info SettingInfo::view() const {
  return {name_.c_str(),  type_,        hasDefault_ ? default_.c_str() : nullptr, lower_, upper_,
          group_.c_str(), help_.c_str()};
}

bool isSameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

}  // namespace kavo
