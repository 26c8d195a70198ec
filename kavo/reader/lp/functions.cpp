#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "kavo/reader/failure.h"
#include "kavo/reader/general_constraint.h"
#include "kavo/reader/lp/headers.h"
#include "kavo/reader/lp/sections.h"
#include "kavo/reader/node_tree.h"
#include "kavo/reader/number.h"
#include "kavo/reader/text.h"

namespace kavo::reader::lp {

namespace {

// What stands behind the word of a function.
enum class Form {
  kList,      // ( x , y , ... ), maybe with numbers
  kNorm,      // ( which ) ( x , y , ... )
  kPoints,    // ( x ) : points
  kSum,       // ( 3 x ^ 2 + 2 x + 1 )
  kBase,      // ( number ^ x )
  kExponent,  // ( x ^ number )
  kTree,      // : nodes
};

struct Kind {
  std::string_view word;
  Form form;
  Function function = Function::kMax;
};

constexpr std::array<Kind, 17> kKinds = {{
    {"MAX", Form::kList, Function::kMax},
    {"MIN", Form::kList, Function::kMin},
    {"ABS", Form::kList, Function::kAbs},
    {"AND", Form::kList, Function::kAnd},
    {"OR", Form::kList, Function::kOr},
    {"NORM", Form::kNorm},
    {"PWL", Form::kPoints, Function::kPiecewiseLinear},
    {"POLY", Form::kSum, Function::kPolynomial},
    {"EXP", Form::kList, Function::kExp},
    {"EXPA", Form::kBase, Function::kExpOfBase},
    {"LOG", Form::kList, Function::kLog},
    {"POW", Form::kExponent, Function::kPower},
    {"SIN", Form::kList, Function::kSin},
    {"COS", Form::kList, Function::kCos},
    {"TAN", Form::kList, Function::kTan},
    {"LOGISTIC", Form::kList, Function::kLogistic},
    {"NL", Form::kTree},
}};
constexpr std::string_view kLogToBase = "LOG_";

constexpr std::array<std::pair<std::string_view, Function>, 5> kNorms = {{{"0", Function::kNorm0},
                                                                          {"1", Function::kNorm1},
                                                                          {"2", Function::kNorm2},
                                                                          {"INF", Function::kNormInfinity},
                                                                          {"INFINITY", Function::kNormInfinity}}};

constexpr std::array<std::string_view, 5> kAttributes = {"FUNCPIECES", "FUNCPIECELENGTH", "FUNCPIECEERROR",
                                                         "FUNCPIECERATIO", "FUNCNONLINEAR"};

constexpr double kHighestPower = 100;  // a polynomial has a coefficient for each power below it, too

class FunctionReader {
 public:
  explicit FunctionReader(Reading& reading) : reading_(reading), words_(reading.words) {}

  void read() {
    while (!words_.atEnd() && headerAt(words_) == nullptr) readConstraint();
  }

 private:
  void readConstraint() {
    line_ = words_.line();
    constraint_.columns.clear();
    constraint_.constants.clear();
    name_ = reading_.label();
    if (words_.first() == '(') readAttributes();
    constraint_.result = reading_.column();
    if (readRelation(reading_, "") != Relation::kEqual)
      reading_.failBefore("expected = behind the result of a function");
    const std::string_view word = words_.word();
    if (const std::size_t length = word.find('('); length != std::string_view::npos && length > 0) words_.cut(length);
    const Form form = readWord();
    if (form == Form::kTree) return readTree();
    readOperands(form);
    forLine(line_, [&] { appendGeneralConstraint(reading_.model, constraint_, name_); });
  }

  // How Gurobi is to approximate this function: parameters of the solve, no part of the model.
  void readAttributes() {
    reading_.attributes.see(name_.empty() ? words_.word() : name_, words_.line());
    reading_.pass('(');
    do {
      const std::string_view word = words_.word().substr(0, words_.word().find('='));
      if (std::none_of(kAttributes.begin(), kAttributes.end(), [&](auto known) { return isWord(word, known); })) {
        reading_.failExpected("an attribute such as FuncPieces=4");
      }
      words_.cut(word.size());
      words_.next();
      reading_.pass('=');
      reading_.number(true);
    } while (words_.first() != ')');
    reading_.pass(')');
  }

  // The word of a function; LOG_2.5 has its base in it.
  Form readWord() {
    const std::string_view word = words_.word();
    if (word.size() > kLogToBase.size() && isWord(word.substr(0, kLogToBase.size()), kLogToBase)) {
      words_.cut(kLogToBase.size());
      words_.next();
      constraint_.constants.push_back(reading_.finite(true));
      constraint_.function = Function::kLogToBase;
      return Form::kList;
    }
    const auto* kind =
        std::find_if(kKinds.begin(), kKinds.end(), [word](const Kind& known) { return isWord(word, known.word); });
    if (kind == kKinds.end()) reading_.failExpected("a function such as MAX, PWL, EXP or NL");
    constraint_.function = kind->function;
    words_.next();
    return kind->form;
  }

  void readOperands(Form form) {
    if (form == Form::kNorm) readNorm();
    reading_.pass('(');
    switch (form) {
      case Form::kSum:
        readPolynomial();
        break;
      case Form::kBase:
        constraint_.constants.push_back(reading_.finite());
        reading_.pass('^');
        constraint_.columns.push_back(operand());
        break;
      case Form::kExponent:
        constraint_.columns.push_back(operand());
        reading_.pass('^');
        constraint_.constants.push_back(reading_.finite(true));
        break;
      default:
        readList();
    }
    reading_.pass(')');
    if (form != Form::kPoints) return;
    reading_.pass(':');
    constraint_.constants = readPoints(reading_);
  }

  void readNorm() {
    reading_.pass('(');
    const std::string_view word = words_.word().substr(0, words_.word().find(')'));
    const auto* norm =
        std::find_if(kNorms.begin(), kNorms.end(), [word](const auto& known) { return isWord(word, known.first); });
    if (norm == kNorms.end()) reading_.failExpected("the norm 0, 1, 2 or INF");
    constraint_.function = norm->second;
    words_.cut(word.size());
    words_.next();
    reading_.pass(')');
  }

  void readList() {
    while (words_.first() != ')' || !(constraint_.columns.empty() && constraint_.constants.empty())) {
      cutOperand();
      const bool isKnown = reading_.columnIndex.find(words_.word()) != NameIndex::kNone;
      if (isKnown || (reading_.isName() && !reading_.isNumber())) {
        constraint_.columns.push_back(operand());
      } else {
        constraint_.constants.push_back(reading_.number());
      }
      if (words_.first() == ')') return;
      reading_.pass(',');
    }
  }

  int operand() {
    cutOperand();
    return reading_.column();
  }

  // Names may hold commas and brackets. A comma at the end of a word and a parenthesis that closes none of the word
  // belong to the list; a comma elsewhere belongs to a name when it stands in brackets, or the name is known.
  void cutOperand() {
    const std::string_view word = words_.word();
    std::size_t length = 0;
    bool hasComma = false;
    for (int depth = 0; length < word.size(); ++length) {
      const char c = word[length];
      if (c == ')' && depth == 0) break;
      hasComma = hasComma || (c == ',' && depth == 0 && length + 1 < word.size());
      depth += c == '(' || c == '[' ? 1 : c == ')' || c == ']' ? -1 : 0;
    }
    if (length == word.size() && word.ends_with(',')) --length;
    if (length == 0) reading_.failExpected("a variable or a number");
    const std::string_view operand = word.substr(0, length);
    if (hasComma && reading_.columnIndex.find(operand) == NameIndex::kNone) {
      reading_.fail(
          fmt::format("there is no variable {}; blanks must stand around the commas of a list", quoted(operand)));
    }
    if (length < word.size()) words_.cut(length);
  }

  // Coefficients of powers of one variable, in any order.
  void readPolynomial() {
    std::vector<double>& constants = constraint_.constants;  // that of the highest power first
    std::vector<double> coefficients;                        // that of the power 0 first; NaN: none yet
    do {
      readPower(coefficients);
    } while (words_.first() != ')');
    if (constraint_.columns.empty()) reading_.failBefore("expected a variable in POLY");
    constants.assign(coefficients.rbegin(), coefficients.rend());
    std::replace_if(constants.begin(), constants.end(), [](double value) { return std::isnan(value); }, 0.0);
  }

  void readPower(std::vector<double>& coefficients) {
    double sign = 1;
    if (words_.is('-') || words_.is('+')) {
      sign = words_.is('-') ? -1 : 1;
      words_.next();
    } else if (!coefficients.empty() && words_.first() != '-' && words_.first() != '+') {
      reading_.failExpected("+, - or \")\"");
    }
    double power = 0;
    const bool isVariable = reading_.isName() && (!reading_.isNumber() || words_.following() == '^');
    const double coefficient = sign * (isVariable ? 1 : reading_.finite(true));
    if (reading_.isName() && words_.first() != ')') power = readVariable();
    const auto position = static_cast<std::size_t>(power);
    if (position >= coefficients.size()) coefficients.resize(position + 1, kUnknown);
    if (!std::isnan(coefficients[position])) reading_.failBefore(fmt::format("POLY has the power {} twice", power));
    coefficients[position] = coefficient;
  }

  // The variable of a polynomial and its power.
  double readVariable() {
    const int column = operand();
    if (constraint_.columns.empty()) constraint_.columns.push_back(column);
    if (column != constraint_.columns[0]) reading_.failBefore("POLY takes powers of one variable");
    if (!words_.is('^')) return 1;
    words_.next();
    const std::string_view word = words_.word();
    const double power = reading_.number(true);
    if (power != std::floor(power) || power < 0 || power > kHighestPower) {
      reading_.failBefore(fmt::format("expected a power from 0 to {}, found {}", kHighestPower, quoted(word)));
    }
    return power;
  }

  // ( operator , number or column , parent ) ...
  void readTree() {
    reading_.pass(':');
    NodeTree tree(reading_.model);
    while (words_.first() == '(') readNode(tree);
    forLine(line_, [&] {
      tree.finish();
      appendFunctionRow(reading_.model, constraint_.result, name_);
    });
  }

  void readNode(NodeTree& tree) {
    const std::size_t line = words_.line();
    reading_.pass('(');
    cutOperand();
    const std::string_view word = words_.word();
    words_.next();
    reading_.pass(',');
    const bool isColumn = isWord(word, "VARIABLE");
    cutOperand();
    const int column = isColumn ? reading_.column() : NameIndex::kNone;
    const double value = isColumn ? 0 : reading_.number();
    reading_.pass(',');
    const int parent = readParent();
    reading_.pass(')');
    forLine(line, [&] {
      if (isColumn) {
        tree.addColumn(column, parent);
      } else if (isWord(word, "CONSTANT")) {
        tree.addNumber(value, parent);
      } else {
        tree.addOperator(word, parent);
      }
    });
  }

  int readParent() {
    int parent = 0;
    const char* first = words_.word().data();
    const char* end = parseInteger(first, first + words_.word().size(), parent);
    if (end == nullptr) reading_.failExpected("the number of the parent");
    words_.cut(static_cast<std::size_t>(end - first));
    words_.next();
    return parent;
  }

  Reading& reading_;
  Words& words_;
  std::string_view name_;
  std::size_t line_ = 0;
  GeneralConstraint constraint_;
};

}  // namespace

void readFunctions(Reading& reading) { FunctionReader(reading).read(); }

}  // namespace kavo::reader::lp
