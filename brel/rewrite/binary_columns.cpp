#include <algorithm>
#include <cmath>

#include "brel/rewrite/rules.h"

namespace brel::rewrite {
namespace {

// The bounds are the only trace of the rule, so that values and starts pass as they are.
class BinaryColumnsStep : public Step {
 public:
  explicit BinaryColumnsStep(const kavo_columns& columns) : columns_(columns) {}

  void startsForward(Starts&) const override {}
  void changeForward(Change&) const override {}
  void resultsBack(RowResults&) const override {}

  // Of a bound that is not the user's nothing is known.
  void rangesBack(const RangeResults& ranges) const override {
    for (std::size_t j = 0; j < columns_.count; ++j) {
      if (columns_.type[j] != KAVO_BINARY) continue;
      if (columns_.lower[j] < 0) ranges.userLower.give(j, std::nan(""), std::nan(""));
      if (columns_.upper[j] > 1) ranges.userUpper.give(j, std::nan(""), std::nan(""));
    }
  }

  // What the type says is no bound that could be given up.
  void marksBack(Marks& marks) const override {
    for (std::size_t j = 0; j < columns_.count; ++j) {
      if (columns_.type[j] != KAVO_BINARY) continue;
      const int ownSides = (columns_.lower[j] > 0 ? KAVO_CONFLICT_LOWER : KAVO_CONFLICT_NONE) |
                           (columns_.upper[j] < 1 ? KAVO_CONFLICT_UPPER : KAVO_CONFLICT_NONE);
      marks.userColumn[j] &= static_cast<unsigned char>(ownSides);
    }
  }

 private:
  kavo_columns columns_;
};

}  // namespace

void binaryColumns(const kavo_columns& columns, SolverModel& model, Trail& trail) {
  bool any = false;
  for (std::size_t j = 0; j < columns.count; ++j) {
    if (columns.type[j] != KAVO_BINARY) continue;
    any = true;
    model.setBounds(j, std::max(columns.lower[j], 0.0), std::min(columns.upper[j], 1.0));
  }
  if (any) trail.push(std::make_unique<BinaryColumnsStep>(columns));
}

}  // namespace brel::rewrite
