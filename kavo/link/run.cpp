// What a link tells while it runs, and the results that it gives. What cannot be kept (no memory) is dropped where the
// function has no result to say so.

#include <fmt/format.h>

#include <limits>

#include "kavo/api/guard.h"
#include "kavo/link.h"
#include "kavo/link/stop_request.h"
#include "kavo/model/element.h"

using kavo::Error;
using kavo::api::guard;
using kavo::api::need;

namespace {

kavo::Results& filling(trpRec* model) {
  trpRec& record = need(model);
  if (!record.solving) throw Error(KAVO_INVALID, "results can be given only while the model is being solved");
  return record.filling;
}

}  // namespace

extern "C" {

void kavo_link_log(trpRec* model, const char* text, size_t length) {
  guard([&] {
    const trpRec& record = need(model);
    if (record.logWrite != nullptr && text != nullptr && length > 0) record.logWrite(text, length, record.logData);
  });
}

void kavo_link_note(trpRec* model, const char* line) {
  guard([&] { need(model).notes.emplace_back(&need(line, "the note")); });
}

void kavo_link_error(trpRec* model, const char* message) {
  guard([&] { need(model).linkError = &need(message, "the message"); });
}

void kavo_link_publish_solver(trpRec* model, const char* text) {
  guard([&] { need(model).solverText = &need(text, "the text"); });
}

void kavo_link_on_interrupt(trpRec* model, void (*stop)(void* data), void* data) {
  guard([&] { need(model).stop->setHook(stop, data); });
}

int kavo_link_stop_requested(const trpRec* model) { return model != nullptr && model->stop->requested() ? 1 : 0; }

int kavo_link_result(trpRec* model, int quantity, double** values, size_t* count) {
  return guard([&] {
    kavo::Results& results = filling(model);
    if (quantity < KAVO_PRIMAL || quantity > KAVO_SLACK)
      throw Error(KAVO_INVALID, fmt::format("there is no quantity {}", quantity));
    const int kind = quantity <= KAVO_REDUCED_COST ? KAVO_COLUMN : KAVO_ROW;
    auto& array = results.values[static_cast<std::size_t>(quantity)];
    if (!array) array.emplace(kavo::elementCount(model->model, kind), kavo::kUnknown);
    need(values, "values") = array->data();
    need(count, "count") = array->size();
  });
}

int kavo_link_result_basis(trpRec* model, int kind, int** statuses, size_t* count) {
  return guard([&] {
    kavo::Results& results = filling(model);
    if (kind != KAVO_COLUMN && kind != KAVO_ROW) throw Error(KAVO_INVALID, "only columns and rows have basis statuses");
    auto& array = kind == KAVO_COLUMN ? results.columnBasis : results.rowBasis;
    if (!array) array.emplace(kavo::elementCount(model->model, kind), KAVO_SUPERBASIC);
    need(statuses, "statuses") = array->data();
    need(count, "count") = array->size();
  });
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

int kavo_link_finish(trpRec* model, const kavo_finish* finish) {
  return guard([&] {
    kavo::Results& results = filling(model);
    const kavo_finish& given = need(finish, "finish");
    if (given.status < KAVO_OPTIMAL || given.status > KAVO_UNKNOWN || given.stop < KAVO_STOP_NOT_RUN ||
        given.stop > KAVO_STOP_INTERRUPTED) {
      throw Error(KAVO_INVALID, fmt::format("there is no status {} or stop reason {}", given.status, given.stop));
    }
    results.finish = given;
    results.finished = true;
  });
}

}  // extern "C"
