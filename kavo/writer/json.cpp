#include "kavo/model/element.h"
#include "kavo/result/outcome.h"
#include "kavo/writer/file.h"
#include "kavo/writer/json_parts.h"
#include "kavo/writer/writer.h"

namespace kavo::writer {

namespace {

void writeVariables(JsonText& json, const Model& model, const Results& results) {
  json.key("variables");
  json.beginObject();
  writeNames(json, model, KAVO_COLUMN);
  writeNumbers(json, "value", results.values[KAVO_PRIMAL]);
  writeNumbers(json, "reduced_cost", results.values[KAVO_REDUCED_COST]);
  writeBasis(json, results.columnBasis);
  json.endObject();
}

void writeRows(JsonText& json, const Model& model, const Results& results) {
  json.key("rows");
  json.beginObject();
  writeNames(json, model, KAVO_ROW);
  writeNumbers(json, "activity", results.values[KAVO_ACTIVITY]);
  writeNumbers(json, "dual", results.values[KAVO_DUAL]);
  writeNumbers(json, "slack", results.values[KAVO_SLACK]);
  writeBasis(json, results.rowBasis);
  json.endObject();
}

void writeViolation(JsonText& json, const Model& model, const Results& results, std::size_t check, const char* key) {
  const std::optional<Violation>& found = results.violations[check];
  json.key(key);
  if (!found) return json.null();
  json.beginObject();
  json.key("value");
  json.value(found->value);
  json.key("name");
  found->element < 0 ? json.null()
                     : json.value(elementName(model, kCheckedKind[check], static_cast<std::size_t>(found->element)));
  json.endObject();
}

void writeViolations(JsonText& json, const Model& model, const Results& results) {
  json.key("violations");
  if (!results.hasPoint()) return json.null();
  json.beginObject();
  constexpr const char* kKeys[] = {"rows", "bounds", "integrality", "logical", "ordered_sets"};
  for (std::size_t check = 0; check < std::size(kKeys); ++check) {
    writeViolation(json, model, results, check, kKeys[check]);
  }
  json.endObject();
}

void writeOutcome(JsonText& json, const Results& results) {
  const Outcome words = outcome(results);
  const kavo_finish& finish = results.finish;
  const std::pair<const char*, const char*> texts[] = {
      {"status", words.status}, {"termination", words.termination}, {"message", words.message}};
  for (const auto& [key, text] : texts) json.key(key), json.value(text);
  const std::pair<const char*, double> numbers[] = {
      {"objective", finish.objective},   {"bound", finish.bound},     {"gap", finish.gap},
      {"iterations", finish.iterations}, {"nodes", finish.nodes},     {"seconds", results.seconds},
      {"solutions", finish.solutions},   {"kappa", finish.condition}, {"kappa_exact", finish.exact_condition}};
  for (const auto& [key, number] : numbers) json.key(key), json.value(number);
}

}  // namespace

void writeJson(const Model& model, const Results& results, const std::vector<std::string>& notes,
               const std::string& path) {
  writeFile(path, [&](Text& text) {
    JsonText json(text);
    json.beginObject();
    writeOutcome(json, results);
    writeVariables(json, model, results);
    writeRows(json, model, results);
    writeViolations(json, model, results);
    writeRanges(json, model, results);
    writePool(json, results);
    writeObjectives(json, model, results);
    writeFixed(json, results);
    writeRelaxation(json, model, results);
    writeConflict(json, model, results);
    json.key("notes");
    json.beginArray();
    for (const std::string& note : notes) json.value(note);
    json.endArray();
    json.endObject();
    text << '\n';
  });
}

}  // namespace kavo::writer
