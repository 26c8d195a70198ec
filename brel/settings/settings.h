#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "brel/settings/table.h"
#include "kavo/link.h"
#include "tav/opt/log.h"
#include "tav/opt/solver.h"

namespace brel::settings {

// A setting that was found, typed and within its bounds.
struct Checked {
  const Row* row;
  std::variant<int, double, std::string> value;
  // "run.opt, line 3: " or "command line: ", as far as it is known.
  std::string place = {};  // NOLINT(readability-redundant-member-init): -Wextra wants it where a value is optional
};

// What the host's settings come to.
struct Given {
  std::vector<Checked> settings;      // of several of one name the last, at its place
  std::vector<const Row*> questions;  // settings whose value in force is asked for, name=?
  std::vector<std::string> skipped;   // lines for the log about settings that are passed over
};

// The whole number that a setting, by its name in the table, was given; none when it was not.
std::optional<int> wholeNumber(const Given& given, std::string_view name);

// Checks all settings of the host, in the order in which they were given. Raises an exception for the first one that is
// unknown (suggesting names), of the wrong type or out of range (telling what is allowed), or that belongs to a feature
// that does not exist yet; it names where the setting was given. A parameter that the solver has and the table leaves
// out is passed over when it stands in a file, so that option files of other tools can be used. Takes no licence.
Given check(const trpRec* host, const Table& table, tav::opt::AbstractSolver& solver);

// Hands the settings to the solver, one call each: before `setup` those that it takes only then, and after it the
// others. Where a solver was set up long ago, the former must be as they are in force, or it refuses them.
void applyBeforeSetup(const std::vector<Checked>& settings, tav::opt::AbstractSolver& solver);
void apply(const std::vector<Checked>& settings, tav::opt::AbstractSolver& solver);

// Gives settings of an earlier solve, by name, their defaults back, but for those that are given again and those that
// the solver takes before `setup` only.
void withdraw(const std::vector<std::string>& earlier, const std::vector<Checked>& given, const Table& table,
              tav::opt::AbstractSolver& solver);

// Tells the host the values in force of what was asked for, a note each.
void answer(trpRec* host, const Given& given, tav::opt::AbstractSolver& solver);

}  // namespace brel::settings
