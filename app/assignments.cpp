#include "app/assignments.h"

#include <fmt/format.h>

#include <algorithm>
#include <cctype>

#include "app/failure.h"

namespace app {

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool isQuote(char c) { return c == '"' || c == '\''; }

std::string_view unquoted(std::string_view value) {
  if (value.size() >= 2 && isQuote(value.front()) && value.front() == value.back())
    return value.substr(1, value.size() - 2);
  return value;
}

std::string shown(std::string_view word, bool mayBeSecret) {
  return mayBeSecret || namesSecret(word) ? "a word that may be secret" : fmt::format("\"{}\"", word);
}

// Reads a list of words from front to back.
class Scanner {
 public:
  Scanner(std::string_view text, const char* source) : text_(text), source_(source) { skipBlanks(); }

  bool atEnd() const { return text_.empty(); }

  Assignment next() {
    const std::string name(take(std::min(text_.find_first_of(" \t\r\n="), text_.size())));
    if (name.empty()) {
      const std::string_view word = text_.substr(0, text_.find_first_of(kBlanks));  // what follows may be secret
      throw Failure(fmt::format("{}: a name is missing in front of {}", source_, shown(word, secret_)));
    }
    skipBlanks();
    if (text_.starts_with('=')) take(1);
    skipBlanks();
    if (text_.empty()) {
      const std::string what = secret_ ? shown(name, secret_) : name;
      throw Failure(fmt::format("{}: {} has no value", source_, what));
    }
    secret_ = secret_ || namesSecret(name);
    const std::string value(isQuote(text_.front()) ? quoted(name)
                                                   : take(std::min(text_.find_first_of(kBlanks), text_.size())));
    skipBlanks();
    return {name, value, source_};
  }

 private:
  std::string_view take(std::size_t length) {
    const std::string_view taken = text_.substr(0, length);
    text_.remove_prefix(length);
    return taken;
  }

  std::string_view quoted(const std::string& name) {
    const std::size_t end = text_.find(text_.front(), 1);
    if (end == std::string_view::npos) throw Failure(fmt::format("{}: the quote of {} does not end", source_, name));
    return unquoted(take(end + 1));
  }

  void skipBlanks() { text_.remove_prefix(std::min(text_.find_first_not_of(kBlanks), text_.size())); }

  std::string_view text_;
  const char* source_;
  bool secret_ = false;  // a secret was given; a blank in its value would make a word of the rest
};

}  // namespace

bool namesSecret(std::string_view text) {
  constexpr std::string_view kWord = "password";
  const auto same = [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; };
  return std::search(text.begin(), text.end(), kWord.begin(), kWord.end(), same) != text.end();
}

Assignment parseWord(const std::string& word, bool mayBeSecret) {
  const std::size_t equals = word.find('=');
  const std::string_view text = word;
  const auto isBlank = [](char c) { return kBlanks.find(c) != std::string_view::npos; };
  std::string_view name = text.substr(0, std::min(equals, text.size()));
  while (!name.empty() && isBlank(name.back())) name.remove_suffix(1);
  if (equals == std::string::npos || name.empty()) {
    throw Failure(fmt::format("command line: expected name=value, found {}", shown(word, mayBeSecret)));
  }
  std::string_view value = text.substr(equals + 1);
  while (!value.empty() && isBlank(value.front())) value.remove_prefix(1);
  return {std::string(name), std::string(unquoted(value)), "command line"};
}

std::vector<Assignment> parseList(std::string_view text, const char* source) {
  std::vector<Assignment> assignments;
  for (Scanner scanner(text, source); !scanner.atEnd();) assignments.push_back(scanner.next());
  return assignments;
}

}  // namespace app
