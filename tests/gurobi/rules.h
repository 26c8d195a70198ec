// The contract of every wrapped call, as data: the text of the one Gurobi call that it makes on a StartedModel, whether
// the code is checked, and what it does about the pending update.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "grb/gurobi/model.h"

namespace grb {

enum class Checked { kYes, kNo };
enum class Update { kMarks, kFirst, kNone, kClears };

struct Rule {
  std::string call;
  Checked checked;
  Update update;
  std::function<void(GurobiModel&)> run;

  /// The Gurobi function, as the text names it.
  Fn function() const;
};

std::vector<Rule> buildingRules();
std::vector<Rule> generalConstraintsRules();
std::vector<Rule> attributesRules();
std::vector<Rule> parametersRules();
std::vector<Rule> solvingRules();

/// All of them.
std::vector<Rule> allRules();

}  // namespace grb
