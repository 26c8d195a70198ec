#include <fmt/format.h>

#include <vector>

#include "kavo/reader/general_constraint.h"
#include "kavo/reader/mps/sections.h"

namespace kavo::reader::mps {

namespace {

class PiecewiseReader {
 public:
  explicit PiecewiseReader(Reading& reading) : reading_(reading), taken_(reading.model.columns.size(), false) {}

  void read() {
    const Lines& line = reading_.lines;
    while (reading_.lines.next(Fields::kWords)) {
      if (line.count() != 3) reading_.failShape("column and the two coordinates of a point");
      const int column = reading_.columnOf(line[0], column_);
      if (column != column_) {
        end();
        begin(column);
      }
      points_.push_back(reading_.finite(line[1]));
      points_.push_back(reading_.finite(line[2]));
    }
    end();
    if (functions_ > 0) finish();
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
    column_ = column;
    firstLine_ = reading_.lines.number();
  }

  void end() {
    if (column_ == NameIndex::kNone) return;
    Reading::forLine(firstLine_, [&] { pushPiecewiseLinear(reading_.model, points_, column_); });
    ++functions_;
    points_.clear();
  }

  // The functions become the expression of the objective.
  void finish() {
    Model& model = reading_.model;
    if (functions_ == 2) model.expressions.push(KAVO_OP_PLUS, 0, 0);
    if (functions_ > 2) model.expressions.push(KAVO_OP_SUM, functions_, 0);
    Objective& objective = model.objectives.front();
    objective.expression = model.expressions.end();
    std::size_t kept = 0;
    for (std::size_t k = 0; k < objective.column.size(); ++k) {
      if (taken_[static_cast<std::size_t>(objective.column[k])]) continue;
      objective.column[kept] = objective.column[k];
      objective.value[kept++] = objective.value[k];
    }
    if (kept == objective.column.size()) return;
    model.readNotes.push_back(fmt::format(
        "the coefficients of columns with points in section PWLOBJ ({} of them) are left out of the objective {}",
        objective.column.size() - kept, quoted(objective.name)));
    objective.column.resize(kept);
    objective.value.resize(kept);
  }

  Reading& reading_;
  std::vector<bool> taken_;  // columns that have points
  int column_ = NameIndex::kNone;
  std::size_t firstLine_ = 0;  // of the column
  std::vector<double> points_;
  int functions_ = 0;
};

}  // namespace

void readPiecewiseObjective(Reading& reading) { PiecewiseReader(reading).read(); }

}  // namespace kavo::reader::mps
