#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace grb {

/// The native Gurobi library inside the package gurobipy, or the one that GRBLINK_NATIVE_GUROBI names. A machine
/// without it fails the tests that ask for it.
inline std::string nativeGurobi() {
  const char* given = std::getenv("GRBLINK_NATIVE_GUROBI");
  std::string path = given != nullptr ? given : NATIVE_GUROBI;
  if (!std::filesystem::exists(path)) throw std::runtime_error("no native Gurobi library at " + path);
  return path;
}

}  // namespace grb
