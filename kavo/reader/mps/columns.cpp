#include <fmt/format.h>

#include <array>
#include <limits>
#include <utility>

#include "kavo/reader/mps/column_entries.h"
#include "kavo/reader/mps/sections.h"

namespace kavo::reader::mps {

namespace {

constexpr std::string_view kMarker = "'MARKER'";

class ColumnReader {
 public:
  explicit ColumnReader(Reading& reading)
      : reading_(reading), entries_(reading.rowType.size()), last_(reading.model.objectives.size(), NameIndex::kNone) {}

  void read() {
    const Lines section = reading_.lines;
    try {
      readLines();
    } catch (const Failure&) {
      flush();  // what is wrong on an earlier line is told first
      throw;
    }
    flush();
    entries_.moveInto(reading_.model.rows);
    reading_.model.rows.lower.resize(reading_.rowType.size());
    const int second = reading_.columnIndex.build();
    if (second != NameIndex::kNone)
      failAtSecond(section, reading_.model.columns.names.at(static_cast<std::size_t>(second)));
    Columns& columns = reading_.model.columns;
    columns.lower.assign(columns.type.size(), 0);
    columns.upper.assign(columns.type.size(), std::numeric_limits<double>::infinity());
  }

 private:
  // An entry whose row is yet to be found. Rows are searched in batches: the places in memory that the searches need
  // are asked for while the next lines are cut, which is what makes the search fast in a large model.
  struct Pending {
    std::string_view rowName;
    double value;
    std::uint32_t hash;
    int column;
    std::size_t line;
  };
  static constexpr std::size_t kBatch = 64;

  void readLines() {
    const Lines& line = reading_.lines;
    while (reading_.lines.next(Fields::kUntyped)) {
      const std::size_t count = line.count();
      if (count >= 3 && count <= Lines::kMostFields && line[1] == kMarker) {
        takeMarker();
        continue;
      }
      if ((count != 3 && count != 5) || line[0].empty()) {
        reading_.failShape("column, row, number, and maybe another row and number");
      }
      if (line[0] != name_) begin(line[0]);
      add(line[1], line[2]);
      if (count == 5) add(line[3], line[4]);
    }
  }

  void begin(std::string_view name) {
    if (column_ == std::numeric_limits<int>::max() - 1) reading_.fail("more columns than this program can count");
    reading_.model.columns.names.append(name, 0);
    name_ = name;
    ++column_;
    reading_.columnFlags().push_back(integer_ ? kIntegerFlag : 0);
    entries_.addColumn();
  }

  void add(std::string_view rowName, std::string_view field) {
    const double value = reading_.finite(field);
    if (reading_.isObjective(rowName)) {
      addToObjective(0, column_, value, reading_.lines.number());
      return;
    }
    if (used_ == kBatch) flush();
    pending_[used_++] = {rowName, value, reading_.rowIndex.prepare(rowName), column_, reading_.lines.number()};
  }

  void addToObjective(std::size_t number, int column, double value, std::size_t line) {
    Objective& objective = reading_.model.objectives[number];
    if (last_[number] == column) failTwice(line, column, objective.name);
    last_[number] = column;
    if (value == 0) return;
    objective.column.push_back(column);
    objective.value.push_back(value);
  }

  void flush() {
    const std::size_t used = std::exchange(used_, 0);
    for (std::size_t i = 0; i < used; ++i) take(pending_[i]);
  }

  void take(const Pending& entry) {
    const int found = reading_.rowIndex.findPrepared(entry.rowName, entry.hash);
    if (found == NameIndex::kNone) {
      if (!reading_.isOther(entry.rowName)) throw Failure(KAVO_FILE, entry.line, noRow(entry.rowName));
      const int number = reading_.objectiveOf(entry.rowName);
      if (number != NameIndex::kNone) {
        addToObjective(static_cast<std::size_t>(number), entry.column, entry.value, entry.line);
      }
      return;
    }
    if (!entries_.add(entry.column, found, entry.value)) failTwice(entry.line, entry.column, entry.rowName);
  }

  // A line that begins or ends a run of integer columns: name, 'MARKER', kind, with empty fields between in fixed
  // columns.
  void takeMarker() {
    const Lines& line = reading_.lines;
    const std::string_view kind = line[line.count() - 1];
    for (std::size_t i = 2; i + 1 < line.count(); ++i) {
      if (!line[i].empty()) reading_.failShape("name, 'MARKER' and 'INTORG' or 'INTEND'");
    }
    if (kind != "'INTORG'" && kind != "'INTEND'") {
      throw Failure(KAVO_NOT_SUPPORTED, line.number(),
                    fmt::format("the marker {} is not taken yet, only 'INTORG' and 'INTEND' are", quoted(kind)));
    }
    integer_ = kind == "'INTORG'";
    name_ = {};
  }

  // Ends the reading where a column begins for the second time. section: the lines of COLUMNS.
  [[noreturn]] static void failAtSecond(Lines section, std::string_view name) {
    int seen = 0;
    for (std::string_view last; seen < 2 && section.next(Fields::kUntyped);) {
      const std::string_view current = section[1] == kMarker ? std::string_view() : section[0];
      seen += current == name && current != last ? 1 : 0;
      last = current;
    }
    throw Failure(
        KAVO_FILE, section.number(),
        fmt::format("there is a column {} already; all entries of a column must follow each other", quoted(name)));
  }

  [[noreturn]] void failTwice(std::size_t line, int column, std::string_view row) const {
    const char* name = reading_.model.columns.names.at(static_cast<std::size_t>(column));
    throw Failure(KAVO_FILE, line, fmt::format("column {} has an entry in row {} already", quoted(name), quoted(row)));
  }

  Reading& reading_;
  ColumnEntries entries_;
  std::array<Pending, kBatch> pending_;
  std::size_t used_ = 0;
  std::string_view name_;  // the current column; "" before the first and behind a marker
  int column_ = NameIndex::kNone;
  std::vector<int> last_;  // per objective the last column that has an entry in it
  bool integer_ = false;
};

}  // namespace

void readColumns(Reading& reading) { ColumnReader(reading).read(); }

}  // namespace kavo::reader::mps
