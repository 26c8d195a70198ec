#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "kavo/model/model.h"
#include "kavo/reader/column_flags.h"
#include "kavo/reader/failure.h"
#include "kavo/reader/mps/lines.h"
#include "kavo/reader/name_index.h"
#include "kavo/reader/objectives.h"
#include "kavo/reader/text.h"

namespace kavo::reader::mps {

// What the sections of one file share while it is read. Views point into the file's text.
struct Reading {
  Reading(const Input& input, Layout layout) : lines(input, layout) {}
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  // Ends the reading at the current line. text: what is wrong and what was expected.
  [[noreturn]] void fail(const std::string& text) const;
  // Ends it because the line has another number of fields than its section takes.
  [[noreturn]] void failShape(std::string_view expected) const;

  // The number a field consists of, maybe infinite; fails when it is anything else, or NaN. An exponent letter D, as
  // Fortran programs write it, is read as E.
  double number(std::string_view field);
  // The same without failing; NaN when the field is no number.
  double numberOrNan(std::string_view field);
  // A number below 1e20 in size.
  double finite(std::string_view field);
  // A whole number between two others; what: how it is called where it is missing.
  int integer(std::string_view field, std::string_view what, int least, int most) const;

  // The element of that name; guess as in NameIndex. For a name that is not there: rowOf returns kNone when it is a row
  // of type N besides the objective, and otherwise both fail.
  int rowOf(std::string_view name, int guess) const;
  int columnOf(std::string_view name, int guess) const;

  bool isObjective(std::string_view name) const { return !name.empty() && name == objectiveName; }
  // Whether it is the name of a row of type N besides the objective.
  bool isOther(std::string_view name) const { return otherIndex.find(name) != NameIndex::kNone; }
  // The number of the model's objective of that name, kNone when it has no such one.
  int objectiveOf(std::string_view name) const;

  Model model;
  Lines lines;
  std::string_view section;  // the name of the current one, "" before the first

  NameIndex rowIndex{model.rows.names};
  NameIndex columnIndex{model.columns.names};
  Names otherObjectives;  // the rows of type N besides the objective
  NameIndex otherIndex{otherObjectives};

  int sense = KAVO_MINIMIZE;
  std::string_view objectiveName;    // "" while there is no objective
  std::string_view wantedObjective;  // what OBJNAME says
  // Priority, weight, absolute and relative tolerance of every objective, when the file gives them: then all rows of
  // type N are objectives of the model, otherwise only the one is.
  std::vector<Rank> ranks;

  // Per row: 'E', 'L' or 'G'.
  std::vector<char> rowType;

  // Per column what is known of its type and bounds until finishColumns, ColumnFlag values together.
  std::vector<unsigned char>& columnFlags() { return model.columns.type; }

 private:
  bool letterD_ = false;  // an exponent letter D was seen
};

// The message about the name of a row that does not exist.
std::string noRow(std::string_view name);

}  // namespace kavo::reader::mps
