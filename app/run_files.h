#pragma once

#include <string>
#include <vector>

#include "app/arguments.h"
#include "app/own_words.h"
#include "app/paths.h"
#include "app/session.h"

namespace app {

// What a run reads and writes.
struct RunFiles {
  // Who writes a file: the command line, the link, or Gurobi by itself.
  enum class Writer { us, link, gurobi };
  struct One {
    std::string path;
    std::string what;  // for messages: what a file holds that is read, who names one that is written
    Writer writer = Writer::us;
  };
  // Files whose names are `begin`, a number and `end`.
  struct Numbered {
    std::string begin, end;
    std::string what;
    Writer writer = Writer::us;
  };
  std::vector<One> read, written;
  std::vector<Numbered> numbered;  // written
};

// What names the files that Gurobi writes at the end of a solve, and of that of the fixed model.
inline constexpr const char *kResultFile = "ResultFile", *kFixedResultFile = "ResultFile of fixoptfile";

// As the arguments and the settings given so far name them, those in the files that settings name included. A file that
// cannot be read names none.
RunFiles runFiles(const Session& session, const Arguments& arguments, const Paths& paths);
// Of a run that only describes options.
RunFiles filesOfDescription(const Arguments& arguments);
// Adds what the command line writes itself.
void addOwnOutputs(RunFiles& files, const Arguments& arguments, const std::string& sol, const OwnWords& words);

}  // namespace app
