#include "brel/load/beyond_blocks.h"

#include <memory>
#include <utility>
#include <vector>

#include "brel/load/containers.h"
#include "brel/load/names.h"
#include "tav/attr/lib/linear_rows_container.h"
#include "tav/math/symbol.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace brel::load {
namespace {

using Q = tav::opt::RowQuantity;
using Symbol = tav::math::Symbol<double>;
using Linear = tav::math::LinearFunction<double>;
using Quadratic = tav::math::QuadraticFunction<double>;
using tav::opt::BlockGroup;

std::vector<const char*> sendable(const std::vector<std::string>& names) {
  std::vector<const char*> result;
  result.reserve(names.size());
  for (const std::string& name : names) result.push_back(isSendable(name.c_str()) ? name.c_str() : "");
  return result;
}

// Types and names.
std::shared_ptr<BlockGroup> groupOf(const rewrite::RowHeads& heads) {
  const auto group = std::make_shared<BlockGroup>();
  std::vector<int> types;
  for (const tav::opt::RowType type : heads.type) types.push_back(static_cast<int>(type));
  group->set(Q::type, "type", owned(std::move(types)));
  if (!heads.names.empty()) group->set(Q::name, "name", owned(sendable(heads.names)));
  return group;
}

template <class T>
std::span<const T> part(const std::vector<T>& values, const std::vector<std::size_t>& start, std::size_t i) {
  return std::span<const T>(values).subspan(start[i], start[i + 1] - start[i]);
}

tav::attr::BaseContainer linearFunctions(const rewrite::RowHeads& heads, const rewrite::LinearTerms& terms,
                                         std::uint64_t space) {
  const auto constants = std::make_shared<std::vector<double>>();
  for (const double side : heads.side) constants->push_back(-side);
  const tav::attr::lib::LinearRows all{space, terms.start, terms.column, terms.value, *constants};
  return std::make_shared<tav::attr::lib::LinearRowsContainer>(all, constants);
}

template <class Block>
Block blockOf(std::shared_ptr<BlockGroup> group) {
  Block block;
  block.setGroup(tav::opt::tag::kConstraint, std::move(group));
  return block;
}

}  // namespace

tav::opt::ConstraintContainer linearBlock(const rewrite::LinearRows& rows, std::uint64_t space,
                                          const rewrite::Starts& start) {
  const auto group = groupOf(rows.heads);
  group->set(Q::function, "function", linearFunctions(rows.heads, rows.terms, space));
  if (!start.linear.empty()) group->set(Q::marginal, "marginal", tav::attr::lib::viewOf<double>(start.linear));
  if (!start.linearBasis.empty()) {
    group->set(Q::basis, "basis status", tav::attr::lib::viewOf<int>(start.linearBasis));
  }
  return blockOf<tav::opt::ConstraintContainer>(group);
}

tav::opt::ConstraintContainer quadraticBlock(const rewrite::QuadraticRows& rows, std::uint64_t space) {
  const auto functions = std::make_shared<std::vector<Quadratic>>();
  for (std::size_t i = 0; i < rows.heads.size(); ++i) {
    const Linear linear{space, part(rows.terms.column, rows.terms.start, i),
                        part(rows.terms.value, rows.terms.start, i), -rows.heads.side[i], nullptr};
    const auto& products = rows.quadratic;
    functions->push_back({linear, part(products.first, products.start, i), part(products.second, products.start, i),
                          part(products.value, products.start, i), nullptr});
  }
  std::vector<Symbol> symbols;
  symbols.reserve(functions->size());
  for (const Quadratic& function : *functions) {
    symbols.push_back(Symbol::ofQuadratic(std::shared_ptr<const Quadratic>(functions, &function)));
  }
  const auto group = groupOf(rows.heads);
  group->set(Q::function, "function", owned(std::move(symbols)));
  return blockOf<tav::opt::ConstraintContainer>(group);
}

tav::opt::LinkedConstraintContainer indicatorBlock(const rewrite::IndicatorRows& rows, std::uint64_t space) {
  using L = tav::opt::LinkQuantity;
  using tav::opt::LinkType;
  const auto group = groupOf(rows.heads);
  group->set(Q::function, "function", linearFunctions(rows.heads, rows.terms, space));
  std::vector<int> types;
  std::vector<Symbol> variables;
  for (std::size_t i = 0; i < rows.heads.size(); ++i) {
    types.push_back(static_cast<int>(rows.active[i] != 0 ? LinkType::one : LinkType::zero));
    variables.push_back(Symbol::ofVariable(space, rows.binary[i]));
  }
  const auto link = std::make_shared<BlockGroup>();
  link->set(L::type, "type", owned(std::move(types)));
  link->set(L::variable, "variable", owned(std::move(variables)));
  auto block = blockOf<tav::opt::LinkedConstraintContainer>(group);
  block.setGroup(tav::opt::tag::kConstraintLink, link);
  return block;
}

tav::opt::ConstraintContainer nonlinearBlock(const rewrite::NonlinearRows& rows, std::string_view ownGroup) {
  std::vector<Symbol> symbols;
  symbols.reserve(rows.functions.size());
  for (const auto& function : rows.functions) symbols.push_back(Symbol::ofView(function));
  const auto group = groupOf(rows.heads);
  group->set(Q::function, "function", owned(std::move(symbols)));
  auto block = blockOf<tav::opt::ConstraintContainer>(group);
  const auto own = std::make_shared<BlockGroup>();
  own->set(0, "trynonlin", tav::attr::lib::viewOf<int>(rows.tryNonlinear));
  block.setGroup(ownGroup, own);
  return block;
}

SetView viewOf(const kavo_sets& sets) {
  if (sets.count == 0) return {};
  const std::size_t members = sets.start[sets.count];
  return {{sets.type, sets.count}, {sets.start, sets.count + 1}, {sets.column, members}, {sets.weight, members}};
}

SetView viewOf(const rewrite::OrderedSets& sets) {
  return {sets.type, sets.members.start, sets.members.column, sets.members.value};
}

// The variables of a set's function are its members. Its coefficients say nothing; the weights serve.
tav::opt::ConstraintContainer setBlock(const SetView& sets, std::uint64_t space) {
  std::vector<int> types;
  std::vector<Symbol> weights;
  for (std::size_t i = 0; i < sets.type.size(); ++i) {
    types.push_back(static_cast<int>(sets.type[i] == 1 ? tav::opt::SosType::one : tav::opt::SosType::two));
    const auto own = sets.weight.subspan(sets.start[i], sets.start[i + 1] - sets.start[i]);
    const std::vector<double> values(own.begin(), own.end());
    weights.push_back(Symbol::ofVector(std::make_shared<tav::math::Vector<double>>(values)));
  }
  const auto constants = std::make_shared<std::vector<double>>(types.size());
  const tav::attr::lib::LinearRows members{space, sets.start, sets.column, sets.weight, *constants};
  const auto group = std::make_shared<BlockGroup>();
  group->set(Q::type, "type", owned(std::move(types)));
  group->set(Q::function, "function",
             tav::attr::BaseContainer(std::make_shared<tav::attr::lib::LinearRowsContainer>(members, constants)));
  group->set(Q::weights, "weights", owned(std::move(weights)));
  return blockOf<tav::opt::ConstraintContainer>(group);
}

}  // namespace brel::load
