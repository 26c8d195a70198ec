// Blocks of a model from plain values, and a record with an open model over the double to send them to.
#pragma once

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "grb/adder/var_adder.h"
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

inline constexpr double kInf = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr const char* kReadCount = R"(GRBgetintattr(m1, "NumVars", *))";  // the head of every block

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

/// A record whose model is open and holds n variables from 0 to 1, with nothing recorded yet.
struct OpenRecord {
  explicit OpenRecord(std::size_t n = 0) {
    data->model->start();
    load(n);
  }
  void load(std::size_t n) {
    VarAdder(data).add(plainVariables(n));
    data->model->updateIfPending();
    gurobi->takeCalls();
  }

  std::shared_ptr<GurobiDouble> gurobi = GurobiDouble::make();
  std::shared_ptr<Data> data = std::make_shared<Data>(gurobi->library());
};

/// A row or an objective: its type or direction, its terms and its constant.
struct Function {
  int type;
  std::vector<int> positions;
  std::vector<double> coefficients;
  double constant = 0;
};

using Symbol = tav::math::Symbol<double>;

inline Symbol symbolOf(std::uint64_t space, const Function& given) {
  return Symbol::ofLinear(
      tav::math::LinearFunction<double>::owning(space, given.positions, given.coefficients, given.constant));
}

/// A quadratic row or objective: a linear one with products besides.
struct Quadratic {
  Function linear;
  std::vector<int> first, second;
  std::vector<double> values;
};

inline Symbol symbolOf(std::uint64_t space, const Quadratic& given) {
  const auto kept = std::make_shared<const Quadratic>(given);
  const Function& linear = kept->linear;
  return Symbol::ofQuadratic(std::make_shared<tav::math::QuadraticFunction<double>>(
      tav::math::QuadraticFunction<double>{{space, linear.positions, linear.coefficients, linear.constant, kept},
                                           kept->first,
                                           kept->second,
                                           kept->values,
                                           kept}));
}

inline int typeOf(const Function& function) { return function.type; }
inline int typeOf(const Quadratic& function) { return function.linear.type; }

/// Rows or objectives, which have type and function under the same numbers.
template <class B = tav::opt::ConstraintContainer>
B expressions(std::vector<int> types, std::vector<Symbol> given, const std::vector<Given>& more = {},
              const OwnGroup& own = {}) {
  using Q = tav::opt::RowQuantity;
  std::vector<Given> standard{{Q::type, values(std::move(types))}, {Q::function, values(std::move(given))}};
  standard.insert(standard.end(), more.begin(), more.end());
  return block<B>(tav::opt::tag::kConstraint, standard, own);
}
template <class F = Function, class B = tav::opt::ConstraintContainer>
B functions(std::uint64_t space, const std::vector<F>& given, const std::vector<Given>& more = {},
            const OwnGroup& own = {}) {
  std::vector<int> types;
  std::vector<Symbol> made;
  for (const F& function : given) types.push_back(typeOf(function)), made.push_back(symbolOf(space, function));
  return expressions<B>(std::move(types), std::move(made), more, own);
}

/// Rows, each with the type of its link and the position of the linked variable.
struct Links {
  std::vector<int> types, variables;
};

inline tav::opt::LinkedConstraintContainer linkedRows(std::uint64_t space, const std::vector<Function>& rows,
                                                      const Links& links, const std::vector<Given>& more = {}) {
  using Q = tav::opt::LinkQuantity;
  auto result = functions<Function, tav::opt::LinkedConstraintContainer>(space, rows, more);
  std::vector<Symbol> linked;
  for (const int variable : links.variables) linked.push_back(Symbol::ofVariable(space, variable));
  const auto group = std::make_shared<tav::opt::BlockGroup>();
  group->set(Q::type, "type", values(links.types));
  group->set(Q::variable, "variable", values(std::move(linked)));
  result.setGroup(tav::opt::tag::kConstraintLink, group);
  return result;
}

/// The positions of a list written out.
inline std::vector<int> positionsOf(const tav::idx::List& list) {
  std::vector<int> positions(static_cast<std::size_t>(list.size()));
  list.copyTo(positions);
  return positions;
}

}  // namespace grb
