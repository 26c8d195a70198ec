#pragma once

#include <string>
#include <string_view>

#include "kavo/model/model.h"

namespace kavo::reader::nl {

// Reads `text`, the whole content of a .nl file in text or binary form; `file` is its path for messages and
// Model::file. Throws Error with KAVO_FILE. What a model keeps of the file:
//   - bounds and sides of 1e20 or more are infinite; coefficients and numbers in expressions are finite, coefficients
//     below 1e20;
//   - terms with coefficient 0, by which the format lists the variables of a nonlinear part, stay;
//   - the body of a row that is only a number moves the row's sides, that of an objective is its constant: neither is
//     an expression. All other trees stay as they are written;
//   - a defined variable is the sum of its linear terms and its tree, and uses only those with lower numbers;
//   - suffixes of sets become special ordered sets (kavo/reader/nl/ordered_sets.h) and stay as suffixes too;
//   - start values that are not listed are NaN, and without any listed the arrays are empty.
Model readText(std::string_view text, const std::string& file);

// Names the elements after the files beside a .nl file: `stub`.col has a variable per line, `stub`.row the constraints,
// then the logical constraints, then the objectives. With fewer lines the first elements are named. A file that cannot
// be read or has more lines than elements (it belongs to another model) is left out with a note, and equal names get a
// note: names are a courtesy and never keep a model from being solved.
void readNames(const std::string& stub, Model& model);

}  // namespace kavo::reader::nl
