#include "kavo/result/outcome.h"

#include <iterator>

#include "kavo/result/relaxed.h"

namespace kavo {

namespace {

// What to say of a result with a point, and of one without.
struct Verdict {
  int code, codeWithoutPoint;
  const char *message, *messageWithoutPoint;
};

// A known status says it all, whatever ended the run. By kavo_solution_status.
struct StatusRow {
  const char* word;
  Verdict verdict;
};
constexpr StatusRow kStatus[] = {
    {"optimal", {0, 0, "optimal solution", "optimal solution"}},
    {"locally_optimal", {0, 0, "locally optimal solution", "locally optimal solution"}},
    {"infeasible", {201, 201, "infeasible problem", "infeasible problem"}},
    {"locally_infeasible", {201, 201, "locally infeasible problem", "locally infeasible problem"}},
    {"unbounded", {300, 350, "unbounded problem, feasible solution", "unbounded problem"}},
    {"infeasible_or_unbounded", {450, 450, "infeasible or unbounded problem", "infeasible or unbounded problem"}},
    {"unknown", {0, 0, "", ""}},
};

// With status unknown the stop reason decides. By kavo_stop. Clients look for the words "time limit, feasible
// solution".
struct StopRow {
  const char* word;
  Verdict verdict;
};
constexpr StopRow kStop[] = {
    {"not_run", {500, 500, "not solved", "not solved"}},
    {"finished", {100, 500, "feasible solution without proof", "ended without a solution or a proof"}},
    {"suboptimal", {100, 500, "suboptimal solution", "ended without a solution or a proof"}},
    {"iteration_limit",
     {403, 473, "iteration limit, feasible solution", "iteration limit, without a feasible solution"}},
    {"node_limit", {404, 474, "node limit, feasible solution", "node limit, without a feasible solution"}},
    {"time_limit", {402, 472, "time limit, feasible solution", "time limit, without a feasible solution"}},
    {"solution_limit", {408, 478, "solution limit, feasible solution", "solution limit, without a feasible solution"}},
    {"cutoff", {405, 475, "cutoff, feasible solution", "no solution better than the cutoff"}},
    {"objective_limit",
     {405, 475, "objective limit, feasible solution", "objective limit, without a feasible solution"}},
    {"work_limit", {409, 479, "work limit, feasible solution", "work limit, without a feasible solution"}},
    {"memory_limit", {410, 480, "memory limit, feasible solution", "memory limit, without a feasible solution"}},
    {"numeric", {550, 550, "numeric error, feasible solution", "numeric error"}},
    {"interrupted", {401, 471, "interrupted, feasible solution", "interrupted, without a feasible solution"}},
    {"stop_expression", {411, 481, "stop rule, feasible solution", "stop rule, without a feasible solution"}},
};
static_assert(std::size(kStatus) == KAVO_UNKNOWN + 1 && std::size(kStop) == KAVO_STOP_RULE + 1);

// A point of the relaxation is none of the model: these messages must not speak of a feasible solution.
const char* relaxedMessage(int stop) {
  const bool isWhole = stop == KAVO_STOP_FINISHED || stop == KAVO_STOP_SUBOPTIMAL;
  return isWhole ? "feasible relaxation" : "stopped early, feasible relaxation";
}

Outcome compose(const StatusRow& status, const StopRow& stop, bool point) {
  const bool known = &status != &kStatus[KAVO_UNKNOWN];
  const Verdict& verdict = known ? status.verdict : stop.verdict;
  if (point) return {status.word, stop.word, verdict.code, verdict.message};
  return {status.word, stop.word, verdict.codeWithoutPoint, verdict.messageWithoutPoint};
}

}  // namespace

Outcome outcome(const Answer& answer, bool signalled) {
  const int stop = answer.finish.stop;
  Outcome words = compose(kStatus[answer.finish.status], kStop[stop], answer.hasPoint());
  if (isRelaxed(answer) && answer.finish.status == KAVO_UNKNOWN) {
    words.message = relaxedMessage(stop);
  }
  if (stop == KAVO_STOP_INTERRUPTED) words.termination = signalled ? "interrupted_by_signal" : "interrupted_by_host";
  return words;
}

std::optional<Outcome> outcomeRow(std::size_t index) {
  const bool point = index % 2 == 0;
  const std::size_t row = index / 2;
  if (row < KAVO_UNKNOWN) return compose(kStatus[row], kStop[KAVO_STOP_FINISHED], point);
  const std::size_t stop = row - KAVO_UNKNOWN;
  if (stop < std::size(kStop)) return compose(kStatus[KAVO_UNKNOWN], kStop[stop], point);
  const std::size_t ofRelaxation = stop - std::size(kStop) + KAVO_STOP_FINISHED;
  if (ofRelaxation >= std::size(kStop)) return std::nullopt;
  Outcome relaxed = compose(kStatus[KAVO_UNKNOWN], kStop[ofRelaxation], true);
  relaxed.message = relaxedMessage(static_cast<int>(ofRelaxation));
  return relaxed;
}

}  // namespace kavo
