#include <fmt/format.h>

#include <string>

#include "kavo/model/append_nonlinear.h"
#include "kavo/reader/failure.h"
#include "kavo/reader/lp/headers.h"
#include "kavo/reader/lp/sections.h"
#include "kavo/reader/text.h"

namespace kavo::reader::lp {

namespace {

class SetReader {
 public:
  explicit SetReader(Reading& reading) : reading_(reading), words_(reading.words) {}

  void read() {
    while (!words_.atEnd() && headerAt(words_) == nullptr) readPart();
    append();
  }

 private:
  // The head of a set (its name, which may be missing, and S1 :: or S2 ::) or a member (x : 1).
  void readPart() {
    const std::string_view word = words_.word();
    if (words_.is(':')) reading_.failExpected("the name of a set or a variable");
    const Words start = words_;
    words_.next();
    reading_.pass(':');
    if (words_.is(':')) return begin({}, word);
    if (isWord(words_.word(), "S1") || isWord(words_.word(), "S2")) {
      const std::string_view type = words_.word();
      words_.next();
      reading_.pass(':');
      if (!words_.is(':')) reading_.failExpected("\"::\"");
      return begin(word, type);
    }
    if (type_ == 0) reading_.failExpected("S1 or S2");
    words_ = start;
    columns_.push_back(reading_.column());
    reading_.pass(':');
    weights_.push_back(reading_.number());
  }

  // Stands at the second ':'.
  void begin(std::string_view name, std::string_view type) {
    append();
    if (!isWord(type, "S1") && !isWord(type, "S2"))
      reading_.fail(fmt::format("expected S1 or S2, found {}", quoted(type)));
    name_ = name;
    type_ = static_cast<unsigned char>(type[1] - '0');
    line_ = words_.line();
    words_.next();
  }

  // Gives the model the set that was read, if one was.
  void append() {
    if (columns_.size() == 1 || (columns_.empty() && type_ != 0)) {
      small_.see(name_, line_);
    } else if (type_ != 0) {
      const std::size_t start[] = {0, columns_.size()};
      const char* const names[] = {name_.c_str()};
      forLine(line_, [&] { appendSets(reading_.model, {1, &type_, start, columns_.data(), weights_.data(), names}); });
    }
    columns_.clear();
    weights_.clear();
    type_ = 0;
  }

  Reading& reading_;
  Words& words_;
  std::string name_;
  unsigned char type_ = 0;  // of the set that is being read, 0: none
  std::size_t line_ = 0;
  std::vector<int> columns_;
  std::vector<double> weights_;
  Seen& small_ = reading_.smallSets;
};

}  // namespace

void readSets(Reading& reading) { SetReader(reading).read(); }

}  // namespace kavo::reader::lp
