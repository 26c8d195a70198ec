// What goes with the point of a solve: other points, other objectives, the fixed model, what a relaxation gave up.

#include <cmath>

#include "kavo/result/outcome.h"
#include "kavo/result/relaxed.h"
#include "kavo/writer/element_names.h"
#include "kavo/writer/json_parts.h"

namespace kavo::writer {

void writePool(JsonText& json, const Results& results) {
  json.key("pool");
  if (results.pool.empty()) return json.null();
  json.beginArray();
  for (const PoolPoint& point : results.pool) {
    json.beginObject();
    json.key("objective"), json.value(point.objective);
    json.key("value");
    json.beginArray();
    for (const double value : point.values) json.value(value);
    json.endArray();
    json.endObject();
  }
  json.endArray();
}

void writeObjectives(JsonText& json, const Model& model, const Results& results) {
  json.key("objectives");
  if (!results.objectives || model.objectives.size() < 2) return json.null();
  ElementNames names(model, KAVO_OBJECTIVE);
  json.beginArray();
  for (std::size_t i = 0; i < results.objectives->size(); ++i) {
    json.beginObject();
    json.key("name"), json.value(names.at(i));
    json.key("value"), json.value((*results.objectives)[i]);
    json.endObject();
  }
  json.endArray();
}

namespace {

void writeGivenUp(JsonText& json, const Model& model, int kind, const std::vector<Violation>& violations) {
  ElementNames names(model, kind);
  json.beginArray();
  for (const Violation& violation : violations) {
    json.beginObject();
    json.key("name"), json.value(names.at(static_cast<std::size_t>(violation.element)));
    json.key("violation"), json.value(violation.value);
    json.endObject();
  }
  json.endArray();
}

}  // namespace

void writeRelaxation(JsonText& json, const Model& model, const Results& results) {
  json.key("relaxation");
  if (std::isnan(results.finish.relaxation)) return json.null();
  json.beginObject();
  json.key("value"), json.value(results.finish.relaxation);
  json.key("objective"), json.value(results.finish.objective);
  json.key("rows");
  results.hasPoint() ? writeGivenUp(json, model, KAVO_ROW, violatedRows(model, results)) : json.null();
  json.key("bounds");
  results.hasPoint() ? writeGivenUp(json, model, KAVO_COLUMN, violatedBounds(model, results)) : json.null();
  json.endObject();
}

void writeFixed(JsonText& json, const Results& results) {
  json.key("fixed");
  const Answer& fixed = results.fixed;
  if (!fixed.finished) return json.null();
  const Outcome words = outcome(fixed, results.signalled);
  json.beginObject();
  json.key("status"), json.value(words.status);
  json.key("termination"), json.value(words.termination);
  json.key("message"), json.value(words.message);
  json.key("objective"), json.value(fixed.finish.objective);
  json.key("variables");
  json.beginObject();
  writeNumbers(json, "value", fixed.values[KAVO_PRIMAL]);
  writeNumbers(json, "reduced_cost", fixed.values[KAVO_REDUCED_COST]);
  writeBasis(json, fixed.columnBasis);
  json.endObject();
  json.key("rows");
  json.beginObject();
  writeNumbers(json, "activity", fixed.values[KAVO_ACTIVITY]);
  writeNumbers(json, "dual", fixed.values[KAVO_DUAL]);
  writeNumbers(json, "slack", fixed.values[KAVO_SLACK]);
  writeBasis(json, fixed.rowBasis);
  json.endObject();
  json.endObject();
}

}  // namespace kavo::writer
