#include "brel/settings/near_names.h"

#include <algorithm>
#include <array>
#include <tuple>

#include "brel/settings/usual_words.h"
#include "tav/attr/abstract_dict.h"
#include "tav/util/ascii.h"

namespace brel::settings {
namespace {

constexpr std::size_t kMost = 3;
constexpr std::size_t kLongest = 64;  // no name of a setting is longer

// How unlike a known name is: kind of likeness, then size of the difference. The smaller, the likelier.
using Unlikeness = std::tuple<int, std::size_t>;
constexpr int kSynonym = 0, kTypingError = 1, kPart = 2, kOther = 3;

Unlikeness unlikeness(const std::string& wanted, const std::string& name) {
  const std::size_t allowed = wanted.size() <= 3 ? 1 : wanted.size() <= 7 ? 2 : 3;
  const std::size_t distance = editDistance(wanted, name);
  if (distance <= allowed) return {kTypingError, distance};
  constexpr std::size_t kShortestPart = 3;
  if (wanted.size() >= kShortestPart && name.find(wanted) != std::string::npos) {
    return {kPart, (name.starts_with(wanted) ? 0 : kLongest) + name.size()};
  }
  return {kOther, distance};
}

}  // namespace

std::size_t editDistance(std::string_view a, std::string_view b) {
  std::vector<std::size_t> before(b.size() + 1), previous(b.size() + 1), row(b.size() + 1);
  for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
  for (std::size_t i = 1; i <= a.size(); ++i) {
    before.swap(previous);
    previous.swap(row);
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      row[j] = std::min({previous[j] + 1, row[j - 1] + 1, previous[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1)});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) row[j] = std::min(row[j], before[j - 2] + 1);
    }
  }
  return row[b.size()];
}

std::vector<std::string> nearNames(std::string_view wanted, const std::vector<std::string>& known) {
  if (wanted.empty() || wanted.size() > kLongest) return {};
  const std::string text = tav::util::lowerCased(wanted);
  const std::string_view usual = meaningOfUsualWord(text);
  std::vector<std::pair<Unlikeness, const std::string*>> found;
  for (const std::string& name : known) {
    const bool synonym = !usual.empty() && tav::attr::isSameName(name, usual);
    const Unlikeness likeness = synonym ? Unlikeness{kSynonym, 0} : unlikeness(text, tav::util::lowerCased(name));
    if (std::get<0>(likeness) != kOther) found.emplace_back(likeness, &name);
  }
  std::stable_sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> names;
  for (const auto& [likeness, name] : found) {
    const bool isGuess = std::get<0>(likeness) == kPart && std::get<0>(found.front().first) != kPart;
    if (names.size() < kMost && !isGuess) names.push_back(*name);
  }
  return names;
}

}  // namespace brel::settings
