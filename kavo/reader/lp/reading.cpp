#include "kavo/reader/lp/reading.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "kavo/reader/failure.h"
#include "kavo/reader/number.h"
#include "kavo/reader/text.h"

namespace kavo::reader::lp {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// Whether a word that does not begin with a sign may be a number: also "inf", "infinity" and "nan".
bool mayBeNumber(std::string_view word) {
  const char first = word[0];
  return isDigit(first) || first == '.' || first == 'i' || first == 'I' || first == 'n' || first == 'N';
}

// Names that readers of other programs take for a coefficient and a name, or for several terms.
bool isOdd(std::string_view name) {
  return isDigit(name[0]) || (name[0] == '.' && name.size() > 1 && isDigit(name[1])) ||
         name.find_first_of("+-*<>=") != std::string_view::npos;
}

}  // namespace

void Seen::see(std::string_view word, std::size_t at) {
  if (count++ > 0) return;
  first = quoted(word);
  line = at;
}

void Reading::finishNotes() {
  const auto note = [this](const Seen& seen, std::string_view what, std::string_view consequence) {
    if (seen.count == 0) return;
    const std::string more = seen.count == 1 ? std::string() : fmt::format(" and {} more", seen.count - 1);
    model.readNotes.push_back(fmt::format("{} ({} on line {}{}) {}", what, seen.first, seen.line, more, consequence));
  };
  note(bareNumbers, "numbers without a variable",
       numbersAreNames ? "are names of variables, as other numbers of the file must be"
                       : "are constants; Gurobi takes them for names of variables");
  note(oddNames, "names of variables", "hold numbers or operators; blanks must stand around what is no part of a name");
  note(undivided, "the quadratic part of the objective", "ends without / 2; it counts as it is written");
  note(repeatedBounds, "bounds of a variable", "are given twice; the last ones count");
  note(lateColumns, "variables", "are first named behind rows and objectives; check their names");
  note(smallSets, "sets", "have fewer than two members and say nothing; they are left out");
  note(attributes,
       "FuncPieces, FuncPieceLength, FuncPieceError, FuncPieceRatio and FuncNonlinear of single constraints",
       "are left out");
}

void Reading::fail(const std::string& text) const { throw Failure(KAVO_FILE, words.line(), text); }

void Reading::failBefore(const std::string& text) const { throw Failure(KAVO_FILE, words.lineBefore(), text); }

void Reading::failExpected(std::string_view expected) const {
  fail(fmt::format("expected {}, found {}", expected,
                   words.atEnd() ? std::string("the end of the file") : quoted(words.word())));
}

std::string_view Reading::label() {
  if (words.atEnd() || words.is(':') || words.following() != ':') return {};
  const std::string_view name = words.word();
  words.next();
  words.next();
  return name;
}

void Reading::pass(char byte) {
  if (words.first() != byte) failExpected(fmt::format("\"{}\"", byte));
  if (words.word().size() > 1) words.cut(1);
  words.next();
}

double Reading::number(bool inside) {
  double sign = 1;
  for (; words.is('-') || words.is('+'); words.next()) {
    if (words.is('-')) sign = -sign;
  }
  const std::string_view word = words.word();
  const char *first = word.data(), *last = first + word.size();
  double value = kUnknown;
  const char* const end = parseNumber(first, last, value);
  if (end == nullptr || (!inside && end != last) || std::isnan(value)) failExpected("a number");
  if (end != last) words.cut(static_cast<std::size_t>(end - first));
  words.next();
  return sign * value;
}

double Reading::finite(bool inside) {
  const std::string_view word = words.word();
  const double value = number(inside);
  if (!(std::abs(value) < kInfinity))
    failBefore(fmt::format("expected a number below 1e20 in size, found {}", quoted(word)));
  return value;
}

bool Reading::isNumber() const {
  if (words.atEnd() || !mayBeNumber(words.word())) return false;
  const char *first = words.word().data(), *last = first + words.word().size();
  double value = 0;
  return parseNumber(first, last, value) == last;
}

bool Reading::isName() const {
  if (words.atEnd() || std::string_view("+-<>=[]*:^").find(words.first()) != std::string_view::npos) return false;
  return numbersAreNames || !isNumber();
}

void Reading::requireName() const {
  if (isName()) return;
  if (!isNumber()) failExpected("the name of a variable");
  throw NumberAsName(KAVO_FILE, words.line(),
                     fmt::format("expected the name of a variable, found {}", quoted(words.word())));
}

int Reading::column() {
  requireName();
  const int result = columnOf(words.word());
  words.next();
  return result;
}

int Reading::columnOf(std::string_view name) {
  const auto next = static_cast<int>(model.columns.size());
  const int result = columnIndex.findOrTake(name, next);
  if (result == next) addColumn(name);
  return result;
}

void Reading::addColumn(std::string_view name) {
  Columns& columns = model.columns;
  if (columns.size() == static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    fail("more variables than this program can count");
  }
  columns.names.append(name, columns.size());
  columns.lower.push_back(0);
  columns.upper.push_back(std::numeric_limits<double>::infinity());
  columns.type.push_back(0);
  if (isOdd(name) && std::isnan(numberOrNan(name))) oddNames.see(name, words.line());
  if (isLate) lateColumns.see(name, words.line());
}

void Reading::takeBackColumn() {
  Columns& columns = model.columns;
  const std::size_t last = columns.size() - 1;
  columnIndex.takeBack(columns.names.at(last));
  columns.names.revert({last, columns.names.starts()[last]});
  columns.lower.pop_back();
  columns.upper.pop_back();
  columns.type.pop_back();
}

}  // namespace kavo::reader::lp
