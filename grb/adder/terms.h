#pragma once

#include <span>
#include <vector>

#include "tav/math/quadratic_function.h"

// Terms of functions on their way to Gurobi. What it would refuse in a call is found here first, since a refused call
// discards what is queued.
namespace grb {

// One linear function of a block. The arrays are the block's own; Gurobi copies them and changes nothing.
struct LinearTerms {
  std::span<const int> positions;
  std::span<const double> coefficients;
  double constant;
};

// Whether all numbers are finite.
bool areFinite(std::span<const double> numbers);
// Whether all are positions of variables of a model that has `variables` of them.
bool arePositions(std::span<const int> positions, int variables);

// Raise the cast error when there are more terms than an int counts, and a support error that names the element (by its
// number in the block) unless all positions are those of variables, all numbers finite and arrays of one length.
void requireSound(const LinearTerms& terms, int element, int variables);
void requireSound(const tav::math::QuadraticFunction<double>& function, int element, int variables);

// Raises the support error "Element <element> of the block: there is no variable <position>." unless there is.
void requirePosition(int position, int element, int variables);

// Raises the support error "Input not supported" unless `condition` holds.
void requireSupported(bool condition);

// Puts terms in increasing order of their positions and sums those of one position.
void mergeTerms(std::vector<int>& positions, std::vector<double>& coefficients);

}  // namespace grb
