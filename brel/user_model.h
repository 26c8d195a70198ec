#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "kavo/link.h"

namespace brel {

// The host's model as it is now. The arrays are the host's.
struct UserModel {
  trpRec* host = nullptr;
  kavo_columns columns{};
  kavo_rows rows{};
  kavo_quadratics quadratics{};
  kavo_sets sets{};
  kavo_logical logical{};
  std::optional<kavo_objective> objective;  // the one that is solved, if any

  // Whether something is more than columns, linear rows, ordered sets and a linear objective.
  bool isBeyondLinear() const;
};

// "" when the element has none.
std::string nameOf(const kavo_names& names, std::size_t i);

// Raises what the host refuses.
UserModel userModel(trpRec* host);

}  // namespace brel
