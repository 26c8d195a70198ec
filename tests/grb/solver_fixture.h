// A solver with an open model and a log that is kept, over the double or any other library.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "grb/solver.h"
#include "tests/grb/blocks.h"
#include "tests/grb/listeners.h"

namespace grb {

class SolverFixture : public testing::Test {
 protected:
  explicit SolverFixture(const std::shared_ptr<const Library>& library) : solver(library) {
    solver.setLog(log);
    solver.setup();
  }

  tav::attr::BaseItem option(std::string_view name) { return solver.makeModelAttributes("grb", {})->get(name); }
  void set(std::string_view name, int value) { option(name).as<int>().set(value); }
  void set(std::string_view name, const std::string& value) { option(name).as<std::string>().set(value); }

  std::uint64_t space() { return solver.makeVariableAdder(tav::opt::tag::kIntervalDomain, {})->variableSpace(); }
  void addVariables(const tav::opt::VariableContainer& block) {
    solver.makeVariableAdder(tav::opt::tag::kIntervalDomain, {})->add(block);
  }
  void add(std::string_view domain, std::string_view function, const tav::opt::ConstraintContainer& block) {
    solver.makeConstraintAdder(domain, function)->add(block);
  }
  template <class T = double>
  tav::attr::Container<T> ofVariables(int quantity) {
    return solver.makeVariableContainers({}).get(quantity).as<T>();
  }

  std::shared_ptr<TextLog> log = std::make_shared<TextLog>();
  Solver solver;
};

struct HasDouble {
  std::shared_ptr<GurobiDouble> gurobi = GurobiDouble::make();
};

class SolverOverDouble : protected HasDouble, public SolverFixture {
 protected:
  SolverOverDouble() : SolverFixture(gurobi->library()) { gurobi->takeCalls(); }
};

}  // namespace grb
