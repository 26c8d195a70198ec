#pragma once

#include <cstddef>

#include "kavo/model/model.h"

namespace kavo {

// What a host gives beyond linear rows and objectives: borrowed arrays, shapes and defaults of null ones as in kavo.h.
struct NodeData {
  std::size_t count;  // expressions
  const std::size_t* start;
  const int *op, *index;
  const double* value;
};

struct QuadraticData {
  int kind;
  std::size_t count;
  const int* element;
  const std::size_t* start;
  const int *first, *second;
  const double* value;
};

struct SetData {
  std::size_t count;
  const unsigned char* type;
  const std::size_t* start;
  const int* column;
  const double* weight;
  const char* const* names;
};

struct IndicatorData {
  std::size_t count;
  const int *row, *column;
  const unsigned char* value;
};

// Check the data and take it; when something is wrong (Error with the element) or memory is short, the model stays as
// it was. The first two return the number of the first new one.
int appendExpressions(Model& model, const NodeData& data);
int appendDefinedVariables(Model& model, const NodeData& data);
void setExpressions(Model& model, int kind, std::size_t count, const int* element, const int* expression);
void appendLogical(Model& model, std::size_t count, const int* expression, const char* const* names);
void appendQuadratics(Model& model, const QuadraticData& data);
void appendSets(Model& model, const SetData& data);
void setIndicators(Model& model, const IndicatorData& data);

// The number of the quadratic terms of a row or objective, -1 when it has none.
int quadraticOf(const Model& model, int kind, std::size_t index);

}  // namespace kavo
