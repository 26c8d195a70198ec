#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brel::settings {

// Up to three of the known names that somebody may have meant by a name that is unknown, the likeliest first, without
// regard to case: the one that other tools call so and those a few typing errors away, else those that contain it.
std::vector<std::string> nearNames(std::string_view wanted, const std::vector<std::string>& known);

// How many letters must be put in, left out, replaced or swapped with their neighbour to get from one text to the
// other.
std::size_t editDistance(std::string_view a, std::string_view b);

}  // namespace brel::settings
