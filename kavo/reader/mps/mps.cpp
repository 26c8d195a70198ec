#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "kavo/reader/attempt.h"
#include "kavo/reader/failure.h"
#include "kavo/reader/input.h"
#include "kavo/reader/mps/sections.h"
#include "kavo/reader/number.h"
#include "kavo/reader/reader.h"

namespace kavo::reader {

namespace mps {

namespace {

enum class Kind {
  kName,
  kSense,
  kObjectiveName,
  kRows,
  kLazy,
  kCuts,
  kColumns,
  kRhs,
  kRanges,
  kBounds,
  kSets,
  kOtherSets,
  kQuadraticObjective,
  kQuadraticMatrix,
  kQuadraticSection,
  kQuadraticRow,
  kPiecewise,
  kIndicators,
  kGeneral,
  kEnd
};

// Sections come in the order of their stages, those of one stage in any; some may also come in the stage `until`.
struct Section {
  std::string_view name;
  Kind kind;
  int stage, until;
  bool repeats = false;
};

constexpr int kRowStage = 1, kColumnStage = 3, kFinishedStage = 5;  // columns and linear rows are finished
constexpr std::array<Section, 20> kSections = {{
    {"NAME", Kind::kName, 0, 0},
    {"OBJSENSE", Kind::kSense, 0, 0},
    {"OBJNAME", Kind::kObjectiveName, 0, 0},
    {"ROWS", Kind::kRows, kRowStage, kRowStage},
    {"LAZYCONS", Kind::kLazy, 2, 2, true},
    {"USERCUTS", Kind::kCuts, 2, 2, true},
    {"COLUMNS", Kind::kColumns, kColumnStage, kColumnStage},
    {"RHS", Kind::kRhs, 4, 4},
    {"RANGES", Kind::kRanges, 4, 4},
    {"BOUNDS", Kind::kBounds, 4, 4},
    {"SOS", Kind::kSets, 4, kFinishedStage},
    {"SETS", Kind::kOtherSets, 4, kFinishedStage},
    {"QUADOBJ", Kind::kQuadraticObjective, 4, kFinishedStage},
    {"QMATRIX", Kind::kQuadraticMatrix, 4, kFinishedStage},
    {"QSECTION", Kind::kQuadraticSection, 4, kFinishedStage, true},
    {"QCMATRIX", Kind::kQuadraticRow, 4, kFinishedStage, true},
    {"PWLOBJ", Kind::kPiecewise, 4, kFinishedStage},
    {"INDICATORS", Kind::kIndicators, kFinishedStage, kFinishedStage},
    {"GENCONS", Kind::kGeneral, kFinishedStage, kFinishedStage},
    {"ENDATA", Kind::kEnd, 6, 6},
}};

// What other programs write and this reader does not take.
constexpr std::array<std::string_view, 7> kNotTaken = {"SOS1",   "SOS2",   "CSECTION", "PWLNAM",
                                                       "PWLCON", "BRANCH", "SCENARIOS"};

constexpr std::array<std::pair<std::string_view, int>, 6> kSenses = {{{"MAX", KAVO_MAXIMIZE},
                                                                      {"MAXIMIZE", KAVO_MAXIMIZE},
                                                                      {"MAXIMISE", KAVO_MAXIMIZE},
                                                                      {"MIN", KAVO_MINIMIZE},
                                                                      {"MINIMIZE", KAVO_MINIMIZE},
                                                                      {"MINIMISE", KAVO_MINIMIZE}}};

// Reads a file section by section.
class Driver {
 public:
  explicit Driver(Reading& reading)
      : reading_(reading), lines_(reading.lines), rowSections_(reading.lines), sides_(reading) {}

  void read() {
    expectHeader();
    while (!lines_.atEnd()) {
      const Section& section = enter();
      if (section.stage >= kFinishedStage) finishLinear();
      if (section.kind == Kind::kEnd) return finish();
      readSection(section);
    }
    reading_.section = {};
    reading_.fail("the file ends without ENDATA, so a part of it is missing");
  }

 private:
  const Section& enter() {
    const std::string_view name = lines_[0];
    const auto isThis = [name](std::string_view other) { return isWord(name, other); };
    reading_.section = {};
    const auto* section =
        std::find_if(kSections.begin(), kSections.end(), [&](const Section& s) { return isThis(s.name); });
    if (section != kSections.end()) {
      checkOrder(*section);
      reading_.section = section->name;
      return *section;
    }
    if (std::none_of(kNotTaken.begin(), kNotTaken.end(), isThis)) {
      reading_.fail(fmt::format("there is no section {}; the lines of a section begin with a blank", quoted(name)));
    }
    throw Failure(KAVO_NOT_SUPPORTED, lines_.number(), fmt::format("section {} is not taken yet", name));
  }

  void checkOrder(const Section& section) {
    bool& seen = seen_[static_cast<std::size_t>(section.kind)];
    if (seen && !section.repeats) reading_.fail(fmt::format("section {} comes a second time", section.name));
    if (section.until < stage_) reading_.fail(fmt::format("section {} comes too late", section.name));
    if (section.stage > kRowStage && stage_ < kRowStage) reading_.fail("expected section ROWS first");
    if (section.stage > kColumnStage && stage_ < kColumnStage) reading_.fail("expected section COLUMNS first");
    seen = true;
    stage_ = std::max(stage_, section.stage);
  }

  void readSection(const Section& section) {
    const bool alone = lines_.count() == 1;
    switch (section.kind) {
      case Kind::kName:
        return readName();
      case Kind::kSense:
        return readSense();
      case Kind::kObjectiveName:
        reading_.wantedObjective = readWord("the name of a row");
        return expectHeader();
      case Kind::kLazy:
        return readRows(reading_, alone ? 1 : readLevel());
      case Kind::kQuadraticSection:
        return readQuadratic(reading_, QuadraticForm::kTriangle, lines_.rest());
      case Kind::kQuadraticRow:
        if (alone) reading_.fail("expected the name of a row behind QCMATRIX");
        return readQuadratic(reading_, QuadraticForm::kWhole, lines_.rest());
      default:
        break;
    }
    if (!alone)
      reading_.fail("expected nothing behind the name of the section; the lines of a section begin with a blank");
    readPlainSection(section.kind);
  }

  // One whose name stands alone.
  void readPlainSection(Kind kind) {
    switch (kind) {
      case Kind::kRows:
        rowSections_ = lines_;
        return readRows(reading_, 0);
      case Kind::kCuts:
        return readRows(reading_, -1);
      case Kind::kColumns:
        indexRows(reading_, rowSections_);
        return readColumns(reading_);
      case Kind::kRhs:
        return sides_.readRhs();
      case Kind::kRanges:
        return sides_.readRanges();
      case Kind::kSets:
      case Kind::kOtherSets:
        return readSets(reading_);
      case Kind::kQuadraticObjective:
        return readQuadratic(reading_, QuadraticForm::kTriangle, {});
      case Kind::kQuadraticMatrix:
        return readQuadratic(reading_, QuadraticForm::kHalf, {});
      case Kind::kPiecewise:
        return readPiecewiseObjective(reading_);
      case Kind::kIndicators:
        return readIndicators(reading_);
      case Kind::kGeneral:
        return readGeneralConstraints(reading_);
      default:
        return readBounds(reading_);
    }
  }

  // The rest of the line; some writers add the word FREE to tell the format.
  void readName() {
    std::string_view name = lines_.rest();
    if (lines_.count() > 2 && name.ends_with("FREE")) {
      name.remove_suffix(4);
      name = name.substr(0, name.find_last_not_of(" \t") + 1);
    }
    reading_.model.name = name;
    expectHeader();
  }

  void readSense() {
    const std::string_view word = readWord("MAX, MAXIMIZE, MIN or MINIMIZE");
    const auto* sense =
        std::find_if(kSenses.begin(), kSenses.end(), [word](const auto& known) { return isWord(word, known.first); });
    if (sense == kSenses.end()) {
      reading_.fail(fmt::format("expected MAX, MAXIMIZE, MIN or MINIMIZE, found {}", quoted(word)));
    }
    reading_.sense = sense->second;
    expectHeader();
  }

  // The only word of a section, in the line of the header or on the next one.
  std::string_view readWord(std::string_view expected) {
    if (lines_.count() == 2) return lines_[1];
    if (lines_.count() > 2 || !lines_.next(Fields::kWords) || lines_.count() != 1) reading_.failShape(expected);
    return lines_[0];
  }

  int readLevel() {
    int level = 0;
    const std::string_view field = lines_[1];
    const char *first = field.data(), *last = first + field.size();
    if (lines_.count() != 2 || parseInteger(first, last, level) != last || level < 1) {
      reading_.fail("expected nothing or a number from 1 on behind LAZYCONS");
    }
    return level;
  }

  void expectHeader() {
    if (lines_.next(Fields::kWords)) reading_.fail("expected the next section, its name at the beginning of the line");
  }

  // Ends what makes up the columns and linear rows.
  void finishLinear() {
    if (std::exchange(linearFinished_, true)) return;
    sides_.finish();
    finishColumns(reading_);
  }

  void finish() {
    Model& model = reading_.model;
    if (model.objectives.empty()) {
      model.readNotes.emplace_back("there is no objective (a row of type N): any feasible point is a solution");
    }
    if (!reading_.ranks.empty()) return rankObjectives(model, reading_.ranks);
    const std::size_t others = reading_.otherObjectives.size();
    if (others > 0) {
      model.readNotes.push_back(fmt::format("{} row{} of type N besides the objective {} {} left out: {}{}", others,
                                            &"s"[others == 1], quoted(reading_.objectiveName),
                                            others == 1 ? "is" : "are", quoted(reading_.otherObjectives.at(0)),
                                            others == 1 ? "" : ", ..."));
    }
  }

  Reading& reading_;
  Lines& lines_;
  Lines rowSections_;  // from the header of ROWS on
  Sides sides_;
  bool linearFinished_ = false;
  int stage_ = 0;
  std::array<bool, kSections.size()> seen_{};
};

Attempt readLaidOut(const Input& input, Layout layout) {
  Reading reading(input, layout);
  return attempt(
      reading, input.path(), [&] { Driver(reading).read(); },
      [&](const Failure& failure) {
        return layout == Layout::kBlanks && Lines::hasNameWithBlank(input, failure.line());
      });
}

}  // namespace

}  // namespace mps

// Fields are told apart by blanks, which is right for all free files and nearly all fixed ones. A line that cannot be
// read so, but has names with blanks inside when it is cut at the fixed columns, makes the whole file one of fixed
// columns. When that fails as well, the way that came further tells what is wrong.
Model readMps(const std::string& path) {
  const Input input(path);
  return firstModel(mps::readLaidOut(input, mps::Layout::kBlanks),
                    [&] { return mps::readLaidOut(input, mps::Layout::kColumns); });
}

}  // namespace kavo::reader
