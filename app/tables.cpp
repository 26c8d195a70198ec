#include "app/tables.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "app/words.h"

namespace app {

namespace {

struct Column {
  const char* title;
  int quantity;
};

constexpr int kDigits = 8;
constexpr std::size_t kNumber = 15;   // the longest number of 8 digits
constexpr std::size_t kLongest = 32;  // a name that is longer pushes its numbers to the right

std::string rangeTable(const Session& session, int kind, const char* heading, const std::vector<Column>& columns) {
  std::vector<Session::Values> values;
  bool isRange = false;  // besides the value
  std::size_t count = 0;
  for (const Column& column : columns) {
    values.push_back(session.values(column.quantity));
    count = std::max(count, values.back().count);
    isRange = isRange || (column.quantity >= KAVO_COST_LOW && values.back().first != nullptr);
  }
  if (!isRange || count == 0) return {};
  std::size_t longest = std::string_view(heading).size();
  for (std::size_t i = 0; i < count; ++i) longest = std::max(longest, std::min(session.name(kind, i).size(), kLongest));
  std::string text = fmt::format("\n{:<{}}", heading, longest);
  for (const Column& column : columns) text += fmt::format(" {:>{}}", column.title, kNumber);
  text += '\n';
  for (std::size_t i = 0; i < count; ++i) {
    text += fmt::format("{:<{}}", session.name(kind, i), longest);
    for (const Session::Values& column : values) {
      const std::string number = column.first == nullptr ? "" : numberText(column.first[i], kDigits);
      text += fmt::format(" {:>{}}", number.empty() ? "-" : number, kNumber);
    }
    text += '\n';
  }
  return text;
}

}  // namespace

std::string valueTable(const Session& session, int quantity) {
  const Session::Values values = session.values(quantity);
  const bool columns = quantity <= KAVO_REDUCED_COST;
  if (values.first == nullptr) return {};
  std::string lines = columns ? "\nvariable  value\n" : "\nrow  dual\n";
  for (std::size_t i = 0; i < values.count; ++i) {
    lines += fmt::format("{}  {}\n", session.name(columns ? KAVO_COLUMN : KAVO_ROW, i), values.first[i]);
  }
  return lines;
}

std::string rangeTables(const Session& session) {
  return rangeTable(session, KAVO_COLUMN, "variable",
                    {{"value", KAVO_PRIMAL},
                     {"cost from", KAVO_COST_LOW},
                     {"to", KAVO_COST_HIGH},
                     {"lower from", KAVO_LOWER_LOW},
                     {"to", KAVO_LOWER_HIGH},
                     {"upper from", KAVO_UPPER_LOW},
                     {"to", KAVO_UPPER_HIGH}}) +
         rangeTable(session, KAVO_ROW, "row",
                    {{"activity", KAVO_ACTIVITY}, {"side from", KAVO_SIDE_LOW}, {"to", KAVO_SIDE_HIGH}});
}

}  // namespace app
