#include "kavo/reader/mps/lines.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstring>

#include "kavo/reader/failure.h"
#include "kavo/reader/text.h"

namespace kavo::reader::mps {

namespace {

constexpr std::ptrdiff_t kGiveBack = std::ptrdiff_t{1} << 18;

// The fixed columns, counted from 0. Numbers may use the blank columns beside theirs, as some writers do.
struct Column {
  std::size_t begin, end;
  bool name;
};
constexpr std::array<Column, Lines::kMostFields> kColumns = {{{1, 3, false},
                                                              {4, 12, true},
                                                              {14, 22, true},
                                                              {22, 39, false},
                                                              {39, 47, true},
                                                              {47, std::string_view::npos, false}}};
constexpr std::array<std::size_t, 4> kGaps = {0, 3, 12, 13};

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

std::string_view trim(const char* first, const char* last) {
  while (first != last && isBlank(*first)) ++first;
  while (first != last && isBlank(last[-1])) --last;
  return {first, static_cast<std::size_t>(last - first)};
}

bool hasBlank(std::string_view text) { return std::any_of(text.begin(), text.end(), isBlank); }

}  // namespace

Lines::Lines(const Input& input, Layout layout)
    : input_(&input),
      at_(input.text().data()),
      end_(at_ + input.text().size()),
      given_(at_),
      line_(at_),
      lineEnd_(at_),
      layout_(layout) {
  if (input.text().starts_with(kByteOrderMark)) at_ += kByteOrderMark.size();
}

void Lines::giveBack() {
  input_->giveBack(given_, at_);
  given_ = at_;
}

bool Lines::next(Fields fields) {
  while (at_ != end_) {
    ++number_;
    line_ = at_;
    if (at_ - given_ > kGiveBack) giveBack();
    if (*at_ == '*') {
      const void* newline = std::memchr(at_, '\n', static_cast<std::size_t>(end_ - at_));
      at_ = newline == nullptr ? end_ : static_cast<const char*>(newline) + 1;
      continue;
    }
    splitAtBlanks();
    if (count_ == 0) continue;
    if (!isBlank(*line_)) return false;
    if (layout_ == Layout::kColumns && fields != Fields::kWords) splitAtColumns(fields);
    return true;
  }
  ended_ = true;
  count_ = 0;
  line_ = lineEnd_ = end_;
  return false;
}

void Lines::splitAtBlanks() {
  const char* p = at_;
  std::size_t count = 0;
  while (true) {
    while (p != end_ && isBlank(*p)) ++p;
    if (p == end_ || *p == '\n') break;
    const char* first = p;
    while (p != end_ && static_cast<unsigned char>(*p) > ' ') ++p;
    if (p == first) failAtByte(p);
    if (count <= kMostFields) field_[count++] = {first, static_cast<std::size_t>(p - first)};
  }
  count_ = count;
  lineEnd_ = p;
  at_ = p == end_ ? p : p + 1;
}

std::string_view Lines::cut(std::size_t begin, std::size_t end) const {
  const auto size = static_cast<std::size_t>(lineEnd_ - line_);
  return trim(line_ + std::min(begin, size), line_ + std::min(end, size));
}

bool Lines::obeysColumns() const {
  for (const std::size_t gap : kGaps) {
    if (!cut(gap, gap + 1).empty()) return false;
  }
  const bool tabs = std::find(line_, lineEnd_, '\t') != lineEnd_;
  return !tabs && std::none_of(kColumns.begin(), kColumns.end(), [this](const Column& column) {
    return !column.name && hasBlank(cut(column.begin, column.end));
  });
}

void Lines::splitAtColumns(Fields fields) {
  count_ = kMostFields + 1;
  if (!obeysColumns() || (fields == Fields::kUntyped && !cut(kColumns[0].begin, kColumns[0].end).empty())) return;
  std::size_t used = 0;
  const std::size_t skipped = fields == Fields::kUntyped ? 1 : 0;
  for (std::size_t i = skipped; i < kColumns.size(); ++i) {
    field_[i - skipped] = cut(kColumns[i].begin, kColumns[i].end);
    if (!field_[i - skipped].empty()) used = i - skipped + 1;
  }
  count_ = used;
}

bool Lines::hasNameWithBlank(const Input& input, std::size_t number) {
  Lines lines(input, Layout::kColumns);
  for (std::size_t i = 0; i < number; ++i) {
    lines.line_ = lines.at_;
    lines.lineEnd_ = std::find(lines.at_, lines.end_, '\n');
    lines.at_ = lines.lineEnd_ == lines.end_ ? lines.end_ : lines.lineEnd_ + 1;
  }
  return lines.obeysColumns() && std::any_of(kColumns.begin(), kColumns.end(), [&lines](const Column& column) {
           return column.name && hasBlank(lines.cut(column.begin, column.end));
         });
}

std::string_view Lines::rest() const { return trim(field_[0].data() + field_[0].size(), lineEnd_); }

void Lines::failAtByte(const char* at) const {
  throw Failure(KAVO_FILE, number_,
                fmt::format("byte {} of the line is {}, which does not belong in a text file", at - line_ + 1,
                            static_cast<int>(static_cast<unsigned char>(*at))));
}

}  // namespace kavo::reader::mps
