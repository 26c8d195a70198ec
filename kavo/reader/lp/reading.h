#pragma once

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kavo/model/model.h"
#include "kavo/reader/failure.h"
#include "kavo/reader/lp/words.h"
#include "kavo/reader/name_index.h"

namespace kavo::reader::lp {

// Something that a note tells of once: where it was seen first, and how often.
struct Seen {
  std::string first;  // a word in quotes
  std::size_t line = 0, count = 0;

  void see(std::string_view word, std::size_t at);
};

// A number stands where only the name of a variable can: the file may use numbers as names throughout.
class NumberAsName : public Failure {
 public:
  using Failure::Failure;
};

// What the sections of one file share while it is read. Views point into the file's text.
struct Reading {
  // numbersAreNames: Gurobi takes a number that stands like a variable for the name of one. Most files mean a constant,
  // so this is so only in files where numbers must be names.
  Reading(const Input& input, bool numbersMayBeNames) : words(input), numbersAreNames(numbersMayBeNames) {}
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;

  // Ends the reading at the current line, or at that of the word before. text: what is wrong and what was expected.
  [[noreturn]] void fail(const std::string& text) const;
  [[noreturn]] void failBefore(const std::string& text) const;
  // Ends it at the current word, which is not what was expected.
  [[noreturn]] void failExpected(std::string_view expected) const;

  // Passes the label before a ':', and the ':'; "" when none stands here.
  std::string_view label();
  // Passes a byte that the current word must begin with; the rest of the word, if any, is the current one then.
  void pass(char byte);
  // Passes a number, maybe infinite, maybe behind signs that stand apart. inside: the word may go on behind it.
  double number(bool inside = false);
  // The same below 1e20 in size.
  double finite(bool inside = false);
  // Whether the current word is a number without a sign.
  bool isNumber() const;
  // Whether the current word can be the name of a variable: no sign, no relation, and a number only if such are names.
  bool isName() const;
  // Fails when it cannot.
  void requireName() const;
  // Passes the name of a variable.
  int column();
  // The column of a name, for which isName holds. A variable is there by being mentioned.
  int columnOf(std::string_view name);
  // Takes the last column back, which must be new: nothing else is new since.
  void takeBackColumn();

  // Gives the model its notes.
  void finishNotes();

  Words words;
  const bool numbersAreNames;
  std::string_view section;  // the name of the current one, "" before the first
  bool isLate = false;       // whether a variable that is new now is named behind rows and objectives
  Model model;
  NameIndex columnIndex{model.columns.names};
  // Per column what is known of its type and bounds until finishColumns, ColumnFlag values together.
  std::vector<unsigned char>& columnFlags() { return model.columns.type; }

  bool severalObjectives = false;

  // A variable of the name kConstantName, fixed at 1 and in the objective only, is how Gurobi writes the constant of
  // the objective. While it stands nowhere else it is no column.
  struct Constant {
    bool isThere = false;
    double coefficient = 0;
    double lower = 0, upper = std::numeric_limits<double>::infinity();
    unsigned char flags = 0;
  } constant;

  // Columns whose part of the objective section PWLObj must give, and the lines that say so.
  std::vector<std::pair<int, std::size_t>> announced;

  // For notes.
  Seen oddNames, bareNumbers, undivided, attributes, repeatedBounds, lateColumns, smallSets;

 private:
  void addColumn(std::string_view name);
};

inline constexpr std::string_view kConstantName = "Constant";

}  // namespace kavo::reader::lp
