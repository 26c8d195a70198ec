#pragma once

#include <string>
#include <vector>

#include "brel/settings/settings.h"
#include "tav/opt/solver.h"

namespace brel::plugin {

// The settings of the solve of a fixed model: those of the run, but for what reads, writes or replaces the solve, and
// on top of them those of a file of their own.
class FixedOptions {
 public:
  // file: an option file, or "". Raises tav::UserException that names file and line for whatever is wrong in it, and
  // for settings that are none of the solver's or make no sense here. Takes no licence. The table must outlive this.
  FixedOptions(const std::string& file, const settings::Table& table, tav::opt::AbstractSolver& solver);

  // Lines about settings that are passed over.
  const std::vector<std::string>& skipped() const { return own_.skipped; }

  // Gives the solver these settings, and then those of the run back.
  void enter(const settings::Given& run, tav::opt::AbstractSolver& solver) const;
  void leave(const settings::Given& run, tav::opt::AbstractSolver& solver) const;

 private:
  const settings::Table& table_;
  settings::Given own_;
};

}  // namespace brel::plugin
