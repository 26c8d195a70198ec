#include "grb/procedure/parameter_file.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <unordered_set>

#include "grb/gurobi/constants.h"
#include "tav/util/ascii.h"
#include "tav/util/exception.h"

namespace grb {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kBlanks = " \t\r\v\f";
constexpr std::size_t kShownLength = 60;

[[noreturn]] void refuse(const std::string& file, std::string_view verb, std::string_view why) {
  throw tav::Exception(fmt::format("The file '{}' cannot be {}: {}.", file, verb, why));
}

bool isCompressed(const std::string& file) {
  constexpr std::array<std::string_view, 5> kExtensions{".gz", ".bz2", ".zip", ".7z", ".xz"};
  return std::any_of(kExtensions.begin(), kExtensions.end(), [&](std::string_view e) { return file.ends_with(e); });
}

// The name that a line gives a value to, empty when it gives none.
std::string_view nameIn(std::string_view line) {
  line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
  if (line.starts_with('#')) return {};
  return line.substr(0, line.find_first_of(" \t\r\v\f="));
}

// A name as it can be shown whatever bytes it is made of.
std::string shown(std::string_view name) {
  std::string text;
  for (const char c : name.substr(0, kShownLength)) {
    if (c > ' ' && c <= '~') {
      text += c;
    } else {
      text += fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
    }
  }
  return name.size() > kShownLength ? text + "..." : text;
}

bool isFolder(const std::string& file) {
  std::error_code ignored;
  return fs::is_directory(file, ignored);
}

std::ifstream opened(const std::string& file) {
  if (isFolder(file)) refuse(file, "read", "it is a folder");
  errno = 0;
  std::ifstream in(file, std::ios::binary);
  if (!in) refuse(file, "read", std::strerror(errno));
  return in;
}

}  // namespace

std::vector<NamedLine> namesInParameterFile(const std::string& file) {
  std::ifstream in = opened(file);
  std::vector<NamedLine> names;
  if (isCompressed(file)) return names;
  std::unordered_set<std::string> seen;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    if (line.find('\0') != std::string::npos) refuse(file, "read", fmt::format("line {} is not a text", number));
    std::string name(nameIn(line));
    if (!name.empty() && seen.insert(tav::util::lowerCased(name)).second) names.push_back({std::move(name), number});
  }
  if (in.bad()) refuse(file, "read", std::strerror(errno));
  return names;
}

void readParameterFile(GurobiModel& model, tav::opt::AbstractLog& log, const std::string& file) {
  for (const NamedLine& entry : namesInParameterFile(file)) {
    if (model.getParamType(entry.name.c_str()) != paramtype::kUnknown) continue;
    log.headed("Warning", fmt::format("{}, line {}: Gurobi has no parameter '{}'; the line has no effect.", file,
                                      entry.line, shown(entry.name)));
  }
  model.readParams(file.c_str());
}

void requireWritable(const std::string& file) {
  if (isFolder(file)) refuse(file, "written", "it is a folder");
  if (access(file.c_str(), W_OK) == 0) return;
  if (errno != ENOENT) refuse(file, "written", std::strerror(errno));
  const fs::path folder = fs::path(file).parent_path() / ".";
  if (access(folder.c_str(), W_OK) != 0) refuse(file, "written", std::strerror(errno));
}

}  // namespace grb
