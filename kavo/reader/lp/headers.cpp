#include "kavo/reader/lp/headers.h"

#include <array>
#include <cstdint>

#include "kavo/kavo.h"
#include "kavo/reader/column_flags.h"
#include "kavo/reader/text.h"

namespace kavo::reader::lp {

namespace {

constexpr std::string_view kObjectiveName = "Objective", kRowsName = "Subject To", kLazyName = "Lazy Constraints",
                           kCutsName = "User Cuts", kBoundsName = "Bounds", kGeneralsName = "Generals",
                           kBinariesName = "Binaries", kSemiName = "Semi-Continuous", kSetsName = "SOS",
                           kPiecesName = "PWLObj", kFunctionsName = "General Constraints", kEndName = "End";

// Of two that begin with the same word the one with a second word comes first.
constexpr std::array<Header, 44> kTable = {{
    {"MINIMIZE", "", Section::kObjective, kObjectiveName, KAVO_MINIMIZE},
    {"MINIMISE", "", Section::kObjective, kObjectiveName, KAVO_MINIMIZE},
    {"MINIMUM", "", Section::kObjective, kObjectiveName, KAVO_MINIMIZE},
    {"MIN", "", Section::kObjective, kObjectiveName, KAVO_MINIMIZE},
    {"MAXIMIZE", "", Section::kObjective, kObjectiveName, KAVO_MAXIMIZE},
    {"MAXIMISE", "", Section::kObjective, kObjectiveName, KAVO_MAXIMIZE},
    {"MAXIMUM", "", Section::kObjective, kObjectiveName, KAVO_MAXIMIZE},
    {"MAX", "", Section::kObjective, kObjectiveName, KAVO_MAXIMIZE},
    {"SUBJECT", "TO", Section::kRows, kRowsName},
    {"SUCH", "THAT", Section::kRows, kRowsName},
    {"ST", "", Section::kRows, kRowsName},
    {"ST.", "", Section::kRows, kRowsName},
    {"S.T.", "", Section::kRows, kRowsName},
    {"LAZY", "CONSTRAINTS", Section::kLazy, kLazyName},
    {"USER", "CUTS", Section::kCuts, kCutsName},
    {"BOUNDS", "", Section::kBounds, kBoundsName},
    {"BOUND", "", Section::kBounds, kBoundsName},
    {"GENERAL", "CONSTRAINTS", Section::kFunctions, kFunctionsName},
    {"GENERAL", "CONSTRAINT", Section::kFunctions, kFunctionsName},
    {"GENCONS", "", Section::kFunctions, kFunctionsName},
    {"GENERALS", "", Section::kTypes, kGeneralsName, kIntegerFlag},
    {"GENERAL", "", Section::kTypes, kGeneralsName, kIntegerFlag},
    {"GEN", "", Section::kTypes, kGeneralsName, kIntegerFlag},
    {"INTEGERS", "", Section::kTypes, kGeneralsName, kIntegerFlag},
    {"INTEGER", "", Section::kTypes, kGeneralsName, kIntegerFlag},
    {"BINARIES", "", Section::kTypes, kBinariesName, kBinaryFlag},
    {"BINARY", "", Section::kTypes, kBinariesName, kBinaryFlag},
    {"BIN", "", Section::kTypes, kBinariesName, kBinaryFlag},
    {"SEMI-CONTINUOUS", "", Section::kTypes, kSemiName, kSemiFlag},
    {"SEMIS", "", Section::kTypes, kSemiName, kSemiFlag},
    {"SEMI", "", Section::kTypes, kSemiName, kSemiFlag},
    {"SOS", "", Section::kSets, kSetsName},
    {"PWLOBJ", "", Section::kPieces, kPiecesName},
    {"END", "", Section::kEnd, kEndName},
    {"GENS", "", Section::kTypes, kGeneralsName, kIntegerFlag, true},
    {"INTS", "", Section::kTypes, kGeneralsName, kIntegerFlag, true},
    {"INT", "", Section::kTypes, kGeneralsName, kIntegerFlag, true},
    {"BINS", "", Section::kTypes, kBinariesName, kBinaryFlag, true},
    {"SEMICONTINUOUS", "", Section::kTypes, kSemiName, kSemiFlag, true},
    {"SEC", "", Section::kTypes, kSemiName, kSemiFlag, true},
    {"SEMI-INTEGERS", "", Section::kTypes, "Semi-Integer", kSemiFlag | kIntegerFlag, true},
    {"SEMI-INTEGER", "", Section::kTypes, "Semi-Integer", kSemiFlag | kIntegerFlag, true},
    {"SEMIINTEGER", "", Section::kTypes, "Semi-Integer", kSemiFlag | kIntegerFlag, true},
    {"SIN", "", Section::kTypes, "Semi-Integer", kSemiFlag | kIntegerFlag, true},
}};

constexpr std::size_t kLongest = 15;

// Per letter the lengths of the first words that begin with it: most words that are no header are told by them.
constexpr std::array<std::uint32_t, 256> makeLengths() {
  std::array<std::uint32_t, 256> lengths{};
  for (const Header& header : kTable) {
    const auto capital = static_cast<unsigned char>(header.first[0]);
    lengths[capital] |= std::uint32_t{1} << header.first.size();
    lengths[capital + 32U] = lengths[capital];
  }
  return lengths;
}

constexpr std::array<std::uint32_t, 256> kLengths = makeLengths();

}  // namespace

const Header* headerAt(const Words& words) {
  const std::string_view word = words.word();
  if (word.empty() || word.size() > kLongest ||
      (kLengths[static_cast<unsigned char>(word[0])] >> word.size() & 1) == 0) {
    return nullptr;
  }
  const char following = words.following();
  if (following == ':') return nullptr;
  Words ahead = words;
  ahead.next();
  const std::string_view second = ahead.beginsLine() ? std::string_view() : ahead.word();
  for (const Header& header : kTable) {
    if (!isWord(word, header.first) || (!header.second.empty() && !isWord(second, header.second))) continue;
    const bool fits = header.alone ? words.beginsLine() && following == '\n'
                                   : following != '<' && following != '>' && following != '=';
    return fits ? &header : nullptr;
  }
  return nullptr;
}

}  // namespace kavo::reader::lp
