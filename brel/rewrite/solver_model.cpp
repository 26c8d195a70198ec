#include "brel/rewrite/solver_model.h"

#include <algorithm>

namespace brel::rewrite {

using tav::opt::VariableType;

SolverModel::SolverModel(const kavo_columns& columns, const kavo_rows& rows, std::shared_ptr<const Beyond> beyond)
    : columns_(columns), rows_(rows), beyond_(std::move(beyond)) {
  if (!beyond_) return;
  const AuxiliaryColumns& made = beyond_->columns;
  for (std::size_t k = 0; k < made.size(); ++k) {
    addColumn(made.lower[k], made.upper[k], made.names.empty() ? std::string() : made.names[k]);
  }
  std::vector<int> kept;
  for (std::size_t i = 0; i < rows_.count; ++i) {
    if (beyond_->moved[i] == 0) kept.push_back(static_cast<int>(i));
  }
  if (kept.size() < rows_.count) keepRows(std::move(kept));
}

VariableType SolverModel::columnType(std::size_t column) const {
  if (column >= columns_.count) return auxiliaryType(column - columns_.count);
  switch (columns_.type[column]) {
    case KAVO_BINARY:
    case KAVO_INTEGER:
      return VariableType::integer;
    case KAVO_SEMICONTINUOUS:
      return VariableType::semicontinuous;
    case KAVO_SEMIINTEGER:
      return VariableType::semiinteger;
    default:
      return VariableType::continuous;
  }
}

VariableType SolverModel::auxiliaryType(std::size_t auxiliary) const {
  const bool isInteger = beyond_ && auxiliary < beyond_->columns.size() && beyond_->columns.isInteger[auxiliary] != 0;
  return isInteger ? VariableType::integer : VariableType::continuous;
}

void SolverModel::ownBounds() {
  if (!ownLower_.empty()) return;
  ownLower_.assign(columns_.lower, columns_.lower + columns_.count);
  ownUpper_.assign(columns_.upper, columns_.upper + columns_.count);
}

void SolverModel::setBounds(std::size_t column, double lower, double upper) {
  ownBounds();
  ownLower_[column] = lower;
  ownUpper_[column] = upper;
}

int SolverModel::addColumn(double lower, double upper, std::string name) {
  ownBounds();
  const int position = static_cast<int>(columnCount());
  ownLower_.push_back(lower);
  ownUpper_.push_back(upper);
  auxiliaryNames_.push_back(std::move(name));
  return position;
}

std::size_t SolverModel::position(std::size_t userRow) const {
  if (!droppedAny_) return userRow;
  const auto found = std::lower_bound(userRow_.begin(), userRow_.end(), static_cast<int>(userRow));
  return static_cast<std::size_t>(found - userRow_.begin());
}

SolverModel::Terms SolverModel::changedTerms(std::size_t row) const {
  const auto entry = static_cast<std::size_t>(ownTerms_[row]);
  const std::size_t first = start_[entry];
  const std::size_t count = start_[entry + 1] - first;
  return {{column_.data() + first, count}, {value_.data() + first, count}};
}

void SolverModel::keepRows(std::vector<int> userRows) {
  droppedAny_ = true;
  userRow_ = std::move(userRows);
}

void SolverModel::subtractColumn(std::size_t row, int column) {
  const Terms user = terms(row);
  if (ownTerms_.empty()) ownTerms_.assign(rowCount(), -1);
  ownTerms_[row] = static_cast<int>(start_.size()) - 1;
  column_.insert(column_.end(), user.columns.begin(), user.columns.end());
  value_.insert(value_.end(), user.values.begin(), user.values.end());
  column_.push_back(column);
  value_.push_back(-1);
  start_.push_back(column_.size());
}

}  // namespace brel::rewrite
