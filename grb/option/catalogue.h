// What a user may set: the parameters of Gurobi that the link offers, and the link's own options. Each entry is
// described by an info that lasts as long as the program: name as Gurobi spells it, default, bounds, help; it carries
// one value and may be set. Bounds and defaults are finite numbers: 1e100 and 2000000000 stand for "no limit", as in
// Gurobi. The infos are built when the library is loaded; a row whose default is out of its bounds stops that.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tav/attr/lib/range_info.h"

namespace grb {

using IntInfo = tav::attr::lib::RangeInfo<int>;
using DoubleInfo = tav::attr::lib::RangeInfo<double>;
using TextInfo = tav::attr::lib::Info<std::string>;

// The entries of each kind, in the order in which they are listed. The order of the options is that of IntOption and
// FileOption.
std::span<const IntInfo> intOptions();
std::span<const TextInfo> fileOptions();
std::span<const DoubleInfo> doubleParameters();
std::span<const IntInfo> intParameters();
std::span<const TextInfo> stringParameters();

// The kinds of entries. The number is the key of the kind's first entry, which the others follow in their order.
enum class EntryKind : int {
  intOption = 2000,
  fileOption = 3000,
  doubleParameter = 4000,
  intParameter = 5000,
  stringParameter = 6000
};

struct Entry {
  EntryKind kind;
  int index;  // among the entries of its kind
  std::shared_ptr<const tav::attr::AbstractBaseInfo> info;

  int key() const { return static_cast<int>(kind) + index; }
};

// All keys, options first.
std::vector<int> entryKeys();

// The entry of a key, or nothing.
std::optional<Entry> entryOf(int key);

// The entry of a name, in any case, or nothing. Parameters that Gurobi has and the catalogue leaves out are not found.
// Any thread may ask.
std::optional<Entry> findEntry(std::string_view name);

// Whether an entry's value must be shown to nobody.
bool isSecret(const tav::attr::AbstractBaseInfo& info);

// The description as others hold descriptions, without a share in its life.
template <class Info>
std::shared_ptr<const Info> shared(const Info& lasting) {
  return {std::shared_ptr<void>(), &lasting};
}

}  // namespace grb
