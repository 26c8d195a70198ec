// What the last solve has given.

#include <fmt/format.h>

#include "kavo/api/lend.h"
#include "kavo/result/outcome.h"
#include "kavo/result/quantity.h"

using kavo::Error;
using kavo::api::clear;
using kavo::api::guard;
using kavo::api::lend;
using kavo::api::need;
using kavo::api::resultsOf;

namespace {

// The results of the fixed model.
const kavo::Answer& fixedOf(const trpRec* model) {
  const kavo::Results& results = resultsOf(model);
  if (!results.fixed.finished) throw Error(KAVO_NO_RESULT, "the last solve gave no results of a fixed model");
  return results.fixed;
}

kavo_outcome tell(const kavo_finish& finish, const kavo::Outcome& words, double seconds) {
  return {finish.status,    words.status,     words.termination, words.solCode,     words.message,
          finish.objective, finish.bound,     finish.gap,        finish.iterations, finish.nodes,
          seconds,          finish.solutions, finish.relaxation, finish.condition,  finish.exact_condition};
}

}  // namespace

extern "C" {

int kavo_get_outcome(const trpRec* model, kavo_outcome* outcome) {
  return guard([&] {
    const kavo::Results& results = resultsOf(model);
    need(outcome, "the outcome") = tell(results.finish, kavo::outcome(results), results.seconds);
  });
}

int kavo_get_fixed_outcome(const trpRec* model, kavo_outcome* outcome) {
  return guard([&] {
    const kavo::Answer& fixed = fixedOf(model);
    const kavo::Outcome words = kavo::outcome(fixed, resultsOf(model).signalled);
    need(outcome, "the outcome") = tell(fixed.finish, words, fixed.finish.seconds);
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
    const kavo::Quantity asked = kavo::quantityOf(quantity);
    const kavo::Answer& answer = asked.fixed ? fixedOf(model) : resultsOf(model);
    lend(answer.values[asked.index], asked.name, values, count);
  });
}

int kavo_result_basis(const trpRec* model, int kind, const int** statuses, size_t* count) {
  return guard([&] {
    clear(statuses, count);
    const kavo::BasisKind asked = kavo::basisKindOf(kind);
    const kavo::Answer& answer = asked.fixed ? fixedOf(model) : resultsOf(model);
    lend(answer.basis(asked.kind), "basis", statuses, count);
  });
}

int kavo_objective_values(const trpRec* model, const double** values, size_t* count) {
  return guard([&] {
    clear(values, count);
    lend(resultsOf(model).objectives, "values of the objectives", values, count);
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
