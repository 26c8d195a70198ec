// The format of the call trace, its secrets and its threads.
#include "grb/gurobi/trace.h"

#include <gmock/gmock.h>

#include <fstream>
#include <regex>
#include <set>
#include <thread>

#include "grb/gurobi/model.h"
#include "tests/double/gurobi_double.h"

namespace grb {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

std::string traceFile(const std::string& name) { return ::testing::TempDir() + "trace_" + name + ".txt"; }

// The lines without their number and time, whose form is checked.
std::vector<std::string> lines(const std::string& file) {
  static const std::regex kForm(R"(\d+ (GRB.*) \[\d+ us\])");
  std::vector<std::string> result;
  std::ifstream input(file);
  for (std::string line; std::getline(input, line);) {
    std::smatch parts;
    EXPECT_TRUE(std::regex_match(line, parts, kForm)) << line;
    if (!parts.empty()) result.push_back(parts[1]);
  }
  return result;
}

TEST(Trace, OneLinePerCall) {
  const std::string file = traceFile("lines");
  const auto gurobi = gurobi_double::GurobiDouble::make();
  {
    const auto library = traceCalls(gurobi->library(), file);
    EXPECT_EQ(library->text(), "Gurobi 13.0.2 (recording double)");
    GurobiModel model(library);
    model.setStrParam("LogFile", "a \"b\"\n");
    model.start();
    model.addConstr(std::array{0}, std::array{2.0}, '<', 0.1, "row");
    gurobi->failCall(Fn::GRBoptimize, 10001, "Out of memory");
    EXPECT_THROW(model.optimize(), tav::Exception);
    model.terminate();
  }
  EXPECT_THAT(lines(file),
              ElementsAre("GRBemptyenvinternal(*, 13, 0, 2) = 0", "GRBsetintparam(env, \"LogToConsole\", 0) = 0",
                          R"(GRBsetstrparam(env, "LogFile", "a \"b\"\x0a") = 0)", "GRBstartenv(env) = 0",
                          "GRBnewmodel(env, *, \"\", 0, null, null, null, null, null) = 0",
                          "GRBaddconstr(model, 1, *, *, '<', 0.1, \"row\") = 0", "GRBoptimize(model) = 10001",
                          "GRBgetenv(model) = env", "GRBgeterrormsg(env) = \"Out of memory\"", "GRBterminate(model)",
                          "GRBfreemodel(model) = 0", "GRBfreeenv(env)"));
}

TEST(Trace, SecretsReachGurobiButNotTheFile) {
  const std::string file = traceFile("secret");
  const auto gurobi = gurobi_double::GurobiDouble::make();
  {
    GurobiModel model(traceCalls(gurobi->library(), file));
    for (const char* name : {"WorkerPassword", "workerpassword", "ServerPassword", "WLSSecret"}) {
      model.setStrParam(name, "open sesame");
    }
    EXPECT_EQ(model.getStrParam("WorkerPassword"), "open sesame");
  }
  std::ifstream input(file);
  const std::string text{std::istreambuf_iterator<char>(input), {}};
  EXPECT_THAT(text, HasSubstr("GRBsetstrparam(env, \"WorkerPassword\", ***) = 0"));
  EXPECT_THAT(text, Not(HasSubstr("sesame")));
}

TEST(Trace, LinesOfThreadsStayWholeAndAreNumberedOnce) {
  const std::string file = traceFile("threads");
  const auto gurobi = gurobi_double::GurobiDouble::make();
  constexpr std::size_t kThreads = 4;
  constexpr std::size_t kCalls = 500;
  {
    const auto library = traceCalls(gurobi->library(), file);
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (std::size_t t = 0; t < kThreads; ++t) {
      threads.emplace_back([&] {
        for (std::size_t i = 0; i < kCalls; ++i) library->api().GRBisgpusupported(nullptr);
      });
    }
    for (std::thread& thread : threads) thread.join();
  }
  EXPECT_EQ(lines(file), std::vector<std::string>(kThreads * kCalls, "GRBisgpusupported(null) = 0"));
  std::ifstream input(file);
  std::set<std::string> numbers;
  for (std::string line; std::getline(input, line);) numbers.insert(line.substr(0, line.find(' ')));
  EXPECT_EQ(numbers.size(), kThreads * kCalls);
}

TEST(Trace, LibrariesOfOneProcessShareTheFile) {
  const std::string file = traceFile("shared");
  const auto gurobi = gurobi_double::GurobiDouble::make();
  for (int run = 0; run < 2; ++run) {
    const auto first = traceCalls(gurobi->library(), file);
    const auto second = traceCalls(gurobi->library(), file);
    first->api().GRBplatform();
    second->api().GRBplatform();
  }
  EXPECT_EQ(lines(file), std::vector<std::string>(4, "GRBplatform() = \"linux64\""));
}

TEST(Trace, WhatCannotBeTracedIsSaid) {
  const auto gurobi = gurobi_double::GurobiDouble::make();
  EXPECT_THROW(traceCalls(gurobi->library(), "/no/such/folder/trace"), LoadError);
  const auto traced = traceCalls(gurobi->library(), traceFile("one"));
  EXPECT_THROW(traceCalls(Library::fromTable(Api{}, "another"), traceFile("two")), LoadError);
}

}  // namespace
}  // namespace grb
