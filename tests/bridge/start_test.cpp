// How the library finds its Python, and what it says when it cannot. Each case is a process of its own.
#include <gtest/gtest.h>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "tests/bridge/library.h"

namespace bridge_test {
namespace {

namespace fs = std::filesystem;

struct Setting {
  const char* variable;
  std::string value;
};

/// Sets the variables, starts an environment, prints "code: message" on stderr and ends the process.
[[noreturn]] void startAndTell(const std::vector<Setting>& settings) {
  for (const char* name : {"GRBLINK_PYTHON", "VIRTUAL_ENV", "GRB_LICENSE_FILE"}) unsetenv(name);
  for (const Setting& setting : settings) setenv(setting.variable, setting.value.c_str(), 1);
  GRBenv* env = nullptr;
  const int made = grb().GRBemptyenvinternal(&env, 13, 0, 2);
  int major = 0, minor = 0;
  grb().GRBversion(&major, &minor, nullptr);
  grb().GRBsetintparam(env, "LogToConsole", 0);
  const int code = grb().GRBstartenv(env);
  std::fprintf(stderr, "%d %d.%d %d: %s;", made, major, minor, code, grb().GRBgeterrormsg(env));
  GRBmodel* model = nullptr;
  std::fprintf(stderr, " %d", grb().GRBnewmodel(env, &model, "", 0, nullptr, nullptr, nullptr, nullptr, nullptr));
  grb().GRBfreeenv(env);
  std::_Exit(0);
}

void expectStart(const std::vector<Setting>& settings, const std::string& told) {
  EXPECT_EXIT(startAndTell(settings), testing::ExitedWithCode(0), told);
}

class StartDeathTest : public testing::Test {
 protected:
  // Each statement runs in a new process, which has not started an interpreter yet.
  void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(StartDeathTest, APythonIsFound) {
  const std::string python = GRBLINK_CONFIGURED_PYTHON;
  const std::string venv = fs::path(python).parent_path().parent_path().string();
  expectStart({}, "0 13.0 0: ; 0$");
  expectStart({{"GRBLINK_PYTHON", python}}, "0 13.0 0: ; 0$");
  expectStart({{"GRBLINK_PYTHON", venv}}, "0 13.0 0: ; 0$");
  expectStart({{"VIRTUAL_ENV", venv}}, "0 13.0 0: ; 0$");
  expectStart({{"VIRTUAL_ENV", GRBLINK_EMPTY_VENV}}, "0 13.0 0: ; 0$");
}

TEST_F(StartDeathTest, OrTheUserReadsWhyNot) {
  expectStart({{"GRBLINK_PYTHON", GRBLINK_EMPTY_VENV}},
              "0 13.0 10009: gurobipy cannot be used by Python .*/bin/python: No module named 'gurobipy'. Run in that "
              "Python: pip install gurobipy==13.0.2 .*; 10009$");
  expectStart({{"GRBLINK_PYTHON", "/nowhere"}},
              "0 13.0 10009: GRBLINK_PYTHON is '/nowhere', which is neither a Python executable nor a virtual "
              "environment.*pip install gurobipy; 10009$");
  expectStart({{"PYTHONHOME", "/nowhere"}},
              "0 13.0 10009: Python .* cannot be started: .*pip install gurobipy; 10009$");
  expectStart({{"GRB_LICENSE_FILE", "/nowhere"}},
              "0 13.0 10009: Unable to open Gurobi license file '/nowhere'; 10009$");
}

/// Threads whose calls are the first of the process, and fail as often as they succeed.
[[noreturn]] void startOnThreads() {
  const auto work = [] {
    for (int round = 0; round < 20; ++round) {
      const Env env;
      const Model model(env);
      double value = 0;
      for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(grb().GRBgetdblattr(model.get(), "ObjVal", &value), 10005);
        EXPECT_EQ(grb().GRBisattravailable(model.get(), "X"), 0);
      }
    }
  };
  std::vector<std::thread> threads;
  for (int i = 0; i < 8; ++i) threads.emplace_back(work);
  for (std::thread& thread : threads) thread.join();
  work();  // after the thread that started Python has ended
  std::_Exit(testing::Test::HasFailure() ? 1 : 0);
}

TEST_F(StartDeathTest, AnyThreadMayComeFirst) { EXPECT_EXIT(startOnThreads(), testing::ExitedWithCode(0), ""); }

TEST(Start, OnlyTheServedVersionIsGiven) {
  for (const auto& [major, minor, code] : {std::array{13, 0, 0}, {13, 1, 10003}, {12, 0, 10003}, {14, 0, 10003}}) {
    for (const int technical : {0, 2, 9}) {
      auto* env = reinterpret_cast<GRBenv*>(1);
      EXPECT_EQ(grb().GRBemptyenvinternal(&env, major, minor, technical), code);
      EXPECT_EQ(env == nullptr, code != 0);
      grb().GRBfreeenv(code == 0 ? env : nullptr);
    }
  }
  EXPECT_STREQ(grb().GRBplatform(), "linux64");
}

TEST(Start, AModelNeedsAStartedEnvironment) {
  GRBenv* env = nullptr;
  GRBmodel* model = nullptr;
  ASSERT_EQ(grb().GRBemptyenvinternal(&env, 13, 0, 2), 0);
  EXPECT_EQ(grb().GRBisgpusupported(env), 0);
  EXPECT_EQ(grb().GRBnewmodel(env, &model, "", 0, nullptr, nullptr, nullptr, nullptr, nullptr), 10009);
  EXPECT_STREQ(grb().GRBgeterrormsg(env), "No Gurobi license, or license not started or set");
  EXPECT_EQ(model, nullptr);
  grb().GRBfreeenv(env);
}

void hostHandler(int) {}

TEST(Start, LocaleAndSignalsStayTheHosts) {
  const std::string locale = std::setlocale(LC_ALL, nullptr);
  const auto before = std::signal(SIGINT, hostHandler);
  const Env env;
  EXPECT_EQ(std::signal(SIGINT, before), hostHandler);
  EXPECT_EQ(std::signal(SIGPIPE, SIG_DFL), SIG_DFL);
  EXPECT_EQ(std::setlocale(LC_ALL, nullptr), locale);
}

}  // namespace
}  // namespace bridge_test
