#include "brel/rewrite/rules.h"
#include "brel/rewrite/solver_model.h"

namespace brel::rewrite {
namespace {

// Whether every row has one finite side, or two equal ones: such rows are sent as they are. One look at all rows, on
// several at once; most models need no other.
bool areAllPlain(const kavo_rows& rows) {
  bool plain = true;
  for (std::size_t i = 0; i < rows.count; ++i) {
    const bool hasLower = rows.lower[i] > -kUserInfinity;
    const bool hasUpper = rows.upper[i] < kUserInfinity;
    plain &= (hasLower != hasUpper) | (rows.lower[i] == rows.upper[i]);
  }
  return plain;
}

}  // namespace

SolverModel rewrite(const UserModel& user, std::shared_ptr<const Beyond> beyond, Trail& trail) {
  SolverModel model(user.columns, user.rows, std::move(beyond));
  if (model.beyond() != nullptr) movedRows(user, model, trail);
  binaryColumns(user.columns, model, trail);
  if (areAllPlain(user.rows)) return model;
  freeRows(user.rows, model, trail);
  rangedRows(user.rows, model, trail);
  return model;
}

}  // namespace brel::rewrite
