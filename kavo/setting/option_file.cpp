#include "kavo/setting/option_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>
#include <system_error>
#include <utility>

#include "kavo/error.h"

namespace kavo {

namespace {

constexpr std::size_t kLongestLine = std::size_t{1} << 16;
constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

struct Close {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

std::string_view trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

bool isControl(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return (byte < 0x20 && c != '\t') || byte == 0x7F;
}

// A name for a message, which it must not flood.
std::string shown(std::string_view name) {
  constexpr std::size_t kMost = 60;
  return name.size() <= kMost ? std::string(name) : std::string(name.substr(0, kMost)) + "...";
}

// Hands out a file line by line.
class Lines {
 public:
  explicit Lines(const std::string& path) : path_(path), file_(std::fopen(path.c_str(), "re")) {
    if (!file_) failToRead();
  }

  int number() const { return number_; }

  // The next line without its end; false at the end of the file. It is lent until the next call.
  bool next(std::string_view& line) {
    std::size_t end = 0;
    while ((end = buffer_.find('\n', begin_)) == std::string::npos && fill()) continue;
    if (end == std::string::npos) end = buffer_.size();
    if (begin_ >= buffer_.size()) return false;
    line = std::string_view(buffer_).substr(begin_, end - begin_);
    begin_ = end + 1;
    ++number_;
    if (line.size() > kLongestLine) fail(fmt::format("the line is longer than {} bytes", kLongestLine));
    if (number_ == 1 && line.starts_with(kByteOrderMark)) line.remove_prefix(kByteOrderMark.size());
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (std::any_of(line.begin(), line.end(), isControl)) fail("this is no text; is it an option file?");
    return true;
  }

  [[noreturn]] void fail(const std::string& why) const {
    throw Error(KAVO_FILE, fmt::format("{}, line {}: {}", path_, number_, why));
  }

 private:
  // Appends to what is left of the buffer; false when there is nothing more, or enough to see that a line is too long.
  bool fill() {
    buffer_.erase(0, begin_);
    begin_ = 0;
    const std::size_t old = buffer_.size();
    if (old > kLongestLine) return false;
    buffer_.resize(old + kLongestLine);
    errno = 0;
    const std::size_t got = std::fread(buffer_.data() + old, 1, kLongestLine, file_.get());
    if (got == 0 && std::ferror(file_.get()) != 0) failToRead();
    buffer_.resize(old + got);
    return got > 0;
  }

  [[noreturn]] void failToRead() const {
    throw Error(KAVO_FILE, fmt::format("cannot read \"{}\": {}", path_, std::generic_category().message(errno)));
  }

  const std::string& path_;
  std::unique_ptr<std::FILE, Close> file_;
  std::string buffer_;
  std::size_t begin_ = 0;  // where the next line begins in the buffer
  int number_ = 0;
};

// What stands between the quotes at the ends of the text.
std::string_view unquoted(const Lines& lines, std::string_view name, std::string_view text) {
  const std::size_t end = text.find(text.front(), 1);
  if (end == std::string_view::npos) lines.fail(fmt::format("the quote of {} does not end", shown(name)));
  if (end + 1 != text.size()) lines.fail(fmt::format("something follows the quoted value of {}", shown(name)));
  return text.substr(1, end - 1);
}

}  // namespace

std::vector<Setting> readOptionFile(const std::string& path) {
  std::vector<Setting> settings;
  std::string_view line;
  for (Lines lines(path); lines.next(line);) {
    line = trimmed(line);
    if (line.empty() || line.front() == '*' || line.front() == '#') continue;
    const std::string_view name = line.substr(0, line.find_first_of(" \t="));
    if (name.empty()) lines.fail("a name is missing in front of the value");
    std::string_view value = trimmed(line.substr(name.size()));
    if (value.starts_with('=')) value = trimmed(value.substr(1));
    if (value.empty()) lines.fail(fmt::format("{} has no value", shown(name)));
    if (value.front() == '"' || value.front() == '\'') value = unquoted(lines, name, value);
    settings.push_back({std::string(name), std::string(value), path, lines.number()});
  }
  return settings;
}

}  // namespace kavo
