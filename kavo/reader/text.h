#pragma once

#include <string>
#include <string_view>

namespace kavo::reader {

// What begins a text file to tell that it is UTF-8; no part of its first line.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// A word as it stands in a message: quoted, and cut when it is very long.
std::string quoted(std::string_view word);

// The number that a whole word is, maybe infinite; NaN when it is none.
double numberOrNan(std::string_view word);

// A bound or side in the form the model has it: infinite when it is 1e20 or more in size.
double withInfinity(double value);

// A letter as a capital; other characters stay what they are.
inline char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// Whether a word is this one of capital letters, written in any case.
bool isWord(std::string_view word, std::string_view capitals);

}  // namespace kavo::reader
