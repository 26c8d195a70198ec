#pragma once

#include <memory>

#include "grb/data.h"
#include "grb/result/quantity_view.h"

namespace grb {

// Quantities of quadratic rows: slack and marginal (tav::opt::RowQuantity), the slack with the sign of linear rows.
// Gurobi has marginals only when the parameter "QCPDual" asks for them. Nothing in the context of a running solve.
class QuadConDomain : public QuantityView {
 public:
  QuadConDomain(const Data& data, std::optional<Event> event) : model_(data.model), event_(event) {}

 protected:
  std::span<const Quantity> provided() const override;
  tav::attr::BaseContainer make(int key) const override;

 private:
  std::weak_ptr<GurobiModel> model_;
  std::optional<Event> event_;
};

}  // namespace grb
