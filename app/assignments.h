#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace app {

struct Assignment {
  std::string name, value;
  const char* source;  // where it was given, for error messages
};

// One word of the command line: name=value, the rest of the word is the value but for a pair of quotes around it.
// Throws Failure.
// mayBeSecret: the word may belong to the value of a secret before it, and no message shows it.
Assignment parseWord(const std::string& word, bool mayBeSecret);
// Whether a text names a setting whose value nobody may see.
bool namesSecret(std::string_view text);

// The words of the environment variable: "name=value name value name='a value'", separated by blanks. Throws Failure.
std::vector<Assignment> parseList(std::string_view text, const char* source);

}  // namespace app
