#include "kavo/reader/name_index.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

namespace kavo::reader {

namespace {

constexpr std::size_t kBatch = 32;
constexpr std::uint64_t kFactor = UINT64_C(0x9E3779B97F4A7C15);

std::uint64_t load(const char* from, std::size_t bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, from, bytes);
  return word;
}

// Every bit of the words reaches every bit of the result: names mostly differ in a few digits.
std::uint64_t mix(std::uint64_t hash, std::uint64_t word) {
  hash = (hash ^ word) * kFactor;
  hash = (hash ^ (hash >> 32)) * kFactor;
  return hash ^ (hash >> 32);
}

}  // namespace

std::uint32_t NameIndex::hashOf(std::string_view name) {
  const char* p = name.data();
  std::size_t left = name.size();
  std::uint64_t hash = left * kFactor;
  for (; left >= 8; p += 8, left -= 8) hash = mix(hash, load(p, 8));
  // The last bytes in loads of a fixed length, which are cheap and may overlap.
  if (left >= 4) {
    hash = mix(hash, load(p, 4) << 32 | load(p + left - 4, 4));
  } else if (left > 0) {
    hash = mix(hash, load(p, 1) << 16 | load(p + left / 2, 1) << 8 | load(p + left - 1, 1));
  }
  return static_cast<std::uint32_t>(hash);
}

bool NameIndex::isName(int element, std::string_view name) const {
  const char* own = names_.at(static_cast<std::size_t>(element));
  return std::strncmp(own, name.data(), name.size()) == 0 && own[name.size()] == '\0';
}

std::size_t NameIndex::slotOf(std::string_view name, std::uint32_t hash) const {
  std::size_t i = hash & mask_;
  while (slots_[i].element != kNone && (slots_[i].hash != hash || !isName(slots_[i].element, name)))
    i = (i + 1) & mask_;
  return i;
}

int NameIndex::build() {
  size_ = static_cast<int>(names_.size());
  slots_.assign(std::bit_ceil(2 * names_.size() + 1), Slot{0, kNone});
  mask_ = slots_.size() - 1;
  std::array<std::uint32_t, kBatch> hashes;
  for (std::size_t begin = 0; begin < names_.size(); begin += kBatch) {
    const std::size_t end = std::min(begin + kBatch, names_.size());
    for (std::size_t i = begin; i < end; ++i) hashes[i - begin] = prepare(names_.at(i));
    for (std::size_t i = begin; i < end; ++i) {
      Slot& slot = slots_[slotOf(names_.at(i), hashes[i - begin])];
      if (slot.element != kNone) return static_cast<int>(i);
      slot = {hashes[i - begin], static_cast<int>(i)};
    }
  }
  return kNone;
}

int NameIndex::findOrTake(std::string_view name, int next) {
  const std::uint32_t hash = hashOf(name);
  std::size_t slot = slotOf(name, hash);
  if (slots_[slot].element != kNone) return slots_[slot].element;
  if (2 * (static_cast<std::size_t>(size_) + 1) > slots_.size()) {
    grow();
    slot = slotOf(name, hash);
  }
  slots_[slot] = {hash, next};
  ++size_;
  return next;
}

// The last name is on no other name's way to its slot.
void NameIndex::takeBack(std::string_view name) {
  slots_[slotOf(name, hashOf(name))] = {0, kNone};
  --size_;
}

void NameIndex::grow() {
  std::vector<Slot> larger(std::max<std::size_t>(16, 2 * slots_.size()), Slot{0, kNone});
  mask_ = larger.size() - 1;
  for (const Slot& slot : slots_) {
    if (slot.element == kNone) continue;
    std::size_t i = slot.hash & mask_;
    while (larger[i].element != kNone) i = (i + 1) & mask_;
    larger[i] = slot;
  }
  slots_ = std::move(larger);
}

int NameIndex::find(std::string_view name, int guess) const {
  if (guess >= 0 && guess < size_ && isName(guess, name)) return guess;
  return findPrepared(name, hashOf(name));
}

}  // namespace kavo::reader
