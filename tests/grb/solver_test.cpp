#include "grb/solver.h"

#include <gmock/gmock.h>

#include <typeinfo>

#include "grb/adder/indic_adder.h"
#include "grb/adder/lin_con_adder.h"
#include "grb/adder/lin_obj_adder.h"
#include "grb/adder/quad_con_adder.h"
#include "grb/adder/quad_obj_adder.h"
#include "grb/adder/sos_adder.h"
#include "grb/nonlinear/nonlin_con_adder.h"
#include "grb/nonlinear/nonlin_obj_adder.h"
#include "tests/grb/blocks.h"
#include "tests/grb/listeners.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace tag = tav::opt::tag;

class SolverTest : public testing::Test {
 protected:
  // Two variables, one row and one objective in an open model.
  void load() {
    solver.setup();
    const auto variableAdder = solver.makeVariableAdder(tag::kIntervalDomain, {});
    const auto space = variableAdder->variableSpace();
    variableAdder->add(plainVariables(2));
    solver.makeConstraintAdder(tag::kStaticBoundedDomain, tag::kLinearFunction)
        ->add(functions(space, {{0, {0}, {1}, -1}}));
    solver.makeConstraintAdder(tag::kSenseDomain, tag::kLinearFunction)->add(functions(space, {{0, {0}, {1}, 0}}));
  }

  std::shared_ptr<GurobiDouble> gurobi = GurobiDouble::make();
  Solver solver{gurobi->library()};
};

TEST_F(SolverTest, TellsItsNamesAndTakesALicenceOnlyAtSetup) {
  EXPECT_EQ(solver.name(), "Gurobi");
  EXPECT_EQ(solver.shortName(), "grb");
  EXPECT_EQ(solver.capabilities(), std::make_pair(1024, true));
  EXPECT_EQ(solver.libraryText(), "Gurobi 13.0.2 (recording double)");
  EXPECT_EQ(solver.callbackData(), nullptr);
  EXPECT_FALSE(solver.hasModel());
  EXPECT_EQ(solver.stopReason(), tav::opt::StopReason::notRun);
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre("GRBemptyenvinternal(*, 13, 0, 2)", R"(GRBsetintparam(e1, "LogToConsole", 0))"));
  EXPECT_TRUE(solver.setup());
  EXPECT_TRUE(solver.hasModel());
  EXPECT_TRUE(solver.setup());
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre("GRBstartenv(e1)", R"(GRBnewmodel(e1, *, "", 0, null, null, null, null, null))"));
}

TEST_F(SolverTest, ClearForgetsAllElementsAndKeepsTheParameters) {
  load();
  const auto attributes = solver.makeModelAttributes("grb", {});
  gurobi->defineParam({"TimeLimit", 1e100, 0, 1e100});
  attributes->get("timelimit").as<double>().set(5);
  const auto adder = solver.makeVariableAdder(tag::kIntervalDomain, {});
  const auto space = adder->variableSpace();
  solver.clear();
  EXPECT_THAT(gurobi->openHandles(), ElementsAre("e1", "m2"));
  EXPECT_EQ(attributes->get("timelimit").as<double>().get(), 5);
  EXPECT_EQ(solver.makeVariableAdder(tag::kIntervalDomain, {}), adder);
  EXPECT_EQ(adder->variableSpace(), space);
  EXPECT_THAT(positionsOf(adder->add(variables({0}, {{0}, {1}}, {}, {{"priority", values<double>({3})}}))),
              ElementsAre(0));
  load();
  EXPECT_THAT(solver.makeVariableContainers({}).get(tav::opt::VariableQuantity::priority).as<double>().itemCount(), 1);
  const auto rows = solver.makeConstraintAdder(tag::kStaticBoundedDomain, tag::kLinearFunction);
  EXPECT_THAT(positionsOf(rows->add(functions(space, {{0, {0}, {1}, -1}}))), ElementsAre(1));
}

TEST_F(SolverTest, AFailedClearLeavesTheOldModel) {
  load();
  gurobi->failCall(Fn::GRBnewmodel, 10001, "Out of memory");
  EXPECT_EQ(messageOf<GurobiException>([&] { solver.clear(); }), "Model creation failed");
  EXPECT_THAT(gurobi->openHandles(), ElementsAre("e1", "m1"));
  EXPECT_THAT(positionsOf(solver.makeVariableAdder(tag::kIntervalDomain, {})->add(plainVariables(1))), ElementsAre(2));
}

TEST_F(SolverTest, KeepsLogAndRefusesEmptyOnes) {
  EXPECT_FALSE(solver.setLog(nullptr));
  const auto log = std::make_shared<TextLog>();
  EXPECT_TRUE(solver.setLog(log));
  EXPECT_FALSE(solver.setLog(nullptr));
  EXPECT_EQ(solver.log(), log);
  EXPECT_FALSE(solver.setCallback(nullptr));
  EXPECT_TRUE(solver.setCallback(std::make_shared<Listener>()));
}

TEST_F(SolverTest, SubscribesToTheContextsOfTheThreeKindsOnly) {
  for (const int kind : {0, 1, 2}) EXPECT_TRUE(solver.addContext("tav:context", kind, {kind, 1})) << kind;
  for (const int kind : {3, -1}) EXPECT_FALSE(solver.addContext("tav:context", kind, {kind, 1})) << kind;
  for (const char* tag : {"tav:contex", "TAV:context", ""}) EXPECT_FALSE(solver.addContext(tag, 0, {0, 1})) << tag;
}

TEST_F(SolverTest, MakesAddersByPairsOfWholeTags) {
  const struct {
    const char *domain, *function;
    const std::type_info& kind;
  } made[]{
      {"tav:static_bounded_domain", "tav:linear_function", typeid(LinConAdder)},
      {"tav:static_bounded_domain", "tav:quadratic_function", typeid(QuadConAdder)},
      {"tav:static_bounded_domain", "tav:identity_function", typeid(NonlinConAdder)},
      {"tav:sense_domain", "tav:linear_function", typeid(LinObjAdder)},
      {"tav:sense_domain", "tav:quadratic_function", typeid(QuadObjAdder)},
      {"tav:sense_domain", "tav:identity_function", typeid(NonlinObjAdder)},
      {"tav:sos_domain", "tav:identity_function", typeid(SOSAdder)},
  };
  for (const auto& c : made) {
    const auto adder = solver.makeConstraintAdder(c.domain, c.function);
    ASSERT_NE(adder, nullptr) << c.domain << " " << c.function;
    const auto& reference = *adder;
    EXPECT_TRUE(typeid(reference) == c.kind) << c.domain << " " << c.function;
    EXPECT_EQ(solver.makeConstraintAdder(c.domain, c.function), adder);
  }
  for (const auto& [domain, function] : {std::pair{"tav:sos_domain", "tav:linear_function"},
                                         {"tav:linear_function", "tav:sense_domain"},
                                         {"tav:static_bounded_domain", "tav:linear_functions"},
                                         {"", ""}}) {
    EXPECT_FALSE(solver.makeConstraintAdder(domain, function)) << domain << " " << function;
  }
  const auto makeLink = [&](const char* domain, const char* link) {
    return solver.makeLinkAdder(domain, "tav:linear_function", link);
  };
  EXPECT_TRUE(std::dynamic_pointer_cast<IndicAdder>(makeLink("tav:static_bounded_domain", "tav:constr_link")));
  EXPECT_FALSE(makeLink("tav:static_bounded_domain", "tav:constr"));
  EXPECT_FALSE(makeLink("tav:sense_domain", "tav:constr_link"));
  EXPECT_TRUE(solver.makeVariableAdder("tav:interval_domain", {}));
  EXPECT_FALSE(solver.makeVariableAdder("tav:interval_domain", "tav:linear_function"));
  EXPECT_FALSE(solver.makeVariableAdder("tav:interval", {}));
}

TEST_F(SolverTest, MakesContainersOfThePartThatWasHandedOut) {
  load();
  const auto rows = solver.makeConstraintAdder(tag::kStaticBoundedDomain, tag::kLinearFunction);
  const auto objectives = solver.makeConstraintAdder(tag::kSenseDomain, tag::kLinearFunction);
  const auto counts = [&](const auto& part, std::optional<std::string_view> further = {}) {
    const auto [domain, function] = solver.makeConstraintContainers(part, further, {});
    return std::pair(domain.keys(), function.keys());
  };
  using Keys = std::vector<int>;
  EXPECT_EQ(counts(rows), std::pair(Keys({2, 3, 5, 6, 7, 8, 9}), Keys({2})));
  EXPECT_EQ(counts(objectives), std::pair(Keys({5, 6, 7, 8}), Keys({2, 3})));
  EXPECT_EQ(counts(solver.makeConstraintAdder(tag::kSenseDomain, tag::kQuadraticFunction)), counts(objectives));
  EXPECT_EQ(counts(solver.makeConstraintAdder(tag::kStaticBoundedDomain, tag::kQuadraticFunction)),
            std::pair(Keys({5, 6}), Keys()));
  const std::pair<Keys, Keys> nothing;
  EXPECT_EQ(counts(rows, "further"), nothing);
  EXPECT_EQ(counts(solver.makeVariableAdder(tag::kIntervalDomain, {})), nothing);
  EXPECT_EQ(counts(std::make_shared<const LinConAdder>(std::weak_ptr<Data>())), nothing);
  EXPECT_EQ(counts(std::shared_ptr<const tav::opt::AbstractAdder>()), nothing);
  EXPECT_EQ(solver.makeEmptyContainers().first.count() + solver.makeEmptyContainers().second.count(), 0);
}

TEST_F(SolverTest, MakesModelAttributesAndTheFixingCommandByTag) {
  load();
  EXPECT_EQ(solver.makeModelAttributes("tav:solver", {})->count(), 12);
  EXPECT_TRUE(solver.makeModelAttributes("grb", {}));
  EXPECT_FALSE(solver.makeModelAttributes("gurobi", {}));
  EXPECT_FALSE(solver.makeCommand("tav:command", 1, {}));
  EXPECT_FALSE(solver.makeCommand("tav:command", 0, "now"));
  EXPECT_FALSE(solver.makeCommand("command", 0, {}));
  const auto fix = solver.makeCommand("tav:command", 0, {});
  ASSERT_TRUE(fix && fix->canRun());
  gurobi->model(1).commit();
  gurobi->takeCalls();
  fix->run();
  EXPECT_FALSE(fix->canRun());
  fix->run();
  EXPECT_THAT(gurobi->takeCalls(), ElementsAre("GRBconverttofixed(m1)"));
}

TEST(Solver, WhatItHandsOutIsSafeAfterItsEnd) {
  const auto gurobi = GurobiDouble::make();
  auto solver = std::make_unique<Solver>(gurobi->library());
  solver->setup();
  const auto adder = solver->makeConstraintAdder(tag::kStaticBoundedDomain, tag::kLinearFunction);
  const auto fix = solver->makeCommand("tav:command", 0, {});
  const auto parameters = solver->makeModelAttributes("grb", {});
  solver.reset();
  gurobi->takeCalls();
  EXPECT_FALSE(adder->isActive());
  EXPECT_EQ(messageOf<tav::opt::SupportException>([&] { adder->add({}); }), "Adder inactive");
  EXPECT_FALSE(fix->canRun());
  fix->run();
  EXPECT_FALSE(parameters->has("TimeLimit"));
  EXPECT_THAT(gurobi->calls(), IsEmpty());
  EXPECT_THAT(gurobi->openHandles(), IsEmpty());
  EXPECT_THAT(gurobi->misuses(), IsEmpty());
}

}  // namespace
}  // namespace grb
