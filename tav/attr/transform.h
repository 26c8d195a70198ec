#pragma once

#include <concepts>
#include <optional>
#include <type_traits>

#include "tav/util/cast.h"

// Stateless maps between the values that an item or container holds (Inner) and those that a view of it shows (Outer).
//
// A transform F has
//   using Inner = ...; using Outer = ...;
//   static Outer read(const Inner&);                            // what a reader sees
// and, where its view can be written,
//   static Inner write(const Outer&);                           // what a written value becomes
// and, where the view's toOptional is not the identity,
//   static std::optional<Outer> convert(const Outer&);
namespace tav::attr::transform {

template <class F>
concept Readable = requires(const typename F::Inner& inner) {
  { F::read(inner) } -> std::same_as<typename F::Outer>;
};

template <class F>
concept Writable = Readable<F> && requires(const typename F::Outer& outer) {
  { F::write(outer) } -> std::same_as<typename F::Inner>;
};

template <class F>
concept Converting = requires(const typename F::Outer& outer) {
  { F::convert(outer) } -> std::same_as<std::optional<typename F::Outer>>;
};

template <Readable F>
std::optional<typename F::Outer> convert(const typename F::Outer& raw) {
  if constexpr (Converting<F>) {
    return F::convert(raw);
  } else {
    return raw;
  }
}

// Changes the sign in both directions.
struct Negate {
  using Inner = double;
  using Outer = double;
  static double read(const double& value) { return -value; }
  static double write(const double& value) { return -value; }
};

// Presents a `To` as a `From`: a written `From` becomes a `To`, each way only where the value fits exactly
// (tav::Exception "Cast Error" otherwise).
template <class To, class From>
struct NumCast {
  using Inner = To;
  using Outer = From;
  static From read(const To& value) { return numCast<From>(value); }
  static To write(const From& value) { return numCast<To>(value); }
};

}  // namespace tav::attr::transform
