#include "app/words.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>

namespace app {

namespace {

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

bool isSameWord(std::string_view text, std::string_view word) {
  return std::equal(text.begin(), text.end(), word.begin(), word.end(), isSameLetter);
}

bool hasWord(std::string_view text, std::string_view word) {
  return std::search(text.begin(), text.end(), word.begin(), word.end(), isSameLetter) != text.end();
}

std::size_t screenWidth() {
  constexpr std::size_t kUsual = 80, kLeast = 40, kMost = 120;
  winsize size{};
  if (isatty(STDOUT_FILENO) == 0 || ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return kUsual;
  return std::clamp<std::size_t>(size.ws_col, kLeast, kMost);
}

}  // namespace app
