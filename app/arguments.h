#pragma once

#include <string>
#include <vector>

namespace app {

enum class Action {
  solve,
  bare,
  help,
  usage,
  version,
  versionLine,
  resultCodes,
  optionGroups,
  optionHelp,
  optionPage,
  describeOptions
};

// The command line, taken apart.
struct Arguments {
  Action action = Action::solve;
  std::string model;               // as given, "" for none
  std::vector<std::string> words;  // what stands behind it, name=value each
  bool ampl = false;               // called by the AMPL protocol
  bool quiet = false;
  bool progress = false;  // a status line in place of the log
  bool ranges = false, statistics = false;
  bool noSol = false;
  bool writeSol = false;                            // -s
  std::string sol, log, trace, json, report, link;  // paths, "" when not given
  std::vector<std::string> options;                 // option files
  std::string topic;                                // what optionHelp is about, "" for everything
  std::string description;                          // the file that describeOptions writes
};

// Throws Failure with kExitUsage.
Arguments parseArguments(int count, const char* const* words);
// The model of a call by the AMPL protocol, which puts -AMPL right behind it; null for any other call. Also tells when
// the words behind it cannot be parsed.
const char* amplModel(int count, const char* const* words);

// Text of --help, and of the AMPL protocol's usage.
std::string helpText();
std::string usageText();

}  // namespace app
