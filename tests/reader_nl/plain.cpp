#include "tests/reader_nl/plain.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <limits>

namespace kavo::reader {

namespace {

// The text of one expression, made node by node.
class Postfix {
 public:
  explicit Postfix(const Model& model) : model_(model), all_(model.expressions) {}

  std::string text(int expression) {
    if (expression < 0) return "";
    const auto e = static_cast<std::size_t>(expression);
    for (std::size_t k = all_.start[e]; k < all_.start[e + 1]; ++k) {
      if (arity(all_.op[k]) == 0) {
        begins_.push_back(tokens_.size());
        tokens_.push_back(leaf(k));
      } else {
        operation(k);
      }
    }
    return fmt::format("{}", fmt::join(tokens_, " "));
  }

 private:
  std::string leaf(std::size_t k) const {
    const int index = all_.index[k];
    switch (all_.op[k]) {
      case KAVO_OP_NUMBER:
        return fmt::format("n{}", all_.value[k]);
      case KAVO_OP_STRING:
        return fmt::format("\"{}\"", all_.strings[static_cast<std::size_t>(index)]);
      case KAVO_OP_VARIABLE:
        return fmt::format("v{}", index);
      default:
        return fmt::format("v{}", index + static_cast<int>(model_.columns.size()));
    }
  }

  void operation(std::size_t k) {
    Operator op = all_.op[k];
    const int operands = arity(op) < 0 ? all_.index[k] : arity(op);
    const auto isNumber = [this](std::size_t token) { return tokens_[token].front() == 'n'; };
    if (op == KAVO_OP_POWER) {
      const std::size_t base = begins_[begins_.size() - 2], exponent = begins_.back();
      if (isNumber(exponent)) {
        op = tokens_[exponent] == "n2" ? KAVO_OP_SQUARE : KAVO_OP_POWER_CONSTANT_EXPONENT;
        if (op == KAVO_OP_SQUARE) tokens_.pop_back();
      } else if (isNumber(base)) {
        op = KAVO_OP_POWER_CONSTANT_BASE;
      }
    }
    begins_.resize(begins_.size() + 1 - static_cast<std::size_t>(operands));
    std::string token(operatorName(static_cast<int>(op)));
    if (op == KAVO_OP_CALL) token = model_.functions[static_cast<std::size_t>(all_.value[k])];
    if (arity(op) < 0) token += fmt::format("/{}", operands);
    tokens_.push_back(token);
  }

  const Model& model_;
  const Expressions& all_;
  std::vector<std::string> tokens_;
  std::vector<std::size_t> begins_;  // where each operand that waits for its operator begins
};

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
                      Postfix(m).text(m.rows.expression.empty() ? -1 : m.rows.expression[i]), -1});
  }
  for (const Complementarity& c : m.complementarity) p.rows[static_cast<std::size_t>(c.row)].complements = c.column;
  for (const Objective& o : m.objectives) {
    p.objectives.push_back(
        {o.sense, o.constant, terms(o.column.data(), o.value.data(), o.column.size()), Postfix(m).text(o.expression)});
  }
  for (int e : m.logical) p.logical.push_back(Postfix(m).text(e));
  for (int e : m.definedVariables) p.defined.push_back(Postfix(m).text(e));
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
