#include "kavo/reader/point.h"

#include <fmt/format.h>

#include <cmath>
#include <optional>
#include <string_view>
#include <unordered_set>

#include "kavo/error.h"
#include "kavo/reader/input.h"
#include "kavo/reader/name_index.h"
#include "kavo/reader/number.h"
#include "kavo/reader/text.h"

namespace kavo::reader {

namespace {

constexpr std::string_view kBlanks = " \t\r\v\f";

// Which column a name means.
class ColumnNames {
 public:
  explicit ColumnNames(const Columns& columns) : columns_(columns), index_(columns.names) {
    for (std::size_t i = 0; i < columns.names.size(); ++i) {
      const std::string_view name = columns.names.at(i);
      if (name.empty()) continue;
      const int first = index_.findOrTake(name, static_cast<int>(i));
      if (first != static_cast<int>(i) && first != NameIndex::kNone) shared_.insert(first);
    }
  }

  // The column of that name, or kNone.
  int find(std::string_view name) const {
    if (name.empty()) return NameIndex::kNone;
    const int given = index_.find(name);
    return given != NameIndex::kNone ? given : byDefault(name);
  }
  bool isShared(int column) const { return shared_.contains(column); }

 private:
  int byDefault(std::string_view name) const {
    constexpr std::string_view kBegin = "_svar[", kEnd = "]";
    if (!name.starts_with(kBegin) || !name.ends_with(kEnd)) return NameIndex::kNone;
    const char* const first = name.data() + kBegin.size();
    const char* const last = name.data() + name.size() - kEnd.size();
    int number = 0;
    const bool isNumber = parseInteger(first, last, number) == last && *first != '+' && *first != '0';
    if (!isNumber || number < 1 || static_cast<std::size_t>(number) > columns_.size()) return NameIndex::kNone;
    return number - 1;
  }

  const Columns& columns_;
  NameIndex index_;
  std::unordered_set<int> shared_;  // columns whose name a later one has too
};

// A line "name value", cut behind the last blank of it. Names may begin or end with blanks themselves.
struct NameAndValue {
  std::string_view whole;  // the name with all its blanks but the one before the value
  std::string_view name;   // without those around it
  std::string_view value;
};

std::string_view trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::optional<NameAndValue> split(std::string_view line) {
  const std::string_view text = line.substr(0, line.find_last_not_of(kBlanks) + 1);
  const auto blank = text.find_last_of(kBlanks);
  if (blank == std::string_view::npos) return std::nullopt;
  return NameAndValue{text.substr(0, blank), trimmed(text.substr(0, blank)), text.substr(blank + 1)};
}

class PointReader {
 public:
  PointReader(const Model& model, const std::string& path) : path_(path), names_(model.columns) {
    point_.values.assign(model.columns.size(), kUnknown);
  }

  Point read() {
    const Input input(path_);
    std::string_view text = input.text();
    if (text.starts_with(kByteOrderMark)) text.remove_prefix(kByteOrderMark.size());
    while (!text.empty()) {
      const auto end = std::min(text.find('\n'), text.size());
      ++line_;
      readLine(text.substr(0, end));
      text.remove_prefix(std::min(end + 1, text.size()));
    }
    return std::move(point_);
  }

 private:
  void readLine(std::string_view line) {
    if (trimmed(line).empty()) return;
    const auto parts = split(line);
    const int column = parts ? find(*parts) : NameIndex::kNone;
    if (column == NameIndex::kNone && line.starts_with('#')) return;
    if (!parts || (parts->name.empty() && column == NameIndex::kNone)) {
      fail(fmt::format("expected a name and a value, found {}", quoted(trimmed(line))));
    }
    const double value = numberOrNan(parts->value);
    if (!std::isfinite(value)) fail(fmt::format("the value {} is not a finite number", quoted(parts->value)));
    if (column == NameIndex::kNone) {
      ++point_.unknown;
      return;
    }
    if (names_.isShared(column)) fail(fmt::format("several columns have the name {}", quoted(parts->name)));
    point_.values[static_cast<std::size_t>(column)] = value;
  }

  int find(const NameAndValue& parts) const {
    const int exact = names_.find(parts.whole);
    return exact != NameIndex::kNone ? exact : names_.find(parts.name);
  }

  [[noreturn]] void fail(const std::string& what) const {
    throw Error(KAVO_FILE, fmt::format("cannot read \"{}\": line {}: {}", path_, line_, what));
  }

  const std::string& path_;
  ColumnNames names_;
  Point point_;
  std::size_t line_ = 0;
};

}  // namespace

Point readPoint(const Model& model, const std::string& path) { return PointReader(model, path).read(); }

}  // namespace kavo::reader
