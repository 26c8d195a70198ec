#pragma once

#include <string>
#include <string_view>

// Text for people's eyes.
namespace app {

// Breaks the text at blanks into lines of at most `width` columns (longer only where one word is), each begun with
// `indent` blanks and ended with "\n". "" stays "".
std::string wrapped(std::string_view text, std::size_t indent, std::size_t width);

// A number with so many digits; "infinity" for 1e100 and more, "" for NaN.
std::string numberText(double value, int digits);

// Whether a text is, or has in it, a word; the case of ASCII letters does not matter.
bool isSameWord(std::string_view text, std::string_view word);
bool hasWord(std::string_view text, std::string_view word);

// The columns of the terminal that the standard output goes to, 80 when it does not tell; 0 when the output goes
// elsewhere, or to a terminal that cannot write a line anew.
std::size_t terminalColumns();

// The same for text that is read at leisure: within reason, and 80 when the output goes elsewhere.
std::size_t screenWidth();

}  // namespace app
