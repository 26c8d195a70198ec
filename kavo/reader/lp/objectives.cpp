#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "kavo/reader/failure.h"
#include "kavo/reader/lp/headers.h"
#include "kavo/reader/lp/sections.h"
#include "kavo/reader/text.h"

namespace kavo::reader::lp {

namespace {

// The words for what a rank has.
constexpr std::array<std::string_view, 4> kRankWords = {"PRIORITY", "WEIGHT", "ABSTOL", "RELTOL"};
constexpr std::size_t kPriority = 0;

}  // namespace

void Objectives::read(int sense) {
  sense_ = sense;
  if (isWord(reading_.words.word(), "MULTI-OBJECTIVES") && !reading_.words.beginsLine()) {
    reading_.words.next();
    readSeveral();
  } else {
    readSum(reading_.label());
  }
}

void Objectives::readSeveral() {
  reading_.severalObjectives = true;
  while (!reading_.words.atEnd() && headerAt(reading_.words) == nullptr) {
    const std::string_view name = reading_.label();
    if (name.empty()) reading_.failExpected("the name of an objective and \":\"");
    ranks_.push_back(kDefaultRank);
    while (readRank()) {
    }
    readSum(name);
  }
}

// A word such as Priority=2.
bool Objectives::readRank() {
  const std::string_view word = reading_.words.word();
  const std::size_t sign = word.find('=');
  if (sign == std::string_view::npos) return false;
  const auto* found = std::find_if(kRankWords.begin(), kRankWords.end(),
                                   [&](std::string_view known) { return isWord(word.substr(0, sign), known); });
  if (found == kRankWords.end()) return false;
  const auto which = static_cast<std::size_t>(found - kRankWords.begin());
  const double value = numberOrNan(word.substr(sign + 1));
  if (!std::isfinite(value)) reading_.failExpected("a finite number behind \"=\"");
  if (which == kPriority && value != std::floor(value)) reading_.failExpected("a whole number behind \"=\"");
  ranks_.back()[which] = value;
  reading_.words.next();
  return true;
}

void Objectives::readSum(std::string_view name) {
  Model& model = reading_.model;
  sum_.clear();
  const Side side = sum_.read(Place::kObjective);
  const bool isNext = reading_.severalObjectives && reading_.words.following() == ':';
  if (!reading_.words.atEnd() && headerAt(reading_.words) == nullptr && !isNext) {
    reading_.failExpected("+, - or the next section");
  }
  if (!(std::abs(side.constant) < kInfinity))
    reading_.failBefore("the constant of the objective is 1e20 or more in size");
  Objective objective;
  objective.sense = sense_;
  objective.constant = side.constant;
  objective.name = name;
  sum_.moveLinear(objective.column, objective.value);
  model.objectives.push_back(std::move(objective));
  sum_.moveProducts(KAVO_OBJECTIVE, model.objectives.size() - 1);
}

void Objectives::readPieces() {
  while (!reading_.words.atEnd() && headerAt(reading_.words) == nullptr) {
    const std::size_t line = reading_.words.line();
    const int column = reading_.column();
    reading_.pass(':');
    pieces_.push_back({column, readPoints(reading_), line});
  }
}

void Objectives::finish() {
  Model& model = reading_.model;
  if (model.objectives.empty() && !pieces_.empty()) model.objectives.emplace_back();
  if (reading_.constant.isThere) finishConstant();
  checkPieces();
  if (!pieces_.empty()) addPiecewiseParts(model, pieces_);
  if (model.objectives.size() > 1) rankObjectives(model, ranks_);
  if (model.objectives.empty()) {
    model.readNotes.emplace_back("there is no objective: any feasible point is a solution");
  }
}

void Objectives::finishConstant() {
  const Reading::Constant& constant = reading_.constant;
  Objective& objective = reading_.model.objectives[0];
  const bool isColumn = reading_.columnIndex.find(kConstantName) != NameIndex::kNone;
  if (!isColumn && constant.lower == 1 && constant.upper == 1) {
    objective.constant += constant.coefficient;
    return;
  }
  const int column = reading_.columnOf(kConstantName);
  if (constant.flags != 0 || !isColumn) {
    reading_.model.columns.lower[static_cast<std::size_t>(column)] = constant.lower;
    reading_.model.columns.upper[static_cast<std::size_t>(column)] = constant.upper;
  }
  if (constant.coefficient == 0) return;
  objective.column.push_back(column);
  objective.value.push_back(constant.coefficient);
}

// That every column has one part at most, and those that the objective announces have one.
void Objectives::checkPieces() const {
  const Names& names = reading_.model.columns.names;
  std::vector<int> given;
  for (const PiecewisePart& part : pieces_) {
    if (reading_.severalObjectives) throw Failure(KAVO_FILE, part.line, "section PWLObj is for a single objective");
    given.push_back(part.column);
  }
  std::sort(given.begin(), given.end());
  if (const auto twice = std::adjacent_find(given.begin(), given.end()); twice != given.end()) {
    throw Failure(KAVO_FILE, pieces_.back().line,
                  fmt::format("section PWLObj has {} twice", quoted(names.at(static_cast<std::size_t>(*twice)))));
  }
  for (const auto& [column, line] : reading_.announced) {
    if (std::binary_search(given.begin(), given.end(), column)) continue;
    throw Failure(KAVO_FILE, line,
                  fmt::format("there is no section PWLObj that gives the points of {}",
                              quoted(names.at(static_cast<std::size_t>(column)))));
  }
}

std::vector<double> readPoints(Reading& reading) {
  std::vector<double> points;
  while (reading.words.first() == '(') {
    reading.pass('(');
    points.push_back(reading.finite(true));
    reading.pass(',');
    points.push_back(reading.finite(true));
    reading.pass(')');
  }
  return points;
}

}  // namespace kavo::reader::lp
