#include "brel/result/conflict.h"

#include <algorithm>
#include <span>
#include <vector>

#include "brel/host.h"
#include "brel/rewrite/marks.h"
#include "brel/rewrite/sides.h"

namespace brel::result {
namespace {

std::span<unsigned char> marksOf(trpRec* host, int kind) {
  unsigned char* first = nullptr;
  std::size_t count = 0;
  checkHost(kavo_link_conflict(host, kind, &first, &count));
  return {first, count};
}

// Which of `count` parts from position `first` on are listed.
std::vector<bool> chosen(const std::vector<int>& positions, std::size_t first, std::size_t count) {
  std::vector<bool> isIn(count, false);
  for (const int position : positions) {
    const auto place = static_cast<std::size_t>(position);
    if (place >= first && place - first < count) isIn[place - first] = true;
  }
  return isIn;
}

// What the solver has made for itself follows from the parts that it got and is passed over.
rewrite::Marks partsOf(const load::TranslatedModel& model, const tav::opt::Conflict& found) {
  const rewrite::SolverModel& sent = model.sent;
  rewrite::Marks marks;
  marks.lower = chosen(found.lowerBounds, 0, sent.columnCount());
  marks.upper = chosen(found.upperBounds, 0, sent.columnCount());
  marks.row = chosen(found.rows, 0, sent.rowCount());
  if (const rewrite::Beyond* beyond = sent.beyond()) {
    marks.linear = chosen(found.rows, sent.rowCount(), beyond->linear.heads.size());
    marks.quadratic = chosen(found.quadraticRows, 0, beyond->quadratic.heads.size());
    marks.indicator = chosen(found.indicators, 0, beyond->indicator.heads.size());
    marks.nonlinear = chosen(found.nonlinearRows, 0, beyond->nonlinear.heads.size());
    marks.set = chosen(found.sets, model.user.sets.count, beyond->sets.type.size());
  }
  return marks;
}

std::size_t memberCount(const rewrite::Marks& marks, const kavo_rows& rows) {
  std::size_t count = 0;
  for (const unsigned char mark : marks.userColumn) count += mark == KAVO_CONFLICT_BOTH ? 2 : mark != 0 ? 1 : 0;
  for (std::size_t i = 0; i < rows.count; ++i) {
    const bool isTwo = marks.userRow[i] >= KAVO_CONFLICT_BOTH && rewrite::Sides(rows, i).areRange();
    count += isTwo ? 2 : marks.userRow[i] != 0 ? 1 : 0;
  }
  for (const unsigned char mark : marks.userLogical) count += mark != 0;
  return count;
}

// The bounds 0 and 1 that a binary column has by its type, and whose user can give up neither. The solver knows no such
// bounds: it has tried its conflict without each member, but with those of them only that are in the conflict.
class TypeBounds {
 public:
  TypeBounds(const UserModel& user, const rewrite::Marks& marks)
      : columns_(user.columns), rows_(user.rows), marks_(marks) {}

  // Whether the others cannot make a difference: what the solver has found to have a point has one within them, too.
  bool areEnough() const {
    for (std::size_t i = 0; i < rows_.count; ++i) {
      if (marks_.userRow[i] != 0 && !isWithin(i)) return false;
    }
    return true;
  }

  bool areAllIn() const {
    for (std::size_t j = 0; j < columns_.count; ++j) {
      if (!isLowerIn(j) || !isUpperIn(j)) return false;
    }
    return true;
  }

 private:
  bool isBinary(std::size_t j) const { return columns_.type[j] == KAVO_BINARY; }
  bool isLowerIn(std::size_t j) const { return !isBinary(j) || (columns_.lower[j] <= 0 && marks_.lower[j]); }
  bool isUpperIn(std::size_t j) const { return !isBinary(j) || (columns_.upper[j] >= 1 && marks_.upper[j]); }

  // Whether a point of the linear row i stays one when columns beyond a bound that is not in are moved back to it.
  bool isWithin(std::size_t i) const {
    const bool isMember = marks_.userRow[i] == KAVO_CONFLICT_MEMBER;
    const bool isLower = isMember || (marks_.userRow[i] & KAVO_CONFLICT_LOWER) != 0;
    const bool isUpper = isMember || (marks_.userRow[i] & KAVO_CONFLICT_UPPER) != 0;
    for (std::size_t k = rows_.start[i]; k < rows_.start[i + 1]; ++k) {
      const auto j = static_cast<std::size_t>(rows_.column[k]);
      const bool isRising = rows_.value[k] > 0;
      const bool mayNotRise = isRising ? isUpper : isLower;
      const bool mayNotFall = isRising ? isLower : isUpper;
      if ((mayNotRise && !isLowerIn(j)) || (mayNotFall && !isUpperIn(j))) return false;
    }
    return true;
  }

  const kavo_columns& columns_;
  const kavo_rows& rows_;
  const rewrite::Marks& marks_;
};

// Whether the user's conflict, found minimal by the solver among all that was sent, is so among what the user can give
// up. One member alone is needed by itself.
bool isMinimal(const UserModel& user, const rewrite::Marks& marks, std::size_t sets) {
  if (sets + memberCount(marks, user.rows) <= 1) return true;
  const TypeBounds bounds(user, marks);
  return user.isBeyondLinear() || sets > 0 ? bounds.areAllIn() : bounds.areEnough();
}

}  // namespace

void giveConflict(const load::TranslatedModel& model, const tav::opt::Conflict& found) {
  trpRec* host = model.user.host;
  rewrite::Marks marks = partsOf(model, found);
  const auto columns = marks.userColumn = marksOf(host, KAVO_COLUMN);
  for (std::size_t j = 0; j < columns.size(); ++j) {
    if (marks.lower[j]) rewrite::addMark(columns[j], KAVO_CONFLICT_LOWER);
    if (marks.upper[j]) rewrite::addMark(columns[j], KAVO_CONFLICT_UPPER);
  }
  const auto sets = marksOf(host, KAVO_SET);
  const std::vector<bool> isIn = chosen(found.sets, 0, sets.size());
  for (std::size_t s = 0; s < sets.size(); ++s) {
    if (isIn[s]) rewrite::addMark(sets[s], KAVO_CONFLICT_MEMBER);
  }
  marks.userRow = marksOf(host, KAVO_ROW);
  marks.userLogical = marksOf(host, KAVO_LOGICAL);
  for (std::size_t r = 0; r < marks.row.size(); ++r) {
    if (marks.row[r]) rewrite::addMark(marks.userRow[model.sent.userRow(r)], rewrite::sideMark(model.sent.rowType(r)));
  }
  model.trail.marksBack(marks);
  const auto setCount = static_cast<std::size_t>(std::count(isIn.begin(), isIn.end(), true));
  const bool isProven = found.isMinimal && marks.isExact && isMinimal(model.user, marks, setCount);
  checkHost(kavo_link_conflict_minimal(host, isProven ? 1 : 0));
}

}  // namespace brel::result
