#pragma once

#include <cstdint>

#include "brel/rewrite/solver_model.h"
#include "kavo/link.h"
#include "tav/attr/container.h"
#include "tav/math/symbol.h"

// Containers over a model that is sent; the model must outlive them.
namespace brel::load {

// The types of what is sent, made when they are asked for.
class ColumnTypes : public tav::attr::AbstractContainer<int> {
 public:
  explicit ColumnTypes(const rewrite::SolverModel& model) : model_(model) {}
  int size() const override { return static_cast<int>(model_.columnCount()); }
  int get(int index, int solution) const override;
  void get(const tav::idx::List& list, std::span<int> values, int solution) const override;

 private:
  const rewrite::SolverModel& model_;
};

class RowTypes : public tav::attr::AbstractContainer<int> {
 public:
  explicit RowTypes(const rewrite::SolverModel& model) : model_(model) {}
  int size() const override { return static_cast<int>(model_.rowCount()); }
  int get(int index, int solution) const override;
  void get(const tav::idx::List& list, std::span<int> values, int solution) const override;

 private:
  const rewrite::SolverModel& model_;
};

// The functions of the rows for the solver's variable space: the host's matrix itself when no rule touched a row.
tav::attr::BaseContainer rowFunctions(const rewrite::SolverModel& model, const kavo_rows& rows, std::uint64_t space);

// The functions one by one: views of the host's matrix, or of the terms that a rule gave a row. The function of a row
// is its terms minus its side.
class RowFunctions : public tav::attr::AbstractContainer<tav::math::Symbol<double>> {
 public:
  using Symbol = tav::math::Symbol<double>;
  // space: the solver's variable space.
  RowFunctions(const rewrite::SolverModel& model, std::uint64_t space) : model_(model), space_(space) {}

  int size() const override { return static_cast<int>(model_.rowCount()); }
  Symbol get(int index, int solution) const override;
  void get(const tav::idx::List& list, std::span<Symbol> values, int solution) const override;

 private:
  const rewrite::SolverModel& model_;
  std::uint64_t space_;
};

}  // namespace brel::load
