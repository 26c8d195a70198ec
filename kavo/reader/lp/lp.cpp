#include <fmt/format.h>

#include <array>
#include <utility>

#include "kavo/reader/attempt.h"
#include "kavo/reader/input.h"
#include "kavo/reader/lp/headers.h"
#include "kavo/reader/lp/sections.h"
#include "kavo/reader/number.h"
#include "kavo/reader/reader.h"

namespace kavo::reader {

namespace lp {

namespace {

// Sections come in the order of their stages, those of one stage in any.
constexpr int stageOf(Section section) {
  switch (section) {
    case Section::kObjective:
      return 0;
    case Section::kRows:
    case Section::kLazy:
    case Section::kCuts:
      return 1;
    case Section::kFunctions:
      return 3;
    case Section::kEnd:
      return 4;
    default:
      return 2;
  }
}

// Reads a file section by section.
class Driver {
 public:
  explicit Driver(Reading& reading) : reading_(reading), words_(reading.words), objectives_(reading), rows_(reading) {}

  void read() {
    for (words_.next(); !words_.atEnd();) {
      const Header& header = enter();
      if (header.section == Section::kEnd) return finish();
      readSection(header);
    }
    reading_.section = {};
    if (stage_ < 0) reading_.failExpected("section Minimize or Maximize");
    reading_.model.readNotes.emplace_back("the file ends without End; make sure that no part of it is missing");
    finish();
  }

 private:
  const Header& enter() {
    const Header* header = headerAt(words_);
    if (header == nullptr) {
      reading_.failExpected(stage_ < 0 ? "section Minimize or Maximize" : "the next section");
    }
    const int stage = stageOf(header->section);
    if (stage < stage_ || (stage == 0 && stage_ == 0)) {
      reading_.section = {};
      reading_.fail(stage == stage_ ? "there are two objectives; write \"multi-objectives\" behind Minimize or Maximize"
                                    : fmt::format("section {} comes too late", header->name));
    }
    if (stage_ < 0 && header->section == Section::kEnd) reading_.fail("the file holds no model");
    stage_ = stage;
    words_.next();
    if (!header->second.empty()) words_.next();
    reading_.section = header->name;
    return *header;
  }

  void readSection(const Header& header) {
    reading_.isLate = header.section == Section::kBounds || header.section == Section::kTypes;
    switch (header.section) {
      case Section::kObjective:
        return objectives_.read(header.value);
      case Section::kRows:
        return rows_.read(0);
      case Section::kLazy:
        return rows_.read(readLevel());
      case Section::kCuts:
        return rows_.read(-1);
      case Section::kBounds:
        return readBounds(reading_);
      case Section::kTypes:
        return readTypes(reading_, header.value);
      case Section::kSets:
        return readSets(reading_);
      case Section::kPieces:
        return objectives_.readPieces();
      default:
        finishTypes();
        return readFunctions(reading_);
    }
  }

  // The level of lazy constraints stands on the line of the header.
  int readLevel() {
    int level = 0;
    const std::string_view word = words_.word();
    const char *first = word.data(), *last = first + word.size();
    if (words_.beginsLine() || words_.atEnd() || words_.following() == ':' ||
        parseInteger(first, last, level) != last) {
      return 1;
    }
    if (level < 1 || level > kMostLevel) reading_.failExpected("a level from 1 to 3");
    words_.next();
    return level;
  }

  // Gives the columns their types before something needs them.
  void finishTypes() {
    if (!std::exchange(typesFinished_, true)) finishColumns(reading_);
  }

  void finish() {
    reading_.section = {};
    finishTypes();
    objectives_.finish();
    rows_.finish();
    reading_.finishNotes();
  }

  static constexpr int kMostLevel = 3;

  Reading& reading_;
  Words& words_;
  Objectives objectives_;
  RowSections rows_;
  int stage_ = -1;
  bool typesFinished_ = false;
};

Attempt readWithNumbers(const Input& input, bool areNames) {
  Reading reading(input, areNames);
  return attempt(
      reading, input.path(), [&] { Driver(reading).read(); },
      [areNames](const Failure& failure) {
        return !areNames && dynamic_cast<const NumberAsName*>(&failure) != nullptr;
      });
}

}  // namespace

}  // namespace lp

// A number in the place of a variable is a constant, unless the file has one where only a name can stand: then it is
// read again, with numbers as names.
Model readLp(const std::string& path) {
  const Input input(path);
  return firstModel(lp::readWithNumbers(input, false), [&] { return lp::readWithNumbers(input, true); });
}

}  // namespace kavo::reader
