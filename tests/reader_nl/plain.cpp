#include "tests/reader_nl/plain.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <limits>

#include "tests/reader_nl/nl_text.h"

namespace kavo::reader {

namespace {

std::string body(const Model& model, int expression) {
  return expression < 0 ? "" : withPowers(postfix(model, expression));
}

Plain::Terms terms(const int* column, const double* value, std::size_t count) {
  Plain::Terms result;
  for (std::size_t k = 0; k < count; ++k) result.emplace_back(column[k], value[k]);
  std::sort(result.begin(), result.end());
  return result;
}

std::vector<double> orUnknown(const std::vector<double>& start, std::size_t size) {
  return start.empty() ? std::vector<double>(size, kUnknown) : start;
}

}  // namespace

std::string withPowers(std::string text) {
  const std::pair<std::string, std::string> forms[] = {
      {" power with constant exponent", " power"}, {" power with constant base", " power"}, {" square", " n2 power"}};
  for (const auto& [from, to] : forms) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos;) text.replace(at, from.size(), to);
  }
  return text;
}

Plain plain(const Model& m) {
  Plain p;
  for (std::size_t i = 0; i < m.columns.size(); ++i) {
    p.bounds.emplace_back(m.columns.lower[i], m.columns.upper[i]);
    p.discrete += m.columns.type[i] != KAVO_CONTINUOUS;
  }
  for (std::size_t i = 0; i < m.rows.size(); ++i) {
    const std::size_t begin = m.rows.start[i];
    p.rows.push_back({m.rows.lower[i], m.rows.upper[i],
                      terms(m.rows.column.data() + begin, m.rows.value.data() + begin, m.rows.start[i + 1] - begin),
                      body(m, m.rows.expression.empty() ? -1 : m.rows.expression[i]), -1});
  }
  for (const Complementarity& c : m.complementarity) p.rows[static_cast<std::size_t>(c.row)].complements = c.column;
  for (const Objective& o : m.objectives) {
    p.objectives.push_back(
        {o.sense, o.constant, terms(o.column.data(), o.value.data(), o.column.size()), body(m, o.expression)});
  }
  for (int e : m.logical) p.logical.push_back(body(m, e));
  for (int e : m.definedVariables) p.defined.push_back(body(m, e));
  p.primal = orUnknown(m.primalStart, m.columns.size());
  p.dual = orUnknown(m.dualStart, m.rows.size());
  for (const Suffix& s : m.suffixes) {
    Plain::Terms values = terms(s.index.data(), s.value.data(), s.index.size());
    std::erase_if(values, [](const auto& value) { return value.second == 0; });
    p.suffixes.push_back({s.kind, s.name, s.real, values});
  }
  return p;
}

std::string Plain::text() const {
  std::string text = fmt::format("{} discrete\n", discrete);
  for (const auto& [lower, upper] : bounds) text += fmt::format("variable {} {}\n", lower, upper);
  for (const Row& r : rows) {
    text += fmt::format("row {} {} {} {} | {}\n", r.lower, r.upper, r.complements, r.terms, r.body);
  }
  for (const Objective& o : objectives) {
    text += fmt::format("objective {} {} {} | {}\n", o.sense, o.constant, o.terms, o.body);
  }
  text += fmt::format("logical {}\ndefined {}\nprimal {}\ndual {}\n", fmt::join(logical, "; "),
                      fmt::join(defined, "; "), primal, dual);
  std::vector<std::string> lines;
  for (const Suffix& s : suffixes)
    lines.push_back(fmt::format("suffix {} {} {} {}\n", s.kind, s.name, s.real, s.values));
  std::sort(lines.begin(), lines.end());
  for (const std::string& line : lines) text += line;
  return text;
}

}  // namespace kavo::reader
