#pragma once

#include "kavo/reader/mps/reading.h"

namespace kavo::reader::mps {

// One function per section that has data lines: each reads from the line behind the header to the next header or the
// end of the file.

// Rows with names and types. lazy: 0 in ROWS; the value of the suffix "lazy" for rows of LAZYCONS (above 0) and
// USERCUTS (below 0). The first row of type N is the objective, or the one that OBJNAME names; others are left out with
// a note, unless all have priorities, weights and tolerances: then all are objectives.
void readRows(Reading& reading, int lazy);
// Makes the rows ready to be found by name, once all are known. sections: the lines from the first of ROWS on, needed
// to tell where a row comes a second time.
void indexRows(Reading& reading, Lines sections);

// Columns with names and coefficients. An entry of value 0 is checked and not kept.
void readColumns(Reading& reading);

// What RHS and RANGES say of the rows. An entry c of the objective is the constant -c.
class Sides {
 public:
  // All rows must be known.
  explicit Sides(Reading& reading) : reading_(reading) {}
  void readRhs();
  void readRanges();
  // Turns type, right-hand side and range of every row into its two sides.
  void finish();

 private:
  // One field pair of a line: row name and number. The first set of a section counts.
  template <class Take>
  void readPairs(Take&& take);
  void takeRhs(std::string_view name, std::string_view field);
  void takeRange(std::string_view name, std::string_view field);
  // The row of that name, searched from the last one on.
  int find(std::string_view name);

  Reading& reading_;
  std::vector<double> rhs_, range_;   // empty, or one per row; NaN: not given
  std::vector<double> objectiveRhs_;  // empty, or one per objective
  int last_ = NameIndex::kNone;       // the row of the last pair
  bool freeRangeNoted_ = false;
};

// Bounds and types of columns.
void readBounds(Reading& reading);
// Turns the flags of every column into its type, and fills in the bounds that the file does not give.
void finishColumns(Reading& reading);

// The sections from here on may follow COLUMNS.

// How a section lists the matrix Q of quadratic terms.
enum class QuadraticForm {
  kTriangle,  // 1/2 x'Qx, one entry for each pair; entries of both halves are summed
  kHalf,      // 1/2 x'Qx, both halves
  kWhole,     // x'Qx, both halves
};
// Quadratic terms of a row or objective of that name; "" is the objective.
void readQuadratic(Reading& reading, QuadraticForm form, std::string_view element);

// Special ordered sets.
void readSets(Reading& reading);

// Piecewise-linear functions of columns, which become the expression of the objective. They take the place of the
// coefficients that the columns have in it, with a note.
void readPiecewiseObjective(Reading& reading);

// The sections from here on need finished rows and columns.

// Rows that only hold when a column has a value.
void readIndicators(Reading& reading);

// Constraints that say what a column is the result of; they become rows with expressions.
void readGeneralConstraints(Reading& reading);

}  // namespace kavo::reader::mps
