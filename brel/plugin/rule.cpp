#include "brel/plugin/rule.h"

#include <fmt/core.h>
#include <muParser.h>

#include <array>
#include <cmath>

#include "tav/util/exception.h"

namespace brel::plugin {
namespace {

constexpr std::array kNames{"time", "nodes", "incumbent", "bound", "gap", "solutions"};

bool truth(double value) { return !std::isnan(value) && value != 0; }

// Of what cannot be read, the parser hands out all the rest.
std::string firstWord(const std::string& text) { return text.substr(0, text.find(' ')); }

std::string reasonOf(const mu::ParserError& error) {
  switch (error.GetCode()) {
    case mu::ecUNASSIGNABLE_TOKEN:
      return fmt::format("{} is not known", firstWord(error.GetToken()));
    case mu::ecMISSING_PARENS:
      return "a parenthesis is not closed";
    case mu::ecUNEXPECTED_EOF:
      return "something is missing at the end";
    case mu::ecSTR_RESULT:
      return "a text is no truth value";
    default:
      return error.GetToken().empty() ? error.GetMsg() : fmt::format("{} is out of place", error.GetToken());
  }
}

[[noreturn]] void refuse(const std::string& expression, int position, const std::string& why) {
  const std::string place = position < 0 ? "" : fmt::format("at character {}: ", position + 1);
  throw tav::UserException(fmt::format(
      "the stop expression \"{}\" cannot be used: {}{}; it may use time, nodes, incumbent, bound, gap, solutions, "
      "numbers, + - * / ^ < <= > >= == != && || ! and functions such as min and abs",
      expression, place, why));
}

}  // namespace

// The operators are our own: those of the library would let an expression assign to names, and take an unknown number
// (NaN) for different from every other.
class Rule::Parser : public mu::Parser {
 public:
  explicit Parser(const std::string& expression) {
    for (std::size_t i = 0; i < kNames.size(); ++i) DefineVar(kNames[i], &values_[i]);
    EnableBuiltInOprt(false);
    defineOperators();
    SetExpr(expression);
  }

  void set(const watch::Progress& now) {
    values_ = {now.seconds, now.nodes, now.incumbent, now.bound, now.gap, now.solutions};
  }

 private:
  void defineOperators() {
    using mu::value_type;
    const auto define = [this](const char* name, mu::fun_type2 function, unsigned priority) {
      DefineOprt(name, function, priority);
    };
    define("||", [](value_type a, value_type b) -> value_type { return truth(a) || truth(b); }, mu::prLOR);
    define("&&", [](value_type a, value_type b) -> value_type { return truth(a) && truth(b); }, mu::prLAND);
    define("<", [](value_type a, value_type b) -> value_type { return a < b; }, mu::prCMP);
    define("<=", [](value_type a, value_type b) -> value_type { return a <= b; }, mu::prCMP);
    define(">", [](value_type a, value_type b) -> value_type { return a > b; }, mu::prCMP);
    define(">=", [](value_type a, value_type b) -> value_type { return a >= b; }, mu::prCMP);
    define("==", [](value_type a, value_type b) -> value_type { return a == b; }, mu::prCMP);
    define("!=", [](value_type a, value_type b) -> value_type { return a < b || a > b; }, mu::prCMP);
    define("+", [](value_type a, value_type b) -> value_type { return a + b; }, mu::prADD_SUB);
    define("-", [](value_type a, value_type b) -> value_type { return a - b; }, mu::prADD_SUB);
    define("*", [](value_type a, value_type b) -> value_type { return a * b; }, mu::prMUL_DIV);
    define("/", [](value_type a, value_type b) -> value_type { return a / b; }, mu::prMUL_DIV);
    DefineOprt("^", [](value_type a, value_type b) -> value_type { return std::pow(a, b); }, mu::prPOW, mu::oaRIGHT);
    DefineInfixOprt("!", [](value_type a) -> value_type { return !truth(a); });
  }

  std::array<double, kNames.size()> values_{};
};

Rule::Rule(const std::string& expression) {
  try {
    parser_ = std::make_unique<Parser>(expression);
    parser_->set({});
    parser_->Eval();
  } catch (const mu::ParserError& error) {
    refuse(expression, error.GetPos(), reasonOf(error));
  }
  if (parser_->GetNumResults() != 1) refuse(expression, -1, "it is a list");
}

Rule::~Rule() = default;

bool Rule::isTrue(const watch::Progress& now) {
  parser_->set(now);
  return truth(parser_->Eval());
}

}  // namespace brel::plugin
