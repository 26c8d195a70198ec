#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "tav/attr/exception.h"
#include "tav/attr/signature.h"
#include "tav/yaml/documented.h"

namespace tav::attr {

// The description of an item: what a user may be told about it and what may be set.
class AbstractBaseInfo : public yaml::AbstractDocumented {
 public:
  virtual ValueType valueType() const = 0;
  virtual const std::string& name() const = 0;

  // How many values the item may carry; absent: any number.
  virtual std::optional<int> maxCount() const = 0;

  virtual bool isSet() const = 0;  // a user may set the item
  virtual std::optional<int> reference() const = 0;
  virtual std::string_view documentation() const = 0;
  virtual bool hasDefault() const = 0;

  // Reflection. The property names are "name", "ref", "n_max", "s_set", "doc", "def" and, of ranges, "lo" and "up".
  virtual std::span<const std::string_view> properties() const = 0;
  bool hasProperty(std::string_view property) const;

  // Whether the property says nothing beyond what holds without it. An unknown property is at its default.
  virtual bool isDefaultProperty(std::string_view property) const = 0;

  // Whether no property says anything.
  virtual bool isTrivial() const = 0;

  // The property's value as text; empty where it says nothing.
  virtual std::string propertyText(std::string_view property) const = 0;
  void writeProperty(yaml::Emitter& emitter, std::string_view property) const;

  // For the making of an info that is read: sets the property from its text. Raises tav::Exception "Value of property
  // '<name>' (which is <value>) is not supported." when the info has no such property or cannot take the value.
  virtual void setProperty(std::string_view property, std::string_view text) = 0;
};

template <class T>
class AbstractInfo : public AbstractBaseInfo {
 public:
  ValueType valueType() const final { return ValueTraits<T>::kCode; }

  // Raises attr::Exception unsupportedDefault when there is none.
  virtual T getDefault() const = 0;

  // Whether the item may be set to this value.
  virtual bool accepts(const T& value) const = 0;

  // Raises tav::CheckException for a value that is not accepted; its message tells name, value and the bound that the
  // value is beyond.
  virtual void check(const T& value) const = 0;
};

}  // namespace tav::attr
