#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "kavo/model/names.h"

namespace kavo::reader {

// Finds elements by name: a hash table whose slots hold the hash and the element's number; the names themselves stay
// where the model has them. When all names are known it is made at once, so that it never grows and memory is asked for
// many slots at a time; else it takes one name after the other.
class NameIndex {
 public:
  static constexpr int kNone = -1;

  // Looks names up in `names`, which must outlive this object. Nothing is found before the first build.
  explicit NameIndex(const Names& names) : names_(names) {}

  // Takes in all names as they are now; none may be empty. The result is the first element whose name an element before
  // it has too, or kNone; with such a pair the index is of no use.
  int build();

  // The element of that name; when there is none, it becomes the name of element `next`, which the caller must append
  // to the names before the next call.
  int findOrTake(std::string_view name, int next);

  // Forgets a name again, which must be the one that findOrTake took last.
  void takeBack(std::string_view name);

  // The element of that name, or kNone. guess: an element that is likely to be it, any number.
  int find(std::string_view name, int guess = kNone) const;

  // The same in two steps, for a caller that has other work in between while memory answers: first prepare, whose
  // result goes to findPrepared.
  std::uint32_t prepare(std::string_view name) const {
    const std::uint32_t hash = hashOf(name);
    __builtin_prefetch(&slots_[hash & mask_]);
    return hash;
  }
  int findPrepared(std::string_view name, std::uint32_t hash) const { return slots_[slotOf(name, hash)].element; }

 private:
  struct Slot {
    std::uint32_t hash;
    int element;
  };

  static std::uint32_t hashOf(std::string_view name);
  bool isName(int element, std::string_view name) const;
  // The slot of this name, or the empty one where it belongs.
  std::size_t slotOf(std::string_view name, std::uint32_t hash) const;
  // Makes twice as many slots.
  void grow();

  const Names& names_;
  std::vector<Slot> slots_ = {Slot{0, kNone}};  // as many as a power of two, at least half of them empty
  std::size_t mask_ = 0;                        // their number - 1
  int size_ = 0;                                // names in it
};

}  // namespace kavo::reader
