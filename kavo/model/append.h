#pragma once

#include <cstddef>

#include "kavo/model/model.h"

namespace kavo {

// What a host gives for new elements: borrowed arrays, shapes and defaults of null ones as in kavo.h.
struct ColumnData {
  std::size_t count;
  const double *lower, *upper;
  const unsigned char* type;
  const char* const* names;
};

struct RowData {
  std::size_t count;
  const double *lower, *upper;
  const std::size_t* start;
  const int* column;
  const double* value;
  const char* const* names;
};

struct ObjectiveData {
  int sense;
  double constant;
  std::size_t terms;
  const int* column;
  const double* value;
  const char* name;
};

// Checks the data and appends it; when something is wrong (Error, KAVO_INVALID, with the element) or memory is short,
// the model stays as it was.
void appendColumns(Model& model, const ColumnData& data);
void appendRows(Model& model, const RowData& data);
void appendObjective(Model& model, const ObjectiveData& data);

}  // namespace kavo
