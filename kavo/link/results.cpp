// The results that a link gives.

#include <fmt/format.h>

#include "kavo/api/guard.h"
#include "kavo/link.h"
#include "kavo/model/element.h"
#include "kavo/result/quantity.h"

using kavo::Error;
using kavo::api::guard;
using kavo::api::need;

namespace {

kavo::Results& filling(trpRec* model) {
  trpRec& record = need(model);
  if (!record.solving) throw Error(KAVO_INVALID, "results can be given only while the model is being solved");
  return record.filling;
}

kavo::Answer& answerOf(kavo::Results& results, bool fixed) { return fixed ? results.fixed : results; }

// What has been given so far.
const kavo::Answer& givenAnswer(const trpRec* model, bool fixed) {
  const kavo::Results& results = need(model).filling;
  return fixed ? results.fixed : results;
}

template <class T>
void lend(std::vector<T>& array, T** values, std::size_t* count) {
  need(values, "the address of the values") = array.data();
  need(count, "the address of the count") = array.size();
}

// The conflict, which begins with no marks at all.
kavo::Conflict& conflictOf(trpRec* model) {
  kavo::Results& results = filling(model);
  if (!results.conflict) {
    kavo::Conflict empty;
    for (const int kind : {KAVO_COLUMN, KAVO_ROW, KAVO_LOGICAL, KAVO_SET}) {
      empty.marks[static_cast<std::size_t>(kind)].resize(kavo::elementCount(model->model, kind), KAVO_CONFLICT_NONE);
    }
    results.conflict = std::move(empty);
  }
  return *results.conflict;
}

void close(kavo::Answer& answer, const kavo_finish* finish) {
  const kavo_finish& given = need(finish, "finish");
  if (given.status < KAVO_OPTIMAL || given.status > KAVO_UNKNOWN || given.stop < KAVO_STOP_NOT_RUN ||
      given.stop > KAVO_STOP_RULE) {
    throw Error(KAVO_INVALID, fmt::format("there is no status {} or stop reason {}", given.status, given.stop));
  }
  answer.finish = given;
  answer.finished = true;
}

}  // namespace

extern "C" {

int kavo_link_result(trpRec* model, int quantity, double** values, size_t* count) {
  return guard([&] {
    kavo::Results& results = filling(model);
    const kavo::Quantity given = kavo::quantityOf(quantity);
    kavo::Numbers& array = answerOf(results, given.fixed).values[given.index];
    if (!array) array.emplace(kavo::elementCount(model->model, given.kind), kavo::kUnknown);
    lend(*array, values, count);
  });
}

int kavo_link_result_basis(trpRec* model, int kind, int** statuses, size_t* count) {
  return guard([&] {
    kavo::Results& results = filling(model);
    const kavo::BasisKind given = kavo::basisKindOf(kind);
    kavo::Statuses& array = answerOf(results, given.fixed).basis(given.kind);
    if (!array) array.emplace(kavo::elementCount(model->model, given.kind), KAVO_SUPERBASIC);
    lend(*array, statuses, count);
  });
}

int kavo_link_has_result(const trpRec* model, int quantity) {
  bool has = false;
  guard([&] {
    const kavo::Quantity asked = kavo::quantityOf(quantity);
    has = givenAnswer(model, asked.fixed).values[asked.index].has_value();
  });
  return has ? 1 : 0;
}

int kavo_link_has_basis(const trpRec* model, int kind) {
  bool has = false;
  guard([&] {
    const kavo::BasisKind asked = kavo::basisKindOf(kind);
    has = givenAnswer(model, asked.fixed).basis(asked.kind).has_value();
  });
  return has ? 1 : 0;
}

int kavo_link_violation(trpRec* model, int check, double value, long long element) {
  return guard([&] {
    kavo::Results& results = filling(model);
    if (check < KAVO_CHECK_ROW || check > KAVO_CHECK_SET)
      throw Error(KAVO_INVALID, fmt::format("there is no check {}", check));
    const auto kind = kavo::kCheckedKind[static_cast<std::size_t>(check)];
    if (element >= static_cast<long long>(kavo::elementCount(model->model, kind))) {
      throw Error(KAVO_INVALID, fmt::format("there is no element {} to be violated", element));
    }
    results.violations[static_cast<std::size_t>(check)] = kavo::Violation{value, element};
  });
}

int kavo_link_objective_values(trpRec* model, double** values, size_t* count) {
  return guard([&] {
    kavo::Numbers& array = filling(model).objectives;
    if (!array) array.emplace(model->model.objectives.size(), kavo::kUnknown);
    lend(*array, values, count);
  });
}

int kavo_link_pool_point(trpRec* model, double objective, double** values, size_t* count) {
  return guard([&] {
    kavo::Results& results = filling(model);
    results.pool.push_back({objective, std::vector<double>(model->model.columns.size(), kavo::kUnknown)});
    lend(results.pool.back().values, values, count);
  });
}

int kavo_link_conflict(trpRec* model, int kind, unsigned char** marks, size_t* count) {
  return guard([&] {
    kavo::checkConflictKind(kind);
    lend(conflictOf(model).marks[static_cast<std::size_t>(kind)], marks, count);
  });
}

int kavo_link_conflict_minimal(trpRec* model, int minimal) {
  return guard([&] { conflictOf(model).minimal = minimal != 0; });
}

int kavo_link_finish(trpRec* model, const kavo_finish* finish) {
  return guard([&] { close(filling(model), finish); });
}

int kavo_link_finish_fixed(trpRec* model, const kavo_finish* finish) {
  return guard([&] { close(filling(model).fixed, finish); });
}

}  // extern "C"
