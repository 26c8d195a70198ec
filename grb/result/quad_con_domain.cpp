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

QuadConDomain::QuadConDomain(const Data& data, std::optional<Event> event) : ModelView(data, event, kProvided) {}

tav::attr::BaseContainer QuadConDomain::make(int key) const {
  const auto values = [this](const char* attribute) {
    return std::make_shared<DoubleAttributeContainer>(model(), attribute, "NumQConstrs", Access::readOnly);
  };
  if (key == Q::slack) return transformed<tav::attr::transform::Negate>(values("QCSlack"));
  return transformed<transform::DoubleValues>(values("QCPi"));
}

}  // namespace grb
