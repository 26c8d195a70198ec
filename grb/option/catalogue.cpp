#include "grb/option/catalogue.h"

#include <mutex>
#include <unordered_map>

#include "grb/option/rows.h"
#include "tav/util/ascii.h"
#include "tav/util/fnv1a.h"

namespace grb {
namespace {

using tav::attr::AbstractBaseInfo;

template <class T>
std::vector<tav::attr::lib::RangeInfo<T>> infosOf(std::span<const NumberRow<T>> rows) {
  std::vector<tav::attr::lib::RangeInfo<T>> infos;
  infos.reserve(rows.size());
  for (const NumberRow<T>& row : rows) {
    infos.emplace_back(row.name, 1, true, row.defaultValue, row.lower, row.upper, std::nullopt, row.help);
  }
  return infos;
}

std::vector<TextInfo> infosOf(std::span<const TextRow> rows) {
  std::vector<TextInfo> infos;
  infos.reserve(rows.size());
  for (const TextRow& row : rows) {
    const auto defaultValue = row.defaultValue ? std::optional<std::string>(row.defaultValue) : std::nullopt;
    infos.emplace_back(row.name, 1, true, defaultValue, std::nullopt, row.help);
  }
  return infos;
}

// A wrong row is to be found when the library is loaded, not when somebody first asks.
[[maybe_unused]] const bool kBuilt = !entryKeys().empty();

// The entry at an index of one kind, if there is one.
template <class Info>
std::optional<Entry> at(EntryKind kind, std::span<const Info> infos, int index) {
  if (index < 0 || index >= static_cast<int>(infos.size())) return std::nullopt;
  return Entry{kind, index, shared(infos[static_cast<std::size_t>(index)])};
}

template <class Info>
void appendKeys(EntryKind kind, std::span<const Info> infos, std::vector<int>& keys) {
  for (int index = 0; index < static_cast<int>(infos.size()); ++index) keys.push_back(static_cast<int>(kind) + index);
}

struct NameHash {
  std::size_t operator()(std::string_view name) const { return tav::util::fnv1a(name); }
};

using NameIndex = std::unordered_map<std::string, int, NameHash>;  // keys by lower-cased name

const NameIndex& nameIndex() {
  static std::mutex building;
  static NameIndex index;
  const std::lock_guard lock(building);
  if (index.empty()) {
    for (const int key : entryKeys()) index.emplace(tav::util::lowerCased(entryOf(key)->info->name()), key);
  }
  return index;
}

}  // namespace

std::span<const IntInfo> intOptions() {
  static const auto kInfos = infosOf(intOptionRows());
  return kInfos;
}

std::span<const TextInfo> fileOptions() {
  static const auto kInfos = infosOf(fileOptionRows());
  return kInfos;
}

std::span<const DoubleInfo> doubleParameters() {
  static const auto kInfos = infosOf(doubleRows());
  return kInfos;
}

std::span<const IntInfo> intParameters() {
  static const auto kInfos = infosOf(intRows());
  return kInfos;
}

std::span<const TextInfo> stringParameters() {
  static const auto kInfos = infosOf(stringRows());
  return kInfos;
}

std::vector<int> entryKeys() {
  std::vector<int> keys;
  appendKeys(EntryKind::intOption, intOptions(), keys);
  appendKeys(EntryKind::fileOption, fileOptions(), keys);
  appendKeys(EntryKind::doubleParameter, doubleParameters(), keys);
  appendKeys(EntryKind::intParameter, intParameters(), keys);
  appendKeys(EntryKind::stringParameter, stringParameters(), keys);
  return keys;
}

std::optional<Entry> entryOf(int key) {
  const auto kind = static_cast<EntryKind>(key / 1000 * 1000);
  const int index = key % 1000;
  switch (kind) {
    case EntryKind::intOption:
      return at(kind, intOptions(), index);
    case EntryKind::fileOption:
      return at(kind, fileOptions(), index);
    case EntryKind::doubleParameter:
      return at(kind, doubleParameters(), index);
    case EntryKind::intParameter:
      return at(kind, intParameters(), index);
    case EntryKind::stringParameter:
      return at(kind, stringParameters(), index);
    default:
      return std::nullopt;
  }
}

std::optional<Entry> findEntry(std::string_view name) {
  const NameIndex& index = nameIndex();
  const auto found = index.find(tav::util::lowerCased(name));
  return found == index.end() ? std::nullopt : entryOf(found->second);
}

bool isSecret(const AbstractBaseInfo& info) { return info.name() == "WorkerPassword"; }

}  // namespace grb
