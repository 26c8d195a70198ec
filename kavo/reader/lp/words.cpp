#include "kavo/reader/lp/words.h"

#include <fmt/format.h>

#include <array>
#include <cstring>

#include "kavo/reader/failure.h"
#include "kavo/reader/text.h"

namespace kavo::reader::lp {

namespace {

constexpr std::ptrdiff_t kGiveBack = std::ptrdiff_t{1} << 18;

enum class Byte : unsigned char { kInWord, kAlone, kBlank, kNewline, kComment, kBad };

constexpr std::array<Byte, 256> makeTable() {
  std::array<Byte, 256> table{};
  for (std::size_t c = 0; c < 32; ++c) table[c] = Byte::kBad;
  for (const char c : {' ', '\t', '\r'}) table[static_cast<unsigned char>(c)] = Byte::kBlank;
  table['\n'] = Byte::kNewline;
  table['\\'] = Byte::kComment;
  for (const char c : {':', '^'}) table[static_cast<unsigned char>(c)] = Byte::kAlone;
  return table;
}

constexpr std::array<Byte, 256> kTable = makeTable();

Byte kindOf(char c) { return kTable[static_cast<unsigned char>(c)]; }

}  // namespace

Words::Words(const Input& input)
    : input_(&input), at_(input.text().data()), end_(at_ + input.text().size()), given_(at_), lineBegin_(at_) {
  if (input.text().starts_with(kByteOrderMark)) at_ += kByteOrderMark.size();
}

void Words::skip() {
  for (; at_ != end_; ++at_) {
    switch (kindOf(*at_)) {
      case Byte::kBlank:
        break;
      case Byte::kNewline:
        ++line_;
        lineBegin_ = at_ + 1;
        beginsLine_ = true;
        break;
      case Byte::kComment:
        skipComment();
        break;
      default:
        return;
    }
  }
}

// Stops before the line end, or at the last byte of the file.
void Words::skipComment() {
  const void* newline = std::memchr(at_, '\n', static_cast<std::size_t>(end_ - at_));
  at_ = (newline == nullptr ? end_ : static_cast<const char*>(newline)) - 1;
}

void Words::next() {
  if (at_ - given_ > kGiveBack) giveBack();
  beginsLine_ = word_.empty();
  lineBefore_ = line_;
  skip();
  const char* const begin = at_;
  while (at_ != end_ && kindOf(*at_) == Byte::kInWord) ++at_;
  if (at_ == begin && at_ != end_) {
    if (kindOf(*at_) == Byte::kBad) failAtByte();
    ++at_;
  }
  word_ = {begin, static_cast<std::size_t>(at_ - begin)};
}

void Words::cut(std::size_t length) {
  at_ -= word_.size() - length;
  word_ = word_.substr(0, length);
}

char Words::following() const {
  const char* p = at_;
  while (p != end_ && kindOf(*p) == Byte::kBlank) ++p;
  return p == end_ || kindOf(*p) == Byte::kComment ? '\n' : *p;
}

void Words::giveBack() {
  input_->giveBack(given_, at_);
  given_ = at_;
}

void Words::failAtByte() const {
  throw Failure(KAVO_FILE, line_,
                fmt::format("byte {} of the line is {}, which does not belong in a text file", at_ - lineBegin_ + 1,
                            static_cast<int>(static_cast<unsigned char>(*at_))));
}

}  // namespace kavo::reader::lp
