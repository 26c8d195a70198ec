#include <fmt/format.h>
#include <unistd.h>

#include <bit>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "kavo/error.h"
#include "kavo/reader/input.h"
#include "kavo/reader/nl/nl.h"

namespace kavo::reader::nl {

namespace {

// The lines of a text, without their ends; a last one without end counts.
std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  }
  return lines;
}

// The first name that stands in two lines. Names are found by their hash in a table with room for all, so that many
// names cost two allocations.
std::optional<std::string_view> firstTwice(const std::vector<std::string_view>& lines) {
  std::vector<std::size_t> table(std::bit_ceil(2 * lines.size() + 1), 0);  // number of the line + 1; 0: free
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (lines[i].empty()) continue;
    std::size_t slot = std::hash<std::string_view>{}(lines[i]) & (table.size() - 1);
    while (table[slot] != 0) {
      if (lines[table[slot] - 1] == lines[i]) return lines[i];
      slot = (slot + 1) & (table.size() - 1);
    }
    table[slot] = i + 1;
  }
  return std::nullopt;
}

// The file's lines, when there is such a file and it fits `elements`.
class NameFile {
 public:
  NameFile(const std::string& path, std::size_t elements, std::vector<std::string>& notes) {
    if (::access(path.c_str(), F_OK) != 0) return;
    try {
      input_.emplace(path);
    } catch (const Error& error) {
      notes.push_back(fmt::format("{}; the names are left out", error.what()));
      return;
    }
    lines_ = linesOf(input_->text());
    if (lines_.size() > elements) {
      notes.push_back(fmt::format("{}: {} names, but the model has {} elements; the names are left out", path,
                                  lines_.size(), elements));
      lines_.clear();
    } else if (const auto name = firstTwice(lines_)) {
      notes.push_back(fmt::format("{}: the name \"{}\" stands for more than one element", path, *name));
    }
  }

  // Names elements of a kind after the next `count` lines.
  void name(Names& names, std::size_t count) {
    std::size_t i = 0;
    for (; i < count && next_ < lines_.size(); ++i) names.append(lines_[next_++], i);
    names.appendUnnamed(count - i);
  }

  std::string_view next() { return next_ < lines_.size() ? lines_[next_++] : std::string_view(); }

 private:
  std::optional<Input> input_;
  std::vector<std::string_view> lines_;
  std::size_t next_ = 0;
};

}  // namespace

void readNames(const std::string& stub, Model& model) {
  NameFile columns(stub + ".col", model.columns.size(), model.readNotes);
  columns.name(model.columns.names, model.columns.size());
  const std::size_t rows = model.rows.size() + model.logical.size();
  NameFile others(stub + ".row", rows + model.objectives.size(), model.readNotes);
  others.name(model.rows.names, model.rows.size());
  others.name(model.logicalNames, model.logical.size());
  for (Objective& objective : model.objectives) objective.name = others.next();
}

}  // namespace kavo::reader::nl
