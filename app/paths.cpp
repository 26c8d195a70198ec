#include "app/paths.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace app {

namespace {

// The path without a known ending, and that ending.
struct Stub {
  std::string base;
  std::string_view ending;
};

// Endings count in capital letters too, as they do when the file is read.
bool isEnding(std::string_view text, std::string_view ending) {
  return std::equal(text.begin(), text.end(), ending.begin(), ending.end(),
                    [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a + 32 : a) == b; });
}

Stub stubOf(const std::string& model) {
  for (const std::string_view ending : {".nl", ".mps", ".mps.gz", ".lp", ".lp.gz"}) {
    if (model.size() <= ending.size()) continue;
    const std::size_t base = model.size() - ending.size();
    if (isEnding(std::string_view(model).substr(base), ending)) return {model.substr(0, base), ending};
  }
  return {model, ""};
}

}  // namespace

Paths pathsOf(const Arguments& arguments) {
  const Stub stub = stubOf(arguments.model);
  const bool nl = stub.ending == ".nl" || stub.ending.empty();
  Paths paths;
  if (nl) paths.nl = stub.ending.empty() ? stub.base + ".nl" : arguments.model;
  paths.sol = arguments.sol.empty() ? stub.base + ".sol" : arguments.sol;
  paths.amplForm = nl || arguments.ampl;
  return paths;
}

std::string poolPath(const std::string& stub, std::size_t number) { return fmt::format("{}{}.sol", stub, number); }

}  // namespace app
