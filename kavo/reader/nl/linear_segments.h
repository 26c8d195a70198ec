#pragma once

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <vector>

#include "kavo/reader/nl/draft.h"
#include "kavo/reader/nl/pieces.h"

namespace kavo::reader::nl {

// The segments of linear parts: k (or K) in how many rows each column appears, J terms of a row, G terms of an
// objective.
template <class Source>
class LinearSegments {
 public:
  LinearSegments(Source& source, Draft& draft)
      : source_(source), draft_(draft), header_(draft.header), model_(draft.model) {}

  void readColumnCounts(bool cumulative) {
    once(source_, columnCounts_ != nullptr);
    columnCounts_ = source_.token();
    const int expected = header_.variables - 1;
    const int n = source_.integer("a number of columns");
    if (n != expected && (n != 0 || expected > 0)) {
      source_.refuse(fmt::format("expected {} columns (all but the last), found {}", expected, n));
    }
    source_.endLine();
    draft_.announced.reserve(static_cast<std::size_t>(std::max(n, 0)));
    int before = 0;
    for (int i = 0; i < n; ++i) {
      const int next = source_.integer("a number of nonzeros");
      const long long size = cumulative ? 0LL + next - before : next;
      if (size < 0 || size > header_.constraints) {
        source_.refuse(
            fmt::format("column {} cannot have {} nonzeros in {} constraints", i, size, header_.constraints));
      }
      before = next;
      draft_.announced.push_back(static_cast<int>(size));
      source_.endLine();
    }
  }

  // Compares the column counts with the terms of all rows.
  void checkColumnCounts() {
    const std::string mismatch = draft_.columnMismatch();
    if (mismatch.empty()) return;
    source_.enter('k');
    source_.setToken(columnCounts_);
    source_.refuse(mismatch);
  }

  void readRowTerms() {
    const int row = number(source_, header_.constraints, "the number of a constraint");
    int& terms = draft_.rowTerms[static_cast<std::size_t>(row)];
    once(source_, terms >= 0);
    const std::size_t rest = model_.rows.column.size() - draft_.terms;
    const int most = static_cast<int>(std::min(static_cast<std::size_t>(header_.variables), rest));
    terms = count(source_, most, "terms (by the variables and nonzeros that the header announces)");
    source_.endLine();
    int* column = model_.rows.column.data() + draft_.terms;
    double* value = model_.rows.value.data() + draft_.terms;
    readTerms(static_cast<std::size_t>(terms), column, value);
    for (int k = 0; k < terms; ++k) ++draft_.inRows[static_cast<std::size_t>(column[k])];
    draft_.rowBegin[static_cast<std::size_t>(row)] = draft_.terms;
    draft_.terms += static_cast<std::size_t>(terms);
    draft_.rowsInOrder = draft_.rowsInOrder && row > draft_.lastRow;
    draft_.lastRow = row;
  }

  void readObjectiveTerms() {
    const int i = number(source_, header_.objectives, "the number of an objective");
    once(source_, draft_.objectiveParts[static_cast<std::size_t>(i)]);
    draft_.objectiveParts[static_cast<std::size_t>(i)] = true;
    const std::size_t rest = static_cast<std::size_t>(header_.gradients) - draft_.gradients;
    const int most = static_cast<int>(std::min(static_cast<std::size_t>(header_.variables), rest));
    const auto terms = static_cast<std::size_t>(
        count(source_, most, "terms (by the variables and gradient nonzeros that the header announces)"));
    source_.endLine();
    Objective& objective = model_.objectives[static_cast<std::size_t>(i)];
    objective.column.resize(terms);
    objective.value.resize(terms);
    readTerms(terms, objective.column.data(), objective.value.data());
    draft_.gradients += terms;
  }

 private:
  void readTerms(std::size_t terms, int* column, double* value) {
    bool increasing = true;
    int before = -1;
    for (std::size_t k = 0; k < terms; ++k) {
      const int i = below(source_, header_.variables, "the number of a variable");
      // Columns come scattered: their counts are on the way to the cache while the line is read.
      __builtin_prefetch(draft_.inRows.data() + i, 1);
      increasing = increasing && i > before;
      column[k] = before = i;
      value[k] = coefficient(source_);
      source_.endLine();
    }
    if (!increasing) checkTwice(terms, column);
  }

  void checkTwice(std::size_t terms, const int* column) {
    lastPart_.resize(static_cast<std::size_t>(header_.variables), 0);
    ++part_;
    for (std::size_t k = 0; k < terms; ++k) {
      std::size_t& last = lastPart_[static_cast<std::size_t>(column[k])];
      if (last == part_) source_.refuse(fmt::format("variable {} comes twice", column[k]));
      last = part_;
    }
  }

  Source& source_;
  Draft& draft_;
  const Header& header_;
  Model& model_;
  // Linear parts whose columns do not increase are numbered from 1; per column, the last of them that has it.
  std::size_t part_ = 0;
  std::vector<std::size_t> lastPart_;
  const char* columnCounts_ = nullptr;  // where the segment k or K stands
};

}  // namespace kavo::reader::nl
