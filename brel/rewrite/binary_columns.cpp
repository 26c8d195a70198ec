#include <algorithm>

#include "brel/rewrite/rules.h"

namespace brel::rewrite {
namespace {

// The bounds are the only trace of the rule, so that values and starts pass as they are.
class BinaryColumnsStep : public Step {
 public:
  void startsForward(Starts&) const override {}
  void changeForward(Change&) const override {}
  void resultsBack(RowResults&) const override {}
};

}  // namespace

void binaryColumns(const kavo_columns& columns, SolverModel& model, Trail& trail) {
  bool any = false;
  for (std::size_t j = 0; j < columns.count; ++j) {
    if (columns.type[j] != KAVO_BINARY) continue;
    any = true;
    model.setBounds(j, std::max(columns.lower[j], 0.0), std::min(columns.upper[j], 1.0));
  }
  if (any) trail.push(std::make_unique<BinaryColumnsStep>());
}

}  // namespace brel::rewrite
