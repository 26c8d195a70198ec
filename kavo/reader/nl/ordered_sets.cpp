#include "kavo/reader/nl/ordered_sets.h"

#include <fmt/format.h>

#include <algorithm>
#include <climits>
#include <cmath>
#include <string>
#include <tuple>
#include <vector>

#include "kavo/error.h"

namespace kavo::reader::nl {

namespace {

struct Member {
  double set;  // its number
  unsigned char type;
  double weight;
  int column;

  auto key() const { return std::tie(set, weight, column); }
};

const Suffix* find(const Model& model, const char* name) {
  const auto isIt = [name](const Suffix& suffix) { return suffix.kind == KAVO_COLUMN && suffix.name == name; };
  const auto found = std::find_if(model.suffixes.begin(), model.suffixes.end(), isIt);
  return found == model.suffixes.end() ? nullptr : &*found;
}

[[noreturn]] void fail(const Model& model, const char* suffix, const std::string& what) {
  throw Error(KAVO_FILE, fmt::format("{}, suffix {}: {}", model.file, suffix, what));
}

std::vector<Member> modelersMembers(const Model& model) {
  std::vector<Member> members;
  const Suffix* sets = find(model, "sosno");
  for (std::size_t k = 0; sets != nullptr && k < sets->index.size(); ++k) {
    const double set = sets->value[k];
    if (set != 0) members.push_back({set, static_cast<unsigned char>(set > 0 ? 1 : 2), 0, sets->index[k]});
  }
  return members;
}

std::vector<Member> amplsMembers(const Model& model) {
  constexpr int kType2 = 1, kStandIn = 2, kPerNumber = 16;
  std::vector<Member> members;
  const Suffix* sets = find(model, "sos");
  for (std::size_t k = 0; sets != nullptr && k < sets->index.size(); ++k) {
    const double value = sets->value[k];
    const int bits = value >= 0 && value <= INT_MAX ? static_cast<int>(value) : -1;
    if (bits == value && (bits == 0 || (bits & kStandIn) != 0)) continue;
    if (bits != value || bits < kPerNumber) {
      fail(model, "sos", fmt::format("variable {} has the value {}, which names no set", sets->index[k], value));
    }
    const auto type = static_cast<unsigned char>((bits & kType2) != 0 ? 2 : 1);
    const int number = bits / kPerNumber;
    members.push_back({static_cast<double>(number), type, 0, sets->index[k]});
  }
  return members;
}

void takeWeights(const Model& model, const char* sets, const char* weights, std::vector<Member>& members) {
  const Suffix* given = find(model, weights);
  if (given == nullptr) fail(model, sets, fmt::format("the order of the sets is missing, the suffix {}", weights));
  std::vector<double> weight(model.columns.size(), 0.0);
  for (std::size_t k = 0; k < given->index.size(); ++k) {
    if (std::isinf(given->value[k])) {
      fail(model, weights, fmt::format("variable {} has an infinite value", given->index[k]));
    }
    weight[static_cast<std::size_t>(given->index[k])] = given->value[k];
  }
  for (Member& member : members) member.weight = weight[static_cast<std::size_t>(member.column)];
}

// Appends the sets and returns how many of one variable were left out.
std::size_t appendSets(Model& model, const char* weights, std::vector<Member>& members) {
  std::sort(members.begin(), members.end(), [](const Member& a, const Member& b) { return a.key() < b.key(); });
  const auto sameWeight = [](const Member& a, const Member& b) { return a.set == b.set && a.weight == b.weight; };
  const auto equal = std::adjacent_find(members.begin(), members.end(), sameWeight);
  if (equal != members.end()) {
    fail(model, weights,
         fmt::format("variables {} and {} of the same set have the same weight {}", equal[0].column, equal[1].column,
                     equal->weight));
  }
  OrderedSets& sets = model.sets;
  std::size_t alone = 0;
  for (auto begin = members.begin(), end = begin; begin != members.end(); begin = end) {
    end = std::find_if(begin, members.end(), [begin](const Member& member) { return member.set != begin->set; });
    if (end - begin == 1) {
      ++alone;
      continue;
    }
    for (auto member = begin; member != end; ++member) {
      sets.column.push_back(member->column);
      sets.weight.push_back(member->weight);
    }
    sets.type.push_back(begin->type);
    sets.start.push_back(sets.column.size());
  }
  return alone;
}

}  // namespace

void makeOrderedSets(Model& model) {
  std::size_t alone = 0;
  const auto make = [&](const char* sets, const char* weights, std::vector<Member> members) {
    if (members.empty()) return;
    takeWeights(model, sets, weights, members);
    alone += appendSets(model, weights, members);
  };
  make("sosno", "ref", modelersMembers(model));
  make("sos", "sosref", amplsMembers(model));
  if (alone > 0) {
    model.readNotes.push_back(
        fmt::format("{} special ordered set{} of one variable only, which restricts nothing, {} left out", alone,
                    alone == 1 ? "" : "s", alone == 1 ? "is" : "are"));
  }
}

}  // namespace kavo::reader::nl
