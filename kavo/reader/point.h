#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kavo/model/model.h"

namespace kavo::reader {

struct Point {
  std::vector<double> values;  // one per column, NaN where the file says nothing
  std::size_t unknown = 0;     // lines with a name that no column has
};

// Reads a point of this model from a file as writer::writePoint writes it. Columns go by their given names and by
// _svar[1], _svar[2], ...; a name may have blanks, the value is what stands behind the last one. The last line of a
// column counts. Empty lines and those that begin with # are passed over, unless a column's name does too.
//
// Error (KAVO_FILE) with file and line: no name, no value, a value that is no finite number, a name that several
// columns have.
Point readPoint(const Model& model, const std::string& path);

}  // namespace kavo::reader
