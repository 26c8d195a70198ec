#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tav/attr/abstract_base_info.h"
#include "tav/attr/container.h"
#include "tav/attr/item.h"

namespace tav::attr {

// Whether two names are the same but for the case of ASCII letters.
bool isSameName(std::string_view a, std::string_view b);

// Entries (BaseItem or BaseContainer) under integer keys, which may have names. A key or name that is not provided
// yields the empty handle, never an error.
template <class Entry>
class AbstractDict {
 public:
  virtual ~AbstractDict() = default;

  virtual int count() const = 0;                // number of provided keys
  virtual std::vector<int> keys() const = 0;    // the provided keys
  virtual std::string name(int key) const = 0;  // empty when the key has none

  // The description of an entry, or null when there is none.
  virtual std::shared_ptr<const AbstractBaseInfo> info(int key) const = 0;

  // Whether keys can be added.
  virtual bool isExtensible() const { return false; }

  virtual bool has(int key) const = 0;

  // The entry that stands for "not provided".
  virtual Entry empty() const { return {}; }

  virtual Entry get(int key) const = 0;

  // Look-up by name, ignoring case.
  virtual std::optional<int> find(std::string_view wanted) const {
    for (const int key : keys()) {
      if (isSameName(name(key), wanted)) return key;
    }
    return std::nullopt;
  }

  virtual bool has(std::string_view wanted) const { return find(wanted).has_value(); }

  virtual Entry get(std::string_view wanted) const {
    const auto key = find(wanted);
    return key ? get(*key) : empty();
  }

  virtual std::shared_ptr<const AbstractBaseInfo> info(std::string_view wanted) const {
    const auto key = find(wanted);
    return key ? info(*key) : nullptr;
  }
};

class AbstractItemDict : public AbstractDict<BaseItem> {};

class AbstractContainerDict : public AbstractDict<BaseContainer> {};

}  // namespace tav::attr
