// A link without a solver: its settings say what it answers. For tests of the host alone.
//
//   status, stop    numbers of kavo_solution_status and kavo_stop (0, 1)
//   point, duals, basis   1: give them; the point has every column at its lower bound, or 0
//   objective, bound, gap, iterations, nodes, solutions   numbers to tell
//   violation       size of a violation of the first row
//   log, note       a text to tell
//   fail            an error to end with; unfinished: 1 to return without results
//   wait            1: run until stopped, but for the first `deaf` requests
//
// Any other setting is refused. It describes two of them, and those of the host. The environment variable
// FAKE_LINK_CREATE makes grbCreate fail with its text.

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>
#include <new>
#include <string>
#include <thread>

#include "kavo/link.h"

#define EXPORT extern "C" __attribute__((visibility("default")))

namespace {

constexpr double kNone = NAN;

class FakeLink {
 public:
  int ready(trpRec* model) {
    model_ = model;
    kavo_link_publish_solver(model, "the fake solver");
    kavo_link_publish_description(model, "fake: 1\n");
    const kavo_setting_info status{"status", KAVO_SETTING_INT, "0", 0, 6, "Answers", "What to answer."};
    const kavo_setting_info note{"note", KAVO_SETTING_TEXT, nullptr, 0, 0, "Answers", ""};
    kavo_setting_info own{};
    kavo_link_publish_setting(model, &status);
    kavo_link_publish_setting(model, &note);
    for (std::size_t i = 0; kavo_link_own_setting_info(model, i, &own) == KAVO_OK && own.name != nullptr; ++i) {
      kavo_link_publish_setting(model, &own);
    }
    return 0;
  }

  int call() {
    settings_ = {{"status", "0"}, {"stop", "1"}};
    if (!readSettings()) return 1;
    if (has("log")) kavo_link_log(model_, settings_["log"].data(), settings_["log"].size());
    if (has("note")) kavo_link_note(model_, settings_["note"].c_str());
    if (number("wait", 0) != 0) waitForStop();
    if (has("fail")) return refuse(settings_["fail"]);
    if (number("point", 0) != 0) givePoint();
    if (number("duals", 0) != 0) fill(KAVO_DUAL, 1.5), fill(KAVO_REDUCED_COST, -0.5);
    if (number("basis", 0) != 0) giveBasis();
    if (has("violation")) kavo_link_violation(model_, KAVO_CHECK_ROW, number("violation", 0), 0);
    if (number("unfinished", 0) == 0) finish();
    return 0;
  }

 private:
  bool has(const char* name) const { return settings_.contains(name); }
  double number(const char* name, double otherwise) {
    return has(name) ? std::strtod(settings_[name].c_str(), nullptr) : otherwise;
  }

  int refuse(const std::string& message) {
    kavo_link_error(model_, message.c_str());
    return 1;
  }

  bool readSettings() {
    static const char* const kKnown =
        " status stop point duals basis objective bound gap iterations nodes solutions violation log note fail "
        "unfinished wait deaf ";
    const kavo_setting* setting = nullptr;
    std::size_t count = 0;
    kavo_link_settings(model_, &setting, &count);
    for (std::size_t i = 0; i < count; ++i) {
      const std::string name = setting[i].name;
      if (std::strstr(kKnown, (" " + name + " ").c_str()) == nullptr) {
        return refuse(std::string(setting[i].source) + ": unknown option " + name), false;
      }
      settings_[name] = setting[i].value;
    }
    return true;
  }

  void waitForStop() {
    std::atomic<int> deaf = static_cast<int>(number("deaf", 0));
    kavo_link_on_interrupt(model_, [](void* left) { --*static_cast<std::atomic<int>*>(left); }, &deaf);
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (deaf >= 0 && std::chrono::steady_clock::now() < end)
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    kavo_link_on_interrupt(model_, nullptr, nullptr);
    settings_["stop"] = std::to_string(kavo_link_stop_requested(model_) != 0 ? KAVO_STOP_INTERRUPTED : KAVO_STOP_TIME);
    settings_["status"] = std::to_string(KAVO_UNKNOWN);
  }

  void fill(int quantity, double value) {
    double* values = nullptr;
    std::size_t count = 0;
    kavo_link_result(model_, quantity, &values, &count);
    for (std::size_t i = 0; i < count; ++i) values[i] = value + static_cast<double>(i);
  }

  void givePoint() {
    kavo_columns columns;
    kavo_rows rows;
    kavo_link_columns(model_, &columns);
    kavo_link_rows(model_, &rows);
    double *x = nullptr, *activity = nullptr;
    std::size_t count = 0;
    kavo_link_result(model_, KAVO_PRIMAL, &x, &count);
    for (std::size_t i = 0; i < count; ++i) x[i] = columns.lower[i] > -1e20 ? columns.lower[i] : 0;
    kavo_link_result(model_, KAVO_ACTIVITY, &activity, &count);
    for (std::size_t i = 0; i < count; ++i) {
      activity[i] = 0;
      for (std::size_t k = rows.start[i]; k < rows.start[i + 1]; ++k) activity[i] += rows.value[k] * x[rows.column[k]];
    }
  }

  void giveBasis() {
    int* statuses = nullptr;
    std::size_t count = 0;
    for (const int kind : {KAVO_COLUMN, KAVO_ROW}) {
      kavo_link_result_basis(model_, kind, &statuses, &count);
      for (std::size_t i = 0; i < count; ++i) statuses[i] = KAVO_BASIS_LOWER + static_cast<int>(i % 4);
    }
  }

  void finish() {
    const kavo_finish finish{static_cast<int>(number("status", 0)),
                             static_cast<int>(number("stop", 1)),
                             number("objective", kNone),
                             number("bound", kNone),
                             number("gap", kNone),
                             number("iterations", kNone),
                             number("nodes", kNone),
                             kNone,
                             number("solutions", kNone)};
    kavo_link_finish(model_, &finish);
  }

  trpRec* model_ = nullptr;
  std::map<std::string, std::string> settings_;
};

}  // namespace

EXPORT int grbCreate(void** handle, char* message, int length) {
  if (const char* text = std::getenv("FAKE_LINK_CREATE")) {
    std::strncpy(message, text, static_cast<std::size_t>(length));
    return 1;
  }
  *handle = new FakeLink;
  return 0;
}

EXPORT void grbFree(void** handle) {
  delete static_cast<FakeLink*>(*handle);
  *handle = nullptr;
}

EXPORT int grbReadyAPI(void* handle, trpRec* model) { return static_cast<FakeLink*>(handle)->ready(model); }
EXPORT int grbCallSolver(void* handle) { return static_cast<FakeLink*>(handle)->call(); }
EXPORT int grbModifyProblem(void*) { return 0; }
