// Blocks of a model from plain values, and a record with an open model over the double to send them to.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "grb/data.h"
#include "grb/gurobi/exception.h"
#include "tav/attr/lib/optional_container.h"
#include "tav/attr/lib/span_container.h"
#include "tav/math/symbol.h"
#include "tav/opt/block.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"
#include "tests/double/gurobi_double.h"

namespace grb {

using gurobi_double::GurobiDouble;
using Calls = std::vector<std::string>;
using tav::attr::BaseContainer;

/// A record whose model is open, with nothing recorded yet.
struct OpenRecord {
  OpenRecord() {
    data->model->start();
    gurobi->takeCalls();
  }

  std::shared_ptr<GurobiDouble> gurobi = GurobiDouble::make();
  std::shared_ptr<Data> data = std::make_shared<Data>(gurobi->library());
};

/// A container that keeps its values.
template <class T>
BaseContainer values(std::vector<T> given) {
  const auto kept = std::make_shared<const std::vector<T>>(std::move(given));
  return tav::attr::lib::viewOf<T>(*kept, kept);
}

/// A container of `size` elements of which only one has a value.
template <class T>
BaseContainer onlyAt(int index, T value, std::size_t size) {
  const auto container = std::make_shared<tav::attr::lib::OptionalContainer<T>>();
  container->growTo(size);
  container->set(index, value, 0);
  return container;
}

struct Given {
  int key;
  BaseContainer container;
};
using OwnGroup = std::vector<std::pair<const char*, BaseContainer>>;

template <class B>
B block(std::string_view tag, const std::vector<Given>& standard, const OwnGroup& own) {
  B result;
  const auto group = std::make_shared<tav::opt::BlockGroup>();
  for (const Given& given : standard) group->set(given.key, std::to_string(given.key), given.container);
  result.setGroup(tag, group);
  const auto ownGroup = std::make_shared<tav::opt::BlockGroup>();
  for (const auto& [name, container] : own) ownGroup->set(ownGroup->count(), name, container);
  if (!own.empty()) result.setGroup("grb", ownGroup);
  return result;
}

struct Bounds {
  std::vector<double> lower, upper;
};

inline tav::opt::VariableContainer variables(std::vector<int> types, const Bounds& bounds,
                                             const std::vector<Given>& more = {}, const OwnGroup& own = {}) {
  using Q = tav::opt::VariableQuantity;
  std::vector<Given> standard{
      {Q::type, values(std::move(types))}, {Q::lower, values(bounds.lower)}, {Q::upper, values(bounds.upper)}};
  standard.insert(standard.end(), more.begin(), more.end());
  return block<tav::opt::VariableContainer>(tav::opt::tag::kVariable, standard, own);
}

/// n continuous variables from 0 to 1.
inline tav::opt::VariableContainer plainVariables(std::size_t n) {
  return variables(std::vector<int>(n, 0), {std::vector<double>(n, 0), std::vector<double>(n, 1)});
}

/// A row or an objective: its type or direction, its terms and its constant.
struct Function {
  int type;
  std::vector<int> positions;
  std::vector<double> coefficients;
  double constant = 0;
};

inline BaseContainer symbols(std::uint64_t space, const std::vector<Function>& functions) {
  const auto kept = std::make_shared<const std::vector<Function>>(functions);
  const auto made = std::make_shared<std::vector<tav::math::Symbol<double>>>();
  for (const Function& function : *kept) {
    tav::math::LinearFunction<double> linear;
    linear.space = space;
    linear.positions = function.positions;
    linear.coefficients = function.coefficients;
    linear.constant = function.constant;
    made->push_back(tav::math::Symbol<double>::ofLinear(linear));
  }
  const auto owner = std::make_shared<std::pair<decltype(kept), decltype(made)>>(kept, made);
  return tav::attr::lib::viewOf<tav::math::Symbol<double>>(*made, owner);
}

inline BaseContainer typesOf(const std::vector<Function>& functions) {
  std::vector<int> types;
  for (const Function& function : functions) types.push_back(function.type);
  return values(std::move(types));
}

/// Rows or objectives, which have type and function under the same numbers.
inline tav::opt::ConstraintContainer functions(std::uint64_t space, const std::vector<Function>& given,
                                               const std::vector<Given>& more = {}, const OwnGroup& own = {}) {
  using Q = tav::opt::RowQuantity;
  std::vector<Given> standard{{Q::type, typesOf(given)}, {Q::function, symbols(space, given)}};
  standard.insert(standard.end(), more.begin(), more.end());
  return block<tav::opt::ConstraintContainer>(tav::opt::tag::kConstraint, standard, own);
}

/// The positions of a list written out.
inline std::vector<int> positionsOf(const tav::idx::List& list) {
  std::vector<int> positions(static_cast<std::size_t>(list.size()));
  list.copyTo(positions);
  return positions;
}

}  // namespace grb
