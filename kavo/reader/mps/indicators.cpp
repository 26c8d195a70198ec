#include <fmt/format.h>

#include "kavo/model/append_nonlinear.h"
#include "kavo/reader/mps/sections.h"

namespace kavo::reader::mps {

void readIndicators(Reading& reading) {
  const Lines& line = reading.lines;
  const std::vector<int>& switches = reading.model.rows.indicator;
  for (int row = NameIndex::kNone; reading.lines.next(Fields::kTyped);) {
    if (line.count() != 4 || !isWord(line[0], "IF")) reading.failShape("IF, row, column, and 0 or 1");
    row = reading.rowOf(line[1], row + 1);
    if (row == NameIndex::kNone) reading.fail(fmt::format("row {} of type N cannot be switched", quoted(line[1])));
    const int column = reading.columnOf(line[2], NameIndex::kNone);
    const double value = reading.number(line[3]);
    if (value != 0 && value != 1) reading.fail(fmt::format("expected 0 or 1, found {}", quoted(line[3])));
    if (!switches.empty() && switches[static_cast<std::size_t>(row)] != NameIndex::kNone) {
      reading.fail(fmt::format("row {} is switched already", quoted(line[1])));
    }
    const auto on = static_cast<unsigned char>(value);
    forLine(line.number(), [&] { setIndicators(reading.model, {1, &row, &column, &on}); });
  }
}

}  // namespace kavo::reader::mps
