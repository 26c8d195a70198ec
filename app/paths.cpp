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

namespace fs = std::filesystem;

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

// Whether the files of the pool can have this path.
bool isPoolPath(const fs::path& path, const std::string& stub) {
  std::error_code none;
  const std::string text = path.string();
  const std::string first = fs::weakly_canonical(poolPath(stub, 1), none).string();
  const std::size_t begin = first.size() - std::string_view("1.sol").size();  // of the number
  const std::size_t end = text.size() - std::min(text.size(), std::string_view(".sol").size());
  return end > begin && text.compare(0, begin, first, 0, begin) == 0 && text.ends_with(".sol") &&
         std::all_of(text.begin() + static_cast<std::ptrdiff_t>(begin), text.begin() + static_cast<std::ptrdiff_t>(end),
                     [](char c) { return c >= '0' && c <= '9'; });
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

void checkOutputs(const std::vector<std::string>& paths, const std::string& model, const std::string& poolStub) {
  std::set<fs::path> taken;
  for (const std::string& path : paths) {
    if (path.empty()) continue;
    std::error_code none;
    if (fs::equivalent(path, model, none)) throw Failure(fmt::format("{} would overwrite the model", path));
    const bool isReplaced = !fs::exists(path, none) || fs::is_regular_file(path, none);
    const bool isPool = !poolStub.empty() && isPoolPath(fs::weakly_canonical(path, none), poolStub);
    if (isReplaced && (isPool || !taken.insert(fs::weakly_canonical(path, none)).second))
      throw Failure(fmt::format("{} is named for two outputs", path));
    check(kavo_check_writable(path.c_str()));
  }
  if (!poolStub.empty()) check(kavo_check_writable(poolPath(poolStub, 1).c_str()));
}

}  // namespace app
