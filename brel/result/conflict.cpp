#include "brel/result/conflict.h"

#include <span>
#include <vector>

#include "brel/host.h"
#include "brel/rewrite/marks.h"

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
  checkHost(kavo_link_conflict_minimal(host, found.isMinimal && marks.isExact ? 1 : 0));
}

}  // namespace brel::result
