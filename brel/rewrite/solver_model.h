#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "brel/rewrite/trail.h"
#include "kavo/link.h"
#include "tav/opt/codes.h"

namespace brel::rewrite {

// What is sent to the solver: the user's columns and then those that rules made, and the rows that rules left. The terms
// of an untouched row stay where the host has them; only a row that a rule changed has terms of its own here.
struct SolverModel {
  // Per solver column. Bounds of 1e20 or more are +-1e100 here.
  std::vector<int> columnType;  // a VariableType
  std::vector<double> lower, upper;
  std::vector<std::string> auxiliaryNames;  // of the columns behind the user's, "" without names

  // Per solver row: the user's row it stands for, its type and its side; ownTerms: the entry in `own`, or -1 for the
  // user's terms.
  std::vector<int> userRow;
  std::vector<int> rowType;  // a RowType
  std::vector<double> side;
  std::vector<int> ownTerms;

  // Terms of changed rows, compressed.
  struct {
    std::vector<std::size_t> start{0};
    std::vector<int> column;
    std::vector<double> value;
  } own;

  std::size_t userColumns = 0;
  std::vector<std::string> notes;  // for the user
};

inline constexpr double kInfinity = 1e100;    // towards the solver
inline constexpr double kUserInfinity = 1e20;  // from here on a user's bound or side is none

// Applies all rules to the model that the host has.
SolverModel rewrite(const kavo_columns& columns, const kavo_rows& rows, Trail& trail);

}  // namespace brel::rewrite
