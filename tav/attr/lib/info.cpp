#include "tav/attr/lib/info.h"

#include "tav/util/exception.h"

namespace tav::attr::lib {

void throwUnsupportedProperty(std::string_view property, std::string_view text) {
  throw tav::Exception(fmt::format("Value of property '{}' (which is {}) is not supported.", property, text));
}

template <class T>
bool Info<T>::isDefaultProperty(std::string_view property) const {
  if (property == "name") return name_.empty();
  if (property == "ref") return !reference_;
  if (property == "n_max") return !maxCount_;
  if (property == "s_set") return !isSet_;
  if (property == "doc") return documentation_.empty();
  if (property == "def") return !default_;
  return true;
}

template <class T>
std::string Info<T>::propertyText(std::string_view property) const {
  if (property == "name") return name_;
  if (property == "ref") return textOf(reference_);
  if (property == "n_max") return textOf(maxCount_);
  if (property == "s_set") return isSet_ ? "true" : "false";
  if (property == "doc") return documentation_;
  if (property == "def") return textOf(default_);
  return {};
}

template <class T>
void Info<T>::setProperty(std::string_view property, std::string_view text) {
  const auto number = parseText<int>(text);
  const auto flag = yaml::toBool(text);
  if (property == "name") {
    name_ = text;
  } else if (property == "doc") {
    documentation_ = text;
  } else if (property == "ref" && number) {
    reference_ = number;
  } else if (property == "n_max" && number) {
    maxCount_ = atLeastOne(number);
  } else if (property == "s_set" && flag) {
    isSet_ = *flag;
  } else if (auto value = parseText<T>(text); property == "def" && value && this->accepts(*value)) {
    default_ = std::move(value);
  } else {
    throwUnsupportedProperty(property, text);
  }
}

template class Info<int>;
template class Info<double>;
template class Info<std::string>;

}  // namespace tav::attr::lib
