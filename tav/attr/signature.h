#pragma once

#include <fmt/core.h>

#include <string>
#include <string_view>

#include "tav/attr/value_type.h"

// Signatures of refused operations as errors tell them: "void __cdecl <owner>::set(const int &,int)". The owner is a
// qualified class name with its template arguments.
namespace tav::attr::signature {

// "<template><value type>": ownerOf<int>("tav::attr::Item") is "tav::attr::Item<int>".
template <class T>
std::string ownerOf(std::string_view classTemplate) {
  constexpr std::string_view kSpelling = ValueTraits<T>::kSpelling;
  return fmt::format("{}<{}{}>", classTemplate, kSpelling, kSpelling.ends_with('>') ? " " : "");
}

// A value handed over by constant reference.
template <class T>
std::string reference() {
  constexpr std::string_view kSpelling = ValueTraits<T>::kSpelling;
  return kSpelling.ends_with('*') ? fmt::format("{} const &", kSpelling) : fmt::format("const {} &", kSpelling);
}

// A span of values to read.
template <class T>
std::string span() {
  return fmt::format("class std::span<{} const ,-1>", ValueTraits<T>::kSpelling);
}

template <class T>
std::string getDefault(std::string_view owner) {
  return fmt::format("{} __cdecl {}::getDefault(void) const", ValueTraits<T>::kSpelling, owner);
}

inline std::string reset(std::string_view owner) { return fmt::format("void __cdecl {}::reset(void)", owner); }

// An item's set.
template <class T>
std::string set(std::string_view owner) {
  return fmt::format("void __cdecl {}::set({},int)", owner, reference<T>());
}

// A container's writes: one index, a list, all indices.
template <class T>
std::string setOne(std::string_view owner) {
  return fmt::format("void __cdecl {}::set(int,{},int)", owner, reference<T>());
}

template <class T>
std::string setList(std::string_view owner) {
  return fmt::format("void __cdecl {}::set(const class tav::idx::List &,{},int)", owner, span<T>());
}

template <class T>
std::string setAll(std::string_view owner) {
  return fmt::format("void __cdecl {}::setAll({},int)", owner, span<T>());
}

template <class T>
std::string itemAdd(std::string_view owner) {
  return fmt::format("void __cdecl {}::itemAdd(int,{})", owner, reference<T>());
}

}  // namespace tav::attr::signature
