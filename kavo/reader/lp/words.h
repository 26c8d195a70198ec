#pragma once

#include <cstddef>
#include <string_view>

#include "kavo/reader/input.h"

namespace kavo::reader::lp {

// The words of a file, one after the other. Blanks, tabs, line ends and comments (from '\' to the end of the line)
// stand between words; ':' and '^' are words of their own wherever they stand. Everything else belongs to a word, as
// names may hold nearly any character: who knows what is expected cuts a word further.
class Words {
 public:
  // The input must outlive this object. Stands before the first word then.
  explicit Words(const Input& input);

  // Goes to the next word.
  void next();
  // Makes the first `length` bytes of the word, above 0, the word; the rest of it is the next one.
  void cut(std::size_t length);

  bool atEnd() const { return word_.empty(); }
  std::string_view word() const { return word_; }           // "" at the end
  char first() const { return atEnd() ? '\0' : word_[0]; }  // its first byte
  bool is(char only) const { return word_.size() == 1 && word_[0] == only; }
  bool beginsLine() const { return beginsLine_; }         // whether it is the first one of its line
  std::size_t line() const { return line_; }              // counted from 1
  std::size_t lineBefore() const { return lineBefore_; }  // of the word before

  // The first byte behind the word, on the same line, that is no blank; '\n' when there is none.
  char following() const;

 private:
  void skip();
  void skipComment();
  // Gives the text that was read back to the system, now and then.
  void giveBack();
  [[noreturn]] void failAtByte() const;

  const Input* input_;
  const char* at_;  // behind the word
  const char* end_;
  const char* given_;  // what is before was given back
  const char* lineBegin_;
  std::size_t line_ = 1, lineBefore_ = 1;
  bool beginsLine_ = true;
  std::string_view word_;
};

}  // namespace kavo::reader::lp
