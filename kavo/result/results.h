#pragma once

#include <array>
#include <optional>
#include <vector>

#include "kavo/link.h"
#include "kavo/model/model.h"

namespace kavo {

// The kind of element that each kavo_check looks at.
inline constexpr std::array kCheckedKind{KAVO_ROW, KAVO_COLUMN, KAVO_COLUMN, KAVO_LOGICAL, KAVO_SET};

struct Violation {
  double value = 0;
  long long element = -1;
};

inline constexpr kavo_finish kNotRun{KAVO_UNKNOWN, KAVO_STOP_NOT_RUN, kUnknown, kUnknown, kUnknown, kUnknown,
                                     kUnknown,     kUnknown,          kUnknown, kUnknown, kUnknown, kUnknown};

using Numbers = std::optional<std::vector<double>>;
using Statuses = std::optional<std::vector<int>>;  // a kavo_basis each

// What one run of the solver has given; empty optionals: not given.
struct Answer {
  kavo_finish finish = kNotRun;
  bool finished = false;                           // the link has closed it
  std::array<Numbers, KAVO_SIDE_HIGH + 1> values;  // by kavo_quantity
  Statuses columnBasis, rowBasis;

  // A model without columns has a point too: the empty one.
  bool hasPoint() const { return values[KAVO_PRIMAL].has_value(); }
  Statuses& basis(int kind) { return kind == KAVO_COLUMN ? columnBasis : rowBasis; }
  const Statuses& basis(int kind) const { return kind == KAVO_COLUMN ? columnBasis : rowBasis; }
};

// A point of the solution pool.
struct PoolPoint {
  double objective;
  std::vector<double> values;  // one per column
};

// Why a model is infeasible: a kavo_conflict_mark per element, by kavo_kind; empty for kinds that have none.
struct Conflict {
  bool minimal = false;
  std::array<std::vector<unsigned char>, KAVO_SET + 1> marks;
};

// What a solve has given: the answer for the model itself, and what goes with it.
struct Results : Answer {
  bool signalled = false;  // stopped by a signal
  double seconds = 0;      // the whole run, as the host measured it
  Answer fixed;            // of the model with its integer variables fixed, when it is finished
  std::array<std::optional<Violation>, 5> violations;  // by kavo_check
  Numbers objectives;                                  // the value of each objective at the point
  std::vector<PoolPoint> pool;
  std::optional<Conflict> conflict;
};

}  // namespace kavo
