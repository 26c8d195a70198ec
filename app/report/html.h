#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

// A page of one file: pieces of HTML. What comes from outside (names, paths, values) goes through `escaped`.
namespace app::report {

// Text for HTML: < > & and quotes are written as entities; bytes that are not UTF-8 and control characters, those
// of the direction of writing included, become U+FFFD; what is longer than a page should show is cut, with an ellipsis.
std::string escaped(std::string_view text);

// A number for people; "" for NaN.
std::string numberText(double value);

// A table whose first column holds text and whose others hold numbers or words.
class Table {
 public:
  struct Column {
    const char* title;
    bool number;  // right-aligned
  };
  explicit Table(std::vector<Column> columns) : columns_(std::move(columns)) {}

  // One cell per column, as text that is not escaped yet.
  void add(const std::vector<std::string>& cells);
  bool empty() const { return rows_.empty(); }
  std::string text() const;

 private:
  std::vector<Column> columns_;
  std::string rows_;
};

// A section with a heading; "" when the content is "".
std::string section(const char* heading, const std::string& content);

// "" when all `count` are shown, else a paragraph that says how many of them ("variables") are not.
std::string cutLine(std::size_t count, std::size_t shown, const char* what);

}  // namespace app::report
