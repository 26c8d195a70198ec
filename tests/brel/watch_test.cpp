// Who hears of a running solve, and what: the double fires the events that a search would.
#include "brel/watch/watch.h"

#include <fmt/core.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <locale>
#include <regex>
#include <sstream>
#include <thread>

#include "brel/host.h"
#include "brel/plugin/rule.h"
#include "grb/gurobi/callback_constants.h"
#include "grb/solver.h"
#include "tests/brel/host.h"

namespace brel_test {
namespace {

using gurobi_double::Fn;
using testing::ElementsAre;
using testing::HasSubstr;

std::string contentOf(const std::filesystem::path& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

// A MIP over the double, in a folder of its own; max x + 2 z + 10 over x, y, z and a column for the ranged row.
class WatchTest : public LinkFixture {
 public:
  WatchTest() {
    std::filesystem::create_directories(folder);
    for (const auto& [plugin, attribute, name] :
         {std::tuple{brel::Plugin::dumpSolutions, 0, "dump"}, std::tuple{brel::Plugin::trace, 17, "trace"},
          std::tuple{brel::Plugin::trace, 18, "tracenode"}, std::tuple{brel::Plugin::stopExpression, 21, "stop"}}) {
      link.definition.enable(plugin);
      link.definition.setName(brel::PluginAttrib{attribute}, name);
    }
    fill(model, KAVO_INTEGER);
    link.scriptMip({1, 2, 1, 3}, {1, 0, 2});
    link.gurobi->scriptAttr("NumObj", 1);
  }
  ~WatchTest() override { std::filesystem::remove_all(folder); }

 protected:
  void set(const char* name, const std::string& value) {
    ASSERT_EQ(kavo_set_option(model, name, value.c_str(), nullptr, 0), KAVO_OK) << kavo_last_error();
  }
  std::string in(const char* name) const { return (folder / name).string(); }

  // Events of the search, as Gurobi tells them.
  void point(std::vector<double> values, double nodes, double best, double bound) {
    namespace what = grb::what;
    link.gurobi->scriptCallbackDoubles(what::kMipSolSol, std::move(values));
    link.gurobi->scriptCallbackDoubles(what::kMipSolNodCnt, {nodes});
    link.gurobi->scriptCallbackDoubles(what::kMipSolObjBst, {best});
    link.gurobi->scriptCallbackDoubles(what::kMipSolObjBnd, {bound});
    fire(grb::where::kMipSol);
  }
  void node(double nodes, double best, double bound) {
    namespace what = grb::what;
    link.gurobi->scriptCallbackDoubles(what::kMipNodeNodCnt, {nodes});
    link.gurobi->scriptCallbackDoubles(what::kMipNodeObjBst, {best});
    link.gurobi->scriptCallbackDoubles(what::kMipNodeObjBnd, {bound});
    fire(grb::where::kMipNode);
  }
  void fire(int where) { link.gurobi->fireCallback(link.gurobi->model(current), where); }

  // The trace without its seconds.
  std::string trace() const {
    return std::regex_replace(contentOf(folder / "trace.csv"), std::regex("(^|\n)[0-9.]+,"), "$1t,");
  }

  int current = 1;  // the number of the solver's model
  std::filesystem::path folder =
      std::filesystem::temp_directory_path() /
      fmt::format("watch_test_{}", testing::UnitTest::GetInstance()->current_test_info()->name());
};

TEST_F(WatchTest, TakesBetterPointsOfTheUsersModelOnly) {
  set("trace", in("trace.csv")), set("tracenode", "10"), set("dump", in("point"));
  std::ofstream(in("point2.sol")) << "of an earlier run", std::ofstream(in("point3.sol")) << "the same";
  link.gurobi->onCall(Fn::GRBoptimize, [&] {
    point({1, 0, 1, 3}, 0, -1e100, 1e100);
    point({0, 0, 1, 2}, 1, 13, 30);  // worse
    node(5, 13, 30);
    node(11, 13, 28.5);
    point({4, 1, 0.5, 5}, 12, 13, 28.5);
    link.gurobi->scriptAttr("NumVars", 5);  // another model: a relaxation
    point({4, 4, 9, 9, 9}, 13, 13, 28.5);
    link.gurobi->unscript("NumVars");
  });
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  EXPECT_EQ(trace(),
            "seconds,nodes,incumbent,bound,gap,reason\n"
            "t,0,13,,,incumbent\n"
            "t,11,13,28.5,1.1923076923076923,node\n"
            "t,12,15,28.5,0.9,incumbent\n"
            "t,3,12.5,12,0.04,end\n");
  EXPECT_EQ(contentOf(in("point1.sol")), "# Objective value = 13\nx 1\ny 0\nz 1\n");
  EXPECT_EQ(contentOf(in("point2.sol")), "# Objective value = 15\nx 4\ny 1\nz 0.5\n");
  EXPECT_THAT(
      model.notes(),
      ElementsAre("the objective by the model's own functions is 13 at the returned point; the solver's is 12.5",
                  "2 incumbents were dumped; " + in("point3.sol") + " is from an earlier run"));
}

TEST_F(WatchTest, KnowsNoBoundOfTheOneAmongSeveralObjectives) {
  link.gurobi->scriptAttr("NumObj", 2);
  set("trace", in("trace.csv"));
  link.gurobi->onCall(Fn::GRBoptimize, [&] { point({1, 0, 1, 3}, 0, -1e100, 20); });
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  EXPECT_THAT(trace(), HasSubstr("\nt,0,13,,,incumbent\n"));
}

TEST_F(WatchTest, IsSilentInASolveThatNobodyFollows) {
  set("trace", in("trace.csv"));
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  const std::string before = contentOf(in("trace.csv"));
  ASSERT_EQ(kavo_clear_options(model), KAVO_OK);
  link.gurobi->onCall(Fn::GRBoptimize, [&] {
    link.gurobi->takeCalls();
    point({1, 0, 1, 3}, 0, -1e100, 1e100);
    EXPECT_EQ(link.gurobi->count(Fn::GRBcbget), 0) << "what listened to the solve before is gone";
  });
  ASSERT_EQ(kavo_solve(model), KAVO_OK) << kavo_last_error();
  EXPECT_EQ(contentOf(in("trace.csv")), before);
}

TEST_F(WatchTest, RepeatsTheStopOfARuleUntilTheSolverReturns) {
  set("stop", "incumbent > 10 && nodes == 0");
  link.gurobi->scriptAttr("Status", 11);
  int first = 0;
  link.gurobi->onCall(Fn::GRBoptimize, [&] {
    point({1, 0, 1, 3}, 0, -1e100, 1e100);
    first = link.gurobi->count(Fn::GRBterminate);
    for (int i = 0; i < 5000 && link.gurobi->count(Fn::GRBterminate) < 3; ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
  });
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
  EXPECT_EQ(first, 1) << "at once";
  EXPECT_GE(link.gurobi->count(Fn::GRBterminate), 3);
  EXPECT_THAT(model.results(), testing::StartsWith("unknown, stop_expression, "));
  ASSERT_FALSE(model.notes().empty());
  EXPECT_THAT(model.notes().back(),
              testing::MatchesRegex("stopped by the expression incumbent > 10 && nodes == 0 \\(time [0-9.]+, nodes 0, "
                                    "incumbent 13, bound unknown, gap unknown, solutions 1\\)"));
}

TEST_F(WatchTest, EndsItsFilesWhenTheSolveFails) {
  set("trace", in("trace.csv"));
  link.gurobi->onCall(Fn::GRBoptimize, [&] { node(7, 1e100, 20); });
  link.gurobi->failCall(Fn::GRBoptimize, 10001, "Out of memory");
  EXPECT_EQ(openAndSolve(model), KAVO_LINK);
  EXPECT_THAT(kavo_last_error(), HasSubstr("Out of memory"));
  EXPECT_EQ(trace(), "seconds,nodes,incumbent,bound,gap,reason\nt,7,,20,,end\n");
}

TEST_F(WatchTest, SaysWhereAnOptionWasGivenThatCannotBeUsed) {
  const std::string lost = in("no/x");
  bool isOpen = false;
  for (const auto& [option, value, why] :
       {std::tuple{"dump", lost, "cannot write " + lost + "1.sol: No such file or directory"},
        std::tuple{"trace", lost, "cannot write " + lost + ": No such file or directory"},
        std::tuple{
            "stop", std::string("gapp < 1"),
            std::string("the expression \"gapp < 1\" cannot be used: at character 1: gapp is not known; it may")}}) {
    ASSERT_EQ(kavo_clear_options(model), KAVO_OK);
    ASSERT_EQ(kavo_set_option(model, option, value.c_str(), "run.opt", 3), KAVO_OK);
    EXPECT_EQ(isOpen ? kavo_solve(model) : openAndSolve(model), KAVO_LINK);
    isOpen = true;
    EXPECT_THAT(kavo_last_error(), testing::StartsWith(fmt::format("run.opt, line 3: {}: {}", option, why)));
  }
}

// Raises at the first thing it hears of a kind.
struct Raising : brel::watch::Listener {
  explicit Raising(brel::watch::Reason when) : reason(when) {}
  void hear(const brel::watch::Progress& now) override {
    heard.push_back(now.reason);
    if (now.reason == reason) throw std::runtime_error("enough");
  }
  brel::watch::Reason reason;
  std::vector<brel::watch::Reason> heard;
};

TEST_F(WatchTest, EndsTheSolveWithWhatAListenerRaises) {
  using brel::watch::Reason;
  for (const Reason when : {Reason::node, Reason::end}) {
    grb::Solver solver(link.gurobi->library());
    solver.setLog(std::make_shared<brel::HostLog>(model));
    solver.setup();
    auto translated = brel::load::translate(model, solver, {});
    brel::load::send(translated, solver, {});
    brel::watch::Watch watch(model, solver, translated);
    const auto raising = std::make_shared<Raising>(when);
    const auto other = std::make_shared<Raising>(static_cast<Reason>(-1));
    watch.add(raising), watch.add(other);
    watch.begin();
    const int stops = link.gurobi->count(Fn::GRBterminate);
    link.gurobi->onCall(Fn::GRBoptimize, [&] { node(1, 1, 1), node(2, 1, 1); });
    solver.solve();
    EXPECT_EQ(link.gurobi->count(Fn::GRBterminate), stops + (when == Reason::node ? 1 : 0));
    EXPECT_THROW(watch.end(true), std::runtime_error);
    EXPECT_EQ(std::count(raising->heard.begin(), raising->heard.end(), Reason::node), when == Reason::node ? 1 : 2);
    EXPECT_EQ(other->heard.back(), Reason::end);
    ++current;
  }
}

struct CommaAndDots : std::numpunct<char> {
  char do_decimal_point() const override { return ','; }
  char do_thousands_sep() const override { return '.'; }
  std::string do_grouping() const override { return "\3"; }
};

TEST(Rule, IsReadAndTrueAsItSays) {
  const std::locale before = std::locale::global(std::locale(std::locale::classic(), new CommaAndDots));
  brel::watch::Progress unknown, known;
  known.seconds = 1.75, known.nodes = 1234.5, known.incumbent = -3, known.bound = -4, known.gap = 1,
  known.solutions = 2;
  struct Case {
    const char* text;
    bool ofUnknown, ofKnown;
  };
  for (const Case& c : {Case{"time > 1.5", false, true},
                        {"time >= 1.75 && nodes == 1234.5", false, true},
                        {"gap < 2", false, true},
                        {"gap >= 2", false, false},
                        {"incumbent != 5", false, true},
                        {"!(gap < 0.5)", false, true},
                        {"!(gap < 0.5) || time >= 0", true, true},
                        {"!(gap < 0.5 && time < 0)", true, true},
                        {"!(gap < 0.5 || time < 0)", false, true},
                        {"!(!incumbent) && !(!time)", false, true},
                        {"max(0.1, gap) < 2", false, true},
                        {"min(0.5, gap, 2) == 0.5", false, true},
                        {"min(gap, 0.5) == 0.5", false, true},
                        {"sign(gap) == 1 && sign(incumbent) == -1 && sign(0) == 0", false, true},
                        {"sign(gap) == 0", false, false},
                        {"gap^0 == 1", false, true},
                        {"1^gap == 1", false, true},
                        {"log(-1) == 0 || !(log(-1) == 0)", false, false},
                        {"incumbent", false, true},
                        {"incumbent + 3", false, false},
                        {"time < 0.5 || solutions >= 2", true, true},
                        {"abs(incumbent - bound) <= 1 && 2^3^2 == 512 && 1e-3 < 2*0.5", false, true},
                        {"1 + 2 * 3 - 4 / 2 == 5 || gap > -1", true, true}}) {
    brel::plugin::Rule rule(c.text);
    EXPECT_EQ(rule.isTrue(unknown), c.ofUnknown) << c.text;
    EXPECT_EQ(rule.isTrue(known), c.ofKnown) << c.text;
  }
  std::locale::global(before);
}

}  // namespace
}  // namespace brel_test
