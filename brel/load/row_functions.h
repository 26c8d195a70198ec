#pragma once

#include <cstdint>

#include "brel/rewrite/solver_model.h"
#include "kavo/link.h"
#include "tav/attr/abstract_container.h"
#include "tav/math/symbol.h"

namespace brel::load {

// The functions of the rows that are sent, made when they are asked for: views of the host's matrix, or of the terms that
// a rule gave a row. The function of a row is its terms minus its side.
class RowFunctions : public tav::attr::AbstractContainer<tav::math::Symbol<double>> {
 public:
  using Symbol = tav::math::Symbol<double>;
  // Both must outlive the container. space: the solver's variable space.
  RowFunctions(const kavo_rows& rows, const rewrite::SolverModel& model, std::uint64_t space)
      : rows_(rows), model_(model), space_(space) {}

  int size() const override { return static_cast<int>(model_.userRow.size()); }
  Symbol get(int index, int solution) const override;
  void get(const tav::idx::List& list, std::span<Symbol> values, int solution) const override;

 private:
  Symbol function(std::size_t row) const;

  const kavo_rows& rows_;
  const rewrite::SolverModel& model_;
  std::uint64_t space_;
};

}  // namespace brel::load
