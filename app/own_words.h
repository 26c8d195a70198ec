#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/session.h"

namespace app {

// The settings that the command line acts on itself.
struct OwnWords {
  std::optional<bool> showLog;       // outlev
  std::string logFile;               // logfile
  int objective = 1;                 // objno
  std::optional<unsigned> wantSol;   // wantsol, a sum of the constants below
  double basisRatio = 0;             // bratio
  std::string poolStub;              // poolstub
  std::vector<std::string> answers;  // lines to those that were asked for, name=?
};
inline constexpr unsigned kWriteSol = 1, kPrintVariables = 2, kPrintDuals = 4, kNoSummary = 8;

// Tells kavo of these settings, so that they can be given wherever others can and stand in lists beside them. To be
// called before any setting is given.
void declareOwnWords(Session& session);

// What was given of them, later ones win. Throws Failure for a value that a setting cannot have.
OwnWords ownWords(const Session& session);

}  // namespace app
