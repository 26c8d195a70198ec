#pragma once

#include <optional>
#include <span>
#include <vector>

#include "tav/attr/exception.h"
#include "tav/attr/signature.h"
#include "tav/attr/value_type.h"
#include "tav/idx/lib/range.h"
#include "tav/idx/list.h"

namespace tav::attr {

template <class T>
class Container;

// One value per index 0 .. size() - 1 and per solution. What an implementation does not override is refused with
// attr::Exception.
class AbstractBaseContainer {
 public:
  virtual ~AbstractBaseContainer() = default;

  virtual ValueType valueType() const = 0;
  virtual bool isSettable() const { return false; }
  virtual bool isResettable() const { return false; }
  virtual bool hasDefault() const { return false; }

  // Whether values of this solution can be read, or written where writing is possible at all.
  virtual bool hasSolution(int solution) const { return solution == 0; }
  virtual bool hasSettableSolution(int solution) const { return solution == 0; }

  virtual int size() const = 0;  // number of indices

  // How many solutions have values now; 0: there is nothing to read.
  virtual int solutionCount() const { return 1; }

  // How many indices carry a value that was given; the others are unset. 0: nothing was given.
  virtual int itemCount() const { return size(); }

  // Puts the default back at every index.
  virtual void reset() { throw Exception::unsupportedReset(signature::reset("tav::attr::AbstractBaseContainer")); }
};

template <class T>
class AbstractContainer : public AbstractBaseContainer {
 public:
  ValueType valueType() const final { return ValueTraits<T>::kCode; }

  // A raw value as it would be handed on, absent when the raw value stands for "unset".
  virtual std::optional<T> toOptional(const T& raw) const { return raw; }

  virtual T getDefault() const { throw Exception::unsupportedDefault(signature::getDefault<T>(owner())); }

  // The default of one index, for containers whose defaults differ.
  virtual T getDefault(int /*index*/) const { return getDefault(); }

  // The values of the listed indices, in list order, into the front of `values`, which holds at least list.size()
  // entries. This is the way to read many.
  virtual void get(const idx::List& list, std::span<T> values, int solution) const = 0;

  virtual T get(int index, int solution) const = 0;

  // The values of all indices into `values` of at least size() entries.
  virtual void getAll(std::span<T> values, int solution) const { get(idx::lib::Range(0, size()), values, solution); }

  // The listed values as a vector, and as optional values.
  virtual std::vector<T> getValues(const idx::List& list, int solution) const {
    std::vector<T> values(static_cast<std::size_t>(list.size()));
    get(list, std::span<T>(values), solution);
    return values;
  }

  virtual std::vector<std::optional<T>> getOptional(const idx::List& list, int solution) const {
    const std::vector<T> raw = getValues(list, solution);
    std::vector<std::optional<T>> values;
    values.reserve(raw.size());
    for (const T& value : raw) values.push_back(toOptional(value));
    return values;
  }

  // Writes `values`, exactly list.size() of them, to the listed indices in list order.
  virtual void set(const idx::List& /*list*/, std::span<const T> /*values*/, int /*solution*/) {
    throw Exception::unsupportedSet(signature::setList<T>(owner()));
  }

  virtual void set(int index, const T& value, int solution) {
    if (!isSettable()) throw Exception::unsupportedSet(signature::setOne<T>(owner()));
    set(idx::lib::Range(index, 1), std::span<const T>(&value, 1), solution);
  }

  // Copies all values of solution 0 of `other` to the listed indices. Raises tav::CheckException unless other.size()
  // equals list.size().
  virtual void set(const idx::List& list, const Container<T>& other);

  // Writes `values`, exactly size() of them, to all indices.
  virtual void setAll(std::span<const T> values, int solution) {
    if (!isSettable()) throw Exception::unsupportedSet(signature::setAll<T>(owner()));
    set(idx::lib::Range(0, size()), values, solution);
  }

  // Gives an index a value where there was none; the container may grow.
  virtual void itemAdd(int /*index*/, const T& /*value*/) {
    throw Exception::unsupportedItemAdd(signature::itemAdd<T>(owner()));
  }

 private:
  static std::string owner() { return signature::ownerOf<T>("tav::attr::AbstractContainer"); }
};

}  // namespace tav::attr
