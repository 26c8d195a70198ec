#pragma once

#include <string>
#include <string_view>

// Pieces of text about settings.
namespace brel::settings {

// What a user wrote, cut short where it would flood a message.
inline std::string shortened(std::string_view text) {
  constexpr std::size_t kMost = 60;
  return text.size() <= kMost ? std::string(text) : std::string(text.substr(0, kMost)) + "...";
}

}  // namespace brel::settings
