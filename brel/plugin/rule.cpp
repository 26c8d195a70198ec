#include "brel/plugin/rule.h"

#include <fmt/core.h>
#include <muParser.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>

#include "tav/util/exception.h"

namespace brel::plugin {
namespace {

constexpr std::array kNames{"time", "nodes", "incumbent", "bound", "gap", "solutions"};

// Truth values are numbers: 0 is false, NaN is unknown, anything else is true.
constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

bool isTruth(double value) { return !std::isnan(value) && value != 0; }

double eitherOf(double a, double b) {
  if (isTruth(a) || isTruth(b)) return 1;
  return std::isnan(a) || std::isnan(b) ? kUnknown : 0;
}

double bothOf(double a, double b) {
  if (a == 0 || b == 0) return 0;
  return std::isnan(a) || std::isnan(b) ? kUnknown : 1;
}

// What would have an answer for an unknown number, too.
template <class Function>
double ofKnown(double a, double b, Function function) {
  return std::isnan(a) || std::isnan(b) ? kUnknown : static_cast<double>(function(a, b));
}

double signOf(double value) { return std::isnan(value) ? kUnknown : (value > 0) - (value < 0); }

double power(double a, double b) { return std::pow(a, b); }
double least(double a, double b) { return std::min(a, b); }
double largest(double a, double b) { return std::max(a, b); }

// Of several numbers; the parser sees to it that there is one.
template <double function(double, double)>
double foldKnown(const double* values, int count) {
  return std::accumulate(values + 1, values + count, *values,
                         [](double a, double b) { return ofKnown(a, b, function); });
}

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
      "the expression \"{}\" cannot be used: {}{}; it may use time, nodes, incumbent, bound, gap, solutions, "
      "numbers, + - * / ^ < <= > >= == != && || ! and functions such as min and abs",
      expression, place, why));
}

}  // namespace

// The operators and some functions are our own: those of the library would let an expression assign to names, and have
// answers for unknown numbers (NaN).
class Rule::Parser : public mu::Parser {
 public:
  explicit Parser(const std::string& expression) {
    for (std::size_t i = 0; i < kNames.size(); ++i) DefineVar(kNames[i], &values_[i]);
    EnableBuiltInOprt(false);
    defineOperators();
    defineFunctions();
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
    define("||", eitherOf, mu::prLOR);
    define("&&", bothOf, mu::prLAND);
    define("<", [](value_type a, value_type b) { return ofKnown(a, b, std::less<>()); }, mu::prCMP);
    define("<=", [](value_type a, value_type b) { return ofKnown(a, b, std::less_equal<>()); }, mu::prCMP);
    define(">", [](value_type a, value_type b) { return ofKnown(a, b, std::greater<>()); }, mu::prCMP);
    define(">=", [](value_type a, value_type b) { return ofKnown(a, b, std::greater_equal<>()); }, mu::prCMP);
    define("==", [](value_type a, value_type b) { return ofKnown(a, b, std::equal_to<>()); }, mu::prCMP);
    define("!=", [](value_type a, value_type b) { return ofKnown(a, b, std::not_equal_to<>()); }, mu::prCMP);
    define("+", [](value_type a, value_type b) -> value_type { return a + b; }, mu::prADD_SUB);
    define("-", [](value_type a, value_type b) -> value_type { return a - b; }, mu::prADD_SUB);
    define("*", [](value_type a, value_type b) -> value_type { return a * b; }, mu::prMUL_DIV);
    define("/", [](value_type a, value_type b) -> value_type { return a / b; }, mu::prMUL_DIV);
    DefineOprt("^", [](value_type a, value_type b) { return ofKnown(a, b, power); }, mu::prPOW, mu::oaRIGHT);
    DefineInfixOprt("!", [](value_type a) -> value_type { return std::isnan(a) ? kUnknown : a == 0; });
  }

  void defineFunctions() {
    DefineFun("min", foldKnown<least>);
    DefineFun("max", foldKnown<largest>);
    DefineFun("sign", signOf);
  }

  std::array<double, kNames.size()> values_{};
};

Rule::Rule(const std::string& expression) {
  // The library's own choice, a ? b : c, would take an unknown condition for true.
  if (const auto at = expression.find('?'); at != std::string::npos) {
    refuse(expression, static_cast<int>(at), "? is not known");
  }
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
  return isTruth(parser_->Eval());
}

}  // namespace brel::plugin
