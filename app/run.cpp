#include "app/run.h"

#include <fmt/core.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "app/failure.h"
#include "app/gurobi_files.h"
#include "app/output.h"
#include "app/overwriting.h"
#include "app/own_words.h"
#include "app/paths.h"
#include "app/pool_files.h"
#include "app/report/page.h"
#include "app/report/path.h"
#include "app/run_files.h"
#include "app/session.h"
#include "app/settings.h"
#include "app/signals.h"
#include "app/status_line.h"
#include "app/summary.h"
#include "app/tables.h"
#include "app/words.h"

namespace app {

namespace {

constexpr int kSolInterrupted = 471;

class Run {
 public:
  explicit Run(const Arguments& arguments)
      : arguments_(arguments), paths_(pathsOf(arguments)), watch_(session_.model(), [this] { line_.abandon(); }) {}

  int execute() {
    try {
      prepare();
      load();
      solve();
      return deliver();
    } catch (const Failure& failure) {
      return fail(failure);
    } catch (const std::exception& error) {
      return fail(Failure(oneLine(error.what())));
    }
  }

 private:
  trpRec* model() const { return session_.model(); }

  // Everything that can be found wrong before the model is read.
  void prepare() {
    words_ = giveSettings(session_, arguments_);
    for (const std::string& line : words_.answers) session_.addNote(line);
    const unsigned want = words_.wantSol.value_or(kWriteSol) | (arguments_.writeSol ? kWriteSol : 0);
    writesSol_ = arguments_.ampl || (!arguments_.noSol && (want & kWriteSol) != 0);
    if (!arguments_.log.empty()) words_.logFile = arguments_.log;
    RunFiles files = runFiles(session_, arguments_, paths_);
    addOwnOutputs(files, arguments_, writesSol_ ? paths_.sol : "", words_);
    checkOutputs(files);
    for (const RunFiles::One& file : files.written) {
      const bool isOfFixed = file.what == kFixedResultFile;
      if (isOfFixed || file.what == kResultFile) results_.emplace_back(file.path, isOfFixed);
    }
    check(kavo_set_objective_number(model(), words_.objective));
    check(kavo_set_basis_ratio(model(), words_.basisRatio));
  }

  void load() {
    check(kavo_read(model(), arguments_.model.c_str()));
    read_ = true;
    stopIfInterrupted();
  }

  void solve() {
    const bool mayShow = !arguments_.quiet && (!arguments_.ampl || words_.showLog.value_or(false));
    const bool showLine = mayShow && arguments_.progress && terminalColumns() > 0;
    if (!words_.logFile.empty()) logFile_.emplace(Output::file(words_.logFile));
    const bool showLog = mayShow && words_.showLog.value_or(true);
    if (showLog && !showLine) screenLog_ = &screen_;
    logsAhead_ = showLog && showLine && asksForStatistics();
    check(kavo_set_log(model(), &Run::takeLog, this));
    if (showLine) line_.open();
    if (showLine || !arguments_.report.empty()) check(kavo_set_progress(model(), &Run::takeProgress, this));
    if (!arguments_.trace.empty()) setenv("GRBLINK_TRACE", arguments_.trace.c_str(), 1);
    session_.openLink(arguments_.link);
    stopIfInterrupted();
    const int status = kavo_solve(model());
    line_.close();
    if (status == KAVO_FILE) {  // of another than the results, which are there
      std::istringstream lines(kavo_last_error());
      for (std::string line; std::getline(lines, line);) lost_.emplace_back(oneLine(line));
    } else {
      check(status);
    }
  }

  // They stand in the log before the search begins.
  bool asksForStatistics() const {
    const std::string given = session_.given("statistics");
    return !given.empty() && given != "0";
  }

  static void takeLog(const char* text, std::size_t length, void* data) {
    auto* run = static_cast<Run*>(data);
    if (run->logsAhead_) run->line_.logAhead({text, length});
    if (run->screenLog_ != nullptr) run->screenLog_->write({text, length});
    if (run->logFile_) run->logFile_->write({text, length});
  }

  static int takeProgress(const kavo_progress* now, void* data) {
    auto* run = static_cast<Run*>(data);
    run->line_.show(*now, run->watch_.interrupted());
    if (!run->arguments_.report.empty()) run->path_.add(*now);
    return 0;
  }

  void stopIfInterrupted() const {
    if (watch_.interrupted()) throw Failure("interrupted before the solve", kExitInterrupted, kSolInterrupted);
  }

  // One output that fails does not keep the others from being made.
  int deliver() {
    bool answered = false;
    const auto attempt = [&](const std::function<void()>& step) {
      try {
        step();
      } catch (const Failure& failure) {
        lost_.push_back(failure);
      }
    };
    noteLostResults();
    attempt([&] {
      writeSolution();
      answered = arguments_.ampl;
    });
    attempt([&] {
      if (!words_.poolStub.empty()) stale_ += writePool(session_, words_.poolStub, paths_.amplForm);
    });
    attempt([&] {
      if (!arguments_.json.empty()) check(kavo_write_json(model(), arguments_.json.c_str()));
    });
    attempt([&] {
      if (!arguments_.report.empty()) report::write(arguments_.report, session_, path_, arguments_.model);
    });
    attempt([&] { print(); });
    attempt([&] { screen_.finish(); });
    attempt([&] {
      if (logFile_) logFile_->finish();
    });
    std::set<std::string> told;
    for (const Failure& failure : lost_) {
      if (told.insert(failure.what()).second) printError(failure.what());
    }
    return answered || lost_.empty() ? EXIT_SUCCESS : kExitFailure;
  }

  void noteLostResults() {
    for (const ResultFile& file : results_) {
      const std::string line = file.lost(session_);
      if (line.empty()) continue;
      session_.addNote(line);
      lost_.emplace_back(line);
    }
  }

  void writeSolution() {
    if (!writesSol_) return;
    if (paths_.amplForm) return check(kavo_write_sol(model(), paths_.sol.c_str(), solMessage(session_).c_str(), -1));
    const int status = kavo_write_point(model(), paths_.sol.c_str());
    if (status != KAVO_NO_RESULT) return check(status);
    std::error_code ignored;  // no point, no file; but one of an earlier run must not pass for this one's
    if (std::filesystem::exists(paths_.sol, ignored)) {
      stale_ = fmt::format("note: there is no solution to write; \"{}\" is from an earlier run\n", paths_.sol);
    }
  }

  void print() {
    if (arguments_.quiet || arguments_.ampl) return;
    const unsigned want = words_.wantSol.value_or(0);
    if ((want & kNoSummary) == 0) screen_.write(summary(session_) + stale_);
    if ((want & kPrintVariables) != 0) screen_.write(valueTable(session_, KAVO_PRIMAL));
    if ((want & kPrintDuals) != 0) screen_.write(valueTable(session_, KAVO_DUAL));
    if (arguments_.ranges) screen_.write(rangeTables(session_));
  }

  // A caller by the AMPL protocol reads failures in the .sol, as far as the model's counts are known.
  int fail(const Failure& failure) {
    const std::string message = failureMessage(failure.what());
    const char* sol = paths_.sol.c_str();
    const bool answers = arguments_.ampl && !isRead(runFiles(session_, arguments_, paths_), paths_.sol);
    if (answers && read_ && kavo_write_sol(model(), sol, message.c_str(), failure.solCode()) == KAVO_OK)
      return EXIT_SUCCESS;
    if (answers && !read_ &&
        kavo_write_failure_sol(paths_.nl.c_str(), sol, message.c_str(), failure.solCode()) == KAVO_OK) {
      return EXIT_SUCCESS;
    }
    printError(failure.what());
    return failure.exitCode();
  }

  const Arguments& arguments_;
  const Paths paths_;
  OwnWords words_;
  bool writesSol_ = false;
  bool read_ = false;  // the model is there
  Output screen_ = Output::standard();
  std::optional<Output> logFile_;
  std::vector<ResultFile> results_;
  std::vector<Failure> lost_;  // outputs that are not written
  std::string stale_;          // lines about files of an earlier run
  Output* screenLog_ = nullptr;
  bool logsAhead_ = false;  // in a terminal with a status line, the log until that line is there
  StatusLine line_{screen_};
  report::Path path_;
  Session session_;
  SignalWatch watch_;
};

}  // namespace

int run(const Arguments& arguments) { return Run(arguments).execute(); }

bool answerFailure(const char* model, const Failure& failure) {
  Arguments arguments;
  arguments.model = model;
  arguments.ampl = true;
  const Paths paths = pathsOf(arguments);
  const std::string message = failureMessage(failure.what());
  return kavo_write_failure_sol(paths.nl.c_str(), paths.sol.c_str(), message.c_str(), failure.solCode()) == KAVO_OK;
}

}  // namespace app
