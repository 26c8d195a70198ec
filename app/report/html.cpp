#include "app/report/html.h"

#include <fmt/format.h>

#include <algorithm>

#include "app/words.h"

namespace app::report {

namespace {

constexpr std::size_t kMostCharacters = 600;
constexpr std::size_t kLongCell = 40;  // bytes
constexpr int kDigits = 10;
constexpr const char* kReplacement = "\xEF\xBF\xBD";

// The length of the UTF-8 character that the text begins with; 0 when its first byte begins none.
std::size_t characterLength(std::string_view text) {
  const auto byte = [&](std::size_t i) -> unsigned { return static_cast<unsigned char>(text[i]); };
  const unsigned first = byte(0);
  const std::size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (length == 0 || first > 0xF4 || length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0;
  }
  // Not the shortest form, half of a surrogate pair, or beyond Unicode.
  if ((first == 0xE0 && byte(1) < 0xA0) || (first == 0xED && byte(1) > 0x9F)) return 0;
  if ((first == 0xF0 && byte(1) < 0x90) || (first == 0xF4 && byte(1) > 0x8F)) return 0;
  return length;
}

// U+202A to U+202E and U+2066 to U+2069 turn what follows around, so that a name would not look as it is.
bool isDirection(std::string_view character) {
  return (character >= "\xE2\x80\xAA" && character <= "\xE2\x80\xAE") ||
         (character >= "\xE2\x81\xA6" && character <= "\xE2\x81\xA9");
}

bool isControl(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  const bool blank = first == '\t' || first == '\n';
  if (character.size() == 3) return isDirection(character);
  return (first < 0x20 && !blank) || first == 0x7F ||
         (first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0);
}

void append(std::string& text, std::string_view character) {
  switch (character[0]) {
    case '<':
      text += "&lt;";
      break;
    case '>':
      text += "&gt;";
      break;
    case '&':
      text += "&amp;";
      break;
    case '"':
      text += "&quot;";
      break;
    case '\'':
      text += "&#39;";
      break;
    default:
      isControl(character) ? text += kReplacement : text.append(character);
  }
}

}  // namespace

std::string escaped(std::string_view text) {
  std::string out;
  for (std::size_t shown = 0; !text.empty(); ++shown) {
    if (shown == kMostCharacters) return out + "…";
    const std::size_t length = characterLength(text);
    length == 0 ? out += kReplacement : (append(out, text.substr(0, length)), out);
    text.remove_prefix(std::max<std::size_t>(length, 1));
  }
  return out;
}

std::string numberText(double value) { return app::numberText(value, kDigits); }

void Table::add(const std::vector<std::string>& cells) {
  rows_ += "<tr>";
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const char* ofText = cells[i].size() > kLongCell ? "<td class=\"long\">" : "<td>";
    rows_ += columns_[i].number ? "<td class=\"n\">" : ofText;
    rows_ += escaped(cells[i]) + "</td>";
  }
  rows_ += "</tr>\n";
}

std::string Table::text() const {
  std::string head;
  for (const Column& column : columns_) {
    head += fmt::format("<th scope=\"col\"{}>{}</th>", column.number ? " class=\"n\"" : "", column.title);
  }
  return "<div class=\"wide\"><table>\n<thead><tr>" + head + "</tr></thead>\n<tbody>\n" + rows_ +
         "</tbody></table></div>\n";
}

std::string section(const char* heading, const std::string& content) {
  return content.empty() ? content : fmt::format("<section>\n<h2>{}</h2>\n{}</section>\n", heading, content);
}

std::string cutLine(std::size_t count, std::size_t shown, const char* what) {
  if (count <= shown) return {};
  return fmt::format("<p class=\"cut\">The first {} of {} {} are shown; --json writes all of them.</p>\n", shown, count,
                     what);
}

}  // namespace app::report
