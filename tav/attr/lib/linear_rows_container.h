#pragma once

#include <cstddef>
#include <memory>
#include <span>
#include <utility>

#include "tav/attr/container.h"
#include "tav/attr/lib/gather.h"
#include "tav/math/symbol.h"

namespace tav::attr::lib {

// Linear functions of one space in compressed form: function i has the terms start[i] .. start[i + 1] - 1 and the
// constant constants[i]. start: one entry more than there are functions.
struct LinearRows {
  unsigned long long space = 0;
  std::span<const std::size_t> start;
  std::span<const int> positions;
  std::span<const double> coefficients;
  std::span<const double> constants;

  std::size_t size() const { return constants.size(); }
};

// A read-only container over somebody's compressed rows. Each is handed out as a symbol that views its terms; who takes
// many rows looks at them where they stand. The arrays must outlive the container unless `owner` keeps them alive.
class LinearRowsContainer final : public AbstractContainer<math::Symbol<double>> {
 public:
  using Symbol = math::Symbol<double>;
  explicit LinearRowsContainer(const LinearRows& rows, std::shared_ptr<const void> owner = nullptr)
      : rows_(rows), owner_(std::move(owner)) {}

  using AbstractContainer<Symbol>::get;
  int size() const override { return static_cast<int>(rows_.size()); }

  void get(const idx::List& list, std::span<Symbol> values, int /*solution*/) const override {
    checkAccess(list, values.size(), rows_.size());
    idx::visit(list, [&](int k, int index) { values[static_cast<std::size_t>(k)] = function(index); });
  }

  Symbol get(int index, int /*solution*/) const override {
    checkIndex(index, rows_.size());
    return function(index);
  }

  const LinearRows& rows() const { return rows_; }

 private:
  Symbol function(int index) const {
    const auto i = static_cast<std::size_t>(index);
    const std::size_t first = rows_.start[i];
    const std::size_t count = rows_.start[i + 1] - first;
    return Symbol::ofLinear({rows_.space, rows_.positions.subspan(first, count),
                             rows_.coefficients.subspan(first, count), rows_.constants[i], nullptr});
  }

  LinearRows rows_;
  std::shared_ptr<const void> owner_;
};

}  // namespace tav::attr::lib
