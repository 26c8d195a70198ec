#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "kavo/reader/lp/reading.h"
#include "kavo/reader/lp/relation.h"
#include "kavo/reader/lp/sum.h"
#include "kavo/reader/objectives.h"

namespace kavo::reader::lp {

// What reads the sections: from the word behind the header to the next header or the end of the file.

// The objective, or several of them behind the word "multi-objectives".
class Objectives {
 public:
  explicit Objectives(Reading& reading) : reading_(reading), sum_(reading) {}
  void read(int sense);
  // PWLObj: piecewise-linear functions of one variable each, which belong to the objective.
  void readPieces();
  // Puts together what the sections say. Bounds must be known, for a variable may be a constant.
  void finish();

 private:
  void readSeveral();
  void readSum(std::string_view name);
  bool readRank();
  void finishConstant();
  void checkPieces() const;

  Reading& reading_;
  Sum sum_;
  int sense_ = KAVO_MINIMIZE;
  std::vector<Rank> ranks_;  // per objective, when there are several
  std::vector<PiecewisePart> pieces_;
};

// Rows of any kind that stand before the bounds.
class RowSections {
 public:
  explicit RowSections(Reading& reading) : reading_(reading), sum_(reading) {}
  // lazy: 0, or the value of the suffix "lazy" that the rows get: above 0 for lazy constraints, below for user cuts.
  void read(int lazy);
  // Switches rows on and off; the types of columns must be known.
  void finish();

 private:
  // The sides of the row that the current sum is.
  struct Sides {
    double lower, upper;
    int switchValue;  // when the sum is a column and the sides say that it is 0 or 1, that value; else -1
  };
  struct Switch {
    int row, column;
    unsigned char value;
    std::size_t line;
  };
  // A row of an earlier line that got a side by its name, like a variable.
  struct Range {
    std::string name;
    std::size_t line;
  };

  void readRow();
  Sides readSides();
  Sides readRange(double first, Relation relation, double middle);
  Sides sidesOf(Relation relation, double value) const;
  void checkSides(Sides& sides) const;
  void readSwitch(const Sides& sides);
  bool isRangeOfRow(std::size_t columnsBefore) const;
  void setRangeOfRow(std::size_t row, const Sides& sides);
  int rowOf(std::string_view name);
  void append(std::string_view name, const Sides& sides);

  Reading& reading_;
  Sum sum_;
  int lazy_ = 0;
  std::vector<Switch> switches_;
  std::vector<Range> ranges_;
  NameIndex rowIndex_{reading_.model.rows.names};
  std::size_t indexed_ = 0;  // rows whose names are in the index
};

void readBounds(Reading& reading);
// Names of columns, each of which gets the ColumnFlag values.
void readTypes(Reading& reading, int flags);
// Turns the flags of every column into its type. No bounds or types may follow.
void finishColumns(Reading& reading);
void readSets(Reading& reading);
// General constraints; columns must be finished.
void readFunctions(Reading& reading);

// Points in the form (x, y) (x, y) ...: x1, y1, x2, y2, ...
std::vector<double> readPoints(Reading& reading);

}  // namespace kavo::reader::lp
