#include "kavo/reader/nl/draft.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

namespace kavo::reader::nl {

namespace {

constexpr double kNone = std::numeric_limits<double>::infinity();

}  // namespace

Draft::Draft(Header&& read) : header(std::move(read)) {
  const auto columns = static_cast<std::size_t>(header.variables);
  const auto rows = static_cast<std::size_t>(header.constraints);
  const auto objectives = static_cast<std::size_t>(header.objectives);
  model.columns.lower.assign(columns, -kNone);
  model.columns.upper.assign(columns, kNone);
  setTypes();
  model.rows.lower.assign(rows, -kNone);
  model.rows.upper.assign(rows, kNone);
  model.rows.column.resize(static_cast<std::size_t>(header.nonzeros));
  model.rows.value.resize(static_cast<std::size_t>(header.nonzeros));
  model.objectives.resize(objectives);
  model.definedVariables.assign(static_cast<std::size_t>(header.defined), -1);
  model.logical.assign(static_cast<std::size_t>(header.logical), -1);
  model.functions.resize(static_cast<std::size_t>(header.functions));
  model.ampl = true;
  model.amplOptions = header.options;
  model.amplTolerance = header.tolerance;
  rowBegin.assign(rows, 0);
  rowTerms.assign(rows, -1);
  inRows.assign(columns, 0);
  bodies.assign(rows, false);
  objectiveBodies.assign(objectives, false);
  objectiveParts.assign(objectives, false);
  signatures.resize(static_cast<std::size_t>(header.functions));
}

// The order of the variables tells their types: nonlinear ones in both, in constraints only, in objectives only, of
// each the continuous ones first; then network and other linear ones, binary ones, integer ones.
void Draft::setTypes() {
  auto& type = model.columns.type;
  type.assign(static_cast<std::size_t>(header.variables), KAVO_CONTINUOUS);
  auto end = type.begin();
  const auto block = [&end](int count, int integers) {
    end += count;
    std::fill(end - integers, end, KAVO_INTEGER);
  };
  block(header.nonlinearInBoth, header.integerInBoth);
  block(header.nonlinearOnlyInConstraints(), header.integerInConstraints);
  block(header.nonlinearOnlyInObjectives(), header.integerInObjectives);
  std::fill(type.end() - header.integer, type.end(), KAVO_INTEGER);
  std::fill(type.end() - header.integer - header.binary01, type.end() - header.integer, KAVO_BINARY);
}

std::string Draft::missing() const {
  const auto firstOf = [](const std::vector<int>& expressions) {
    return std::find(expressions.begin(), expressions.end(), -1) - expressions.begin();
  };
  const auto objective = std::find(objectiveBodies.begin(), objectiveBodies.end(), false) - objectiveBodies.begin();
  const auto body = std::find(bodies.begin(), bodies.begin() + header.nonlinearConstraints, false) - bodies.begin();
  if (header.variables > 0 && !bounds) return "segment b (bounds of the variables)";
  if (header.constraints > 0 && !sides) return "segment r (sides of the constraints)";
  if (objective < header.objectives) return fmt::format("segment O{} (objective)", objective);
  if (body < header.nonlinearConstraints) return fmt::format("segment C{} (nonlinear constraint)", body);
  if (const auto i = firstOf(model.logical); i < header.logical)
    return fmt::format("segment L{} (logical constraint)", i);
  if (const auto i = firstOf(model.definedVariables); i < header.defined) {
    return fmt::format("segment V{} (defined variable)", i + header.variables);
  }
  if (terms < static_cast<std::size_t>(header.nonzeros)) {
    return fmt::format("segments J with {} terms in all, as the header says, not {}", header.nonzeros, terms);
  }
  if (gradients < static_cast<std::size_t>(header.gradients)) {
    return fmt::format("segments G with {} terms in all, as the header says, not {}", header.gradients, gradients);
  }
  return "";
}

std::string Draft::columnMismatch() const {
  for (std::size_t i = 0; i < announced.size(); ++i) {
    if (announced[i] != inRows[i]) {
      return fmt::format("variable {} is said to appear in {} constraints, the segments J have it in {}", i,
                         announced[i], inRows[i]);
    }
  }
  return "";
}

Model Draft::finish() {
  foldConstants();
  orderRows();
  return std::move(model);
}

// lower <= linear part + c <= upper is a row without expression whose sides are moved by c.
void Draft::foldConstants() {
  for (const auto& [row, constant] : constants) {
    model.rows.lower[static_cast<std::size_t>(row)] -= constant;
    model.rows.upper[static_cast<std::size_t>(row)] -= constant;
  }
}

void Draft::orderRows() {
  auto& rows = model.rows;
  rows.start.assign(rowTerms.size() + 1, 0);
  for (std::size_t i = 0; i < rowTerms.size(); ++i) {
    rows.start[i + 1] = rows.start[i] + static_cast<std::size_t>(std::max(rowTerms[i], 0));
  }
  if (rowsInOrder) return;
  std::vector<int> column(terms);
  std::vector<double> value(terms);
  for (std::size_t i = 0; i < rowTerms.size(); ++i) {
    const auto count = rows.start[i + 1] - rows.start[i];
    std::copy_n(rows.column.data() + rowBegin[i], count, column.data() + rows.start[i]);
    std::copy_n(rows.value.data() + rowBegin[i], count, value.data() + rows.start[i]);
  }
  rows.column.swap(column);
  rows.value.swap(value);
}

}  // namespace kavo::reader::nl
