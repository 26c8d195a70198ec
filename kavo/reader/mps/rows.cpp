#include <fmt/format.h>

#include <limits>

#include "kavo/reader/failure.h"
#include "kavo/reader/mps/sections.h"

namespace kavo::reader::mps {

namespace {

class RowReader {
 public:
  RowReader(Reading& reading, int lazy) : reading_(reading), lazy_(lazy) {}

  void read() {
    while (reading_.lines.next(Fields::kTyped)) {
      const Lines& line = reading_.lines;
      if (line.count() != 2) reading_.failShape("type and name of a row");
      take(line[0], line[1]);
    }
    if (lazy_ == 0 && !reading_.wantedObjective.empty() && reading_.objectiveName.empty()) {
      reading_.fail(fmt::format("there is no row {} of type N, which OBJNAME names", quoted(reading_.wantedObjective)));
    }
  }

 private:
  void take(std::string_view type, std::string_view name) {
    const char letter = type.size() == 1 ? upper(type[0]) : ' ';
    if (letter == 'N' && lazy_ == 0) return takeObjective(name);
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

  void takeObjective(std::string_view name) {
    const bool wanted = reading_.wantedObjective.empty() || reading_.wantedObjective == name;
    if (reading_.objectiveName.empty() && wanted) {
      reading_.objectiveName = name;
    } else {
      reading_.otherObjectives.append(name, 0);
    }
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
