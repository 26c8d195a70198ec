#include "grb/gurobi/exception.h"

namespace grb {

// Defined here so that one object file holds the type's identity, which handlers in other libraries compare.
GurobiException::~GurobiException() = default;

}  // namespace grb
