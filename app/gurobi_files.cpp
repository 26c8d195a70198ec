#include "app/gurobi_files.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <fnmatch.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "app/failure.h"
#include "app/words.h"

namespace app {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kBlanks = " \t\r\v\f";
constexpr std::string_view kCompressed[] = {".gz", ".bz2", ".xz", ".zip", ".7z"};
constexpr std::string_view kModels[] = {".mps", ".rew", ".lp", ".rlp", ".opb", ".ilp", ".dlp", ".dua"};
constexpr std::string_view kResults[] = {".sol", ".mst", ".hnt", ".bas", ".json", ".attr", ".lp", ".rlp",
                                         ".mps", ".rew", ".dlp", ".dua", ".ilp",  ".opb",  ".prm"};
constexpr std::string_view kOfPoints[] = {".sol", ".mst", ".hnt", ".bas"};

// The ending among those of a list, in any case; "" for none.
template <class List>
std::string_view endingOf(std::string_view name, const List& endings) {
  for (const std::string_view ending : endings) {
    if (name.size() >= ending.size() && isSameWord(name.substr(name.size() - ending.size()), ending)) return ending;
  }
  return {};
}

template <class List>
std::string_view without(std::string_view name, const List& endings) {
  return name.substr(0, name.size() - endingOf(name, endings).size());
}

template <class List>
bool has(const List& list, std::string_view ending) {
  return std::find(std::begin(list), std::end(list), ending) != std::end(list);
}

// Of the endings behind it, which compress, Gurobi knows only those in small letters when it writes.
std::string_view resultEnding(std::string_view path) {
  const std::string_view compressed = endingOf(path, kCompressed);
  return endingOf(path.ends_with(compressed) ? without(path, kCompressed) : path, kResults);
}

// Gurobi knows no classes of characters.
std::string patternOf(const std::string& name) {
  std::string pattern;
  for (const char c : name) {
    if (c == '[' || c == '\\') pattern += '\\';
    pattern += c;
  }
  return pattern;
}

// 0, or the errno that tells why a file cannot be written in place.
int whyNotWritable(const std::string& path) {
  std::error_code none;
  if (fs::is_directory(path, none)) return EISDIR;
  const std::string folder = fs::path(path).parent_path() / ".";
  const bool isThere = fs::exists(path, none);
  return access(isThere ? path.c_str() : folder.c_str(), W_OK) == 0 ? 0 : errno;
}

std::optional<struct stat> stateOf(const std::string& path) {
  struct stat state{};
  return stat(path.c_str(), &state) == 0 ? std::optional(state) : std::nullopt;
}

bool isSame(const struct stat& a, const struct stat& b) {
  return a.st_ino == b.st_ino && a.st_size == b.st_size && a.st_mtim.tv_sec == b.st_mtim.tv_sec &&
         a.st_mtim.tv_nsec == b.st_mtim.tv_nsec;
}

}  // namespace

std::vector<std::string> modelFiles(const std::string& name) {
  std::vector<std::string> files{name};
  const fs::path path(name);
  const fs::path folder = path.parent_path();
  const std::string pattern = patternOf(path.filename());
  const auto fits = [&](std::string_view file) { return fnmatch(pattern.c_str(), std::string(file).c_str(), 0) == 0; };
  std::error_code none;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder / ".", none)) {
    const std::string file = entry.path().filename();
    const std::string_view plain = without(file, kCompressed);
    if (fits(file) || fits(plain) || fits(without(plain, kModels))) files.push_back(folder / file);
  }
  return files;
}

std::vector<ParameterLine> parameterLines(const std::string& path) {
  std::vector<ParameterLine> lines;
  std::error_code none;
  if (!fs::is_regular_file(path, none)) return lines;
  std::ifstream file(path);
  int number = 0;
  for (std::string text; std::getline(file, text);) {
    ++number;
    std::string_view rest = text;
    const auto skip = [&](std::string_view what) {
      rest.remove_prefix(std::min(rest.find_first_not_of(what), rest.size()));
    };
    const auto word = [&](const std::string& ends) { return rest.substr(0, rest.find_first_of(ends)); };
    skip(kBlanks);
    const std::string_view name = word(std::string(kBlanks) + "=");
    rest.remove_prefix(name.size());
    skip(kBlanks);
    if (rest.starts_with('=')) rest.remove_prefix(1);
    skip(kBlanks);
    const std::string_view value = word(std::string(kBlanks));
    if (name.empty() || name.starts_with('#') || value.empty()) continue;
    lines.push_back({std::string(name), std::string(value), number});
  }
  return lines;
}

std::string parameterIn(const std::string& path, std::string_view name) {
  std::string found;
  for (const ParameterLine& line : parameterLines(path)) {
    if (isSameWord(line.name, name)) found = line.value;
  }
  return found;
}

void checkGurobiOutput(const std::string& what, const std::string& path, bool isResult) {
  if (isResult && resultEnding(path).empty()) {
    throw Failure(fmt::format("{}: Gurobi writes no file {}: the endings that it knows are {}, and {} behind", what,
                              path, fmt::join(kResults, " "), fmt::join(kCompressed, " ")));
  }
  if (const int error = whyNotWritable(path); error != 0) {
    throw Failure(fmt::format("{}: cannot write {}: {}", what, path, std::generic_category().message(error)));
  }
}

ResultFile::ResultFile(std::string path, bool isOfFixed)
    : path_(std::move(path)), isOfFixed_(isOfFixed), before_(stateOf(path_)) {}

std::string ResultFile::lost(const Session& session) const {
  const auto now = stateOf(path_);
  const bool isWritten = now && (!S_ISREG(now->st_mode) || (now->st_size > 0 && !(before_ && isSame(*before_, *now))));
  if (isWritten || !isDue(session)) return {};
  const char* const what = !now ? "" : now->st_size == 0 ? "; it is empty" : "; the file is from an earlier run";
  return fmt::format("ResultFile: Gurobi has not written {}{}", path_, what);
}

// What needs a point is not expected where there is none, nor a conflict of a model that is not infeasible.
bool ResultFile::isDue(const Session& session) const {
  const std::string_view ending = resultEnding(path_);
  kavo_outcome fixed;
  if (isOfFixed_) {
    const bool isSolved = kavo_get_fixed_outcome(session.model(), &fixed) == KAVO_OK;
    return isSolved && ending != ".ilp" && (fixed.solutions > 0 || !has(kOfPoints, ending));
  }
  const kavo_outcome outcome = session.outcome();
  if (isSameWord(outcome.termination, "not_run") || !session.given("rngread").empty()) return false;
  if (ending == ".ilp") return outcome.status == KAVO_INFEASIBLE;
  return session.values(KAVO_PRIMAL).first != nullptr || !has(kOfPoints, ending);
}

}  // namespace app
