#pragma once

#include <memory>

#include "grb/data.h"
#include "grb/result/quantity_view.h"

namespace grb {

// A view whose quantities are those of the model alone: nothing in the context of a running solve.
class ModelView : public QuantityView {
 protected:
  // quantities: must outlive the view.
  ModelView(const Data& data, std::optional<Event> event, std::span<const Quantity> quantities)
      : model_(data.model), quantities_(event == Event::none ? quantities : std::span<const Quantity>()) {}

  std::span<const Quantity> provided() const override { return quantities_; }
  const std::weak_ptr<GurobiModel>& model() const { return model_; }

 private:
  std::weak_ptr<GurobiModel> model_;
  std::span<const Quantity> quantities_;
};

}  // namespace grb
