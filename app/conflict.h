#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/session.h"

namespace app {

// The bounds, sides and constraints that make a model infeasible.
struct Conflict {
  struct Member {
    int kind;  // a kavo_kind
    std::size_t index;
    int mark;  // a kavo_conflict_mark
  };
  std::vector<Member> members;
  bool minimal = false;
};

// Nothing when none was computed.
std::optional<Conflict> conflictOf(const Session& session);

// Such as "lower bound of the variable", "both sides of the row", "set".
std::string describe(const Conflict::Member& member);

// Such as "2 variables, 1 row; all of them are needed for it".
std::string describe(const Conflict& conflict);

}  // namespace app
