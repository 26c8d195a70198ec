#include "grb/result/quad_con_domain.h"

#include <array>

#include "grb/result/attribute_container.h"
#include "grb/result/sources.h"
#include "grb/result/transforms.h"
#include "tav/attr/transform.h"
#include "tav/opt/quantities.h"

namespace grb {
namespace {

using Q = tav::opt::RowQuantity;

constexpr std::array kProvided{Quantity{Q::slack, "slack"}, Quantity{Q::marginal, "marginal"}};

}  // namespace

std::span<const Quantity> QuadConDomain::provided() const {
  return event_ == Event::none ? std::span<const Quantity>(kProvided) : std::span<const Quantity>();
}

tav::attr::BaseContainer QuadConDomain::make(int key) const {
  const auto values = [this](const char* attribute) {
    return std::make_shared<DoubleAttributeContainer>(model_, attribute, "NumQConstrs", Access::readOnly);
  };
  if (key == Q::slack) return transformed<tav::attr::transform::Negate>(values("QCSlack"));
  return transformed<transform::DoubleValues>(values("QCPi"));
}

}  // namespace grb
