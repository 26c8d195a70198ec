// What a link may ask of starts and of changes since the last solve.

#include "kavo/api/guard.h"
#include "kavo/link.h"
#include "kavo/model/starts.h"

using kavo::api::guard;
using kavo::api::need;

namespace {

template <class T>
const T* lent(bool isLent, const std::vector<T>& values) {
  return isLent && !values.empty() ? values.data() : nullptr;
}

}  // namespace

extern "C" {

int kavo_link_starts(const trpRec* model, const double** primal, const double** dual) {
  return guard([&] {
    const trpRec& record = need(model);
    const bool isLent = !kavo::withholdsStarts(record);
    need(dual, "dual") = lent(isLent, record.model.dualStart);
    need(primal, "primal") = lent(isLent, record.model.primalStart);
  });
}

int kavo_link_basis(const trpRec* model, const int** columns, const int** rows) {
  return guard([&] {
    const trpRec& record = need(model);
    const bool isLent = kavo::lendsBasis(record);
    need(rows, "rows") = lent(isLent, record.model.rowStart);
    need(columns, "columns") = lent(isLent, record.model.columnStart);
  });
}

int kavo_link_mip_start(const trpRec* model, size_t index, const double** values) {
  return guard([&] {
    const trpRec& record = need(model);
    const auto& starts = record.model.mipStarts;
    const bool isLent = !kavo::withholdsStarts(record) && index < starts.size();
    need(values, "values") = isLent ? starts[index].data() : nullptr;
  });
}

int kavo_link_starts_withheld(const trpRec* model) { return model != nullptr && kavo::withholdsStarts(*model) ? 1 : 0; }

int kavo_link_changes(const trpRec* model, kavo_changes* out) {
  return guard([&] { need(out, "out") = need(model).changes.view(); });
}

}  // extern "C"
