#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <utility>

#include "kavo/reader/general_constraint.h"
#include "kavo/reader/mps/sections.h"
#include "kavo/reader/node_tree.h"

namespace kavo::reader::mps {

namespace {

// How the lines of a constraint go on behind its header.
enum class Form {
  kList,    // the result, then the operands, one per line
  kPair,    // operand and result
  kNumber,  // the same, and a number on the next line
  kPoints,  // the same, and any number of lines with two coordinates
  kPowers,  // the same, and any number of lines with power and coefficient
  kTree,    // the result, then nodes with operator, column or number, and parent
};

struct Kind {
  std::string_view word;
  Form form;
  Function function = Function::kMax;
};

constexpr std::array<Kind, 18> kKinds = {{
    {"MAX", Form::kList, Function::kMax},
    {"MIN", Form::kList, Function::kMin},
    {"ABS", Form::kList, Function::kAbs},
    {"AND", Form::kList, Function::kAnd},
    {"OR", Form::kList, Function::kOr},
    {"NORM", Form::kList},
    {"PWL", Form::kPoints, Function::kPiecewiseLinear},
    {"POLY", Form::kPowers, Function::kPolynomial},
    {"EXP", Form::kPair, Function::kExp},
    {"EXPA", Form::kNumber, Function::kExpOfBase},
    {"LOG", Form::kPair, Function::kLog},
    {"LOGA", Form::kNumber, Function::kLogToBase},
    {"POW", Form::kNumber, Function::kPower},
    {"SIN", Form::kPair, Function::kSin},
    {"COS", Form::kPair, Function::kCos},
    {"TAN", Form::kPair, Function::kTan},
    {"LOGISTIC", Form::kPair, Function::kLogistic},
    {"NL", Form::kTree},
}};

constexpr std::array<std::pair<std::string_view, Function>, 4> kNorms = {
    {{"0", Function::kNorm0}, {"1", Function::kNorm1}, {"2", Function::kNorm2}, {"INF", Function::kNormInfinity}}};

// What Gurobi writes for constraints that are solved as it is told for all of them.
constexpr std::array<double, 5> kDefaultOptions = {0, 0.01, 0.001, -1, -1};

constexpr int kHighestPower = 100;  // a polynomial has a coefficient for each power below it, too

class ConstraintReader {
 public:
  explicit ConstraintReader(Reading& reading) : reading_(reading), line_(reading.lines) {}

  void read() {
    next();
    while (more_) {
      const Kind& kind = readHeader();
      header_ = line_.number();
      constraint_.columns.clear();
      constraint_.constants.clear();
      next();
      kind.form == Form::kTree ? readTree() : readFunction(kind.form);
    }
  }

 private:
  void next() { more_ = reading_.lines.next(Fields::kWords); }

  const Kind& readHeader() {
    const auto* kind =
        std::find_if(kKinds.begin(), kKinds.end(), [this](const Kind& k) { return isWord(line_[0], k.word); });
    if (kind == kKinds.end()) {
      reading_.fail(fmt::format("expected a constraint such as MAX, ABS, PWL or NL, found {}", quoted(line_[0])));
    }
    const bool isNorm = kind->word == "NORM";
    if (line_.count() != (isNorm ? 3 : 2)) {
      reading_.failShape(isNorm ? "NORM, which one, and the name of the constraint"
                                : fmt::format("{} and the name of the constraint", kind->word));
    }
    constraint_.function = isNorm ? readNorm() : kind->function;
    name_ = line_[line_.count() - 1];
    return *kind;
  }

  Function readNorm() const {
    const auto* norm =
        std::find_if(kNorms.begin(), kNorms.end(), [this](const auto& known) { return line_[1] == known.first; });
    if (norm == kNorms.end())
      reading_.fail(fmt::format("expected the norm 0, 1, 2 or INF, found {}", quoted(line_[1])));
    return norm->second;
  }

  // Whether there is another line that belongs to the constraint: with so many fields, the first of which is a number.
  bool isNumbers(std::size_t count) {
    return more_ && line_.count() == count && !std::isnan(reading_.numberOrNan(line_[0]));
  }

  int column(std::size_t field) {
    last_ = reading_.columnOf(line_[field], last_ + 1);
    return last_;
  }

  // The line with the result alone.
  void readResult() {
    if (!more_ || line_.count() != 1) reading_.failShape("the column that is the result");
    constraint_.result = column(0);
    next();
  }

  void readFunction(Form form) {
    if (form == Form::kList) {
      readResult();
      readOperands();
    } else {
      readOptions();
      readPair();
      readConstants(form);
    }
    forLine(header_, [this] { appendGeneralConstraint(reading_.model, constraint_, name_); });
  }

  void readOperands() {
    for (; more_ && line_.count() == 1; next()) {
      if (reading_.columnIndex.find(line_[0]) != NameIndex::kNone) {
        constraint_.columns.push_back(column(0));
        continue;
      }
      const double value = reading_.numberOrNan(line_[0]);
      if (std::isnan(value)) reading_.fail(fmt::format("expected a column or a number, found {}", quoted(line_[0])));
      constraint_.constants.push_back(value);
    }
  }

  // How Gurobi is to approximate this function: parameters of the solve, no part of the model.
  void readOptions() {
    if (!more_ || line_.count() != 1 + kDefaultOptions.size() || !isWord(line_[0], "OPTIONS")) return;
    bool isDefault = true;
    for (std::size_t i = 0; i < kDefaultOptions.size(); ++i) {
      isDefault = reading_.number(line_[i + 1]) == kDefaultOptions[i] && isDefault;
    }
    if (!isDefault && !optionsNoted_) {
      reading_.model.readNotes.push_back(
          fmt::format("FuncPieces, FuncPieceLength, FuncPieceError, FuncPieceRatio and FuncNonlinear of single "
                      "constraints, such as {} on line {}, are left out",
                      quoted(name_), line_.number()));
      optionsNoted_ = true;
    }
    next();
  }

  void readPair() {
    if (!more_ || line_.count() != 2) reading_.failShape("the column of the operand and that of the result");
    constraint_.columns.push_back(column(0));
    constraint_.result = column(1);
    next();
  }

  void readConstants(Form form) {
    if (form == Form::kNumber) {
      if (!more_ || line_.count() != 1) reading_.failShape("a number");
      constraint_.constants.push_back(reading_.number(line_[0]));
      next();
    }
    for (; form == Form::kPoints && isNumbers(2); next()) {
      constraint_.constants.push_back(reading_.finite(line_[0]));
      constraint_.constants.push_back(reading_.finite(line_[1]));
    }
    if (form == Form::kPowers) readPowers();
  }

  void readPowers() {
    std::array<double, kHighestPower + 1> coefficient;
    coefficient.fill(kUnknown);
    int highest = -1;
    for (; isNumbers(2); next()) {
      const int power =
          reading_.integer(line_[0], fmt::format("a power from 0 to {}", kHighestPower), 0, kHighestPower);
      double& place = coefficient[static_cast<std::size_t>(power)];
      if (!std::isnan(place)) reading_.fail(fmt::format("there is a coefficient of the power {} already", power));
      place = reading_.finite(line_[1]);
      highest = std::max(highest, power);
    }
    for (int power = highest; power >= 0; --power) {
      const double value = coefficient[static_cast<std::size_t>(power)];
      constraint_.constants.push_back(std::isnan(value) ? 0 : value);
    }
  }

  void readTree() {
    readResult();
    NodeTree tree(reading_.model);
    for (; more_ && line_.count() == 3 && !isWord(line_[0], "NORM"); next()) readNode(tree);
    forLine(header_, [&] {
      tree.finish();
      appendFunctionRow(reading_.model, constraint_.result, name_);
    });
  }

  void readNode(NodeTree& tree) {
    const int parent = reading_.integer(line_[2], "the number of the parent", -1, std::numeric_limits<int>::max());
    const bool isColumn = isWord(line_[0], "VARIABLE");
    const int operand = isColumn ? column(1) : 0;
    const double value = isColumn ? 0 : reading_.number(line_[1]);
    forLine(line_.number(), [&] {
      if (isColumn) {
        tree.addColumn(operand, parent);
      } else if (isWord(line_[0], "CONSTANT")) {
        tree.addNumber(value, parent);
      } else {
        tree.addOperator(line_[0], parent);
      }
    });
  }

  Reading& reading_;
  const Lines& line_;
  bool more_ = false;       // whether there is a current line
  std::string_view name_;   // of the constraint
  std::size_t header_ = 0;  // its first line
  GeneralConstraint constraint_;
  int last_ = NameIndex::kNone;  // the last column
  bool optionsNoted_ = false;
};

}  // namespace

void readGeneralConstraints(Reading& reading) { ConstraintReader(reading).read(); }

}  // namespace kavo::reader::mps
