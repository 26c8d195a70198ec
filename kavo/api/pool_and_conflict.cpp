// What a solve gives besides its point: further points, and why there is none.

#include <fmt/format.h>

#include "kavo/api/lend.h"
#include "kavo/result/quantity.h"

using kavo::Error;
using kavo::api::clear;
using kavo::api::guard;
using kavo::api::lend;
using kavo::api::need;
using kavo::api::resultsOf;

namespace {

const kavo::Conflict& conflictOf(const trpRec* model) {
  const kavo::Results& results = resultsOf(model);
  if (!results.conflict) throw Error(KAVO_NO_RESULT, "the last solve computed no conflict");
  return *results.conflict;
}

}  // namespace

extern "C" {

int kavo_pool_size(const trpRec* model, size_t* count) {
  return guard([&] {
    need(count, "the address of the count") = 0;
    *count = resultsOf(model).pool.size();
  });
}

int kavo_pool_point(const trpRec* model, size_t index, double* objective, const double** values, size_t* count) {
  return guard([&] {
    clear(values, count);
    const kavo::PoolPoint& point = kavo::api::poolPointOf(model, index);
    if (objective != nullptr) *objective = point.objective;
    lend(point.values, values, count);
  });
}

int kavo_conflict(const trpRec* model, int kind, const unsigned char** marks, size_t* count) {
  return guard([&] {
    clear(marks, count);
    kavo::checkConflictKind(kind);
    lend(conflictOf(model).marks[static_cast<std::size_t>(kind)], marks, count);
  });
}

int kavo_conflict_is_minimal(const trpRec* model, int* minimal) {
  return guard([&] { need(minimal, "the address of the answer") = conflictOf(model).minimal ? 1 : 0; });
}

}  // extern "C"
