#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "kavo/model/model.h"

namespace kavo::reader {

// What files of Gurobi say of each of several objectives: priority, weight, absolute and relative tolerance.
using Rank = std::array<double, 4>;
inline constexpr Rank kDefaultRank = {0, 1, 1e-6, 0};

// Gives the objectives the suffixes that tell their ranks, one rank per objective.
void rankObjectives(Model& model, const std::vector<Rank>& ranks);

// A part of the objective: the piecewise-linear function of a column through points x1, y1, x2, y2, ...
struct PiecewisePart {
  int column;
  std::vector<double> points;
  std::size_t line;  // where the file gives it
};

// Makes the parts, one or more, of different columns, the expression of the first objective. A coefficient that such a
// column has there is left out, as Gurobi does, with a note. Throws Failure when the points make no function.
void addPiecewiseParts(Model& model, const std::vector<PiecewisePart>& parts);

}  // namespace kavo::reader
