#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "kavo/reader/column_flags.h"
#include "kavo/reader/lp/headers.h"
#include "kavo/reader/lp/sections.h"
#include "kavo/reader/text.h"

namespace kavo::reader::lp {

namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

class BoundReader {
 public:
  explicit BoundReader(Reading& reading) : reading_(reading), words_(reading.words) {}

  void read() {
    while (!words_.atEnd() && headerAt(words_) == nullptr) isNameFirst() ? readBehindName() : readBehindNumber();
  }

 private:
  // Whether the variable comes before the relation. When it may be a number, there is one in every bound.
  bool isNameFirst() {
    if (!reading_.isName() || !reading_.isNumber()) return reading_.isName();
    const Words start = words_;
    const bool isFirstKnown = isKnown();
    words_.next();
    bool result = true;
    if (isRelation(words_)) {
      readRelation(reading_, "");
      const bool isNumber = reading_.isNumber() || words_.first() == '-' || words_.first() == '+';
      const bool isSecondKnown = isKnown();
      words_.next();
      result = isNumber && !isRelation(words_) && (isFirstKnown || !isSecondKnown);
    }
    words_ = start;
    return result;
  }

  bool isKnown() const { return reading_.columnIndex.find(words_.word()) != NameIndex::kNone; }

  // x free, or x, a relation and a number.
  void readBehindName() {
    passName();
    if (isWord(words_.word(), "FREE")) {
      words_.next();
      setSide(kLowerFlag, -kInfinite);
      setSide(kUpperFlag, kInfinite);
      return;
    }
    const Relation relation = readRelation(reading_, "free, ");
    set(relation, reading_.number());
    if (isRelation(words_)) reading_.failExpected("the next bound");
  }

  // A number, a relation and x, and maybe another relation and number.
  void readBehindNumber() {
    const double first = reading_.number();
    const Relation relation = readRelation(reading_, "");
    reading_.requireName();
    passName();
    set(flipped(relation), first);
    if (!isRelation(words_)) return;
    const Relation second = readRelation(reading_, "");
    if (second != relation || second == Relation::kEqual)
      reading_.failBefore("expected <= twice or >= twice in one bound");
    set(second, reading_.number());
  }

  // Makes the current word the variable whose bounds are set.
  void passName() {
    name_ = words_.word();
    Reading::Constant& constant = reading_.constant;
    if (constant.isThere && name_ == kConstantName && reading_.columnIndex.find(name_) == NameIndex::kNone) {
      lower_ = &constant.lower;
      upper_ = &constant.upper;
      flags_ = &constant.flags;
    } else {
      const auto i = static_cast<std::size_t>(reading_.columnOf(name_));
      Columns& columns = reading_.model.columns;
      lower_ = &columns.lower[i];
      upper_ = &columns.upper[i];
      flags_ = &reading_.columnFlags()[i];
    }
    words_.next();
  }

  void set(Relation relation, double value) {
    if (relation != Relation::kLess) setSide(kLowerFlag, withInfinity(value));
    if (relation != Relation::kGreater) setSide(kUpperFlag, withInfinity(value));
  }

  void setSide(ColumnFlag flag, double value) {
    const bool isLower = flag == kLowerFlag;
    if (value == (isLower ? kInfinite : -kInfinite)) {
      reading_.failBefore(
          fmt::format("no value satisfies the {} bound {} of {}", isLower ? "lower" : "upper", value, quoted(name_)));
    }
    double& side = isLower ? *lower_ : *upper_;
    if ((*flags_ & flag) != 0 && std::isfinite(side) && side != value) {
      reading_.repeatedBounds.see(name_, words_.lineBefore());
    }
    *flags_ |= flag;
    side = value;
  }

  Reading& reading_;
  Words& words_;
  std::string_view name_;
  double *lower_ = nullptr, *upper_ = nullptr;
  unsigned char* flags_ = nullptr;
};

}  // namespace

void readBounds(Reading& reading) { BoundReader(reading).read(); }

void readTypes(Reading& reading, int flags) {
  while (!reading.words.atEnd() && headerAt(reading.words) == nullptr) {
    const auto column = static_cast<std::size_t>(reading.column());
    reading.columnFlags()[column] |= static_cast<unsigned char>(flags);
  }
}

void finishColumns(Reading& reading) {
  Columns& columns = reading.model.columns;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const unsigned char flags = columns.type[i];
    columns.type[i] = static_cast<unsigned char>(typeOfFlags(flags));
    if ((flags & kBinaryFlag) == 0) continue;
    columns.lower[i] = std::max(columns.lower[i], 0.0);
    columns.upper[i] = std::min(columns.upper[i], 1.0);
  }
}

}  // namespace kavo::reader::lp
