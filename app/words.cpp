#include "app/words.h"

#include <fmt/format.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace app {

namespace {

constexpr std::size_t kUsualColumns = 80;

bool isSameLetter(char a, char b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return lower(a) == lower(b);
}

}  // namespace

std::string wrapped(std::string_view text, std::size_t indent, std::size_t width) {
  std::string lines;
  std::size_t column = 0;  // of the line that is being made; 0: none
  while (!text.empty()) {
    const std::string_view word = text.substr(0, text.find(' '));
    text.remove_prefix(std::min(word.size() + 1, text.size()));
    if (word.empty()) continue;
    if (column > 0 && column + 1 + word.size() > width) {
      lines += '\n';
      column = 0;
    }
    const std::size_t blanks = column == 0 ? indent : 1;
    lines.append(blanks, ' ').append(word);
    column += blanks + word.size();
  }
  return column == 0 ? lines : lines + '\n';
}

std::string numberText(double value, int digits) {
  constexpr double kInfinite = 1e100;
  if (std::isnan(value)) return {};
  if (std::abs(value) >= kInfinite) return value > 0 ? "infinity" : "-infinity";
  return fmt::format("{:.{}g}", value == 0 ? 0.0 : value, digits);  // no -0
}

bool isSameWord(std::string_view text, std::string_view word) {
  return std::equal(text.begin(), text.end(), word.begin(), word.end(), isSameLetter);
}

bool hasWord(std::string_view text, std::string_view word) {
  return std::search(text.begin(), text.end(), word.begin(), word.end(), isSameLetter) != text.end();
}

std::size_t terminalColumns() {
  const char* kind = std::getenv("TERM");
  if (isatty(STDOUT_FILENO) == 0 || kind == nullptr || std::string_view(kind) == "dumb") return 0;
  winsize size{};
  return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : kUsualColumns;
}

std::size_t screenWidth() {
  constexpr std::size_t kLeast = 40, kMost = 120;
  const std::size_t columns = terminalColumns();
  return columns == 0 ? kUsualColumns : std::clamp(columns, kLeast, kMost);
}

}  // namespace app
