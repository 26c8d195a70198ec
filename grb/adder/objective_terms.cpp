#include "grb/adder/objective_terms.h"

#include <algorithm>
#include <functional>

#include "grb/adder/adder.h"
#include "tav/idx/lib/list.h"
#include "tav/idx/lib/range.h"

namespace grb {

void refuseMultipleObjectives(const std::source_location& at) {
  throw tav::opt::SupportException("Multiple objectives only supported with linear objectives.", adderLocation(at));
}

void writeCoefficients(GurobiModel& model, const char* attribute, const LinearTerms& terms) {
  std::vector<int> positions(terms.positions.begin(), terms.positions.end());
  std::vector<double> values(terms.coefficients.begin(), terms.coefficients.end());
  const bool increasing =
      std::adjacent_find(positions.begin(), positions.end(), std::greater_equal<>()) == positions.end();
  if (!increasing) mergeTerms(positions, values);
  if (positions.empty()) return;
  const int count = static_cast<int>(positions.size());
  if (positions.back() - positions.front() + 1 == count) {
    model.setDblAttrArray(attribute, tav::idx::lib::Range(positions.front(), count), values);
  } else {
    model.setDblAttrArray(attribute, std::make_shared<tav::idx::lib::List>(std::move(positions)), values);
  }
}

}  // namespace grb
