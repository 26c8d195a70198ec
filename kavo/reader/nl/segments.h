#pragma once

#include <string>
#include <string_view>

#include "kavo/reader/nl/bound_segments.h"
#include "kavo/reader/nl/draft.h"
#include "kavo/reader/nl/expression_segments.h"
#include "kavo/reader/nl/linear_segments.h"
#include "kavo/reader/nl/value_segments.h"

namespace kavo::reader::nl {

// Reads the segments behind the header into a draft, checking every count and index where it stands. Segments may come
// in any order, but functions (F) before their calls and defined variables (V) before their use. What must come once
// may not come twice.
template <class Source>
class SegmentReader {
 public:
  SegmentReader(Source& source, Draft& draft)
      : source_(source),
        draft_(draft),
        expressions_(source, draft),
        values_(source, draft),
        bounds_(source, draft),
        linear_(source, draft) {}

  void readAll() {
    source_.enterBetween();
    while (!source_.atEnd()) {
      const char letter = source_.letter(kExpected);
      source_.enter(letter);
      readSegment(letter);
      source_.enterBetween();
    }
    if (const std::string missing = draft_.missing(); !missing.empty()) source_.fail(missing);
    linear_.checkColumnCounts();
  }

 private:
  static constexpr std::string_view kExpected = "a segment (one of F S V C L O d x r b k K J G)";

  void readSegment(char letter) {
    switch (letter) {
      case 'F':
        return expressions_.readFunction();
      case 'V':
        return expressions_.readDefined();
      case 'C':
        return expressions_.readBody();
      case 'L':
        return expressions_.readLogical();
      case 'O':
        return expressions_.readObjective();
      case 'S':
        return values_.readSuffix();
      case 'x':
        return values_.readPrimal();
      case 'd':
        return values_.readDual();
      case 'r':
        return bounds_.readSides();
      case 'b':
        return bounds_.readBounds();
      case 'k':
        return linear_.readColumnCounts(true);
      case 'K':
        return linear_.readColumnCounts(false);
      case 'J':
        return linear_.readRowTerms();
      case 'G':
        return linear_.readObjectiveTerms();
      default:
        source_.enterBetween();
        source_.fail(kExpected);
    }
  }

  Source& source_;
  Draft& draft_;
  ExpressionSegments<Source> expressions_;
  ValueSegments<Source> values_;
  BoundSegments<Source> bounds_;
  LinearSegments<Source> linear_;
};

}  // namespace kavo::reader::nl
