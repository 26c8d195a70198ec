// Threads, signals and callbacks that wait.
#include <gtest/gtest.h>
#include <sys/time.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <functional>
#include <future>
#include <thread>

#include "tests/bridge/library.h"

namespace bridge_test {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// Seconds that `call` takes; it must return 0.
double timed(const std::function<int()>& call, const Model& model) {
  const auto begin = Clock::now();
  EXPECT_EQ(call(), 0) << model.message();
  return std::chrono::duration<double>(Clock::now() - begin).count();
}

struct LongCall {
  const char* name;
  std::function<int(GRBmodel*)> run;
};

const std::vector<LongCall>& longCalls() {
  static std::vector<double> penalties(5, 1.0);
  static const std::vector<LongCall> kCalls = {
      {"optimize", grb().GRBoptimize},
      {"computeIIS", grb().GRBcomputeIIS},
      {"feasrelax",
       [](GRBmodel* m) { return grb().GRBfeasrelax(m, 2, 1, nullptr, nullptr, penalties.data(), nullptr); }}};
  return kCalls;
}

TEST(Terminate, EndsEachLongCallFromAnotherThread) {
  const Env env;
  for (const LongCall& call : longCalls()) {
    SCOPED_TRACE(call.name);
    const Model model(env);
    makeHard(model);
    // During a relaxation gurobipy keeps the interpreter's lock but for the moments of its log lines.
    grb().GRBsetintparam(model.env(), "DisplayInterval", 1);
    std::thread stopper([&] {
      std::this_thread::sleep_for(200ms);
      grb().GRBterminate(model.get());
    });
    const double seconds = timed([&] { return call.run(model.get()); }, model);
    stopper.join();
    EXPECT_GT(seconds, 0.1) << "the model is too easy for this test";
    EXPECT_LT(seconds, 5.0);
  }
}

GRBmodel* signalled = nullptr;

void stopFromSignal(int) { grb().GRBterminate(signalled); }

TEST(Terminate, MayComeFromASignalHandler) {
  const Env env;
  const Model model(env);
  makeHard(model);
  signalled = model.get();
  const auto before = std::signal(SIGALRM, stopFromSignal);
  itimerval timer{{0, 0}, {0, 200'000}};
  setitimer(ITIMER_REAL, &timer, nullptr);
  const double seconds = timed([&] { return grb().GRBoptimize(model.get()); }, model);
  std::signal(SIGALRM, before);
  EXPECT_LT(seconds, 5.0);
  EXPECT_EQ(model.integer("Status"), 11);
}

TEST(Terminate, HasNoEffectOutsideOfACall) {
  const Env env;
  const Model model(env);
  model.addVars({-1.0}, {3.0}, "I");
  grb().GRBterminate(model.get());
  EXPECT_EQ(grb().GRBoptimize(model.get()), 0);
  grb().GRBterminate(model.get());
  EXPECT_EQ(model.integer("Status"), 2);
}

/// A small model of its own, solved from start to end; the thread's log lines must be this model's.
void solveAlone(const Env& env, int number) {
  const std::string name = "model" + std::to_string(number);
  for (int round = 0; round < 20; ++round) {
    const Model model(env, name.c_str());
    int lines = 0;
    grb().GRBsetlogcallbackfunc(model.get(), [](char*, void* count) { return ++*static_cast<int*>(count), 0; }, &lines);
    model.addVars({-1.0 * number, -1.0}, {2.0, 2.0}, "II");
    model.addRow({1.0, 1.0}, '<', 3.0);
    EXPECT_EQ(grb().GRBoptimize(model.get()), 0);
    EXPECT_EQ(model.number("ObjVal"), -2.0 * number - 1.0);
    EXPECT_GT(lines, 10);
  }
}

TEST(Threads, EachSolvesItsOwnModels) {
  const Env env;
  std::vector<std::thread> threads;
  for (int i = 1; i <= 4; ++i) threads.emplace_back([&env, i] { solveAlone(env, i + 1); });
  for (std::thread& thread : threads) thread.join();
}

/// In a callback, lets another thread solve another model, and waits for it.
int waitForAnother(const Env& env) {
  std::future<void> other = std::async(std::launch::async, [&env] { solveAlone(env, 7); });
  if (other.wait_for(20s) == std::future_status::ready) return 0;
  ADD_FAILURE() << "another thread cannot work while a callback waits";
  std::abort();
}

TEST(Threads, ACallbackMayWaitForAnotherThread) {
  struct Waiter {
    const Env& env;
    int solutions = 0;
    int lines = 0;
  };
  const Env env;
  Waiter waiter{env};
  const Model model(env);
  model.addVars({-5.0, -4.0, -3.0}, {9.0, 9.0, 9.0}, "III");
  model.addRow({2.0, 3.0, 1.0}, '<', 5.5);
  const auto onSolution = [](GRBmodel*, void*, int where, void* data) {
    auto& w = *static_cast<Waiter*>(data);
    return where == 4 && w.solutions++ == 0 ? waitForAnother(w.env) : 0;
  };
  const auto onLine = [](char*, void* data) {
    auto& w = *static_cast<Waiter*>(data);
    return w.lines++ == 0 ? waitForAnother(w.env) : 0;
  };
  ASSERT_EQ(grb().GRBsetcallbackfuncadv(model.get(), onSolution, &waiter, 1U << 4), 0);
  ASSERT_EQ(grb().GRBsetlogcallbackfunc(model.get(), onLine, &waiter), 0);
  EXPECT_EQ(grb().GRBoptimize(model.get()), 0);
  EXPECT_GT(waiter.solutions, 0);
  EXPECT_GT(waiter.lines, 0);
}

TEST(Threads, AModelUnderWayCanBeReadButNotChanged) {
  const Env env;
  const Model model(env);
  makeHard(model);
  std::thread solver([&] { EXPECT_EQ(grb().GRBoptimize(model.get()), 0); });
  std::this_thread::sleep_for(200ms);
  EXPECT_EQ(model.integer("NumVars"), 40);
  EXPECT_EQ(grb().GRBaddvar(model.get(), 0, nullptr, nullptr, 0.0, 0.0, 1.0, 'C', ""), 10017);
  EXPECT_EQ(grb().GRBoptimize(model.get()), 10017);
  EXPECT_EQ(model.message(), "Attempted to access a model while optimization is in progress");
  grb().GRBterminate(model.get());
  solver.join();
  EXPECT_EQ(model.integer("Status"), 11);
}

}  // namespace
}  // namespace bridge_test
