// Environments and models from their beginning to their end, with every call made to fail once.
#include <gmock/gmock.h>

#include "tests/gurobi/started_model.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using ::testing::ElementsAre;

TEST(ModelLife, CallsOfAWholeLife) {
  const auto gurobi = gurobi_double::GurobiDouble::make();
  {
    GurobiModel model(gurobi->library());
    EXPECT_THAT(gurobi->takeCalls(),
                ElementsAre("GRBemptyenvinternal(*, 13, 0, 2)", "GRBsetintparam(e1, \"LogToConsole\", 0)"));
    model.clear();
    EXPECT_TRUE(gurobi->takeCalls().empty()) << "nothing to clear before the start";
    model.start();
    EXPECT_THAT(gurobi->takeCalls(),
                ElementsAre("GRBstartenv(e1)", "GRBnewmodel(e1, *, \"\", 0, null, null, null, null, null)"));
    model.start();
    EXPECT_THAT(gurobi->takeCalls(),
                ElementsAre("GRBnewmodel(e1, *, \"\", 0, null, null, null, null, null)", "GRBfreemodel(m1)"));
    model.setIntParam("Threads", 3);
    model.addVars(1, {}, {}, {}, {}, {});
    gurobi->takeCalls();
    model.clear();
    EXPECT_THAT(gurobi->takeCalls(),
                ElementsAre("GRBnewmodel(m2.env, *, \"\", 0, null, null, null, null, null)", "GRBfreemodel(m2)"));
    EXPECT_FALSE(model.dirty());
    EXPECT_EQ(model.getIntAttr("NumVars"), 0);
    EXPECT_EQ(model.getIntParam("Threads"), 3) << "parameters stay";
    model.start("lot.mps");
    gurobi->takeCalls();
  }
  EXPECT_THAT(gurobi->takeCalls(), ElementsAre("GRBfreemodel(m4)", "GRBfreeenv(e1)"));
  EXPECT_TRUE(gurobi->openHandles().empty());
  EXPECT_TRUE(gurobi->misuses().empty());
}

TEST(ModelLife, EnvironmentLivesAsLongAsItsModels) {
  const auto gurobi = gurobi_double::GurobiDouble::make();
  auto first = std::make_unique<GurobiModel>(gurobi->library());
  first->start();
  GurobiModel second(first->env());
  second.start();
  first.reset();
  EXPECT_THAT(gurobi->openHandles(), ElementsAre("e1", "m2"));
  EXPECT_EQ(gurobi->count(Fn::GRBstartenv), 1);
  EXPECT_EQ(second.getIntAttr("NumVars"), 0);
}

struct Failure {
  void (*run)(GurobiModel&);
  Fn failing;
  unsigned line, column;
};

TEST(ModelLife, FailuresOfMakingAModelLeaveTheOldOne) {
  const Failure failures[]{
      {[](GurobiModel& m) { m.start(); }, Fn::GRBstartenv, 54, 34},
      {[](GurobiModel& m) { m.start(); }, Fn::GRBnewmodel, 205, 30},
      {[](GurobiModel& m) { m.start("a.lp"); }, Fn::GRBreadmodel, 214, 30},
      {[](GurobiModel& m) { m.clear(); }, Fn::GRBnewmodel, 224, 30},
  };
  for (const Failure& failure : failures) {
    SCOPED_TRACE(failure.line);
    const auto gurobi = gurobi_double::GurobiDouble::make();
    GurobiModel model(gurobi->library());
    if (failure.failing != Fn::GRBstartenv) {
      model.start();
      model.addVars(1, {}, {}, {}, {}, {});
    }
    gurobi->failCall(failure.failing, 10009, "No Gurobi license");
    const auto error = thrown<GurobiException>([&] { failure.run(model); });
    EXPECT_EQ(error.message(), failure.line == 54 ? "No Gurobi license" : "Model creation failed");
    EXPECT_EQ(error.code(), 10009);
    EXPECT_EQ(error.context(), fnName(failure.failing));
    EXPECT_EQ(error.location().file(), "grb/gurobi");
    EXPECT_EQ(error.location().line(), failure.line);
    EXPECT_EQ(error.location().column(), failure.column);
    if (failure.failing == Fn::GRBstartenv) {
      EXPECT_FALSE(model.env()->started());
      model.start();
      EXPECT_TRUE(model.env()->started()) << "a failed start may be tried again";
    } else {
      EXPECT_TRUE(model.dirty());
      EXPECT_EQ(model.getIntAttr("NumVars"), 1);
    }
  }
}

TEST(ModelLife, NoFailureOfAnyCallLeaksAHandle) {
  const auto gurobi = gurobi_double::GurobiDouble::make();
  const auto life = [&] {
    GurobiModel model(gurobi->library());
    model.start();
    model.addVars(2, {}, {}, {}, {}, {});
    model.addConstr(std::array{0, 1}, std::array{1.0, 1.0}, '<', 4, nullptr);
    model.getIntAttr("NumVars");
    model.clear();
    model.start("a.mps");
    model.optimize();
  };
  int failed = 0;
  for (int nth = 1;; ++nth) {
    gurobi->failAnyCall(nth, 10001, "Out of memory");
    try {
      life();
    } catch (const GurobiException& error) {
      EXPECT_EQ(error.code(), 10001);
      ++failed;
    }
    ASSERT_TRUE(gurobi->openHandles().empty()) << "after failing call " << nth;
    ASSERT_TRUE(gurobi->misuses().empty());
    if (gurobi->failurePending()) break;
  }
  EXPECT_EQ(failed, 11) << "every call but the two that free a model is checked, or leaves one that cannot be used";
}

TEST(ModelLife, AModelWhoseUpdateRanOutOfMemoryIsLeftAlone) {
  StartedModel s;
  s.model.addVars(1, {}, {}, {}, {}, {});
  s.gurobi->failCall(Fn::GRBupdatemodel, 10001, "Out of memory");
  s.gurobi->takeCalls();
  for (int again = 0; again < 2; ++again) {
    const auto error = thrown<GurobiException>([&] { s.model.getIntAttr("NumVars"); });
    EXPECT_EQ(std::tuple(error.message(), error.code(), error.context()),
              std::tuple("Out of memory", 10001, "GRBupdatemodel"));
    EXPECT_THROW(static_cast<void>(s.model.isAttrAvailable("X")), GurobiException);
  }
  EXPECT_THAT(s.gurobi->takeCalls(), ElementsAre("GRBupdatemodel(m1)"));
  s.model.clear();
  EXPECT_EQ(s.model.getIntAttr("NumVars"), 0);
}

}  // namespace
}  // namespace grb
