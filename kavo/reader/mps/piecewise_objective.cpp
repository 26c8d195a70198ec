#include <fmt/format.h>

#include <vector>

#include "kavo/reader/mps/sections.h"

namespace kavo::reader::mps {

namespace {

class PiecewiseReader {
 public:
  explicit PiecewiseReader(Reading& reading) : reading_(reading), taken_(reading.model.columns.size(), false) {}

  void read() {
    const Lines& line = reading_.lines;
    for (int column = NameIndex::kNone; reading_.lines.next(Fields::kWords);) {
      if (line.count() != 3) reading_.failShape("column and the two coordinates of a point");
      column = reading_.columnOf(line[0], column);
      if (parts_.empty() || column != parts_.back().column) begin(column);
      parts_.back().points.push_back(reading_.finite(line[1]));
      parts_.back().points.push_back(reading_.finite(line[2]));
    }
    if (!parts_.empty()) addPiecewiseParts(reading_.model, parts_);
  }

 private:
  void begin(int column) {
    if (reading_.model.objectives.empty())
      reading_.fail("there is no objective (a row of type N) that it could be part of");
    if (taken_[static_cast<std::size_t>(column)]) {
      reading_.fail(fmt::format("column {} has points already; all of a column must follow each other",
                                quoted(reading_.lines[0])));
    }
    taken_[static_cast<std::size_t>(column)] = true;
    parts_.push_back({column, {}, reading_.lines.number()});
  }

  Reading& reading_;
  std::vector<bool> taken_;  // columns that have points
  std::vector<PiecewisePart> parts_;
};

}  // namespace

void readPiecewiseObjective(Reading& reading) { PiecewiseReader(reading).read(); }

}  // namespace kavo::reader::mps
