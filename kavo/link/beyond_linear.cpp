#include "kavo/link/beyond_linear.h"

#include <fmt/format.h>

#include <algorithm>

#include "kavo/model/element.h"

namespace kavo {

namespace {

// The first element with something, by its numbers of it, -1 where it has none; -1 when there is no such element.
std::ptrdiff_t firstOf(const std::vector<int>& numbers) {
  const auto found = std::find_if(numbers.begin(), numbers.end(), [](int n) { return n >= 0; });
  return found == numbers.end() ? -1 : found - numbers.begin();
}

// What row or objective `index` has beyond linear terms, if it has.
std::string beyondTerms(const Model& model, int kind, std::ptrdiff_t index, const char* what) {
  if (index < 0) return {};
  return fmt::format("{} {} has {}", kind == KAVO_ROW ? "row" : "objective",
                     elementName(model, kind, static_cast<std::size_t>(index)), what);
}

std::string beyondRows(const Model& model) {
  const Rows& rows = model.rows;
  std::string found = beyondTerms(model, KAVO_ROW, firstOf(rows.expression), "a nonlinear expression");
  if (found.empty()) found = beyondTerms(model, KAVO_ROW, firstOf(rows.quadratic), "quadratic terms");
  if (found.empty()) found = beyondTerms(model, KAVO_ROW, firstOf(rows.indicator), "an indicator");
  return found;
}

std::string beyondObjective(const Model& model, int objectiveNumber) {
  const auto index = static_cast<std::size_t>(objectiveNumber) - 1;
  if (objectiveNumber == 0 || index >= model.objectives.size()) return {};
  const Objective& objective = model.objectives[index];
  const char* what = objective.expression >= 0  ? "a nonlinear expression"
                     : objective.quadratic >= 0 ? "quadratic terms"
                                                : nullptr;
  return beyondTerms(model, KAVO_OBJECTIVE, what != nullptr ? static_cast<std::ptrdiff_t>(index) : -1, what);
}

}  // namespace

std::string beyondLinear(const Model& model, int objectiveNumber) {
  if (std::string found = beyondRows(model); !found.empty()) return found;
  if (std::string found = beyondObjective(model, objectiveNumber); !found.empty()) return found;
  if (!model.logical.empty()) {
    const char* name = model.logicalNames.at(0);
    return *name == '\0' ? "logical constraint 1 is not linear" : fmt::format("{} is a logical constraint", name);
  }
  if (model.sets.size() > 0) return "the model has special ordered sets";
  return {};
}

}  // namespace kavo
