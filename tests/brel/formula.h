#pragma once

#include <string_view>
#include <vector>

#include "kavo/kavo.h"

namespace brel_test {

/// An expression in postfix order, in the form in which a host gives it.
struct Nodes {
  std::vector<int> op, index;
  std::vector<double> value;
};

/// The nodes of an expression written as in Lisp, "(max x0 (plus d1 2) 3)": numbers, columns, defined variables, and
/// operators by the names that kavo_operator_name has, with _ for blanks.
Nodes nodesOf(std::string_view text);

/// Adds such an expression; its number.
int addFormula(trpRec* model, std::string_view text);

}  // namespace brel_test
