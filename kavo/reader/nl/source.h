#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "kavo/reader/number.h"

namespace kavo::reader::nl {

// A place in a .nl file that moves from front to back. TextSource and BinarySource offer the same functions, so that
// the segments are read by one template for both forms:
//
//   atEnd()            whether nothing is left but blank lines
//   letter(expected)   the next segment, node or bound letter
//   integer(expected), shortInteger(expected), number(expected)
//   name(expected)     a name that ends at a blank;  string(): a text with its length before it
//   endLine()          the end of a line, in the text form only
//
// `expected` says in a message what should have stood there, such as "a column number". What is read wrongly ends in
// Error with KAVO_FILE: file, line (byte, counted from 0, in the binary form), segment, what was expected, what was
// found.
class Source {
 public:
  // Reads `text`, the whole content of `file`, from `position` on. Both must outlive the source.
  Source(const std::string& file, std::string_view text, std::size_t position, bool binary)
      : file_(file),
        begin_(text.data()),
        place_(begin_ + position),
        end_(begin_ + text.size()),
        token_(place_),
        binary_(binary) {}

  // What messages are about from now on: a segment, and the number behind its letter; nothing in particular, between
  // two segments. Before the first call: the header.
  void enter(char segment) { segment_ = segment, number_ = -1; }
  void enterBetween() { enter(kBetween); }
  void setNumber(int number) { number_ = number; }

  // Throws "expected ..., found ..." at the piece that was read last.
  [[noreturn]] void fail(std::string_view expected) const;
  // Throws a message of another form there.
  [[noreturn]] void refuse(std::string_view reason) const;

  std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }
  std::size_t position() const { return static_cast<std::size_t>(place_ - begin_); }
  // The piece that was read last, and the way to make messages tell its place.
  const char* token() const { return token_; }
  void setToken(const char* token) { token_ = token; }

 protected:
  std::size_t left() const { return static_cast<std::size_t>(end_ - place_); }

  const std::string& file_;
  const char* begin_;
  const char* place_;
  const char* end_;
  const char* token_;

 private:
  std::string where() const;
  std::string found() const;

  static constexpr char kHeader = '\0', kBetween = ' ';

  bool binary_;
  char segment_ = kHeader;
  int number_ = -1;
};

// The text form: a piece per line, blanks between the numbers of a line, a comment behind '#'.
class TextSource : public Source {
 public:
  TextSource(const std::string& file, std::string_view text, std::size_t position)
      : Source(file, text, position, false) {}

  bool atEnd() {
    skipBlanks();
    while (place_ != end_ && (*place_ == '\n' || *place_ == '#')) {
      endLine();
      skipBlanks();
    }
    return place_ == end_;
  }

  char letter(std::string_view expected) {
    skipBlanks();
    if (place_ == end_ || *place_ == '\n') [[unlikely]]
      fail(expected);
    return *place_++;
  }

  int integer(std::string_view expected) {
    skipBlanks();
    int value = 0;
    const char* next = parseInteger(place_, end_, value);
    if (next == nullptr || !endsToken(next)) [[unlikely]]
      fail(expected);
    place_ = next;
    return value;
  }
  int shortInteger(std::string_view expected) { return integer(expected); }

  double number(std::string_view expected) {
    skipBlanks();
    double value = 0;
    const char* next = parseNumber(place_, end_, value);
    if (next == nullptr || !endsToken(next)) [[unlikely]]
      fail(expected);
    place_ = next;
    return value;
  }

  std::string_view name(std::string_view expected);
  std::string_view string();

  void endLine() {
    skipBlanks();
    if (place_ == end_) return;
    if (*place_ == '\n') {
      ++place_;
      return;
    }
    if (*place_ != '#') [[unlikely]]
      fail("the end of the line");
    const void* newline = std::memchr(place_, '\n', left());
    place_ = newline == nullptr ? end_ : static_cast<const char*>(newline) + 1;
  }

  // Whether something other than a comment is left on this line.
  bool moreOnLine() {
    skipBlanks();
    return place_ != end_ && *place_ != '\n' && *place_ != '#';
  }

 private:
  static bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }
  bool endsToken(const char* p) const { return p == end_ || isBlank(*p) || *p == '\n' || *p == '#'; }
  void skipBlanks() {
    while (place_ != end_ && isBlank(*place_)) ++place_;
    token_ = place_;
  }
};

// The binary form: letters of 1 byte, integers of 4, short ones of 2, numbers of 8, in the byte order of the writer.
class BinarySource : public Source {
 public:
  // swap: the file's byte order is not this machine's.
  BinarySource(const std::string& file, std::string_view text, std::size_t position, bool swap)
      : Source(file, text, position, true), swap_(swap) {}

  bool atEnd() {
    token_ = place_;
    return place_ == end_;
  }
  char letter(std::string_view expected) { return take<char>(expected); }
  int integer(std::string_view expected) { return take<std::int32_t>(expected); }
  int shortInteger(std::string_view expected) { return take<std::int16_t>(expected); }
  double number(std::string_view expected) { return take<double>(expected); }
  std::string_view name(std::string_view expected);
  std::string_view string() { return name("the text of a string"); }
  void endLine() {}

 private:
  template <class T>
  T take(std::string_view expected) {
    token_ = place_;
    if (left() < sizeof(T)) [[unlikely]] {
      token_ = end_;
      fail(expected);
    }
    char bytes[sizeof(T)];
    std::memcpy(bytes, place_, sizeof(T));
    place_ += sizeof(T);
    if (swap_) {
      for (std::size_t i = 0, k = sizeof(T) - 1; i < k; ++i, --k) std::swap(bytes[i], bytes[k]);
    }
    T value;
    std::memcpy(&value, bytes, sizeof(T));
    return value;
  }

  bool swap_;
};

}  // namespace kavo::reader::nl
