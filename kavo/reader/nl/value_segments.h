#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "kavo/reader/nl/draft.h"
#include "kavo/reader/nl/pieces.h"

namespace kavo::reader::nl {

// The segments of values that elements have: S suffixes, x start values of variables, d those of duals.
template <class Source>
class ValueSegments {
 public:
  ValueSegments(Source& source, Draft& draft)
      : source_(source), draft_(draft), header_(draft.header), model_(draft.model) {}

  void readSuffix() {
    constexpr int kReal = 4;
    const int flags = number(source_, 8, "the kind of a suffix");
    const int kind = flags & 3;
    const int sizes[] = {header_.variables, header_.constraints + header_.logical, header_.objectives, 1};
    const int n = count(source_, sizes[kind], "values of a suffix");
    Suffix suffix;
    suffix.kind = kind;
    suffix.real = (flags & kReal) != 0;
    suffix.name = source_.name("the name of a suffix");
    if (!suffixes_.insert(fmt::format("{} {}", kind, suffix.name)).second) source_.refuse("this suffix comes twice");
    source_.endLine();
    const bool isBasis = kind <= KAVO_ROW && suffix.name == "sstatus";
    suffix.index.reserve(static_cast<std::size_t>(n));
    suffix.value.reserve(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k) {
      suffix.index.push_back(below(source_, sizes[kind], "the number of an element"));
      suffix.value.push_back(suffix.real ? source_.number("a value") : source_.integer("a whole value"));
      if (std::isnan(suffix.value.back())) source_.fail("a value");
      if (isBasis && basisStatus(suffix.value.back()) < 0) source_.fail("a basis status from 0 to 6");
      source_.endLine();
    }
    std::vector<int> sorted = suffix.index;
    std::sort(sorted.begin(), sorted.end());
    const auto twice = std::adjacent_find(sorted.begin(), sorted.end());
    if (twice != sorted.end()) source_.refuse(fmt::format("element {} has two values", *twice));
    if (kind == KAVO_ROW) leaveOutLogical(suffix);
    if (isBasis) takeBasis(suffix);
    model_.suffixes.push_back(std::move(suffix));
  }

  void readPrimal() { readStart(draft_.primal, model_.primalStart, header_.variables, "the number of a variable"); }
  void readDual() { readStart(draft_.dual, model_.dualStart, header_.constraints, "the number of a constraint"); }

 private:
  // The kavo_basis of a value of sstatus, 0 when it tells none; -1 when there is no such value.
  static int basisStatus(double value) {
    // none, bas, sup, low, upp, equ (fixed, or an equation), btw (between the sides)
    constexpr int kOf[] = {
        0, KAVO_BASIC, KAVO_SUPERBASIC, KAVO_BASIS_LOWER, KAVO_BASIS_UPPER, KAVO_BASIS_LOWER, KAVO_SUPERBASIC};
    const bool isStatus = value >= 0 && value <= 6 && value == std::floor(value);
    return isStatus ? kOf[static_cast<std::size_t>(value)] : -1;
  }

  void takeBasis(const Suffix& suffix) {
    if (std::all_of(suffix.value.begin(), suffix.value.end(), [](double v) { return v == 0; })) return;
    model_.columnStart.resize(static_cast<std::size_t>(header_.variables), 0);
    model_.rowStart.resize(static_cast<std::size_t>(header_.constraints), 0);
    auto& statuses = suffix.kind == KAVO_COLUMN ? model_.columnStart : model_.rowStart;
    for (std::size_t k = 0; k < suffix.index.size(); ++k) {
      statuses[static_cast<std::size_t>(suffix.index[k])] = basisStatus(suffix.value[k]);
    }
  }

  void readStart(bool& seen, std::vector<double>& start, int size, std::string_view what) {
    once(source_, seen);
    seen = true;
    const int n = count(source_, size, "start values");
    source_.endLine();
    if (n > 0) start.assign(static_cast<std::size_t>(size), kUnknown);
    for (int k = 0; k < n; ++k) {
      const int i = below(source_, size, what);
      double& value = start[static_cast<std::size_t>(i)];
      if (!std::isnan(value)) source_.refuse(fmt::format("element {} has two start values", i));
      value = source_.number("a start value");
      if (!std::isfinite(value)) source_.fail("a finite start value");
      source_.endLine();
    }
  }

  // Logical constraints are numbered behind the others; the model has no place for their values.
  void leaveOutLogical(Suffix& suffix) {
    std::size_t kept = 0;
    for (std::size_t k = 0; k < suffix.index.size(); ++k) {
      if (suffix.index[k] >= header_.constraints) continue;
      suffix.index[kept] = suffix.index[k];
      suffix.value[kept++] = suffix.value[k];
    }
    if (kept == suffix.index.size()) return;
    model_.readNotes.push_back(fmt::format("{}: suffix {}: the values of {} logical constraints are left out",
                                           model_.file, suffix.name, suffix.index.size() - kept));
    suffix.index.resize(kept);
    suffix.value.resize(kept);
  }

  Source& source_;
  Draft& draft_;
  const Header& header_;
  Model& model_;
  std::unordered_set<std::string> suffixes_;  // kinds and names that came
};

}  // namespace kavo::reader::nl
