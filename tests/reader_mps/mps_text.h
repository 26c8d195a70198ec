#pragma once

#include <string>
#include <string_view>

#include "tests/readers/model_text.h"

namespace kavo::reader {

// A model of every section in fixed columns whose fields blanks tell apart as well, and one with names with blanks.
extern const std::string kSample, kBlankSample;
// A model of every section that linear models do not have.
extern const std::string kBeyondSample;

inline Model readText(std::string_view text, const std::string& name = "model.mps") { return readAs(name, text); }
inline std::string messageOf(std::string_view text) { return messageAs("model.mps", text); }

// A text with lines of some sections put into a small model: continuous columns x and y, an integer column i, rows l, g
// and e of types L, G and E.
struct Extra {
  std::string head, rhs, ranges, bounds;
};
std::string with(const Extra& extra);
// The same model with sections at its end, given with their names; they begin on line 14.
std::string withSections(const std::string& sections);

}  // namespace kavo::reader
