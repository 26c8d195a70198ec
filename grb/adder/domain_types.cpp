#include "grb/adder/domain_types.h"

#include "grb/adder/adder.h"
#include "tav/opt/support_exception.h"

namespace grb {

void refuseDomainType(const std::source_location& at) {
  throw tav::opt::SupportException("Domain type not supported.", adderLocation(at));
}

}  // namespace grb
