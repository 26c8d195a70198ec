#pragma once

#include <string>
#include <variant>
#include <vector>

#include "kavo/link.h"
#include "tav/attr/abstract_dict.h"

namespace brel::settings {

// A setting that was found, typed and within its bounds.
struct Checked {
  std::string name;
  std::variant<int, double, std::string> value;
};

// Checks all settings of the host against the solver's own attributes, in the order in which they were given; of
// several of one name the last counts, at its place. Raises an exception for the first one that is unknown, of the
// wrong type, or out of range, naming where it was given and what is allowed. Takes no licence.
std::vector<Checked> check(const trpRec* host, const tav::attr::AbstractItemDict& known);

// Hands the settings to the solver, one call each.
void apply(const std::vector<Checked>& settings, const tav::attr::AbstractItemDict& known);

// The typed value of a text: the whole of it must be a number. A double may be "inf" or "-inf", never NaN.
bool parse(std::string_view text, int& value);
bool parse(std::string_view text, double& value);

}  // namespace brel::settings
