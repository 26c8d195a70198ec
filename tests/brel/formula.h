#pragma once

#include <string_view>

#include "kavo/kavo.h"

namespace brel_test {

/// Adds an expression written as in Lisp, "(max x0 (plus x1 2) 3)", with the names that kavo_operator_name has; the
/// number of the expression.
int addFormula(trpRec* model, std::string_view text);

}  // namespace brel_test
