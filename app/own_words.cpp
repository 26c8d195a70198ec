#include "app/own_words.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

#include "app/failure.h"
#include "app/words.h"

namespace app {

namespace {

constexpr const char* kGroup = "Command line";

enum Word { kOutlev, kLogFile, kObjno, kWantSol, kBRatio, kPoolStub, kCount };

// By the number of the word.
constexpr std::array<kavo_setting_info, kCount> kInfos{{
    {"outlev", KAVO_SETTING_INT, "1", 0, 100, kGroup,
     "1 or more shows the solver's log, 0 does not. With -AMPL nothing is shown unless it is set; --quiet always hides "
     "the log."},
    {"logfile", KAVO_SETTING_TEXT, nullptr, 0, 0, kGroup, "A file for the solver's log, like --log."},
    {"objno", KAVO_SETTING_INT, "1", 0, 1000000000, kGroup,
     "The objective to solve: 0 none (any feasible point will do), 1 the first, and so on."},
    {"wantsol", KAVO_SETTING_INT, "1", 0, kWriteSol + kPrintVariables + kPrintDuals + kNoSummary, kGroup,
     "A sum of 1: write a solution file, 2: print the variables, 4: print the duals, 8: print no summary. It has no "
     "meaning with -AMPL."},
    {"bratio", KAVO_SETTING_DOUBLE, "0", 0, 1, kGroup,
     "The share of variables and rows for which a start basis must say something for it to be used; 1 withholds it, "
     "and the start values too."},
    {"poolstub", KAVO_SETTING_TEXT, nullptr, 0, 0, kGroup,
     "Writes the points of the solution pool, the best first, to the files whose names are this text followed by "
     "1.sol, 2.sol, and so on. Asks for the pool, as pool=1 does; PoolSearchMode and PoolSolutions say what it holds."},
}};

Word wordOf(const char* name) {
  const auto* found = std::find_if(kInfos.begin(), kInfos.end(),
                                   [&](const kavo_setting_info& info) { return isSameWord(info.name, name); });
  return static_cast<Word>(found - kInfos.begin());
}

std::string placeOf(const kavo_setting& given) {
  return given.line > 0 ? fmt::format("{}, line {}", given.source, given.line) : given.source;
}

// A value of the word's type within its bounds.
template <class Number>
Number number(const kavo_setting& given, const kavo_setting_info& info) {
  const std::string_view text = given.value;
  Number value = 0;
  const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error == std::errc{} && stop == text.data() + text.size() && value >= info.lower && value <= info.upper)
    return value;
  const char* kind = info.type == KAVO_SETTING_INT ? "whole number" : "number";
  throw Failure(fmt::format("{}: {}={}: the value must be a {} from {} to {}", placeOf(given), info.name, text, kind,
                            info.lower, info.upper));
}

void take(OwnWords& words, const kavo_setting& given) {
  const Word word = wordOf(given.name);
  const kavo_setting_info& info = kInfos[word];
  switch (word) {
    case kOutlev:
      words.showLog = number<unsigned>(given, info) > 0;
      break;
    case kLogFile:
      words.logFile = given.value;
      break;
    case kObjno:
      words.objective = static_cast<int>(number<unsigned>(given, info));
      break;
    case kWantSol:
      words.wantSol = number<unsigned>(given, info);
      break;
    case kBRatio:
      words.basisRatio = number<double>(given, info);
      break;
    case kPoolStub:
      words.poolStub = given.value;
      break;
    case kCount:
      break;
  }
}

// The last value given, or the default.
std::string answer(const std::string& value, const kavo_setting_info& info) {
  const char* initial = info.default_text;
  if (initial == nullptr) return fmt::format("{}=\"{}\"", info.name, value);
  return fmt::format("{}={} (default {})", info.name, value.empty() ? initial : value, initial);
}

}  // namespace

void declareOwnWords(Session& session) {
  for (const kavo_setting_info& info : kInfos) check(kavo_declare_setting(session.model(), &info));
}

OwnWords ownWords(const Session& session) {
  OwnWords words;
  std::array<std::string, kCount> values;
  std::array<bool, kCount> asked{};
  kavo_setting given{};
  for (std::size_t i = 0;; ++i) {
    check(kavo_own_setting_at(session.model(), i, &given));
    if (given.name == nullptr) break;
    const Word word = wordOf(given.name);
    if (std::string_view(given.value) == "?") {
      asked[word] = true;
    } else {
      take(words, given);
      values[word] = given.value;
    }
  }
  for (std::size_t word = 0; word < kCount; ++word) {
    if (asked[word]) words.answers.push_back(answer(values[word], kInfos[word]));
  }
  return words;
}

}  // namespace app
