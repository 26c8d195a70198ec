#pragma once

#include <string>
#include <string_view>

// Text for people's eyes.
namespace app {

// Breaks the text at blanks into lines of at most `width` columns (longer only where one word is), each begun with
// `indent` blanks and ended with "\n". "" stays "".
std::string wrapped(std::string_view text, std::size_t indent, std::size_t width);

// Whether a text is, or has in it, a word; the case of ASCII letters does not matter.
bool isSameWord(std::string_view text, std::string_view word);
bool hasWord(std::string_view text, std::string_view word);

// The columns of the terminal that the standard output goes to, within reason; 80 when it goes elsewhere.
std::size_t screenWidth();

}  // namespace app
