#pragma once

#include <fmt/format.h>

#include <cmath>
#include <string_view>

#include "kavo/model/model.h"

// What the segments are made of, read from a Source and checked.
namespace kavo::reader::nl {

template <class Source>
[[noreturn]] void failBelow(Source& source, int i, int limit, std::string_view what) {
  if (limit <= 0) source.refuse(fmt::format("found {} as {}, but the header announces none", i, what));
  source.refuse(fmt::format("expected {} from 0 to {}, found {}", what, limit - 1, i));
}

// A number from 0 to limit - 1.
template <class Source>
int below(Source& source, int limit, std::string_view what) {
  const int i = source.integer(what);
  if (i < 0 || i >= limit) [[unlikely]]
    failBelow(source, i, limit, what);
  return i;
}

// The number of the entries that follow, from 0 to most.
template <class Source>
int count(Source& source, int most, std::string_view entries) {
  const int n = source.integer("a number of entries");
  if (n < 0 || n > most) source.refuse(fmt::format("expected 0 to {} {}, found {}", most, entries, n));
  return n;
}

// The number behind the letter of a segment, below limit; messages tell it from now on.
template <class Source>
int number(Source& source, int limit, std::string_view what) {
  const int i = below(source, limit, what);
  source.setNumber(i);
  return i;
}

template <class Source>
void once(Source& source, bool isSecond) {
  if (isSecond) source.refuse("this segment comes twice");
}

template <class Source>
double coefficient(Source& source) {
  const double value = source.number("a coefficient");
  if (!(std::abs(value) < kInfinity)) [[unlikely]]
    source.fail("a coefficient below 1e20 in size");
  return value;
}

}  // namespace kavo::reader::nl
