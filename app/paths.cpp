#include "app/paths.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <set>
#include <string_view>
#include <system_error>

#include "app/failure.h"
#include "kavo/kavo.h"

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

void checkOutputs(const std::vector<std::string>& paths, const std::string& model) {
  namespace fs = std::filesystem;
  std::set<fs::path> taken;
  for (const std::string& path : paths) {
    if (path.empty()) continue;
    std::error_code none;
    if (fs::equivalent(path, model, none)) throw Failure(fmt::format("{} would overwrite the model", path));
    const bool isReplaced = !fs::exists(path, none) || fs::is_regular_file(path, none);
    if (isReplaced && !taken.insert(fs::weakly_canonical(path, none)).second)
      throw Failure(fmt::format("{} is named for two outputs", path));
    check(kavo_check_writable(path.c_str()));
  }
}

}  // namespace app
