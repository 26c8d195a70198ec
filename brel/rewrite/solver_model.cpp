#include "brel/rewrite/solver_model.h"

namespace brel::rewrite {

using tav::opt::RowType;
using tav::opt::VariableType;

SolverModel::SolverModel(const kavo_columns& columns, const kavo_rows& rows) : columns_(columns), rows_(rows) {}

VariableType SolverModel::columnType(std::size_t column) const {
  if (column >= columns_.count) return VariableType::continuous;
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

RowType SolverModel::rowType(std::size_t row) const {
  const std::size_t user = userRow(row);
  if (isChanged(row)) return RowType::equal;
  if (rows_.lower[user] <= -kUserInfinity) return RowType::lessOrEqual;
  return rows_.upper[user] >= kUserInfinity ? RowType::greaterOrEqual : RowType::equal;
}

double SolverModel::side(std::size_t row) const {
  if (isChanged(row)) return 0;
  const std::size_t user = userRow(row);
  return rows_.lower[user] <= -kUserInfinity ? rows_.upper[user] : rows_.lower[user];
}

SolverModel::Terms SolverModel::terms(std::size_t row) const {
  const bool own = isChanged(row);
  const std::size_t entry = own ? static_cast<std::size_t>(ownTerms_[row]) : userRow(row);
  const std::size_t* start = own ? start_.data() : rows_.start;
  const std::size_t first = start[entry];
  const std::size_t count = start[entry + 1] - first;
  return {{(own ? column_.data() : rows_.column) + first, count}, {(own ? value_.data() : rows_.value) + first, count}};
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
