// Filling a model with what is not linear: expressions, quadratic terms, logical constraints, ordered sets, switches.

#include <algorithm>

#include "kavo/api/guard.h"
#include "kavo/model/append_nonlinear.h"
#include "kavo/model/append_parts.h"
#include "kavo/model/operators.h"

using kavo::api::guard;
using kavo::api::guardChange;
using kavo::api::need;

namespace {

void giveFirst(int* first, int number) {
  if (first != nullptr) *first = number;
}

}  // namespace

extern "C" {

const char* kavo_operator_name(int op) { return kavo::operatorName(op).data(); }

int kavo_operator_arity(int op) { return kavo::arity(op); }

int kavo_add_expressions(trpRec* model, size_t count, const size_t* start, const int* op, const int* index,
                         const double* value, int* first) {
  return guardChange(
      model, [&](kavo::Model& m) { giveFirst(first, kavo::appendExpressions(m, {count, start, op, index, value})); });
}

int kavo_add_defined_variables(trpRec* model, size_t count, const size_t* start, const int* op, const int* index,
                               const double* value, int* first) {
  return guardChange(model, [&](kavo::Model& m) {
    giveFirst(first, kavo::appendDefinedVariables(m, {count, start, op, index, value}));
  });
}

int kavo_set_expressions(trpRec* model, int kind, size_t count, const int* index, const int* expression) {
  return guardChange(model, [&](kavo::Model& m) { kavo::setExpressions(m, kind, count, index, expression); });
}

int kavo_add_quadratic_terms(trpRec* model, int kind, size_t count, const int* index, const size_t* start,
                             const int* first, const int* second, const double* value) {
  return guardChange(
      model, [&](kavo::Model& m) { kavo::appendQuadratics(m, {kind, count, index, start, first, second, value}); });
}

int kavo_quadratic_terms(const trpRec* model, int kind, size_t index, size_t* count, const int** first,
                         const int** second, const double** value) {
  return guard([&] {
    const kavo::Model& given = need(model).model;
    const int number = kavo::quadraticOf(given, kind, index);
    const kavo::Quadratics& all = given.quadratics;
    const std::size_t begin = number < 0 ? 0 : all.start[static_cast<std::size_t>(number)];
    const std::size_t end = number < 0 ? 0 : all.start[static_cast<std::size_t>(number) + 1];
    if (count != nullptr) *count = end - begin;
    if (first != nullptr) *first = all.first.data() + begin;
    if (second != nullptr) *second = all.second.data() + begin;
    if (value != nullptr) *value = all.value.data() + begin;
  });
}

int kavo_add_logical(trpRec* model, size_t count, const int* expression, const char* const* names) {
  return guardChange(model, [&](kavo::Model& m) { kavo::appendLogical(m, count, expression, names); });
}

int kavo_add_sets(trpRec* model, size_t count, const unsigned char* type, const size_t* start, const int* column,
                  const double* weight, const char* const* names) {
  return guardChange(model, [&](kavo::Model& m) { kavo::appendSets(m, {count, type, start, column, weight, names}); });
}

int kavo_set_indicators(trpRec* model, size_t count, const int* row, const int* column, const unsigned char* value) {
  return guardChange(model, [&](kavo::Model& m) { kavo::setIndicators(m, {count, row, column, value}); });
}

int kavo_get_sizes(const trpRec* model, kavo_sizes* sizes) {
  return guard([&] {
    const kavo::Model& given = need(model).model;
    const auto& indicator = given.rows.indicator;
    need(sizes, "the address of the sizes") = {
        given.expressions.size(),
        given.expressions.op.size(),
        given.definedVariables.size(),
        given.quadratics.value.size(),
        given.logical.size(),
        given.sets.size(),
        given.sets.column.size(),
        indicator.size() - static_cast<std::size_t>(std::count(indicator.begin(), indicator.end(), -1))};
  });
}

}  // extern "C"
