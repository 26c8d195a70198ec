#include "kavo/reader/mps/reading.h"

#include <fmt/format.h>

#include <cmath>

#include "kavo/reader/number.h"

namespace kavo::reader::mps {

void Reading::fail(const std::string& text) const { throw Failure(KAVO_FILE, lines.number(), text); }

void Reading::failShape(std::string_view expected) const {
  const std::size_t count = lines.count();
  if (count <= Lines::kMostFields)
    fail(fmt::format("expected {}, found {} field{}", expected, count, &"s"[count == 1]));
  fail(fmt::format("expected {}{}", expected,
                   lines.layout() == Layout::kBlanks
                       ? ", found more than 6 fields"
                       : " in the columns 2-3, 5-12, 15-22, 25-36, 40-47 and 50-61 and blanks between them"));
}

double Reading::numberOrNan(std::string_view field) {
  constexpr std::size_t kMostBytes = 64;
  const double value = reader::numberOrNan(field);
  if (!std::isnan(value)) return value;
  const std::size_t letter = field.find_first_of("dD");
  if (letter == std::string_view::npos || field.size() > kMostBytes) return value;
  std::string other(field);
  other[letter] = 'e';
  const double read = reader::numberOrNan(other);
  if (!std::isnan(read) && !letterD_) {
    letterD_ = true;
    model.readNotes.push_back(
        fmt::format("numbers such as {} on line {} are read with the exponent letter E instead of D", quoted(field),
                    lines.number()));
  }
  return read;
}

double Reading::number(std::string_view field) {
  const double value = numberOrNan(field);
  if (std::isnan(value)) fail(fmt::format("expected a number, found {}", quoted(field)));
  return value;
}

double Reading::finite(std::string_view field) {
  const double value = number(field);
  if (!(std::abs(value) < kInfinity)) {
    fail(fmt::format("expected a number below 1e20 in size, found {}", quoted(field)));
  }
  return value;
}

int Reading::integer(std::string_view field, std::string_view what, int least, int most) const {
  const char *first = field.data(), *last = first + field.size();
  int value = 0;
  if (parseInteger(first, last, value) != last || value < least || value > most) {
    fail(fmt::format("expected {}, found {}", what, quoted(field)));
  }
  return value;
}

std::string noRow(std::string_view name) { return fmt::format("there is no row {} in section ROWS", quoted(name)); }

int Reading::rowOf(std::string_view name, int guess) const {
  const int row = rowIndex.find(name, guess);
  if (row == NameIndex::kNone && !isOther(name)) fail(noRow(name));
  return row;
}

int Reading::objectiveOf(std::string_view name) const {
  if (isObjective(name)) return 0;
  const int other = ranks.empty() ? NameIndex::kNone : otherIndex.find(name);
  return other == NameIndex::kNone ? NameIndex::kNone : other + 1;
}

int Reading::columnOf(std::string_view name, int guess) const {
  const int column = columnIndex.find(name, guess);
  if (column == NameIndex::kNone) fail(fmt::format("there is no column {} in section COLUMNS", quoted(name)));
  return column;
}

}  // namespace kavo::reader::mps
