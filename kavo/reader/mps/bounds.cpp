#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "kavo/reader/mps/first_set.h"
#include "kavo/reader/mps/sections.h"

namespace kavo::reader::mps {

namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

enum class Value { kNone, kNeeded, kMaybe };
// What a bound type says of a side: nothing, the value of the line, or that there is no bound.
enum class Side { kKept, kValue, kUnbounded };

struct BoundType {
  std::string_view name;
  Value value;
  Side lower, upper;
  unsigned char flags;
};

constexpr std::array<BoundType, 11> kBoundTypes = {{
    {"UP", Value::kNeeded, Side::kKept, Side::kValue, 0},
    {"LO", Value::kNeeded, Side::kValue, Side::kKept, 0},
    {"FX", Value::kNeeded, Side::kValue, Side::kValue, 0},
    {"FR", Value::kNone, Side::kUnbounded, Side::kUnbounded, 0},
    {"MI", Value::kNone, Side::kUnbounded, Side::kKept, 0},
    {"PL", Value::kNone, Side::kKept, Side::kUnbounded, 0},
    {"BV", Value::kNone, Side::kKept, Side::kKept, kBinaryFlag},
    {"LI", Value::kNeeded, Side::kValue, Side::kKept, kIntegerFlag},
    {"UI", Value::kNeeded, Side::kKept, Side::kValue, kIntegerFlag},
    {"SC", Value::kMaybe, Side::kKept, Side::kValue, kSemiFlag},
    {"SI", Value::kMaybe, Side::kKept, Side::kValue, kSemiFlag | kIntegerFlag},
}};

// A line of the section once its fields are told apart; value: "" when there is none.
struct Bound {
  const BoundType& type;
  std::string_view set, column, value;
};

class BoundReader {
 public:
  explicit BoundReader(Reading& reading) : reading_(reading) {}

  void read() {
    while (reading_.lines.next(Fields::kTyped)) {
      const Bound bound = tellApart();
      if (first_.takes(reading_, bound.set)) take(bound);
    }
  }

 private:
  const BoundType& typeOf(std::string_view name) const {
    const auto* found = std::find_if(kBoundTypes.begin(), kBoundTypes.end(), [name](const BoundType& type) {
      return name.size() == 2 && type.name[0] == upper(name[0]) && type.name[1] == upper(name[1]);
    });
    if (found == kBoundTypes.end()) {
      reading_.fail(
          fmt::format("expected a bound type (UP, LO, FX, FR, MI, PL, BV, LI, UI, SC or SI), found {}", quoted(name)));
    }
    return *found;
  }

  Bound tellApart() {
    const Lines& line = reading_.lines;
    const std::size_t count = line.count();
    if (count < 2 || count > 4) failShape();
    const BoundType& type = typeOf(line[0]);
    if (count == 4) return {type, line[1], line[2], line[3]};
    if (line.layout() == Layout::kColumns) {
      if (count != 3) failShape();
      return {type, line[1], line[2], {}};
    }
    if (count == 2) return {type, {}, line[1], {}};
    return hasValue(type) ? Bound{type, {}, line[1], line[2]} : Bound{type, line[1], line[2], {}};
  }

  // Of a line with three fields: whether the last one is a value, and the set has no name.
  bool hasValue(const BoundType& type) {
    if (type.value == Value::kNeeded) return true;
    const Lines& line = reading_.lines;
    const bool value =
        reading_.columnIndex.find(line[1]) != NameIndex::kNone && !std::isnan(reading_.numberOrNan(line[2]));
    if (value && reading_.columnIndex.find(line[2]) != NameIndex::kNone) {
      reading_.fail(fmt::format("{} may be a set and {} a column, or a column and a value; write all four fields",
                                quoted(line[1]), quoted(line[2])));
    }
    return value;
  }

  void take(const Bound& bound) {
    const int column = reading_.columnOf(bound.column, last_ < kMostGuessed ? 2 * last_ - beforeLast_ : last_);
    beforeLast_ = std::exchange(last_, column);
    if (bound.value.empty() && bound.type.value == Value::kNeeded) failShape();
    const double value = bound.value.empty() ? kInfinite : withInfinity(reading_.number(bound.value));
    const auto i = static_cast<std::size_t>(column);
    Columns& columns = reading_.model.columns;
    unsigned char& flags = reading_.columnFlags()[i];
    takeSide(bound, columns.lower[i], flags, kLowerFlag, sideOf(bound.type.lower, value, -kInfinite));
    takeSide(bound, columns.upper[i], flags, kUpperFlag, sideOf(bound.type.upper, value, kInfinite));
    flags |= bound.type.flags;
    if ((flags & kBinaryFlag) != 0 && (flags & kSemiFlag) != 0) {
      reading_.fail(fmt::format("column {} is binary and semi-continuous at once", quoted(bound.column)));
    }
  }

  // NaN when the line says nothing of this side.
  static double sideOf(Side side, double value, double infinite) {
    return side == Side::kValue ? value : side == Side::kUnbounded ? infinite : kUnknown;
  }

  // A side may be given twice only when both agree.
  void takeSide(const Bound& bound, double& place, unsigned char& flags, unsigned char flag, double value) {
    const bool given = (flags & flag) != 0;
    if (std::isnan(value)) return;
    const bool lower = flag == kLowerFlag;
    if (value == (lower ? kInfinite : -kInfinite)) {
      reading_.fail(fmt::format("no value satisfies the {} bound {} of column {}", lower ? "lower" : "upper",
                                quoted(bound.value), quoted(bound.column)));
    }
    if (given && place != value) {
      reading_.fail(fmt::format("column {} has another {} bound already: {}, now {}", quoted(bound.column),
                                lower ? "lower" : "upper", place, value));
    }
    place = value;
    flags |= flag;
  }

  [[noreturn]] void failShape() const { reading_.failShape("type, name of the set or nothing, column, and number"); }

  static constexpr int kMostGuessed = std::numeric_limits<int>::max() / 2;

  Reading& reading_;
  FirstSet first_;
  // The columns of the last two lines: many files go on in steps of the same length.
  int last_ = 0, beforeLast_ = 1;
};

}  // namespace

void readBounds(Reading& reading) { BoundReader(reading).read(); }

void finishColumns(Reading& reading) {
  Columns& columns = reading.model.columns;
  std::size_t negative = 0, firstNegative = 0;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const unsigned char flags = columns.type[i];
    const bool lowerGiven = (flags & kLowerFlag) != 0, upperGiven = (flags & kUpperFlag) != 0;
    const bool binary = (flags & kBinaryFlag) != 0, integer = (flags & kIntegerFlag) != 0;
    if (upperGiven && !lowerGiven && !binary && columns.upper[i] < 0) {
      columns.lower[i] = -kInfinite;
      if (negative++ == 0) firstNegative = i;
    }
    // Integer columns have been 0-1 by default since markers were invented, unless a bound is given.
    if (!upperGiven && (binary || (integer && !lowerGiven))) columns.upper[i] = 1;
    columns.type[i] = typeOfFlags(flags);
  }
  if (negative > 0) {
    reading.model.readNotes.push_back(fmt::format(
        "{} column{} ({}{}) with a negative upper bound and no lower bound: the lower bound is -infinity", negative,
        &"s"[negative == 1], quoted(columns.names.at(firstNegative)), negative == 1 ? "" : " first"));
  }
}

}  // namespace kavo::reader::mps
