// Settings are checked before anything else, and told with the place where they were given.
#include "brel/settings/settings.h"

#include <gmock/gmock.h>

#include "tests/brel/host.h"

namespace brel_test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

struct Setting {
  const char* name;
  const char* value;
  const char* source = "command line";
  int line = 0;
};

class SettingsTest : public LinkFixture {
 protected:
  SettingsTest() {
    gurobi.defineParam({"TimeLimit", 1e100, 0, 1e100});
    gurobi.defineParam({"Threads", 0, -1, 1024});
    for (const char* text : {"CSManager", "ResultFile"}) gurobi.defineParam({text, std::string()});
    gurobi.scriptAttr("Status", 2);
    link.definition.enable(brel::Plugin::fixedSolve);
    link.definition.enable(brel::Plugin::writeBack);
    link.definition.setName(brel::PluginAttrib{1}, "solvefixed");
  }

  // Opens the link before the settings are given, as a program may.
  int solveWith(HostModel& host, const std::vector<Setting>& settings) {
    EXPECT_EQ(
        kavo_set_log(
            host, [](const char* text, size_t n, void* to) { static_cast<std::string*>(to)->append(text, n); }, &log),
        KAVO_OK);
    EXPECT_EQ(kavo_open_link(host, FORWARD_LINK), KAVO_OK) << kavo_last_error();
    for (const Setting& s : settings) {
      EXPECT_EQ(kavo_set_option(host, s.name, s.value, s.source, s.line), KAVO_OK) << kavo_last_error();
    }
    gurobi.takeCalls();
    log.clear();
    return kavo_solve(host);
  }
  int solveWith(const std::vector<Setting>& settings) { return solveWith(model, settings); }

  std::vector<std::string> parametersSet() {
    auto calls = gurobi.takeCalls();
    std::erase_if(calls, [](const std::string& call) {
      return !call.starts_with("GRBset") || call.find("param(") == std::string::npos;
    });
    return calls;
  }

  gurobi_double::GurobiDouble& gurobi = *link.gurobi;
  std::string log;
};

TEST_F(SettingsTest, ATextThatGurobiWouldCutIsRefusedWithoutShowingIt) {
  const std::string text(512, 's');
  ASSERT_NE(solveWith({{"workerpassword", text.c_str(), "run.opt", 7}}), KAVO_OK);
  EXPECT_THAT(kavo_last_error(), HasSubstr("run.opt, line 7: WorkerPassword: the text has 512 bytes and may have 511"));
  EXPECT_EQ(std::string(kavo_last_error()).find("sss"), std::string::npos);
  EXPECT_THAT(gurobi.calls(), Not(Contains(HasSubstr("GRBstartenv"))));
}

TEST_F(SettingsTest, WhatIsTakenBackIsAtItsDefaultInTheNextSolve) {
  ASSERT_EQ(solveWith({{"timelimit", "5"}, {"resultfile", "x.sol"}, {"threads", "2"}, {"names", "0"}}), KAVO_OK)
      << kavo_last_error();
  EXPECT_EQ(kavo_set_option(model, "nosuch", "1", nullptr, 0), KAVO_OK);
  EXPECT_NE(kavo_solve(model), KAVO_OK);
  EXPECT_EQ(kavo_clear_options(model), KAVO_OK);
  EXPECT_EQ(kavo_set_option(model, "threads", "3", nullptr, 0), KAVO_OK);
  gurobi.takeCalls();
  ASSERT_EQ(kavo_solve(model), KAVO_OK) << kavo_last_error();
  EXPECT_THAT(parametersSet(), ElementsAre(HasSubstr(R"("TimeLimit", 1e+100)"), HasSubstr(R"("ResultFile", "")"),
                                           HasSubstr(R"("Threads", 3)")));
}

TEST_F(SettingsTest, AreSetWithOneCallEachInTheirTypesUnderGurobisNamesAndTheLastOfANameCounts) {
  ASSERT_EQ(solveWith({{"threads", "1"},
                       {"timelimit", "inf"},
                       {"THREADS", "+4"},
                       {"nodefiledir", "/tmp/a b"},
                       {"names", "0"},
                       {"MIPFocus", "3"}}),
            KAVO_OK)
      << kavo_last_error();
  EXPECT_THAT(
      parametersSet(),
      ElementsAre(R"(GRBsetdblparam(m1.env, "TimeLimit", 1e+100))", R"(GRBsetintparam(m1.env, "Threads", 4))",
                  R"(GRBsetstrparam(m1.env, "NodefileDir", "/tmp/a b"))", R"(GRBsetintparam(m1.env, "MIPFocus", 3))"));
}

// Gurobi takes Record only before its environment is started, and the second solve has the same environment.
TEST_F(SettingsTest, WhatGurobiTakesOnlyBeforeItsStartIsSetThen) {
  ASSERT_EQ(solveWith({{"threads", "1"}, {"record", "1"}}), KAVO_OK) << kavo_last_error();
  auto calls = gurobi.takeCalls();
  std::erase_if(calls,
                [](const std::string& call) { return !call.starts_with("GRBset") && call != "GRBstartenv(e1)"; });
  EXPECT_THAT(
      (std::vector<std::string>(calls.begin(), calls.begin() + 3)),
      ElementsAre(R"(GRBsetintparam(e1, "Record", 1))", "GRBstartenv(e1)", R"(GRBsetintparam(m1.env, "Threads", 1))"));
  ASSERT_EQ(kavo_solve(model), KAVO_OK) << kavo_last_error();
  EXPECT_THAT(parametersSet(), ElementsAre(HasSubstr("Threads")));
  ASSERT_EQ(kavo_set_option(model, "record", "0", "", 0), KAVO_OK);
  gurobi.failCall(gurobi_double::Fn::GRBsetintparam, 10003, "Unable to modify parameter Record", 2);  // after Threads
  EXPECT_EQ(kavo_solve(model), KAVO_LINK);
  EXPECT_THAT(kavo_last_error(), HasSubstr("Unable to modify parameter Record"));
}

TEST_F(SettingsTest, ManyOfOneNameAreOneCall) {
  ASSERT_EQ(solveWith(std::vector<Setting>(200'000, {"threads", "1"})), KAVO_OK) << kavo_last_error();
  EXPECT_EQ(parametersSet().size(), 1U);
}

TEST_F(SettingsTest, AValueOnABoundIsFine) {
  for (const Setting& setting : {Setting{"threads", "1024"},
                                 {"threads", "-1"},
                                 {"timelimit", "1e100"},
                                 {"timelimit", "1e999"},
                                 {"mipgap", "1e-999"},
                                 {"bestobjstop", "-inf"},
                                 {"feasibilitytol", "1e-9"},
                                 {"feasibilitytol", "0.01"},
                                 {"dofuncpieces", "2147483647"},
                                 {"dofuncpieces", "-1"},
                                 {"markowitztol", "0.999"}}) {
    HostModel fresh;
    EXPECT_EQ(solveWith(fresh, {setting}), KAVO_OK) << kavo_last_error();
  }
}

// Whether the setting is overridden or not, what is wrong is an error.
TEST_F(SettingsTest, WhatIsWrongIsRefusedWithoutALicence) {
  const std::string threads = ": the value must be a whole number from -1 to 1024";
  const std::string time = ": the value must be a number from 0 to infinity";
  const std::string longText(100'000, 'x');
  const std::pair<Setting, std::string> cases[]{
      {{"foo", "1"}, "command line: unknown option 'foo'"},
      {{"foo", "1", "run.opt", 3}, "run.opt, line 3: unknown option 'foo'"},
      {{"foo", "1", nullptr, 3}, "unknown option 'foo'"},
      {{"mipgpa", "1"}, "unknown option 'mipgpa'; did you mean MIPGap?"},
      {{"timelim", "1"}, "unknown option 'timelim'; did you mean TimeLimit?"},
      {{longText.c_str(), "1"}, "unknown option '" + std::string(60, 'x') + "...'"},
      {{"CSMANAGER", "x"}, "command line: Gurobi has a parameter 'CSMANAGER' that is not among the options"},
      {{"threads", "1025"}, "command line: Threads=1025" + threads},
      {{"threads", "-2"}, "Threads=-2" + threads},
      {{"threads", "2.5"}, "Threads=2.5" + threads},
      {{"threads", "1e3"}, "Threads=1e3" + threads},
      {{"threads", "two"}, "Threads=two" + threads},
      {{"threads", "4 # all"}, "Threads=4 # all" + threads},
      {{"threads", ""}, "Threads=" + threads},
      {{"threads", "99999999999", "a.opt", 7}, "a.opt, line 7: Threads=99999999999" + threads},
      {{"timelimit", "-1"}, "TimeLimit=-1" + time},
      {{"timelimit", "nan"}, "TimeLimit=nan" + time},
      {{"timelimit", "-inf"}, "TimeLimit=-inf" + time},
      {{"timelimit", "5s"}, "TimeLimit=5s" + time},
      {{"timelimit", " 5"}, "TimeLimit= 5" + time},
      {{"timelimit", "1,5"}, "TimeLimit=1,5" + time},
      {{"timelimit", longText.c_str()}, "TimeLimit=" + std::string(60, 'x') + "..." + time},
      {{"iis", "3"}, "iis=3: the value must be a whole number from 0 to 2"},
      {{"plugin-attribute-3", "1"}, "the option 'plugin-attribute-3' is reserved for plug-in 2 and has no effect"},
      {{"plugin-attribute-7", "1"}, "unknown option 'plugin-attribute-7'; did you mean plugin-attribute-"},
      {{"multobj", "1"}, "unknown option 'multobj'"},  // the plug-in is off
  };
  for (const auto& [setting, message] : cases) {
    HostModel fresh;
    EXPECT_EQ(solveWith(fresh, {setting, {"threads", "1"}}), KAVO_LINK);
    EXPECT_THAT(kavo_last_error(), AllOf(HasSubstr(message), Not(HasSubstr("brel/"))));
    EXPECT_EQ(fresh.results(), "none");
    EXPECT_THAT(parametersSet(), IsEmpty());
  }
  EXPECT_EQ(gurobi.count(gurobi_double::Fn::GRBstartenv), 0);
}

TEST_F(SettingsTest, ParametersLeftOutArePassedOverInAFile) {
  ASSERT_EQ(solveWith({{"csmanager", "x", "run.opt", 3}, {"threads", "1", "run.opt", 4}}), KAVO_OK)
      << kavo_last_error();
  EXPECT_THAT(parametersSet(), ElementsAre(HasSubstr("Threads")));
  EXPECT_THAT(
      log, HasSubstr("\nrun.opt, line 3: Gurobi has a parameter 'csmanager' that is not among the options; skipped\n"));
}

TEST_F(SettingsTest, AQuestionIsAnsweredAndTheSolveGoesOn) {
  ASSERT_EQ(solveWith({{"THREADS", "?"},
                       {"threads", "2"},
                       {"timelimit", "?"},
                       {"writeprob", "?"},
                       {"names", "?"},
                       {"workerpassword", "open sesame"},
                       {"WorkerPassword", "?"}}),
            KAVO_OK)
      << kavo_last_error();
  EXPECT_THAT(model.notes(), ElementsAre("Threads=2 (default 0)", "TimeLimit=infinity (default infinity)",
                                         "writeprob=\"\"", "names=1 (default 1)", "WorkerPassword=\"***\""));
  EXPECT_THAT(parametersSet(), ElementsAre(HasSubstr("Threads"), HasSubstr("open sesame")));
}

TEST_F(SettingsTest, APasswordIsInNoMessage) {
  gurobi.failCall(gurobi_double::Fn::GRBsetstrparam, 10008, "Unable to set parameter WorkerPassword");
  EXPECT_EQ(solveWith({{"workerpassword", "open sesame"}}), KAVO_LINK);
  EXPECT_THAT(kavo_last_error(), testing::Not(HasSubstr("sesame")));
  EXPECT_THAT(log, testing::Not(HasSubstr("sesame")));
}

}  // namespace
}  // namespace brel_test
