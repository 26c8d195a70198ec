// Where the double's answers must be those of Gurobi for other tests to mean anything.
#include <gmock/gmock.h>

#include <cmath>
#include <functional>

#include "grb/gurobi/callback_constants.h"
#include "tests/double/gurobi_sink.h"
#include "tests/gurobi/started_model.h"

namespace grb {
namespace {

using ::testing::ElementsAre;

int codeOf(const std::function<void()>& run) {
  try {
    run();
  } catch (const GurobiException& error) {
    return error.code().value_or(-1);
  }
  return 0;
}

TEST(Double, QueuedElementsCanBeWrittenButNotRead) {
  StartedModel s;
  const Api& api = s.model.api();
  GRBmodel* const handle = s.model.model();
  s.model.addVar({}, {}, 0, 0, 1, 'B', "new");
  double bound = -1;
  EXPECT_EQ(api.GRBgetdblattrelement(handle, "UB", 3, &bound), error::kIndexOutOfRange);
  EXPECT_EQ(bound, -1);
  EXPECT_EQ(api.GRBsetdblattrelement(handle, "UB", 3, 5), 0);
  EXPECT_EQ(api.GRBsetdblattrelement(handle, "UB", 4, 5), error::kIndexOutOfRange);
  EXPECT_EQ(s.model.getDblAttrElement("UB", 3), 5);
  EXPECT_EQ(s.model.getStrAttrElement("VarName", 2), "C2");
}

TEST(Double, AFailingAddThrowsTheQueueAwayAndNothingElseDoes) {
  StartedModel s;
  s.model.addVars(4, {}, {}, {}, {}, {});
  EXPECT_EQ(codeOf([&] { s.model.setDblAttrElement("LB", 99, 1); }), error::kIndexOutOfRange);
  EXPECT_EQ(s.model.getIntAttr("NumVars"), 7);
  s.model.addVars(4, {}, {}, {}, {}, {});
  s.gurobi->failCall(Fn::GRBaddgenconstrExpA, 10003, "non-positive base for exponential function not supported");
  EXPECT_EQ(codeOf([&] { s.model.addGenConstrExpA(nullptr, 0, 1, -1, nullptr); }), 10003);
  EXPECT_EQ(s.model.getIntAttr("NumVars"), 7);
}

TEST(Double, ScriptedValuesAndRefusals) {
  StartedModel s;
  s.gurobi->scriptElements("X", {1, 2, 3});
  s.gurobi->scriptAttr("Status", 2);
  s.gurobi->scriptAvailable("RC", true);
  EXPECT_TRUE(s.model.isAttrAvailable("X"));
  EXPECT_TRUE(s.model.isAttrAvailable("RC"));
  EXPECT_EQ(s.model.getIntAttr("Status"), 2);
  s.gurobi->unscript("X");
  EXPECT_FALSE(s.model.isAttrAvailable("X"));
  const std::array<double, 2> withNan{1, NAN};
  int code = 0;
  code = s.model.api().GRBsetdblattrarray(s.model.model(), "Start", 0, 2, const_cast<double*>(withNan.data()));
  EXPECT_EQ(code, error::kInvalidArgument);
  EXPECT_STREQ(s.model.api().GRBgeterrormsg(s.model.envInUse()), "Element 1 of a double array is Nan.");
}

TEST(Double, CallbacksComeWhereTheyWereAskedFor) {
  StartedModel s;
  std::vector<int> seen;
  s.model.setCallbackFuncAdv(
      [](GRBmodel*, void*, int where, void* context) {
        static_cast<std::vector<int>*>(context)->push_back(where);
        return 0;
      },
      &seen, 48);
  std::string log;
  s.model.setLogCallbackFunc(
      [](char* text, void* context) {
        *static_cast<std::string*>(context) += text;
        return 0;
      },
      &log);
  s.gurobi->onCall(Fn::GRBoptimize, [&] {
    s.gurobi->fireLog(s.gurobi->model(1), "Presolve\n");
    for (const int where : {where::kPolling, where::kMip, where::kMipSol, where::kMipNode}) {
      s.gurobi->fireCallback(s.gurobi->model(1), where);
    }
  });
  s.model.optimize();
  EXPECT_THAT(seen, ElementsAre(where::kPolling, where::kMipSol, where::kMipNode));
  EXPECT_EQ(log, "Presolve\n");
}

TEST(Double, SinkCountsAndCopies) {
  gurobi_double::resetSink();
  GurobiModel model(gurobi_double::sinkLibrary());
  model.start();
  const auto before = gurobi_double::sinkTotals();
  model.addVars(3, {}, std::array{1.0, 2.0, 3.0}, {}, {}, {});
  model.addConstr(std::array{0, 1}, std::array{1.0, 1.0}, '<', 4, nullptr);
  const auto after = gurobi_double::sinkTotals();
  EXPECT_EQ(after.calls - before.calls, 2);
  EXPECT_EQ(after.bytes - before.bytes, 3 * 8 + 2 * (4 + 8));
  EXPECT_EQ(model.getIntAttr("NumVars"), 3);
  EXPECT_EQ(model.getIntAttr("NumConstrs"), 1);
  std::array<double, 2> x{};
  model.getDblAttrArray("X", tav::idx::lib::Range(0, 2), x);
  EXPECT_THAT(x, ElementsAre(1.0, 1.0));
}

}  // namespace
}  // namespace grb
