#include <fmt/format.h>

#include <cmath>
#include <limits>

#include "kavo/reader/mps/first_set.h"
#include "kavo/reader/mps/sections.h"

namespace kavo::reader::mps {

namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

// Stores a value that may be given twice only when it is the same.
void store(const Reading& reading, double& place, double value, std::string_view row) {
  if (!std::isnan(place) && place != value) {
    reading.fail(fmt::format("row {} has another value in section {} already: {}, now {}", quoted(row), reading.section,
                             place, value));
  }
  place = value;
}

}  // namespace

template <class Take>
void Sides::readPairs(Take&& take) {
  const Lines& line = reading_.lines;
  FirstSet first;
  last_ = NameIndex::kNone;
  while (reading_.lines.next(Fields::kUntyped)) {
    const std::size_t count = line.count();
    if (count < 2 || count > 5 || (line.layout() == Layout::kColumns && count % 2 == 0)) {
      reading_.failShape("name of the set or nothing, row, number, and maybe another row and number");
    }
    const std::size_t set = count % 2;
    if (!first.takes(reading_, set == 1 ? line[0] : std::string_view())) continue;
    for (std::size_t i = set; i < count; i += 2) take(line[i], line[i + 1]);
  }
}

void Sides::readRhs() {
  rhs_.assign(reading_.rowType.size(), kUnknown);
  objectiveRhs_.assign(reading_.model.objectives.size(), kUnknown);
  readPairs([this](std::string_view row, std::string_view field) { takeRhs(row, field); });
}

void Sides::readRanges() {
  range_.assign(reading_.rowType.size(), kUnknown);
  readPairs([this](std::string_view row, std::string_view field) { takeRange(row, field); });
}

int Sides::find(std::string_view name) {
  const int row = reading_.rowOf(name, last_ + 1);
  if (row != NameIndex::kNone) last_ = row;
  return row;
}

void Sides::takeRhs(std::string_view name, std::string_view field) {
  if (reading_.isObjective(name)) {
    store(reading_, objectiveRhs_[0], reading_.finite(field), name);
    return;
  }
  const double value = withInfinity(reading_.number(field));
  const int row = find(name);
  if (row == NameIndex::kNone) {
    const int number = reading_.objectiveOf(name);
    if (number != NameIndex::kNone) {
      store(reading_, objectiveRhs_[static_cast<std::size_t>(number)], reading_.finite(field), name);
    }
    return;
  }
  const char type = reading_.rowType[static_cast<std::size_t>(row)];
  if (std::isinf(value) && (type == 'E' || (type == 'L') == (value < 0))) {
    reading_.fail(
        fmt::format("no point can satisfy row {} of type {} with the side {}", quoted(name), type, quoted(field)));
  }
  store(reading_, rhs_[static_cast<std::size_t>(row)], value, name);
}

void Sides::takeRange(std::string_view name, std::string_view field) {
  const double value = withInfinity(reading_.number(field));
  const int row = reading_.isObjective(name) ? NameIndex::kNone : find(name);
  if (row != NameIndex::kNone) {
    store(reading_, range_[static_cast<std::size_t>(row)], value, name);
    return;
  }
  if (!freeRangeNoted_) {
    reading_.model.readNotes.push_back(fmt::format("ranges of rows of type N, such as {} on line {}, are left out",
                                                   quoted(name), reading_.lines.number()));
  }
  freeRangeNoted_ = true;
}

void Sides::finish() {
  for (std::size_t i = 0; i < objectiveRhs_.size(); ++i) {
    if (!std::isnan(objectiveRhs_[i])) reading_.model.objectives[i].constant = 0 - objectiveRhs_[i];
  }
  Rows& rows = reading_.model.rows;
  rows.upper = std::move(rhs_);
  rows.upper.resize(reading_.rowType.size(), kUnknown);
  for (std::size_t i = 0; i < rows.upper.size(); ++i) {
    const char type = reading_.rowType[i];
    const double side = std::isnan(rows.upper[i]) ? 0 : rows.upper[i];
    const double range = range_.empty() ? kUnknown : range_[i];
    const bool ranged = !std::isnan(range);
    if (ranged && std::isinf(side)) {
      reading_.fail(fmt::format("row {} has an infinite right-hand side and a range", quoted(rows.names.at(i))));
    }
    const bool up = type == 'G' || (type == 'E' && ranged && range > 0);  // the right-hand side is the lower side
    const double other = ranged ? (up ? side + std::abs(range) : side - std::abs(range))
                                : (type == 'E' ? side
                                   : up        ? kInfinite
                                               : -kInfinite);
    rows.lower[i] = up ? side : withInfinity(other);
    rows.upper[i] = up ? withInfinity(other) : side;
  }
}

}  // namespace kavo::reader::mps
