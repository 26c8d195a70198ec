#include "kavo/result/quantity.h"

#include <fmt/format.h>

#include "kavo/error.h"

namespace kavo {

namespace {

struct Row {
  int kind;
  const char* name;
};
// By kavo_quantity.
constexpr Row kQuantities[] = {{KAVO_COLUMN, "values of the columns"},
                               {KAVO_COLUMN, "reduced costs"},
                               {KAVO_ROW, "activities"},
                               {KAVO_ROW, "duals"},
                               {KAVO_ROW, "slacks"},
                               {KAVO_COLUMN, "ranges of objective coefficients"},
                               {KAVO_COLUMN, "ranges of objective coefficients"},
                               {KAVO_COLUMN, "ranges of lower bounds"},
                               {KAVO_COLUMN, "ranges of lower bounds"},
                               {KAVO_COLUMN, "ranges of upper bounds"},
                               {KAVO_COLUMN, "ranges of upper bounds"},
                               {KAVO_ROW, "ranges of sides"},
                               {KAVO_ROW, "ranges of sides"}};
static_assert(std::size(kQuantities) == std::tuple_size_v<decltype(Answer::values)>);

}  // namespace

Quantity quantityOf(int number) {
  const bool fixed = number >= KAVO_OF_FIXED;
  const int plain = fixed ? number - KAVO_OF_FIXED : number;
  if (plain < KAVO_PRIMAL || plain > KAVO_SIDE_HIGH) {
    throw Error(KAVO_INVALID, fmt::format("there is no quantity {}", number));
  }
  const auto index = static_cast<std::size_t>(plain);
  return {index, kQuantities[index].kind, kQuantities[index].name, fixed};
}

BasisKind basisKindOf(int number) {
  const bool fixed = number >= KAVO_OF_FIXED;
  const int kind = fixed ? number - KAVO_OF_FIXED : number;
  if (kind != KAVO_COLUMN && kind != KAVO_ROW) throw Error(KAVO_INVALID, "only columns and rows have basis statuses");
  return {kind, fixed};
}

void checkConflictKind(int kind) {
  if (kind == KAVO_COLUMN || kind == KAVO_ROW || kind == KAVO_LOGICAL || kind == KAVO_SET) return;
  throw Error(KAVO_INVALID, fmt::format("elements of kind {} cannot be in a conflict", kind));
}

}  // namespace kavo
