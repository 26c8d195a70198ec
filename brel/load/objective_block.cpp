#include "brel/load/objective_block.h"

#include <memory>
#include <utility>
#include <vector>

#include "brel/host.h"
#include "brel/load/containers.h"
#include "tav/math/symbol.h"
#include "tav/opt/quantities.h"
#include "tav/opt/tags.h"

namespace brel::load {
namespace {

using Kind = rewrite::BeyondObjective::Kind;
using Symbol = tav::math::Symbol<double>;
using Linear = tav::math::LinearFunction<double>;
using Quadratic = tav::math::QuadraticFunction<double>;

Kind kindOf(const rewrite::Beyond* beyond) { return beyond == nullptr ? Kind::asTheUsers : beyond->objective.kind; }

Symbol functionOf(const kavo_objective& user, const rewrite::Beyond* beyond, std::uint64_t space) {
  if (kindOf(beyond) == Kind::asTheUsers) {
    return Symbol::ofLinear({space, {user.column, user.terms}, {user.value, user.terms}, user.constant, nullptr});
  }
  const rewrite::BeyondObjective& made = beyond->objective;
  if (made.kind == Kind::nonlinear) return Symbol::ofView(made.function.front());
  const Linear linear{space, made.terms.column, made.terms.value, made.constant, nullptr};
  if (made.kind == Kind::linear) return Symbol::ofLinear(linear);
  const rewrite::QuadraticTerms& products = made.quadratic;
  return Symbol::ofQuadratic(
      std::make_shared<const Quadratic>(Quadratic{linear, products.first, products.second, products.value, nullptr}));
}

}  // namespace

std::string_view objectiveFunction(const rewrite::Beyond* beyond) {
  switch (kindOf(beyond)) {
    case Kind::quadratic:
      return tav::opt::tag::kQuadraticFunction;
    case Kind::nonlinear:
      return tav::opt::tag::kIdentityFunction;
    default:
      return tav::opt::tag::kLinearFunction;
  }
}

tav::opt::ConstraintContainer objectiveBlock(const kavo_objective& user, const rewrite::Beyond* beyond,
                                             std::uint64_t space) {
  using Q = tav::opt::ObjectiveQuantity;
  const auto group = std::make_shared<tav::opt::BlockGroup>();
  group->set(Q::sense, "sense", owned(std::vector<int>{user.sense}));
  group->set(Q::function, "function", owned(std::vector<Symbol>{functionOf(user, beyond, space)}));
  tav::opt::ConstraintContainer block;
  block.setGroup(tav::opt::tag::kConstraint, group);
  return block;
}

std::size_t objectiveCount(const trpRec* host) {
  std::size_t count = 0;
  checkHost(kavo_counts(host, nullptr, nullptr, nullptr, &count));
  return count;
}

tav::opt::ConstraintContainer allObjectivesBlock(trpRec* host, std::uint64_t space) {
  using Q = tav::opt::ObjectiveQuantity;
  const std::size_t count = objectiveCount(host);
  std::vector<int> senses;
  std::vector<Symbol> functions;
  for (std::size_t k = 0; k < count; ++k) {
    kavo_objective user{};
    checkHost(kavo_link_objective(host, k, &user));
    senses.push_back(user.sense);
    functions.push_back(functionOf(user, nullptr, space));
  }
  const auto group = std::make_shared<tav::opt::BlockGroup>();
  group->set(Q::sense, "sense", owned(std::move(senses)));
  group->set(Q::function, "function", owned(std::move(functions)));
  tav::opt::ConstraintContainer block;
  block.setGroup(tav::opt::tag::kConstraint, group);
  return block;
}

}  // namespace brel::load
