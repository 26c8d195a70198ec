#include <fmt/format.h>

#include <cmath>
#include <limits>

#include "kavo/model/append_nonlinear.h"
#include "kavo/reader/failure.h"
#include "kavo/reader/lp/headers.h"
#include "kavo/reader/lp/sections.h"
#include "kavo/reader/text.h"

namespace kavo::reader::lp {

namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();
constexpr int kNoSwitch = -1;

}  // namespace

void RowSections::read(int lazy) {
  lazy_ = lazy;
  while (!reading_.words.atEnd() && headerAt(reading_.words) == nullptr) readRow();
}

void RowSections::readRow() {
  const std::size_t columnsBefore = reading_.model.columns.size();
  const std::string_view name = reading_.label();
  Sides sides = readSides();
  const bool isSwitched = reading_.words.word().starts_with("->");
  if (isSwitched) {
    readSwitch(sides);
    sides = readSides();
  } else if (name.empty() && isRangeOfRow(columnsBefore)) {
    const std::string_view column = reading_.model.columns.names.at(columnsBefore);
    if (const int row = rowOf(column); row != NameIndex::kNone) {
      return setRangeOfRow(static_cast<std::size_t>(row), sides);
    }
  }
  if (lazy_ != 0 && (isSwitched || sum_.hasProducts()))
    reading_.failBefore("only linear rows can stand in this section");
  append(name, sides);
}

RowSections::Sides RowSections::readSides() {
  sum_.clear();
  const Side left = sum_.read(Place::kLeft);
  const bool isNumber = left.numbers > 0 && left.variables == 0;
  const Relation relation = readRelation(reading_, left.numbers + left.variables > 0 ? "+, -, " : "a term, ");
  const Side right = sum_.read(isNumber ? Place::kRightOfNumber : Place::kRight, -1);
  if (left.bareNames > 0 && left.bareNames == left.variables && right.variables > 0) {
    reading_.failBefore("the left side of the row may be a number or a variable whose name is a number");
  }
  if (right.numbers + right.variables == 0) reading_.failExpected("a number or a variable");
  if (isNumber && right.variables == 0) {
    throw NumberAsName(KAVO_FILE, reading_.words.lineBefore(), "expected a variable in the row, found only numbers");
  }
  if (isRelation(reading_.words)) {
    if (!isNumber || right.variables == 0) reading_.failExpected("the next row");
    return readRange(left.constant, relation, right.constant);
  }
  Sides sides = sidesOf(relation, right.constant - left.constant);
  if (left.variables == 0 && right.variables > 0) {
    sum_.negate();
    sides = sidesOf(flipped(relation), left.constant - right.constant);
  }
  checkSides(sides);
  const bool isColumn = left.variables == 1 && left.numbers == 0 && right.variables == 0 && !sum_.hasProducts() &&
                        sum_.linear().size() == 1 && sum_.linear().value(0) == 1;
  const bool isBit = relation == Relation::kEqual && (right.constant == 0 || right.constant == 1);
  if (isColumn && isBit) sides.switchValue = static_cast<int>(right.constant);
  return sides;
}

// The rest of a row with two relations; the sum stands between them.
RowSections::Sides RowSections::readRange(double first, Relation relation, double middle) {
  const Relation second = readRelation(reading_, "");
  if (second != relation || relation == Relation::kEqual)
    reading_.failBefore("expected <= twice or >= twice in one row");
  const Side last = sum_.read(Place::kRight);
  if (last.variables > 0 || last.numbers == 0)
    reading_.failBefore("expected a number behind the second relation of a row");
  sum_.negate();
  const bool isUp = relation == Relation::kLess;
  Sides sides{(isUp ? first : last.constant) - middle, (isUp ? last.constant : first) - middle, kNoSwitch};
  checkSides(sides);
  return sides;
}

RowSections::Sides RowSections::sidesOf(Relation relation, double value) const {
  return {relation == Relation::kLess ? -kInfinite : value, relation == Relation::kGreater ? kInfinite : value,
          kNoSwitch};
}

void RowSections::checkSides(Sides& sides) const {
  sides.lower = withInfinity(sides.lower);
  sides.upper = withInfinity(sides.upper);
  if (std::isnan(sides.lower) || std::isnan(sides.upper) || sides.lower == kInfinite || sides.upper == -kInfinite) {
    reading_.failBefore("no point can satisfy a row with such an infinite side");
  }
}

// b = 0 -> or b = 1 ->, the row follows.
void RowSections::readSwitch(const Sides& sides) {
  if (sides.switchValue == kNoSwitch) reading_.failBefore("expected a variable = 0 or a variable = 1 before \"->\"");
  switches_.push_back({static_cast<int>(reading_.model.rows.size()), sum_.linear().column(0),
                       static_cast<unsigned char>(sides.switchValue), reading_.words.line()});
  reading_.pass('-');
  reading_.pass('>');
}

// Whether the sum is just a new variable, so that it may mean an earlier row of that name.
bool RowSections::isRangeOfRow(std::size_t columnsBefore) const {
  return reading_.model.columns.size() == columnsBefore + 1 && sum_.linear().size() == 1 && !sum_.hasProducts() &&
         sum_.linear().column(0) == static_cast<int>(columnsBefore) && sum_.linear().value(0) != 0;
}

int RowSections::rowOf(std::string_view name) {
  const Names& names = reading_.model.rows.names;
  for (; indexed_ < names.size(); ++indexed_) {
    if (*names.at(indexed_) != '\0') rowIndex_.findOrTake(names.at(indexed_), static_cast<int>(indexed_));
  }
  return rowIndex_.find(name);
}

// The current sum is a new variable, which is taken back.
void RowSections::setRangeOfRow(std::size_t row, const Sides& sides) {
  const std::string name = reading_.model.rows.names.at(row);
  const double factor = sum_.linear().value(0);
  const double lower = (factor > 0 ? sides.lower : sides.upper) / factor;
  const double upper = (factor > 0 ? sides.upper : sides.lower) / factor;
  const auto set = [&](double& side, double value) {
    if (std::isinf(value)) return;
    if (std::isfinite(side) && side != value) {
      reading_.failBefore(fmt::format("row {} has the side {} there already, now {}", quoted(name), side, value));
    }
    side = value;
  };
  set(reading_.model.rows.lower[row], lower);
  set(reading_.model.rows.upper[row], upper);
  reading_.takeBackColumn();
  ranges_.push_back({name, reading_.words.lineBefore()});
}

void RowSections::append(std::string_view name, const Sides& sides) {
  Model& model = reading_.model;
  Rows& rows = model.rows;
  const std::size_t row = rows.size();
  if (row == static_cast<std::size_t>(std::numeric_limits<int>::max())) {
    reading_.failBefore("more rows than this program can count");
  }
  sum_.moveLinear(rows.column, rows.value);
  rows.start.push_back(rows.column.size());
  rows.lower.push_back(sides.lower);
  rows.upper.push_back(sides.upper);
  rows.names.append(name, row);
  if (!rows.quadratic.empty()) rows.quadratic.push_back(-1);
  sum_.moveProducts(KAVO_ROW, row);
  if (lazy_ == 0) return;
  if (model.suffixes.empty()) model.suffixes.push_back({KAVO_ROW, "lazy", false, {}, {}});
  model.suffixes.back().index.push_back(static_cast<int>(row));
  model.suffixes.back().value.push_back(lazy_);
}

void RowSections::finish() {
  for (const Switch& s : switches_) {
    forLine(s.line, [&] { setIndicators(reading_.model, {1, &s.row, &s.column, &s.value}); });
  }
  for (const Range& range : ranges_) {
    if (reading_.columnIndex.find(range.name) == NameIndex::kNone) continue;
    throw Failure(KAVO_FILE, range.line, fmt::format("{} is here a row, and a variable elsewhere", quoted(range.name)));
  }
}

}  // namespace kavo::reader::lp
