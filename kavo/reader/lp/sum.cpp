#include "kavo/reader/lp/sum.h"

#include <fmt/format.h>

#include <cmath>
#include <string_view>

#include "kavo/model/append_nonlinear.h"
#include "kavo/model/element.h"
#include "kavo/reader/failure.h"
#include "kavo/reader/lp/headers.h"
#include "kavo/reader/lp/relation.h"
#include "kavo/reader/text.h"

namespace kavo::reader::lp {

namespace {

constexpr std::string_view kPiecesBegin = "__pwl(";

bool isSign(char c) { return c == '+' || c == '-'; }

// How long a name is before a bracket that closes none of its own, as in "b]/2".
std::size_t lengthBeforeBracket(std::string_view word) {
  int depth = 0;
  for (std::size_t i = 0; i < word.size(); ++i) {
    depth += word[i] == '[' ? 1 : word[i] == ']' ? -1 : 0;
    if (depth < 0) return i;
  }
  return word.size();
}

}  // namespace

void Sum::clear() {
  linear_.clear();
  first_.clear();
  second_.clear();
  value_.clear();
}

void Sum::negate() {
  linear_.negate();
  for (double& value : value_) value = -value;
}

Side Sum::read(Place place, double factor) {
  place_ = place;
  factor_ = factor;
  Side side;
  if (words_.atEnd() || isRelation(words_) || headerAt(words_) != nullptr) return side;
  do {
    readTerm(side);
  } while (goesOn(side));
  const bool mayBeName = place_ == Place::kObjective || (place_ == Place::kLeft && side.variables > 0);
  if (mayBeName && side.numbers > 0) reading_.bareNumbers.see(bareNumber_, bareLine_);
  return side;
}

bool Sum::goesOn(const Side& side) const {
  if (!isSign(words_.first()) || words_.word().starts_with("->")) return false;
  return place_ != Place::kRight || side.variables > 0 || !words_.beginsLine();
}

double Sum::readSigns() {
  double sign = 1;
  while (isSign(words_.first())) {
    const std::string_view word = words_.word();
    if (word.size() > 1 && (isSign(word[1]) || word[1] == '>')) break;
    if (word[0] == '-') sign = -sign;
    if (word.size() > 1) words_.cut(1);
    words_.next();
  }
  return sign;
}

void Sum::readTerm(Side& side) {
  const double sign = readSigns();
  const std::string_view word = words_.word();
  if (words_.first() == '[') return readBracket(side, sign);
  if (!reading_.isNumber()) {
    if (!reading_.isName() || (words_.beginsLine() && headerAt(words_) != nullptr)) {
      reading_.failExpected("a number, a variable or \"[\"");
    }
    addVariable(side, word, sign);
    return words_.next();
  }
  const double value = reading_.number();
  if (!isVariableOfNumber()) return addBareNumber(side, word, value, sign);
  if (!(std::abs(value) < kInfinity)) {
    reading_.fail(
        fmt::format("expected a number below 1e20 in size before {}, found {}", quoted(words_.word()), quoted(word)));
  }
  addVariable(side, words_.word(), sign * value);
  words_.next();
}

bool Sum::isVariableOfNumber() const {
  const bool isRight = place_ == Place::kRight || place_ == Place::kRightOfNumber;
  if (words_.following() == ':' || (words_.beginsLine() && place_ == Place::kRight)) return false;
  if (!reading_.isName()) {
    if (!isRight && reading_.isNumber()) reading_.requireName();
    return false;
  }
  if (headerAt(words_) != nullptr) return false;
  if (words_.beginsLine() && place_ == Place::kRightOfNumber) {
    reading_.fail(
        fmt::format("{} may belong to the number on the line before or begin the next row; write both on one "
                    "line, or give the row a name",
                    quoted(words_.word())));
  }
  return true;
}

// A number that no variable follows.
void Sum::addBareNumber(Side& side, std::string_view word, double value, double sign) {
  const bool isSum = place_ == Place::kObjective || place_ == Place::kLeft;
  if (isSum && reading_.numbersAreNames) {
    reading_.bareNumbers.see(word, words_.lineBefore());
    ++side.bareNames;
    return addVariable(side, word, sign);
  }
  if (side.numbers++ == 0) {
    bareNumber_ = word;
    bareLine_ = words_.lineBefore();
  }
  side.constant += sign * value;
}

void Sum::addVariable(Side& side, std::string_view name, double coefficient) {
  ++side.variables;
  if (addSpecial(name, coefficient)) return;
  requireNoNumber(name);
  linear_.add(reading_.columnOf(name), factor_ * coefficient);
}

// Behind a relation a number is more likely than a new variable whose name begins with one, as in ">= 2;" or ">= 2x".
void Sum::requireNoNumber(std::string_view name) const {
  const bool isRight = place_ == Place::kRight || place_ == Place::kRightOfNumber;
  if (isRight && name.find_first_of("0123456789") <= (name[0] == '.' ? 1U : 0U) &&
      reading_.columnIndex.find(name) == NameIndex::kNone) {
    reading_.failExpected("a number or a variable");
  }
}

// What only Gurobi writes, and into objectives.
bool Sum::addSpecial(std::string_view name, double coefficient) {
  const bool isObjective = place_ == Place::kObjective;
  if (isObjective && name == kConstantName && !reading_.severalObjectives &&
      reading_.columnIndex.find(name) == NameIndex::kNone) {
    reading_.constant.isThere = true;
    reading_.constant.coefficient += coefficient;
    return true;
  }
  if (!name.starts_with(kPiecesBegin) || !name.ends_with(')') || name.size() < kPiecesBegin.size() + 2) return false;
  if (!isObjective || coefficient != 1) {
    reading_.failBefore(fmt::format("{} stands in objectives, without a coefficient", quoted(name)));
  }
  const std::string_view column = name.substr(kPiecesBegin.size(), name.size() - kPiecesBegin.size() - 1);
  reading_.announced.emplace_back(reading_.columnOf(column), words_.line());
  return true;
}

void Sum::readBracket(Side& side, double sign) {
  const std::size_t line = words_.line(), begin = value_.size();
  reading_.pass('[');
  while (words_.first() != ']') {
    if (words_.atEnd()) reading_.fail(fmt::format("expected \"]\" for the \"[\" on line {}", line));
    if (value_.size() > begin && !isSign(words_.first())) reading_.failExpected("+, - or \"]\"");
    readProduct(sign);
  }
  reading_.pass(']');
  side.variables += value_.size() - begin;
  if (words_.first() == '/') {
    readDivisor(begin);
  } else if (place_ == Place::kObjective) {
    reading_.undivided.see("]", line);
  }
}

void Sum::readProduct(double sign) {
  double coefficient = factor_ * sign * readSigns();
  const bool isFactor = words_.following() == '^' || words_.following() == '*';
  if (reading_.isNumber() && !isFactor) coefficient *= reading_.finite();
  const std::string_view word = words_.word();
  const int first = columnInBracket();
  int second = first;
  if (words_.is('^')) {
    words_.next();
    if (words_.first() != '2' || (words_.word().size() > 1 && words_.word()[1] != ']')) {
      reading_.failExpected("the power 2");
    }
    reading_.pass('2');
  } else if (words_.first() == '*') {
    reading_.pass('*');
    second = columnInBracket();
  } else {
    reading_.failExpected(fmt::format("\"^ 2\", or \"*\" and a variable, behind {}", quoted(word)));
  }
  first_.push_back(first);
  second_.push_back(second);
  value_.push_back(coefficient);
}

int Sum::columnInBracket() {
  const std::size_t length = lengthBeforeBracket(words_.word());
  if (length > 0 && length < words_.word().size()) words_.cut(length);
  return reading_.column();
}

void Sum::readDivisor(std::size_t begin) {
  reading_.pass('/');
  if (numberOrNan(words_.word()) != 2) reading_.failExpected("2 behind \"/\"");
  words_.next();
  for (std::size_t k = begin; k < value_.size(); ++k) value_[k] /= 2;
}

void Sum::moveLinear(std::vector<int>& column, std::vector<double>& value) const {
  for (std::size_t k = 0; k < linear_.size(); ++k) {
    if (linear_.value(k) == 0) continue;
    if (!(std::abs(linear_.value(k)) < kInfinity)) {
      reading_.failBefore(
          fmt::format("the coefficients of {} sum up to 1e20 or more in size",
                      quoted(elementName(reading_.model, KAVO_COLUMN, static_cast<std::size_t>(linear_.column(k))))));
    }
    column.push_back(linear_.column(k));
    value.push_back(linear_.value(k));
  }
}

void Sum::moveProducts(int kind, std::size_t element) const {
  if (value_.empty()) return;
  const auto number = static_cast<int>(element);
  const std::size_t start[] = {0, value_.size()};
  forLine(words_.lineBefore(), [&] {
    appendQuadratics(reading_.model, {kind, 1, &number, start, first_.data(), second_.data(), value_.data()});
  });
}

}  // namespace kavo::reader::lp
