#include "grb/procedure/iis.h"

#include <fmt/format.h>

#include <numeric>
#include <utility>
#include <vector>

#include "grb/gurobi/constants.h"
#include "grb/gurobi/exception.h"
#include "tav/idx/lib/range.h"

namespace grb {
namespace {

using tav::opt::Conflict;

struct RowAttributes {
  const char* count;
  const char* member;
  const char* name;
  const char* sense;
  const char* side;
};
constexpr RowAttributes kLinear{"NumConstrs", "IISConstr", "ConstrName", "Sense", "RHS"};
constexpr RowAttributes kQuadratic{"NumQConstrs", "IISQConstr", "QCName", "QCSense", "QCRHS"};

std::vector<int> positionsIn(const std::vector<int>& flags) {
  std::vector<int> positions;
  for (std::size_t i = 0; i < flags.size(); ++i) {
    if (flags[i] != 0) positions.push_back(static_cast<int>(i));
  }
  return positions;
}

class Report {
 public:
  explicit Report(Data& data) : data_(data), model_(*data.model) {}

  Conflict write() {
    Conflict found;
    found.isMinimal = model_.getIntAttr("IISMinimal") == 1;
    if (!found.isMinimal) log("IIS construction terminated prematurely. IIS may not be minimal!");
    writeBounds(found);
    found.rows = writeRows(kLinear);
    found.quadraticRows = writeRows(kQuadratic);
    writeSets(found);
    noteGeneral(found);
    return found;
  }

 private:
  void log(const std::string& line) { data_.callbacks.log->writeLine(line); }

  // Zeros where Gurobi does not hand out any, since the read is not checked.
  std::vector<int> flags(const char* attribute, int count) {
    std::vector<int> values(static_cast<std::size_t>(count));
    if (count > 0) model_.getIntAttrArray(attribute, tav::idx::lib::Range(0, count), values);
    return values;
  }
  static int sum(const std::vector<int>& values) { return std::accumulate(values.begin(), values.end(), 0); }

  void writeBounds(Conflict& found) {
    const int count = model_.getIntAttr("NumVars");
    const std::vector<int> lower = flags("IISLB", count);
    const std::vector<int> upper = flags("IISUB", count);
    log(fmt::format("Number of variable bounds in the IIS: {}", sum(lower) + sum(upper)));
    for (int i = 0; i < count; ++i) {
      const auto k = static_cast<std::size_t>(i);
      if (lower[k] == 0 && upper[k] == 0) continue;
      std::string line = model_.getStrAttrElement("VarName", i);
      if (lower[k] != 0) line = fmt::format("{:f} < {}", model_.getDblAttrElement("LB", i), line);
      if (upper[k] != 0) line = fmt::format("{} < {:f}", line, model_.getDblAttrElement("UB", i));
      log(line);
    }
    found.lowerBounds = positionsIn(lower);
    found.upperBounds = positionsIn(upper);
  }

  std::vector<int> writeRows(const RowAttributes& rows) {
    const int count = model_.getIntAttr(rows.count);
    if (count == 0) return {};
    const std::vector<int> members = flags(rows.member, count);
    log(fmt::format("Number of linear constraints in the IIS: {}", sum(members)));
    std::vector<int> positions = positionsIn(members);
    for (const int i : positions) {
      log(fmt::format("{} {} {:f}", model_.getStrAttrElement(rows.name, i), model_.getCharAttrElement(rows.sense, i),
                      model_.getDblAttrElement(rows.side, i)));
    }
    return positions;
  }

  // The log has always counted sets by the attribute of quadratic rows, and people compare logs; what tools get is
  // read from the sets' own.
  void writeSets(Conflict& found) {
    const int count = model_.getIntAttr("NumSOS");
    if (count == 0) return;
    log(fmt::format("Number of SOS constraints in the IIS: {}", sum(flags("IISQConstr", count))));
    found.sets = positionsIn(flags("IISSOS", count));
  }

  void noteGeneral(Conflict& found) {
    const int count = static_cast<int>(data_.generalConstraints.size());
    for (const int i : positionsIn(flags("IISGenConstr", count))) {
      const GeneralConstraint& what = data_.generalConstraints[static_cast<std::size_t>(i)];
      if (what.kind == GeneralConstraint::Kind::indicator) found.indicators.push_back(what.position);
      if (what.kind == GeneralConstraint::Kind::nonlinearRow) found.nonlinearRows.push_back(what.position);
    }
  }

  Data& data_;
  GurobiModel& model_;
};

// Gurobi says the same of a model that it could not tell from an infeasible one and that is unbounded.
std::string whyNone(const Data& data) {
  if (!data.outcome.hasSolved) return "the model is not infeasible";
  return "the model is not infeasible, so it is unbounded";
}

}  // namespace

void reportIis(Data& data, int status) {
  data.callbacks.log->writeLine("Computing IIS...");
  try {
    data.model->computeIIS();
  } catch (const GurobiException& failure) {
    if (failure.code() == error::kIisNotInfeasible) {
      data.outcome.conflictFailure = whyNone(data);
      data.outcome.status = status;
    }
    throw;
  }
  if (!data.model->isAttrAvailable("IISMinimal")) {
    data.callbacks.log->writeLine("The computation of the IIS was stopped before there was any.");
    data.outcome.conflictFailure = "the search for it was stopped before it found any";
    data.outcome.status = status;
    data.outcome.isCutShort = true;
    return;
  }
  Conflict found = Report(data).write();
  data.outcome.isCutShort = !found.isMinimal;
  if (data.model->relaxed()) {
    data.outcome.conflictFailure = "it is the relaxation that is infeasible; the log tells its conflict";
  } else {
    data.outcome.conflict = std::move(found);
  }
}

}  // namespace grb
