// Tuning: which models, which calls, which files.
#include "grb/procedure/tuning.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/grb/solver_fixture.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using testing::ElementsAre;
namespace fs = std::filesystem;

class TuningTest : public SolverOverDouble {
 protected:
  TuningTest() {
    fs::remove_all(folder);
    fs::create_directories(folder);
    fs::current_path(folder);
    gurobi->defineParam({"Threads", 0, 0, 1024});
    gurobi->defineParam({"Heuristics", 0.05, 0, 1});
    gurobi->defineParam({"MIPFocus", 0, 0, 3});
    gurobi->defineParam({"NodefileDir", "."});
    gurobi->defineParam({"LogToConsole", 1, 0, 1});
    set("tuning", "a.mps");
  }
  void TearDown() override { fs::current_path(before); }
  static std::string content(const std::string& file) {
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    return text.str();
  }

  const fs::path before = fs::current_path();
  const fs::path folder = fs::path(testing::TempDir()) / "grb_tuning_test";
};

TEST_F(TuningTest, WritesWhatEachResultChanges) {
  gurobi->scriptAttr("TuneResultCount", 3);
  set("MIPFocus", 1);
  gurobi->onCall(Fn::GRBgettuneresult, [&, n = 0]() mutable {
    auto& params = gurobi->model(2).env.params;
    EXPECT_EQ(params["mipfocus"], gurobi_double::ParamValue(n == 0 ? 1 : 0)) << "begins as the user has set it";
    params = {{"mipfocus", 0}, {"threads", 3}, {"heuristics", 0.001}, {"nodefiledir", "x"}};
    if (++n == 3) params = {{"mipfocus", 0}};
  });
  solver.solve();
  EXPECT_EQ(solver.stopReason(), tav::opt::StopReason::notRun);
  EXPECT_EQ(gurobi->count(Fn::GRBoptimize), 0);
  EXPECT_EQ(gurobi->count(Fn::GRBtunemodel), 1);
  EXPECT_EQ(content("gurobi.o99"), "Heuristics  0.001\nNodefileDir  x\n");
  EXPECT_EQ(content("gurobi.o98"), content("gurobi.o99"));
  EXPECT_EQ(content("gurobi.o97"), "") << "all at their defaults";
  EXPECT_EQ(gurobi->model(2).env.params["logtoconsole"], gurobi_double::ParamValue(0));
  EXPECT_THAT(log->text, testing::HasSubstr("--- Writing Gurobi option file: gurobi.o99\n"
                                            "--- Writing Gurobi option file: gurobi.o98\n"
                                            "--- Writing Gurobi option file: gurobi.o97\n"));
  EXPECT_THAT(gurobi->openHandles(), ElementsAre("e1", "m1"));
}

TEST_F(TuningTest, WritesAHundredResultsAtMostAndNoneWithoutOne) {
  gurobi->scriptAttr("TuneResultCount", 0);
  solver.solve();
  EXPECT_TRUE(fs::is_empty("."));
  gurobi->scriptAttr("TuneResultCount", 150);
  solver.solve();
  EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 100);
  for (const char* file : {"gurobi.o99", "gurobi.o10", "gurobi.op9", "gurobi.op0"}) EXPECT_TRUE(fs::exists(file));
}

TEST_F(TuningTest, SeveralModelsAreTunedTogether) {
  set("tuning", " a.mps,'b c.lp'  \"d\", ");
  gurobi->scriptAttr("TuneResultCount", 0);
  solver.solve();
  EXPECT_THAT(gurobi->takeCalls(),
              testing::IsSupersetOf({R"(GRBreadmodel(e1, "a.mps", *))", R"(GRBreadmodel(e1, "b c.lp", *))",
                                     R"(GRBreadmodel(e1, "d", *))", "GRBtunemodels(e1, 3, [m2, m3, m4])"}));
  EXPECT_THAT(listedFiles(", ,''"), testing::IsEmpty());
  gurobi->failCall(Fn::GRBtunemodels, 10031, "Unable to tune models of different type");
  EXPECT_EQ(messageOf<GurobiException>([&] { solver.solve(); }), "Unable to tune models of different type");
  EXPECT_THAT(gurobi->openHandles(), ElementsAre("e1", "m1"));
}

TEST_F(TuningTest, ACallThatFailsEndsIt) {
  gurobi->scriptAttr("TuneResultCount", 1);
  for (const Fn step : {Fn::GRBreadmodel, Fn::GRBtunemodel, Fn::GRBgettuneresult, Fn::GRBgetparamname}) {
    gurobi->failCall(step, 10001, "told by Gurobi");
    EXPECT_EQ(thrown<GurobiException>([&] { solver.solve(); }).context(), fnName(step));
    EXPECT_THAT(gurobi->openHandles(), ElementsAre("e1", "m1"));
  }
  EXPECT_FALSE(fs::exists("gurobi.o99"));
}

}  // namespace
}  // namespace grb
