#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "brel/rewrite/beyond.h"
#include "brel/rewrite/sides.h"
#include "brel/rewrite/trail.h"
#include "brel/user_model.h"
#include "tav/opt/codes.h"

namespace brel::rewrite {

// What is sent to the solver: the user's columns and then those that rules made, the linear rows that rules left to the
// user, and what goes beyond them. Whatever no rule has touched stays where the host has it; only changes are kept
// here, so that a plain model costs nothing.
class SolverModel {
 public:
  // The host's arrays must outlive the model. beyond: null for a model that has nothing beyond linear rows. Its columns
  // come directly behind the user's, and the rows that it has moved are left out.
  SolverModel(const kavo_columns& columns, const kavo_rows& rows, std::shared_ptr<const Beyond> beyond = nullptr);

  const Beyond* beyond() const { return beyond_.get(); }

  // ---- columns: the user's, those of `beyond`, other auxiliary ones ----
  std::size_t columnCount() const { return columns_.count + auxiliaryNames_.size(); }
  tav::opt::VariableType columnType(std::size_t column) const;
  std::span<const double> lower() const { return bounds(ownLower_, columns_.lower); }
  std::span<const double> upper() const { return bounds(ownUpper_, columns_.upper); }
  const std::vector<std::string>& auxiliaryNames() const { return auxiliaryNames_; }

  void setBounds(std::size_t column, double lower, double upper);
  // Appends a continuous column and returns its position. name: "" for none.
  int addColumn(double lower, double upper, std::string name);

  // ---- the user's linear rows, as they are sent; those of `beyond` come behind them ----
  std::size_t rowCount() const { return droppedAny_ ? userRow_.size() : rows_.count; }
  // The user's row that a row stands for.
  std::size_t userRow(std::size_t row) const { return droppedAny_ ? static_cast<std::size_t>(userRow_[row]) : row; }
  // Where the row of a user's row stands, which must be sent.
  std::size_t position(std::size_t userRow) const;
  tav::opt::RowType rowType(std::size_t row) const {
    if (isChanged(row)) return tav::opt::RowType::equal;
    return Sides(rows_, userRow(row)).type();
  }
  double side(std::size_t row) const {
    if (isChanged(row)) return 0;
    return Sides(rows_, userRow(row)).side();
  }
  // The terms of a row: of the user's row, or those that a rule gave it.
  struct Terms {
    std::span<const int> columns;
    std::span<const double> values;
  };
  Terms terms(std::size_t row) const {
    if (isChanged(row)) [[unlikely]]
      return changedTerms(row);
    const std::size_t user = userRow(row);
    const std::size_t first = rows_.start[user];
    const std::size_t count = rows_.start[user + 1] - first;
    return {{rows_.column + first, count}, {rows_.value + first, count}};
  }

  // Whether the rows are the user's, all of them and in their order, with their own terms.
  bool areRowsUntouched() const { return !droppedAny_ && ownTerms_.empty(); }

  // Keeps these of the user's rows only; in rising order.
  void keepRows(std::vector<int> userRows);
  // Makes a row an equality with side 0: the user's terms minus a column.
  void subtractColumn(std::size_t row, int column);

 private:
  std::span<const double> bounds(const std::vector<double>& own, const double* user) const {
    return own.empty() ? std::span<const double>(user, columns_.count) : std::span<const double>(own);
  }
  tav::opt::VariableType auxiliaryType(std::size_t auxiliary) const;
  void ownBounds();
  Terms changedTerms(std::size_t row) const;
  bool isChanged(std::size_t row) const { return !ownTerms_.empty() && ownTerms_[row] >= 0; }

  kavo_columns columns_;
  kavo_rows rows_;
  std::vector<double> ownLower_, ownUpper_;  // all columns, once one was changed or added
  std::shared_ptr<const Beyond> beyond_;
  std::vector<std::string> auxiliaryNames_;
  bool droppedAny_ = false;
  std::vector<int> userRow_;   // per row, once rows were dropped
  std::vector<int> ownTerms_;  // per row, once one was changed: its entry in start_, or -1
  std::vector<std::size_t> start_{0};
  std::vector<int> column_;
  std::vector<double> value_;
};

// Applies all rules to the model that the host has. beyond: see SolverModel. `user` must outlive the trail.
SolverModel rewrite(const UserModel& user, std::shared_ptr<const Beyond> beyond, Trail& trail);

}  // namespace brel::rewrite
