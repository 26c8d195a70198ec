// What explains an answer: how far its numbers may go, and what contradicts what.

#include <algorithm>
#include <span>
#include <utility>

#include "kavo/writer/element_names.h"
#include "kavo/writer/json_parts.h"

namespace kavo::writer {

namespace {

using Field = std::pair<const char*, int>;
constexpr Field kColumnRanges[] = {{"cost_low", KAVO_COST_LOW},   {"cost_high", KAVO_COST_HIGH},
                                   {"lower_low", KAVO_LOWER_LOW}, {"lower_high", KAVO_LOWER_HIGH},
                                   {"upper_low", KAVO_UPPER_LOW}, {"upper_high", KAVO_UPPER_HIGH}};
constexpr Field kRowRanges[] = {{"side_low", KAVO_SIDE_LOW}, {"side_high", KAVO_SIDE_HIGH}};

const Numbers& valuesOf(const Answer& answer, const Field& field) {
  return answer.values[static_cast<std::size_t>(field.second)];
}

void writeRangesOf(JsonText& json, const char* key, const Model& model, const Answer& answer, int kind) {
  const std::span<const Field> fields = kind == KAVO_COLUMN ? std::span<const Field>(kColumnRanges) : kRowRanges;
  json.key(key);
  json.beginObject();
  writeNames(json, model, kind);
  for (const Field& field : fields) writeNumbers(json, field.first, valuesOf(answer, field));
  json.endObject();
}

// The rows of each list of the conflict: by what they are, the last kind first.
enum class RowList { kLinear, kQuadratic, kGeneral };

RowList listOf(const Rows& rows, std::size_t i) {
  const auto has = [i](const std::vector<int>& parts) { return !parts.empty() && parts[i] >= 0; };
  if (has(rows.indicator) || has(rows.expression)) return RowList::kGeneral;
  return has(rows.quadratic) ? RowList::kQuadratic : RowList::kLinear;
}

// Writes the names of the marked elements of a kind for which `belongs` says so.
template <class Belongs>
void writeMembers(JsonText& json, const Model& model, const Conflict& conflict, int kind, Belongs&& belongs) {
  const auto& marks = conflict.marks[static_cast<std::size_t>(kind)];
  ElementNames names(model, kind);
  for (std::size_t i = 0; i < marks.size(); ++i) {
    if (marks[i] != KAVO_CONFLICT_NONE && belongs(i)) json.value(names.at(i));
  }
}

void writeRowMembers(JsonText& json, const char* key, const Model& model, const Conflict& conflict, RowList list) {
  json.key(key);
  json.beginArray();
  writeMembers(json, model, conflict, KAVO_ROW, [&](std::size_t i) { return listOf(model.rows, i) == list; });
  if (list == RowList::kGeneral) {
    writeMembers(json, model, conflict, KAVO_LOGICAL, [](std::size_t) { return true; });
  }
  json.endArray();
}

// Whether one bound of each marked column is in, null where bounds are not told apart.
void writeBoundMembers(JsonText& json, const char* key, const std::vector<unsigned char>& marks, int bound) {
  json.key(key);
  json.beginArray();
  for (const unsigned char mark : marks) {
    if (mark == KAVO_CONFLICT_MEMBER) {
      json.null();
    } else if (mark != KAVO_CONFLICT_NONE) {
      json.truth((mark & bound) != 0);
    }
  }
  json.endArray();
}

void writeColumnMembers(JsonText& json, const Model& model, const Conflict& conflict) {
  json.key("variables");
  json.beginObject();
  json.key("name");
  json.beginArray();
  writeMembers(json, model, conflict, KAVO_COLUMN, [](std::size_t) { return true; });
  json.endArray();
  writeBoundMembers(json, "lower", conflict.marks[KAVO_COLUMN], KAVO_CONFLICT_LOWER);
  writeBoundMembers(json, "upper", conflict.marks[KAVO_COLUMN], KAVO_CONFLICT_UPPER);
  json.endObject();
}

}  // namespace

void writeRanges(JsonText& json, const Model& model, const Answer& answer) {
  const auto given = [&](const Field& field) { return valuesOf(answer, field).has_value(); };
  json.key("ranges");
  if (!std::ranges::any_of(kColumnRanges, given) && !std::ranges::any_of(kRowRanges, given)) return json.null();
  json.beginObject();
  writeRangesOf(json, "variables", model, answer, KAVO_COLUMN);
  writeRangesOf(json, "rows", model, answer, KAVO_ROW);
  json.endObject();
}

void writeConflict(JsonText& json, const Model& model, const Results& results) {
  json.key("iis");
  if (!results.conflict) return json.null();
  const Conflict& conflict = *results.conflict;
  json.beginObject();
  json.key("minimal"), json.truth(conflict.minimal);
  writeColumnMembers(json, model, conflict);
  writeRowMembers(json, "rows", model, conflict, RowList::kLinear);
  writeRowMembers(json, "quadratic", model, conflict, RowList::kQuadratic);
  json.key("sos");
  json.beginArray();
  writeMembers(json, model, conflict, KAVO_SET, [](std::size_t) { return true; });
  json.endArray();
  writeRowMembers(json, "general", model, conflict, RowList::kGeneral);
  json.endObject();
}

}  // namespace kavo::writer
