#include "grb/procedure/parameter_lines.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>

#include "tav/util/exception.h"

namespace grb {
namespace {

constexpr std::string_view kBlanks = " \t\r\v\f";
constexpr std::string_view kNameEnds = " \t\r\v\f=";

[[noreturn]] void refuse(const std::string& file, std::string_view why) {
  throw tav::UserException(fmt::format("The file '{}' cannot be read: {}.", file, why));
}

bool isCompressed(const std::string& file) {
  constexpr std::array<std::string_view, 5> kExtensions{".gz", ".bz2", ".zip", ".7z", ".xz"};
  return std::any_of(kExtensions.begin(), kExtensions.end(), [&](std::string_view e) { return file.ends_with(e); });
}

std::ifstream opened(const std::string& file) {
  std::error_code ignored;
  if (std::filesystem::is_directory(file, ignored)) refuse(file, "it is a folder");
  if (std::filesystem::exists(file, ignored) && !std::filesystem::is_regular_file(file, ignored)) {
    refuse(file, "it is no regular file, and would be read twice");
  }
  if (isCompressed(file)) refuse(file, "it is compressed");
  errno = 0;
  std::ifstream in(file, std::ios::binary);
  if (!in) refuse(file, std::strerror(errno));
  return in;
}

// Takes blanks off the front of a text.
void skipBlanks(std::string_view& text) { text.remove_prefix(std::min(text.find_first_not_of(kBlanks), text.size())); }

// Takes a word off the front of a text, after the blanks before it.
std::string_view takeWord(std::string_view& text, std::string_view ends) {
  skipBlanks(text);
  const std::string_view word = text.substr(0, text.find_first_of(ends));
  text.remove_prefix(word.size());
  return word;
}

ParameterLine parsed(std::string_view text, int number) {
  const std::string_view name = takeWord(text, kNameEnds);
  if (name.starts_with('#')) return {};
  skipBlanks(text);
  if (text.starts_with('=')) text.remove_prefix(1);
  const std::string_view value = takeWord(text, kBlanks);
  skipBlanks(text);
  return {std::string(name), std::string(value), !text.empty() && text.front() != '#', number};
}

}  // namespace

std::vector<ParameterLine> linesOfParameterFile(const std::string& file) {
  std::ifstream in = opened(file);
  std::vector<ParameterLine> lines;
  std::string text;
  for (int number = 1; std::getline(in, text); ++number) {
    if (text.find('\0') != std::string::npos) refuse(file, fmt::format("line {} is not a text", number));
    ParameterLine line = parsed(text, number);
    if (!line.name.empty()) lines.push_back(std::move(line));
  }
  if (in.bad()) refuse(file, std::strerror(errno));
  return lines;
}

std::string shownWord(std::string_view word) {
  constexpr std::size_t kMost = 60;
  std::string text;
  for (const char c : word.substr(0, kMost)) {
    if (c > ' ' && c <= '~') {
      text += c;
    } else {
      text += fmt::format("\\x{:02x}", static_cast<unsigned char>(c));
    }
  }
  return word.size() > kMost ? text + "..." : text;
}

}  // namespace grb
