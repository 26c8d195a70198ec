// Points that a link has found, as files.

#include "kavo/api/guard.h"
#include "kavo/link.h"
#include "kavo/writer/writer.h"

using kavo::api::guard;
using kavo::api::need;

extern "C" int kavo_link_write_point(const trpRec* model, const char* path, double objective, const double* values) {
  return guard([&] {
    const trpRec& record = need(model);
    const std::span<const double> point(&need(values, "the values"), record.model.columns.size());
    kavo::writer::writePoint(record.model, objective, point, &need(path, "the path"));
  });
}
