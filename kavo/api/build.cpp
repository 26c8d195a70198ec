// Life of a model, and filling it in bulk.

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string_view>
#include <utility>

#include "kavo/api/guard.h"
#include "kavo/model/append.h"
#include "kavo/model/element.h"

using kavo::Error;
using kavo::api::guard;
using kavo::api::guardChange;
using kavo::api::need;
using kavo::api::needIdle;

namespace {

kavo::Suffix makeSuffix(int kind, const char* name, std::size_t count, const int* index, const double* value) {
  kavo::Suffix suffix{kind, name, true, {index, index + count}, {value, value + count}};
  suffix.real = std::any_of(value, value + count, [](double v) { return v != std::floor(v); });
  return suffix;
}

// Suffixes that a link writes into the solver's model, so that a later change is one of the model; others are read at
// each solve, or not at all.
bool goesInWithTheModel(std::string_view name) {
  constexpr std::string_view kNames[] = {"partition", "lazy",      "trynonlin", "objpriority",
                                         "objweight", "objabstol", "objreltol"};
  return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
}

void checkSuffix(const kavo::Model& model, int kind, std::size_t count, const int* index, const double* value) {
  const std::size_t elements = kavo::elementCount(model, kind);
  if (count > 0) need(index, "the index array"), need(value, "the value array");
  for (std::size_t i = 0; i < count; ++i) {
    if (index[i] < 0 || static_cast<std::size_t>(index[i]) >= elements) {
      throw Error(KAVO_INVALID,
                  fmt::format("there is no element {}: the model has {} of this kind", index[i], elements));
    }
    if (std::isnan(value[i])) throw Error(KAVO_INVALID, fmt::format("the value of element {} is NaN", index[i]));
  }
}

}  // namespace

extern "C" {

const char* kavo_last_error(void) { return kavo::api::lastFailure(); }

const char* kavo_version(void) { return GRBLINK_VERSION; }

int kavo_create(trpRec** model) {
  return guard([&] {
    trpRec*& slot = need(model, "the address of the handle");
    slot = nullptr;
    slot = new trpRec;
  });
}

int kavo_free(trpRec** model) {
  return guard([&] {
    trpRec*& slot = need(model, "the address of the handle");
    if (slot == nullptr) return;
    needIdle(slot);
    delete std::exchange(slot, nullptr);
  });
}

int kavo_add_columns(trpRec* model, size_t count, const double* lower, const double* upper, const unsigned char* type,
                     const char* const* names) {
  return guardChange(model, [&](kavo::Model& m) { kavo::appendColumns(m, {count, lower, upper, type, names}); });
}

int kavo_add_rows(trpRec* model, size_t count, const double* lower, const double* upper, const size_t* start,
                  const int* column, const double* value, const char* const* names) {
  return guardChange(model,
                     [&](kavo::Model& m) { kavo::appendRows(m, {count, lower, upper, start, column, value, names}); });
}

int kavo_add_objective(trpRec* model, int sense, double constant, size_t terms, const int* column, const double* value,
                       const char* name) {
  return guardChange(model,
                     [&](kavo::Model& m) { kavo::appendObjective(m, {sense, constant, terms, column, value, name}); });
}

int kavo_set_objective_number(trpRec* model, int number) {
  return guardChange(model, [&](kavo::Model&) {
    if (number < 0) throw Error(KAVO_INVALID, fmt::format("the objective number must be 0 or more, not {}", number));
    model->objectiveNumber = number;
  });
}

int kavo_set_suffix(trpRec* model, int kind, const char* name, size_t count, const int* index, const double* value) {
  return guard([&] {
    kavo::Model& given = needIdle(model).model;
    need(name, "the suffix name");
    checkSuffix(given, kind, count, index, value);
    kavo::Suffix suffix = makeSuffix(kind, name, count, index, value);
    if (goesInWithTheModel(name)) model->changes.becomeStructural();
    auto& all = given.suffixes;
    const auto same =
        std::find_if(all.begin(), all.end(), [&](const auto& s) { return s.kind == kind && s.name == suffix.name; });
    same == all.end() ? all.push_back(std::move(suffix)) : void(*same = std::move(suffix));
  });
}

int kavo_set_name(trpRec* model, const char* name) {
  return guard([&] {
    trpRec& record = needIdle(model);
    record.model.name = &need(name, "the name");
    record.changes.becomeStructural();
  });
}

int kavo_counts(const trpRec* model, size_t* columns, size_t* rows, size_t* nonzeros, size_t* objectives) {
  return guard([&] {
    const kavo::Model& given = need(model).model;
    if (columns != nullptr) *columns = given.columns.size();
    if (rows != nullptr) *rows = given.rows.size();
    if (nonzeros != nullptr) *nonzeros = given.rows.column.size();
    if (objectives != nullptr) *objectives = given.objectives.size();
  });
}

int kavo_name(trpRec* model, int kind, size_t index, const char** name) {
  return guard([&] {
    trpRec& record = need(model);
    record.nameBuffer = kavo::elementName(record.model, kind, index);
    need(name, "the address of the name") = record.nameBuffer.c_str();
  });
}

}  // extern "C"
