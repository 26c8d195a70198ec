#pragma once

#include <fmt/format.h>

#include <cstddef>
#include <optional>
#include <string>
#include <utility>

#include "kavo/error.h"
#include "kavo/model/model.h"
#include "kavo/reader/failure.h"

namespace kavo::reader {

// What came of reading a file in one way.
struct Attempt {
  std::optional<Model> model;
  std::optional<Error> error;  // what went wrong, when there is no model
  std::size_t line = 0;        // and where
  bool otherMayDo = false;     // and whether another way may succeed
};

// Reads in one way. reading: has the model, and the name of the section where it ends ("": none); read: fills it;
// otherMayDo: tells of a Failure whether another way may succeed.
template <class Reading, class Read, class OtherMayDo>
Attempt attempt(Reading& reading, const std::string& path, Read&& read, OtherMayDo&& otherMayDo) {
  Attempt result;
  try {
    read();
    reading.model.file = path;
    result.model = std::move(reading.model);
  } catch (const Failure& failure) {
    const std::string section = reading.section.empty() ? std::string() : fmt::format(", section {}", reading.section);
    result.error = Error(failure.status(), fmt::format("cannot read \"{}\": line {}{}: {}", path, failure.line(),
                                                       section, failure.what()));
    result.line = failure.line();
    result.otherMayDo = otherMayDo(failure);
  }
  return result;
}

// The model of the first way that succeeds; the second is tried when the first says that it may. When both fail, the
// one that came further tells what is wrong.
template <class Second>
Model firstModel(Attempt first, Second&& second) {
  if (first.model) return std::move(*first.model);
  if (!first.otherMayDo) throw *first.error;
  Attempt other = second();
  if (other.model) return std::move(*other.model);
  throw other.line > first.line ? *other.error : *first.error;
}

}  // namespace kavo::reader
