// New numbers in a model that stands, and what a model consists of.

#include "kavo/api/guard.h"
#include "kavo/model/changes.h"
#include "kavo/model/statistics.h"

using kavo::api::guard;
using kavo::api::need;
using kavo::api::needIdle;

namespace {

// Runs the body of a function that changes numbers; results of an earlier solve no longer fit then.
template <class Body>
int guardNumbers(trpRec* model, Body&& body) noexcept {
  return guard([&] {
    trpRec& record = needIdle(model);
    body(record);
    record.results.reset();
  });
}

// The index of the objective that is solved; beyond the last when none is.
std::size_t solvedObjective(const trpRec& record) { return static_cast<std::size_t>(record.objectiveNumber) - 1; }

}  // namespace

extern "C" {

int kavo_change_coefficients(trpRec* model, size_t count, const int* row, const int* column, const double* value) {
  return guardNumbers(model, [&](trpRec& record) {
    kavo::changeCoefficients(record.model, record.changes, {count, row, column, value});
  });
}

int kavo_change_sides(trpRec* model, size_t count, const int* row, const double* lower, const double* upper) {
  return guardNumbers(
      model, [&](trpRec& record) { kavo::changeSides(record.model, record.changes, {count, row, lower, upper}); });
}

int kavo_change_bounds(trpRec* model, size_t count, const int* column, const double* lower, const double* upper) {
  return guardNumbers(
      model, [&](trpRec& record) { kavo::changeBounds(record.model, record.changes, {count, column, lower, upper}); });
}

int kavo_change_objective(trpRec* model, size_t objective, const double* constant, size_t count, const int* column,
                          const double* value) {
  return guardNumbers(model, [&](trpRec& record) {
    kavo::changeObjective(record.model, record.changes, solvedObjective(record),
                          {objective, constant, count, column, value});
  });
}

int kavo_get_statistics(const trpRec* model, kavo_statistics* statistics) {
  return guard([&] {
    const trpRec& record = need(model);
    need(statistics, "the address of the statistics") = kavo::statistics(record.model, solvedObjective(record));
  });
}

}  // extern "C"
