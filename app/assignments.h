#pragma once

#include <optional>
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
Assignment parseWord(const std::string& word);

// The words of the environment variable: "name=value name value name='a value'", separated by blanks. Throws Failure.
std::vector<Assignment> parseList(std::string_view text, const char* source);

// Words that the command line handles itself, and the others, which go to the link in their order.
struct Words {
  std::optional<bool> showLog;      // outlev
  std::string logFile;              // logfile
  int objective = 1;                // objno
  std::optional<unsigned> wantSol;  // wantsol, a sum of the constants below
  std::vector<Assignment> others;
};
inline constexpr unsigned kWriteSol = 1, kPrintVariables = 2, kPrintDuals = 4, kNoSummary = 8;

// Sorts assignments, later ones win. Throws Failure for a value that a word cannot have.
Words sortWords(std::vector<Assignment> assignments);

}  // namespace app
