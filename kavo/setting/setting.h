#pragma once

#include <string>
#include <string_view>

#include "kavo/link.h"

namespace kavo {

// A setting as it was given.
struct Setting {
  std::string name, value, source;
  int line = 0;

  kavo_setting view() const { return {name.c_str(), value.c_str(), source.c_str(), line}; }
};

// What is known of a setting that can be given.
class SettingInfo {
 public:
  // Copies. Throws Error (KAVO_INVALID) for a type that does not exist and for a missing text.
  explicit SettingInfo(const kavo_setting_info& given);

  const std::string& name() const { return name_; }
  kavo_setting_info view() const;

 private:
  std::string name_, default_, group_, help_;
  bool hasDefault_;
  int type_;
  double lower_, upper_;
};

// Whether two names are the same but for the case of ASCII letters.
bool isSameName(std::string_view a, std::string_view b);

}  // namespace kavo
