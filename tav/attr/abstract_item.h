#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "tav/attr/abstract_base_info.h"
#include "tav/attr/exception.h"
#include "tav/attr/signature.h"
#include "tav/attr/value_type.h"

namespace tav::attr {

// One value, or one value per solution. What an implementation does not override is refused with attr::Exception.
class AbstractBaseItem {
 public:
  virtual ~AbstractBaseItem() = default;

  virtual ValueType valueType() const = 0;
  virtual bool isSettable() const { return false; }
  virtual bool isResettable() const { return false; }
  virtual bool hasDefault() const { return false; }

  // Whether a value of this solution can exist; plain items know solution 0 only.
  virtual bool hasSolution(int solution) const { return solution == 0; }

  // How many solutions have a value now.
  virtual int solutionCount() const { return 1; }

  // Puts the default back.
  virtual void reset() { throw Exception::unsupportedReset(signature::reset("tav::attr::AbstractBaseItem")); }

  // The description that travels with the item, or null.
  virtual std::shared_ptr<const AbstractBaseInfo> info() const { return nullptr; }
};

template <class T>
class AbstractItem : public AbstractBaseItem {
 public:
  ValueType valueType() const final { return ValueTraits<T>::kCode; }

  // A raw value as it would be handed on, absent when the raw value stands for "unset".
  virtual std::optional<T> toOptional(const T& raw) const { return raw; }

  virtual T getDefault() const { throw Exception::unsupportedDefault(signature::getDefault<T>(owner())); }

  // The value of a solution below solutionCount().
  virtual T get(int solution) const = 0;

  // The values of all solutions.
  virtual std::vector<T> getAll() const {
    std::vector<T> values;
    const int n = solutionCount();
    values.reserve(static_cast<std::size_t>(n));
    for (int k = 0; k < n; ++k) values.push_back(get(k));
    return values;
  }

  virtual void set(const T& /*value*/, int /*solution*/) {
    throw Exception::unsupportedSet(signature::set<T>(owner()));
  }

 private:
  static std::string owner() { return signature::ownerOf<T>("tav::attr::AbstractItem"); }
};

}  // namespace tav::attr
