#pragma once

#include <string_view>

namespace brel::settings {

// The name here of what drivers for AMPL and other tools call by a word (in lower case), such as MIPGap for "mip:gap";
// empty when the word is not known. For suggestions only: nothing is set under such a word.
std::string_view meaningOfUsualWord(std::string_view word);

}  // namespace brel::settings
