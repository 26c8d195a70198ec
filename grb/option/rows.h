// The catalogue as it is written down: constants, which are there before anything is initialised.
#pragma once

#include <span>

#include "grb/gurobi/constants.h"

namespace grb {

template <class T>
struct NumberRow {
  const char* name;
  T defaultValue;
  T lower;
  T upper;
  const char* help;
};

struct TextRow {
  const char* name;
  const char* defaultValue;  // null: there is none
  const char* help;
};

// The parameters of Gurobi.
std::span<const NumberRow<double>> doubleRows();
std::span<const NumberRow<int>> intRows();
std::span<const TextRow> stringRows();

// The link's own options: whole numbers and names of files.
std::span<const NumberRow<int>> intOptionRows();
std::span<const TextRow> fileOptionRows();

}  // namespace grb
