#pragma once

#include <string>
#include <string_view>

#include "tests/readers/model_text.h"

namespace kavo::reader {

// Models of every section: one objective with all that may be part of it, and several.
extern const std::string kSample, kSeveral;

inline Model readText(std::string_view text, const std::string& name = "model.lp") { return readAs(name, text); }

// A text with rows, or sections behind the rows (which begin on line 4), in a small model.
inline std::string withRows(const std::string& rows) { return "min x\nst\n" + rows + "\nend\n"; }
inline std::string withSections(const std::string& sections) {
  return "min x\nst\n d: x + y + b + i >= 1\n" + sections + "\nend\n";
}

}  // namespace kavo::reader
