#pragma once

#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "grb/gurobi/constants.h"
#include "grb/gurobi/exception.h"
#include "grb/gurobi/model.h"
#include "tests/double/gurobi_double.h"

namespace grb {

/// A started model over the double with three variables and two rows, nothing pending and an empty record.
class StartedModel {
 public:
  StartedModel() {
    model.start();
    model.addVars(3, {}, {}, {}, {}, {});
    model.addConstr({}, {}, '<', 1, nullptr);
    model.addConstr({}, {}, '<', 1, nullptr);
    model.updateIfPending();
    gurobi->takeCalls();
  }

  std::shared_ptr<gurobi_double::GurobiDouble> gurobi = gurobi_double::GurobiDouble::make();
  GurobiModel model{gurobi->library()};
};

}  // namespace grb
