#include "brel/rewrite/evaluate.h"
#include "brel/rewrite/rules.h"

namespace brel::rewrite {
namespace {

struct RangedRow {
  int user, solver, slack;  // positions: the user's row, the equality, the column s
};

class RangedRowsStep : public Step {
 public:
  RangedRowsStep(const kavo_rows& rows, std::vector<RangedRow> ranged) : rows_(rows), ranged_(std::move(ranged)) {}

  void startsForward(Starts& starts) const override {
    if (starts.column.empty()) return;
    for (const RangedRow& r : ranged_) {  // unknown when one of the row's columns is
      starts.column[static_cast<std::size_t>(r.slack)] =
          activity(rows_, static_cast<std::size_t>(r.user), starts.userColumn);
    }
  }

  void resultsBack(RowResults& results) const override {
    for (const RangedRow& r : ranged_) {
      const auto user = static_cast<std::size_t>(r.user);
      const auto solver = static_cast<std::size_t>(r.solver);
      const auto slack = static_cast<std::size_t>(r.slack);
      if (!results.activity.empty()) {
        results.activity[user] = results.solverActivity[solver] + results.solverPrimal[slack];
      }
      if (!results.basis.empty() && results.solverRowBasis[solver] != KAVO_BASIC) {
        results.basis[user] = results.solverColumnBasis[slack];
      }
    }
  }

 private:
  kavo_rows rows_;
  std::vector<RangedRow> ranged_;
};

bool isRanged(const kavo_rows& rows, std::size_t i) {
  return rows.lower[i] > -kUserInfinity && rows.upper[i] < kUserInfinity && rows.lower[i] != rows.upper[i];
}

void copyTermsWithSlack(const kavo_rows& rows, std::size_t row, int slack, SolverModel& model) {
  const std::size_t first = rows.start[row];
  const std::size_t last = rows.start[row + 1];
  model.own.column.insert(model.own.column.end(), rows.column + first, rows.column + last);
  model.own.value.insert(model.own.value.end(), rows.value + first, rows.value + last);
  model.own.column.push_back(slack);
  model.own.value.push_back(-1);
  model.own.start.push_back(model.own.column.size());
}

std::string slackName(const kavo_rows& rows, std::size_t row) {
  if (rows.names.start == nullptr) return {};
  const char* name = rows.names.text + rows.names.start[row];
  return *name == '\0' ? std::string() : std::string(name) + "_range";
}

}  // namespace

void rangedRows(const kavo_rows& rows, SolverModel& model, Trail& trail) {
  std::vector<RangedRow> ranged;
  for (std::size_t r = 0; r < model.userRow.size(); ++r) {
    const auto user = static_cast<std::size_t>(model.userRow[r]);
    if (!isRanged(rows, user)) continue;
    const int slack = static_cast<int>(model.lower.size());
    model.columnType.push_back(static_cast<int>(tav::opt::VariableType::continuous));
    model.lower.push_back(rows.lower[user]);
    model.upper.push_back(rows.upper[user]);
    model.auxiliaryNames.push_back(slackName(rows, user));
    copyTermsWithSlack(rows, user, slack, model);
    if (model.ownTerms.empty()) model.ownTerms.assign(model.userRow.size(), -1);
    model.ownTerms[r] = static_cast<int>(ranged.size());
    model.rowType[r] = static_cast<int>(tav::opt::RowType::equal);
    model.side[r] = 0;
    ranged.push_back({static_cast<int>(user), static_cast<int>(r), slack});
  }
  if (!ranged.empty()) trail.push(std::make_unique<RangedRowsStep>(rows, std::move(ranged)));
}

}  // namespace brel::rewrite
