// Settings are checked before anything else, and told with the place where they were given.
#include "brel/settings/settings.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "tests/brel/host.h"

namespace brel_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

struct Setting {
  const char* name;
  const char* value;
  const char* source = "command line";
  int line = 0;
};

class SettingsTest : public testing::Test {
 protected:
  SettingsTest() {
    gurobi.defineParam({"TimeLimit", 1e100, 0, 1e100});
    gurobi.defineParam({"Threads", 0, -1, 1024});
    gurobi.defineParam({"MIPFocus", 0, 0, 3});
    gurobi.defineParam({"NodefileDir", std::string(".")});
    gurobi.scriptAttr("Status", 2);
    EXPECT_EQ(kavo_open_link(model, FORWARD_LINK), KAVO_OK) << kavo_last_error();
    gurobi.takeCalls();
  }
  int solveWith(const std::vector<Setting>& settings) {
    for (const Setting& s : settings) {
      EXPECT_EQ(kavo_set_option(model, s.name, s.value, s.source, s.line), KAVO_OK) << kavo_last_error();
    }
    return kavo_solve(model);
  }
  std::vector<std::string> parametersSet() {
    auto calls = gurobi.takeCalls();
    std::erase_if(calls, [](const std::string& call) {
      return !call.starts_with("GRBset") || call.find("param(") == std::string::npos;
    });
    return calls;
  }

  LinkOverDouble link;
  gurobi_double::GurobiDouble& gurobi = *link.gurobi;
  HostModel model;
};

TEST_F(SettingsTest, AreSetWithOneCallEachInTheirTypes) {
  ASSERT_EQ(solveWith({{"timelimit", "1e3"}, {"THREADS", "+4"}, {"nodefiledir", "/tmp/a b"}, {"MIPFocus", "3"}}),
            KAVO_OK)
      << kavo_last_error();
  EXPECT_THAT(
      parametersSet(),
      ElementsAre(R"(GRBsetdblparam(m1.env, "TimeLimit", 1000))", R"(GRBsetintparam(m1.env, "Threads", 4))",
                  R"(GRBsetstrparam(m1.env, "NodefileDir", "/tmp/a b"))", R"(GRBsetintparam(m1.env, "MIPFocus", 3))"));
}

TEST_F(SettingsTest, TheLastOfOneNameCounts) {
  ASSERT_EQ(solveWith({{"threads", "1"}, {"timelimit", "inf"}, {"Threads", "2"}}), KAVO_OK) << kavo_last_error();
  EXPECT_THAT(parametersSet(),
              ElementsAre(R"(GRBsetdblparam(m1.env, "TimeLimit", 1e+100))", R"(GRBsetintparam(m1.env, "Threads", 2))"));
}

// Whether the setting is overridden or not, what is wrong is an error.
TEST_F(SettingsTest, WhatIsWrongIsRefusedWithoutALicence) {
  struct Case {
    Setting setting;
    const char* message;
  };
  const Case cases[]{
      {{"foo", "1"}, "Setting: command line: unknown option 'foo' ("},
      {{"foo", "1", "run.opt", 3}, "Setting: run.opt, line 3: unknown option 'foo' ("},
      {{"foo", "1", nullptr, 3}, "Setting: unknown option 'foo' ("},
      {{"LogFile", "x.log"}, "Setting: command line: unknown option 'LogFile' ("},
      {{"threads", "1025"}, "Setting: command line: Threads=1025: the value must be a whole number from -1 to 1024 ("},
      {{"threads", "-2"}, "Threads=-2: the value must be a whole number from -1 to 1024 ("},
      {{"threads", "2.5"}, "Threads=2.5: the value must be a whole number from -1 to 1024 ("},
      {{"threads", "two"}, "Threads=two: the value must be a whole number from -1 to 1024 ("},
      {{"threads", ""}, "Threads=: the value must be a whole number from -1 to 1024 ("},
      {{"threads", "99999999999"}, "Threads=99999999999: the value must be a whole number from -1 to 1024 ("},
      {{"timelimit", "-1"}, "TimeLimit=-1: the value must be a number from 0 to 1e+100 ("},
      {{"timelimit", "nan"}, "TimeLimit=nan: the value must be a number from 0 to 1e+100 ("},
      {{"timelimit", "5s"}, "TimeLimit=5s: the value must be a number from 0 to 1e+100 ("},
      {{"timelimit", " 5"}, "TimeLimit= 5: the value must be a number from 0 to 1e+100 ("},
      {{"timelimit", "1,5"}, "TimeLimit=1,5: the value must be a number from 0 to 1e+100 ("},
  };
  for (const Case& c : cases) {
    HostModel fresh;
    ASSERT_EQ(kavo_open_link(fresh, FORWARD_LINK), KAVO_OK);
    ASSERT_EQ(kavo_set_option(fresh, c.setting.name, c.setting.value, c.setting.source, c.setting.line), KAVO_OK);
    ASSERT_EQ(kavo_set_option(fresh, "threads", "1", "", 0), KAVO_OK);
    EXPECT_EQ(kavo_solve(fresh), KAVO_LINK);
    EXPECT_THAT(kavo_last_error(), HasSubstr(c.message));
    EXPECT_EQ(fresh.results(), "none");
  }
  EXPECT_THAT(parametersSet(), testing::Each(HasSubstr("LogToConsole")));
  EXPECT_EQ(gurobi.count(gurobi_double::Fn::GRBstartenv), 0);
}

// A value that Gurobi refuses although it is within the bounds that Gurobi told.
TEST_F(SettingsTest, WhatGurobiRefusesIsToldInItsWords) {
  gurobi.failCall(gurobi_double::Fn::GRBsetintparam, 10008, "Unable to set parameter Threads to value 3");
  EXPECT_EQ(solveWith({{"threads", "3"}}), KAVO_LINK);
  EXPECT_THAT(kavo_last_error(),
              HasSubstr("Gurobi: Unable to set parameter Threads to value 3 [GRBsetintparam, code 10008]"));
  EXPECT_EQ(model.results(), "none");
  EXPECT_EQ(gurobi.count(gurobi_double::Fn::GRBoptimize), 0);
}

}  // namespace
}  // namespace brel_test
