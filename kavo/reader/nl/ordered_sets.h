#pragma once

#include "kavo/model/model.h"

namespace kavo::reader::nl {

// Makes the special ordered sets that suffixes of the variables tell; an element that a suffix does not list has 0.
//   - sosno and ref, sets of the modeler: variables of equal sosno other than 0 are a set, of type 1 when it is
//   positive,
//     of type 2 when it is negative; ref is their weight.
//   - sos and sosref, sets that AMPL makes when it replaces piecewise-linear terms by linear ones: sos is 16 times the
//     number of the set, plus 1 for type 2, plus 4 for one of two priorities. With 2 added it is no member, but a
//     binary variable by which AMPL says the same in linear terms; these stay, so that the model is the one that was
//     written.
// A set of one variable says nothing and is left out with a note, since AMPL's presolve makes such sets. Throws Error
// (KAVO_FILE) that names the suffix when the weights are missing or two are equal.
void makeOrderedSets(Model& model);

}  // namespace kavo::reader::nl
