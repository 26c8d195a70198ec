#include <fmt/format.h>

#include <limits>

#include "kavo/reader/mps/sections.h"

namespace kavo::reader::mps {

namespace {

class RowReader {
 public:
  RowReader(Reading& reading, int lazy) : reading_(reading), lazy_(lazy) {}

  void read() {
    while (reading_.lines.next(Fields::kTyped)) {
      const Lines& line = reading_.lines;
      const bool isRanked = line.count() == 6 && lazy_ == 0 && letterOf(line[0]) == 'N';
      if (line.count() != 2 && !isRanked) reading_.failShape("type and name of a row");
      take(line[0], line[1], isRanked);
    }
    if (lazy_ == 0 && !reading_.wantedObjective.empty() && reading_.objectiveName.empty()) {
      reading_.fail(fmt::format("there is no row {} of type N, which OBJNAME names", quoted(reading_.wantedObjective)));
    }
  }

 private:
  static char letterOf(std::string_view type) { return type.size() == 1 ? upper(type[0]) : ' '; }

  // isRanked: the line gives priority, weight and tolerances of an objective.
  void take(std::string_view type, std::string_view name, bool isRanked) {
    const char letter = letterOf(type);
    if (letter == 'N' && lazy_ == 0) return takeObjective(name, isRanked);
    if (letter != 'E' && letter != 'L' && letter != 'G') {
      reading_.fail(fmt::format("expected {}E, L or G as the type of row {}, found {}", lazy_ == 0 ? "N, " : "",
                                quoted(name), quoted(type)));
    }
    if (reading_.rowType.size() == static_cast<std::size_t>(std::numeric_limits<int>::max())) {
      reading_.fail("more rows than this program can count");
    }
    reading_.model.rows.names.append(name, 0);
    reading_.rowType.push_back(letter);
    if (lazy_ != 0) mark();
  }

  // Whoever names the objective wants this one alone, whatever the file ranks.
  void takeObjective(std::string_view name, bool isRanked) {
    const std::string_view wanted = reading_.wantedObjective;
    const bool isFirst = reading_.objectiveName.empty() && (wanted.empty() || wanted == name);
    if (isFirst) {
      reading_.objectiveName = name;
    } else {
      reading_.otherObjectives.append(name, 0);
    }
    if (!wanted.empty()) isRanked = false;
    if (!isFirst && wanted.empty() && isRanked == reading_.ranks.empty()) {
      reading_.fail("expected priority, weight, absolute and relative tolerance for all rows of type N or for none");
    }
    if (isRanked) rank();
    if (isFirst || isRanked) addObjective(name);
  }

  void addObjective(std::string_view name) const {
    Objective& objective = reading_.model.objectives.emplace_back();
    objective.sense = reading_.sense;
    objective.name = name;
  }

  void rank() const {
    const Lines& line = reading_.lines;
    constexpr int kMost = std::numeric_limits<int>::max();
    const int priority = reading_.integer(line[2], "a whole number as the priority", -kMost, kMost);
    reading_.ranks.push_back(
        {static_cast<double>(priority), reading_.finite(line[3]), reading_.finite(line[4]), reading_.finite(line[5])});
  }

  // Gives the last row the suffix that makes it a lazy constraint or a user cut.
  void mark() const {
    std::vector<Suffix>& suffixes = reading_.model.suffixes;
    if (suffixes.empty()) suffixes.push_back({KAVO_ROW, "lazy", false, {}, {}});
    suffixes.back().index.push_back(static_cast<int>(reading_.rowType.size()) - 1);
    suffixes.back().value.push_back(lazy_);
  }

  Reading& reading_;
  int lazy_;
};

// A name that two rows have, or "".
std::string_view nameOfTwo(Reading& reading) {
  const Names& rows = reading.model.rows.names;
  const Names& others = reading.otherObjectives;
  if (const int row = reading.rowIndex.build(); row != NameIndex::kNone) return rows.at(static_cast<std::size_t>(row));
  if (const int row = reading.otherIndex.build(); row != NameIndex::kNone) {
    return others.at(static_cast<std::size_t>(row));
  }
  const auto isRow = [&](std::string_view name) { return reading.rowIndex.find(name) != NameIndex::kNone; };
  const std::string_view objective = reading.objectiveName;
  if (!objective.empty() && (isRow(objective) || reading.isOther(objective))) return objective;
  for (std::size_t i = 0; i < others.size(); ++i) {
    if (isRow(others.at(i))) return others.at(i);
  }
  return {};
}

}  // namespace

void readRows(Reading& reading, int lazy) { RowReader(reading, lazy).read(); }

void indexRows(Reading& reading, Lines sections) {
  const std::string_view name = nameOfTwo(reading);
  if (name.empty()) return;
  int seen = 0;
  while (seen < 2 && !sections.atEnd()) {
    while (seen < 2 && sections.next(Fields::kTyped)) seen += sections[1] == name ? 1 : 0;
  }
  throw Failure(KAVO_FILE, sections.number(), fmt::format("there is a row {} already", quoted(name)));
}

}  // namespace kavo::reader::mps
