// A link without a solver: its settings say what it answers. For tests of the host alone.
//
//   status, stop    numbers of kavo_solution_status and kavo_stop (0, 1)
//   point           1: give one, every column at its lower bound, or 0
//   objective, bound, gap, iterations, nodes, solutions   numbers to tell
//   relaxation, condition, exact   the same
//   ranges, pool, statistics   taken and not heeded
//   give            results word by word (give.h)
//   violation       size of a violation of the first row
//   log, note       a text to tell
//   lose            a file to tell as lost
//   fail            an error to end with; unfinished: 1 to return without results
//   wait            1: run until stopped, but for the first `deaf` requests
//   progress        tells of so many incumbents, 1, 2 and so on, under a bound that falls, until it is asked to stop
//   tell            1: log what has changed, changes: 'structure' or the elements, and what there is to start from
//
// Any other setting is refused. It describes two of them, and those of the host. The environment variable
// FAKE_LINK_CREATE makes grbCreate fail with its text.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <atomic>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>
#include <new>
#include <string>
#include <thread>

#include "give.h"
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

  int modify() {
    isModified_ = true;
    return 0;
  }

  int call() {
    settings_ = {{"status", "0"}, {"stop", "1"}};
    if (!readSettings()) return 1;
    if (has("log")) kavo_link_log(model_, settings_["log"].data(), settings_["log"].size());
    if (has("lose") && !settings_["lose"].empty()) kavo_link_lost_file(model_, settings_["lose"].c_str());
    if (has("note")) kavo_link_note(model_, settings_["note"].c_str());
    if (number("tell", 0) != 0) tellChanges(), tellStarts();
    isModified_ = false;
    if (has("progress")) makeProgress(static_cast<int>(number("progress", 0)));
    if (number("wait", 0) != 0) waitForStop();
    if (has("fail")) return refuse(settings_["fail"]);
    if (number("point", 0) != 0) givePoint();
    if (has("violation")) kavo_link_violation(model_, KAVO_CHECK_ROW, number("violation", 0), 0);
    if (has("give")) fake_link::give(model_, settings_["give"]);
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
        " status stop point objective bound gap iterations nodes solutions violation log note lose fail "
        "unfinished wait deaf progress tell give ranges pool statistics relaxation condition exact ";
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

  void log(const std::string& line) { kavo_link_log(model_, (line + "\n").data(), line.size() + 1); }

  void tellChanges() {
    kavo_changes changes;
    kavo_link_changes(model_, &changes);
    std::string line = isModified_ ? "modified:" : "call:";
    if (changes.structure != 0) line += " structure";
    for (std::size_t i = 0; i < changes.coefficients; ++i) {
      line += fmt::format(" a{},{}={}", changes.coefficient_row[i], changes.coefficient_column[i],
                          changes.coefficient_value[i]);
    }
    for (std::size_t i = 0; i < changes.sides; ++i) line += fmt::format(" row{}", changes.side_row[i]);
    for (std::size_t i = 0; i < changes.bounds; ++i) line += fmt::format(" column{}", changes.bound_column[i]);
    for (std::size_t i = 0; i < changes.costs; ++i) {
      line += fmt::format(" c{}={}", changes.cost_column[i], changes.cost_value[i]);
    }
    if (changes.constant != 0) line += " constant";
    if (changes.others != 0) line += " others";
    log(line);
  }

  void tellStarts() {
    kavo_columns columns;
    kavo_rows rows;
    kavo_link_columns(model_, &columns);
    kavo_link_rows(model_, &rows);
    std::string line = kavo_link_starts_withheld(model_) != 0 ? "withheld" : "starts:";
    const auto tell = [&line](const char* what, const auto* values, std::size_t count) {
      if (values != nullptr) line += fmt::format(" {} {}", what, fmt::join(values, values + count, ","));
    };
    const double *primal = nullptr, *dual = nullptr, *point = nullptr;
    const int *ofColumns = nullptr, *ofRows = nullptr;
    kavo_link_starts(model_, &primal, &dual);
    kavo_link_basis(model_, &ofColumns, &ofRows);
    tell("x", primal, columns.count), tell("y", dual, rows.count);
    tell("columns", ofColumns, columns.count), tell("rows", ofRows, rows.count);
    for (std::size_t i = 0; kavo_link_mip_start(model_, i, &point) == KAVO_OK && point != nullptr; ++i) {
      tell("mip", point, columns.count);
    }
    log(line);
  }

  // Holds a lock while it tells, which the way to stop needs too, as a solver might.
  void makeProgress(int steps) {
    if (kavo_link_wants_progress(model_) == 0) return;
    std::mutex solver;
    kavo_link_on_interrupt(
        model_, [](void* lock) { const std::lock_guard held(*static_cast<std::mutex*>(lock)); }, &solver);
    for (int step = 1; step <= steps && settings_["stop"] == "1"; ++step) {
      const std::lock_guard held(solver);
      const double incumbent = step, bound = 2.0 * steps - step;
      const kavo_progress now{KAVO_PROGRESS_INCUMBENT,         0.1 * step, 10.0 * step, incumbent, bound,
                              (bound - incumbent) / incumbent, incumbent};
      if (kavo_link_progress(model_, &now) != 0) settings_["stop"] = std::to_string(KAVO_STOP_INTERRUPTED);
    }
    kavo_link_on_interrupt(model_, nullptr, nullptr);
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

  void finish() {
    const kavo_finish finish{static_cast<int>(number("status", 0)),
                             static_cast<int>(number("stop", 1)),
                             number("objective", kNone),
                             number("bound", kNone),
                             number("gap", kNone),
                             number("iterations", kNone),
                             number("nodes", kNone),
                             kNone,
                             number("solutions", kNone),
                             number("relaxation", kNone),
                             number("condition", kNone),
                             number("exact", kNone)};
    kavo_link_finish(model_, &finish);
  }

  trpRec* model_ = nullptr;
  bool isModified_ = false;  // since the last call
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
EXPORT int grbModifyProblem(void* handle) { return static_cast<FakeLink*>(handle)->modify(); }
