// What a link may ask of the model.

#include <fmt/format.h>

#include "kavo/api/guard.h"
#include "kavo/link.h"

using kavo::api::guard;
using kavo::api::need;

namespace {

template <class T>
const T* orNull(const std::vector<T>& values) {
  return values.empty() ? nullptr : values.data();
}

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
                        orNull(rows.expression),
                        orNull(rows.quadratic),
                        orNull(rows.indicator),
                        orNull(rows.indicatorValue),
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
                        objective.value.data(), objective.expression, objective.quadratic,     objective.name.c_str()};
  });
}

int kavo_link_expressions(const trpRec* model, kavo_expressions* out) {
  return guard([&] {
    const kavo::Model& given = need(model).model;
    const kavo::Expressions& all = given.expressions;
    need(out, "out") = {all.size(),
                        all.start.data(),
                        all.op.data(),
                        all.index.data(),
                        all.value.data(),
                        given.definedVariables.size(),
                        given.definedVariables.data()};
  });
}

int kavo_link_quadratics(const trpRec* model, kavo_quadratics* out) {
  return guard([&] {
    const kavo::Quadratics& all = need(model).model.quadratics;
    need(out, "out") = {all.size(), all.start.data(), all.first.data(), all.second.data(), all.value.data()};
  });
}

int kavo_link_sets(const trpRec* model, kavo_sets* out) {
  return guard([&] {
    const kavo::OrderedSets& sets = need(model).model.sets;
    need(out, "out") = {sets.size(),        sets.type.data(),   sets.start.data(),
                        sets.column.data(), sets.weight.data(), view(sets.names)};
  });
}

int kavo_link_logical(const trpRec* model, kavo_logical* out) {
  return guard([&] {
    const kavo::Model& given = need(model).model;
    need(out, "out") = {given.logical.size(), given.logical.data(), view(given.logicalNames)};
  });
}

int kavo_link_function_name(const trpRec* model, size_t index, const char** name) {
  return guard([&] {
    const auto& functions = need(model).model.functions;
    if (index >= functions.size()) throw kavo::Error(KAVO_INVALID, fmt::format("there is no function {}", index));
    need(name, "name") = functions[index].c_str();
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

int kavo_link_model_name(const trpRec* model, const char** name) {
  return guard([&] { need(name, "name") = need(model).model.name.c_str(); });
}

}  // extern "C"
