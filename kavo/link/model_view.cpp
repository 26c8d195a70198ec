// What a link may ask of the model.

#include <fmt/format.h>

#include "kavo/api/guard.h"
#include "kavo/link.h"
#include "kavo/link/beyond_linear.h"

using kavo::api::guard;
using kavo::api::need;

namespace {

kavo_names view(const kavo::Names& names) { return {names.text(), names.starts()}; }

}  // namespace

extern "C" {

int kavo_link_columns(const trpRec* model, kavo_columns* out) {
  return guard([&] {
    const kavo::Columns& columns = need(model).model.columns;
    need(out, "out") = {columns.size(), columns.lower.data(), columns.upper.data(), columns.type.data(),
                        view(columns.names)};
  });
}

int kavo_link_rows(const trpRec* model, kavo_rows* out) {
  return guard([&] {
    const kavo::Rows& rows = need(model).model.rows;
    need(out, "out") = {rows.size(),
                        rows.start.data(),
                        rows.column.data(),
                        rows.value.data(),
                        rows.lower.data(),
                        rows.upper.data(),
                        rows.expression.empty() ? nullptr : rows.expression.data(),
                        view(rows.names)};
  });
}

int kavo_link_objective_number(const trpRec* model, int* number) {
  return guard([&] {
    const trpRec& record = need(model);
    need(number, "number") = record.model.objectives.empty() ? 0 : record.objectiveNumber;
  });
}

int kavo_link_objective(const trpRec* model, size_t index, kavo_objective* out) {
  return guard([&] {
    const auto& objectives = need(model).model.objectives;
    if (index >= objectives.size()) {
      throw kavo::Error(KAVO_INVALID,
                        fmt::format("there is no objective {}: the model has {}", index, objectives.size()));
    }
    const kavo::Objective& objective = objectives[index];
    need(out, "out") = {objective.sense,        objective.constant,   objective.column.size(), objective.column.data(),
                        objective.value.data(), objective.expression, objective.name.c_str()};
  });
}

int kavo_link_suffix(const trpRec* model, int kind, const char* name, kavo_suffix* out) {
  return guard([&] {
    const trpRec& record = need(model);
    need(name, "the suffix name");
    need(out, "out") = {0, nullptr, nullptr};
    for (const kavo::Suffix& suffix : record.model.suffixes) {
      if (suffix.kind == kind && suffix.name == name)
        *out = {suffix.index.size(), suffix.index.data(), suffix.value.data()};
    }
  });
}

int kavo_link_starts(const trpRec* model, const double** primal, const double** dual) {
  return guard([&] {
    const kavo::Model& given = need(model).model;
    need(primal, "primal") = given.primalStart.empty() ? nullptr : given.primalStart.data();
    need(dual, "dual") = given.dualStart.empty() ? nullptr : given.dualStart.data();
  });
}

int kavo_link_model_name(const trpRec* model, const char** name) {
  return guard([&] { need(name, "name") = need(model).model.name.c_str(); });
}

int kavo_link_beyond_linear(const trpRec* model, const char** what) {
  return guard([&] {
    const trpRec& record = need(model);
    record.beyondLinear = kavo::beyondLinear(record.model, record.objectiveNumber);
    need(what, "what") = record.beyondLinear.empty() ? nullptr : record.beyondLinear.c_str();
  });
}

}  // extern "C"
