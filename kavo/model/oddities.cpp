#include "kavo/model/oddities.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <iterator>
#include <set>
#include <string_view>

#include "kavo/model/element.h"

namespace kavo {

namespace {

constexpr const char* kKindNames[] = {"column", "row"};

// The elements whose name an earlier one has too; open addressing, since models have millions of names.
struct Duplicates {
  std::size_t count = 0, first = 0;
};

Duplicates duplicates(const Names& names) {
  Duplicates found;
  const std::size_t slots = std::bit_ceil(names.size() * 2 + 1);
  std::vector<std::uint32_t> table(slots, 0);  // element + 1
  for (std::size_t i = 0; i < names.size(); ++i) {
    const std::string_view name = names.at(i);
    if (name.empty()) continue;
    std::size_t slot = std::hash<std::string_view>{}(name) & (slots - 1);
    while (table[slot] != 0 && name != names.at(table[slot] - 1)) slot = (slot + 1) & (slots - 1);
    if (table[slot] == 0) {
      table[slot] = static_cast<std::uint32_t>(i + 1);
    } else if (found.count++ == 0) {
      found.first = i;
    }
  }
  return found;
}

void noteDuplicates(int kind, const Names& names, std::vector<std::string>& notes) {
  const Duplicates found = duplicates(names);
  if (found.count == 0) return;
  notes.push_back(fmt::format("{} {} name{} given twice, the first is \"{}\"", found.count, kKindNames[kind],
                              found.count == 1 ? " is" : "s are", names.at(found.first)));
}

void noteCrossed(const Model& model, int kind, const std::vector<double>& lower, const std::vector<double>& upper,
                 std::vector<std::string>& notes) {
  for (std::size_t i = 0; i < lower.size(); ++i) {
    const bool isBinary = kind == KAVO_COLUMN && model.columns.type[i] == KAVO_BINARY;
    const double least = isBinary ? std::max(lower[i], 0.0) : lower[i];
    const double most = isBinary ? std::min(upper[i], 1.0) : upper[i];
    if (least <= most) continue;
    notes.push_back(fmt::format("{} {} has lower bound {} above upper bound {}", kKindNames[kind],
                                elementName(model, kind, i), least, most));
    return;
  }
}

// Suffixes that modelers set to have an effect. Any other may be their own.
bool wantsAnEffect(const std::string& name) {
  constexpr std::string_view kNames[] = {"direction",      "funcnonlinear", "funcpieceerror", "funcpiecelength",
                                         "funcpieceratio", "funcpieces",    "hintpri",        "iisforce",
                                         "iislbforce",     "iisubforce"};
  return std::find(std::begin(kNames), std::end(kNames), name) != std::end(kNames);
}

void noteIgnoredSuffixes(const Model& model, std::vector<std::string>& notes) {
  std::set<std::string_view> names;
  for (const Suffix& suffix : model.suffixes) {
    if (!suffix.index.empty() && wantsAnEffect(suffix.name)) names.insert(suffix.name);
  }
  if (names.empty()) return;
  notes.push_back(fmt::format("the suffix{} {} {} ignored", names.size() == 1 ? "" : "es", fmt::join(names, ", "),
                              names.size() == 1 ? "is" : "are"));
}

void noteInfinitePriorities(const Model& model, std::vector<std::string>& notes) {
  std::size_t count = 0;
  int first = 0;
  for (const Suffix& suffix : model.suffixes) {
    if (suffix.kind != KAVO_COLUMN || suffix.name != "priority") continue;
    for (std::size_t k = 0; k < suffix.index.size(); ++k) {
      if (std::isinf(suffix.value[k]) && count++ == 0) first = suffix.index[k];
    }
  }
  if (count == 0) return;
  notes.push_back(fmt::format("{} infinite priorit{} no effect, the first is that of column {}", count,
                              count == 1 ? "y has" : "ies have",
                              elementName(model, KAVO_COLUMN, static_cast<std::size_t>(first))));
}

}  // namespace

void noteOddities(const Model& model, std::vector<std::string>& notes) {
  noteDuplicates(KAVO_COLUMN, model.columns.names, notes);
  noteDuplicates(KAVO_ROW, model.rows.names, notes);
  noteCrossed(model, KAVO_COLUMN, model.columns.lower, model.columns.upper, notes);
  noteCrossed(model, KAVO_ROW, model.rows.lower, model.rows.upper, notes);
  noteIgnoredSuffixes(model, notes);
  noteInfinitePriorities(model, notes);
}

}  // namespace kavo
