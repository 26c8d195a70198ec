#include "kavo/link/beyond_linear.h"

#include <fmt/format.h>

#include <algorithm>

#include "kavo/model/element.h"

namespace kavo {

namespace {

// Columns of special ordered sets carry the number of their set in one of these suffixes.
bool hasOrderedSets(const Model& model) {
  return std::any_of(model.suffixes.begin(), model.suffixes.end(), [](const Suffix& suffix) {
    const bool named = suffix.name == "sosno" || suffix.name == "sos";
    return named && suffix.kind == KAVO_COLUMN &&
           std::any_of(suffix.value.begin(), suffix.value.end(), [](double v) { return v != 0; });
  });
}

}  // namespace

std::string beyondLinear(const Model& model, int objectiveNumber) {
  const auto& expression = model.rows.expression;
  const auto row = std::find_if(expression.begin(), expression.end(), [](int e) { return e >= 0; });
  if (row != expression.end()) {
    const auto index = static_cast<std::size_t>(row - expression.begin());
    return fmt::format("row {} has a nonlinear expression", elementName(model, KAVO_ROW, index));
  }
  const auto objective = static_cast<std::size_t>(objectiveNumber) - 1;
  if (objectiveNumber > 0 && objective < model.objectives.size() && model.objectives[objective].expression >= 0) {
    return fmt::format("objective {} has a nonlinear expression", elementName(model, KAVO_OBJECTIVE, objective));
  }
  if (!model.logical.empty()) {
    const char* name = model.logicalNames.at(0);
    return *name == '\0' ? "logical constraint 1 is not linear" : fmt::format("{} is a logical constraint", name);
  }
  if (hasOrderedSets(model)) return "the model has special ordered sets";
  if (!model.complementarity.empty()) {
    const auto index = static_cast<std::size_t>(model.complementarity[0].row);
    return fmt::format("row {} is a complementarity condition", elementName(model, KAVO_ROW, index));
  }
  return {};
}

}  // namespace kavo
