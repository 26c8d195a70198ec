#include <fmt/format.h>

#include <cmath>
#include <string>
#include <vector>

#include "kavo/model/append_nonlinear.h"
#include "kavo/reader/mps/sections.h"

namespace kavo::reader::mps {

namespace {

class SetReader {
 public:
  explicit SetReader(Reading& reading) : reading_(reading) {}

  void read() {
    while (reading_.lines.next(Fields::kWords)) {
      if (isHeader()) {
        end();
        begin();
      } else {
        addMember();
      }
    }
    end();
    if (leftOut_ == 0) return;
    reading_.model.readNotes.push_back(
        fmt::format("{} special ordered set{} ({}{}) of less than two columns, which restrict{} nothing, {} left out",
                    leftOut_, &"s"[leftOut_ == 1], quoted(firstLeftOut_), leftOut_ == 1 ? "" : " first",
                    leftOut_ == 1 ? "s" : "", leftOut_ == 1 ? "is" : "are"));
  }

 private:
  // Whether the line begins a set. Columns may be named like a type; what begins behind the first blank of a line is a
  // type even so.
  bool isHeader() const {
    const std::string_view word = reading_.lines[0];
    const bool isType = word.size() == 2 && upper(word[0]) == 'S' && word[1] >= '0' && word[1] <= '9';
    return isType && (reading_.lines.indent() == 1 || reading_.columnIndex.find(word) == NameIndex::kNone);
  }

  // Type; the name of the sets of the file, if any; the name of the set; its priority, which solvers do not use.
  void begin() {
    const Lines& line = reading_.lines;
    const std::size_t count = line.count();
    if (count > 4) reading_.failShape("S1 or S2 and the name of the set");
    if (line[0][1] != '1' && line[0][1] != '2') {
      reading_.fail(fmt::format("expected S1 or S2 as the type of a set, found {}", quoted(line[0])));
    }
    type_ = static_cast<unsigned char>(line[0][1] - '0');
    const bool isPriority = count == 3 && !std::isnan(numberOrNan(line[2]));
    name_ = count == 1 ? std::string_view() : line[count == 2 || isPriority ? 1 : 2];
    if (count == 4) reading_.number(line[3]);
    header_ = line.number();
    column_.clear();
    weight_.clear();
  }

  void addMember() {
    const Lines& line = reading_.lines;
    if (type_ == 0) reading_.fail("expected S1 or S2 and the name of a set before its members");
    if (line.count() != 2) reading_.failShape("column and weight, or S1 or S2 and the name of a set");
    column_.push_back(reading_.columnOf(line[0], column_.empty() ? NameIndex::kNone : column_.back() + 1));
    weight_.push_back(reading_.number(line[1]));
  }

  void end() {
    if (type_ == 0) return;
    if (column_.size() < 2) {
      if (leftOut_++ == 0) firstLeftOut_ = name_;
      return;
    }
    const std::string name(name_);
    const char* const names[] = {name.c_str()};
    const std::size_t start[] = {0, column_.size()};
    forLine(header_, [&] { appendSets(reading_.model, {1, &type_, start, column_.data(), weight_.data(), names}); });
  }

  Reading& reading_;
  unsigned char type_ = 0;  // of the current set; 0 before the first
  std::string_view name_;
  std::size_t header_ = 0;  // its line
  std::vector<int> column_;
  std::vector<double> weight_;
  std::size_t leftOut_ = 0;  // sets with too few members
  std::string_view firstLeftOut_;
};

}  // namespace

void readSets(Reading& reading) { SetReader(reading).read(); }

}  // namespace kavo::reader::mps
