// What the last solve has given.

#include <fmt/format.h>

#include "kavo/api/guard.h"
#include "kavo/result/outcome.h"

using kavo::Error;
using kavo::api::guard;
using kavo::api::need;

namespace {

const kavo::Results& resultsOf(const trpRec* model) {
  const trpRec& record = need(model);
  if (!record.results) throw Error(KAVO_NO_RESULT, "the model has not been solved");
  return *record.results;
}

// Lends an array, or says that there is none.
template <class T>
void lend(const std::optional<std::vector<T>>& array, const char* what, const T** values, std::size_t* count) {
  if (!array) throw Error(KAVO_NO_RESULT, fmt::format("the last solve gave no {}", what));
  *values = array->data();
  *count = array->size();
}

template <class T>
void clear(const T** values, std::size_t* count) {
  need(values, "the address of the values") = nullptr;
  need(count, "the address of the count") = 0;
}

}  // namespace

extern "C" {

int kavo_get_outcome(const trpRec* model, kavo_outcome* outcome) {
  return guard([&] {
    const kavo::Results& results = resultsOf(model);
    const kavo_finish& finish = results.finish;
    const kavo::Outcome words = kavo::outcome(results);
    need(outcome, "the outcome") = {finish.status,     words.status,     words.termination, words.solCode,
                                    words.message,     finish.objective, finish.bound,      finish.gap,
                                    finish.iterations, finish.nodes,     results.seconds,   finish.solutions,
                                    finish.relaxation, finish.condition, finish.exact_condition};
  });
}

int kavo_outcome_row(size_t index, int* sol_code, const char** message) {
  return guard([&] {
    need(message, "the address of the message") = nullptr;
    const auto row = kavo::outcomeRow(index);
    if (!row) return;
    need(sol_code, "the address of the code") = row->solCode;
    *message = row->message;
  });
}

int kavo_result(const trpRec* model, int quantity, const double** values, size_t* count) {
  return guard([&] {
    clear(values, count);
    constexpr const char* kNames[] = {"values of the columns", "reduced costs", "activities", "duals", "slacks"};
    if (quantity < KAVO_PRIMAL || quantity > KAVO_SLACK)
      throw Error(KAVO_INVALID, fmt::format("there is no quantity {}", quantity));
    lend(resultsOf(model).values[static_cast<std::size_t>(quantity)], kNames[quantity], values, count);
  });
}

int kavo_result_basis(const trpRec* model, int kind, const int** statuses, size_t* count) {
  return guard([&] {
    clear(statuses, count);
    if (kind != KAVO_COLUMN && kind != KAVO_ROW) throw Error(KAVO_INVALID, "only columns and rows have basis statuses");
    const kavo::Results& results = resultsOf(model);
    lend(kind == KAVO_COLUMN ? results.columnBasis : results.rowBasis, "basis", statuses, count);
  });
}

int kavo_violation(const trpRec* model, int check, double* value, long long* element) {
  return guard([&] {
    if (check < KAVO_CHECK_ROW || check > KAVO_CHECK_SET)
      throw Error(KAVO_INVALID, fmt::format("there is no check {}", check));
    const auto& violation = resultsOf(model).violations[static_cast<std::size_t>(check)];
    if (!violation) throw Error(KAVO_NO_RESULT, "the last solve gave no point to check");
    need(value, "the address of the value") = violation->value;
    need(element, "the address of the element") = violation->element;
  });
}

int kavo_note(const trpRec* model, size_t index, const char** note) {
  return guard([&] {
    const auto& notes = need(model).notes;
    need(note, "the address of the note") = index < notes.size() ? notes[index].c_str() : nullptr;
  });
}

}  // extern "C"
