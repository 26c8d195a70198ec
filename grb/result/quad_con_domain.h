#pragma once

#include "grb/result/model_view.h"

namespace grb {

// Quantities of quadratic rows: slack and marginal (tav::opt::RowQuantity), the slack with the sign of linear rows.
// Gurobi has marginals only when the parameter "QCPDual" asks for them. Nothing in the context of a running solve.
class QuadConDomain : public ModelView {
 public:
  QuadConDomain(const Data& data, std::optional<Event> event);

 protected:
  tav::attr::BaseContainer make(int key) const override;
};

}  // namespace grb
