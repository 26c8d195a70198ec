#pragma once

#include <array>
#include <cstddef>
#include <string_view>

#include "kavo/reader/input.h"

namespace kavo::reader::mps {

// How the data lines of a file are cut into fields. Free files separate fields by blanks. Fixed files have them in
// fixed columns (counted from 1: 2-3, 5-12, 15-22, 25-36, 40-47, 50-61), mostly with names without blanks, so that both
// ways give the same; names with blanks need the columns.
enum class Layout { kBlanks, kColumns };

// What stands on the data lines of a section: fields that begin with a short type (ROWS, BOUNDS), fields without one
// (COLUMNS, RHS, RANGES), or words that are separated by blanks in every layout (OBJSENSE).
enum class Fields { kTyped, kUntyped, kWords };

// The lines of a file, one after the other, cut into fields. Blank lines and comments ('*' in the first column) are
// skipped. A line that begins with a blank is a data line, any other begins a section. Blanks are ' ', tab and the
// carriage return before a newline.
class Lines {
 public:
  static constexpr std::size_t kMostFields = 6;

  // The input must outlive this object.
  Lines(const Input& input, Layout layout);

  // Goes to the next data line of the section; false when the section is over: at a header, or at the end of the file.
  bool next(Fields fields);

  bool atEnd() const { return ended_; }
  Layout layout() const { return layout_; }
  std::size_t number() const { return number_; }  // counted from 1

  // The fields of the line: count() is kMostFields + 1 when there are more, or when a data line does not obey the fixed
  // columns. In fixed columns an empty field before the last one counts.
  std::size_t count() const { return count_; }
  std::string_view operator[](std::size_t i) const { return field_[i]; }
  // How many blanks stand before the first field.
  std::size_t indent() const { return static_cast<std::size_t>(field_[0].data() - line_); }
  // Everything behind the first field, without blanks around it.
  std::string_view rest() const;

  // Whether the line of that number obeys the fixed columns and has a name with a blank inside.
  static bool hasNameWithBlank(const Input& input, std::size_t number);

 private:
  void splitAtBlanks();
  void splitAtColumns(Fields fields);
  // One fixed column field of the line: bytes begin .. end-1, without blanks around it.
  std::string_view cut(std::size_t begin, std::size_t end) const;
  bool obeysColumns() const;
  [[noreturn]] void failAtByte(const char* at) const;

  // Gives the text that was read back to the system, now and then.
  void giveBack();

  const Input* input_;
  const char* at_;
  const char* end_;
  const char* given_;    // what is before was given back
  const char* line_;     // where the line begins
  const char* lineEnd_;  // behind its last byte, without the newline
  Layout layout_;
  bool ended_ = false;
  std::size_t number_ = 0;
  std::size_t count_ = 0;
  std::array<std::string_view, kMostFields + 1> field_;
};

}  // namespace kavo::reader::mps
