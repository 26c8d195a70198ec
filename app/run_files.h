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
  struct One {
    std::string path;
    std::string what;    // for messages: what a file holds that is read, who names one that is written
    bool isOurs = true;  // of the files written: by the command line, not by the link
  };
  // Files whose names are `begin`, a number and `end`.
  struct Numbered {
    std::string begin, end;
    std::string what;
    bool isOurs = true;
  };
  std::vector<One> read, written;
  std::vector<Numbered> numbered;  // written
};

// As the arguments and the settings given so far name them, those in the files that settings name included. A file that
// cannot be read names none.
RunFiles runFiles(const Session& session, const Arguments& arguments, const Paths& paths);
// Adds what the command line writes itself.
void addOwnOutputs(RunFiles& files, const Arguments& arguments, const std::string& sol, const OwnWords& words);

}  // namespace app
