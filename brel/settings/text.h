#pragma once

#include <string>
#include <string_view>

// Pieces of text about settings.
namespace brel::settings {

// ASCII letters only: names are the same in every locale.
inline std::string lowerCased(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

// What a user wrote, cut short where it would flood a message.
inline std::string shortened(std::string_view text) {
  constexpr std::size_t kMost = 60;
  return text.size() <= kMost ? std::string(text) : std::string(text.substr(0, kMost)) + "...";
}

}  // namespace brel::settings
