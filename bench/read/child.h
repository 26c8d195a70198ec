#pragma once

#include <string>
#include <vector>

namespace bench {

// Runs a program, its path first, and returns the number that it prints. Throws when it fails or prints no number.
double numberFrom(const std::vector<std::string>& command);

}  // namespace bench
