#include "brel/plugin/searched.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "brel/result/violations.h"

namespace brel::plugin {
namespace {

constexpr double kObjectiveTolerance = 1e-6;  // relative to values beyond 1
constexpr double kTolerance = 1e-5;           // what a search keeps integrality and ordered sets to

bool isInteger(unsigned char type) { return type == KAVO_BINARY || type == KAVO_INTEGER || type == KAVO_SEMIINTEGER; }

// Fixing rounds.
bool hasMoved(double from, double to) {
  return std::abs(from - to) > kTolerance && std::abs(std::round(from) - to) > kTolerance;
}

}  // namespace

Searched::Searched(const UserModel& user, result::Reader& reader) : user_(user), facts_(reader.facts()) {
  const auto point = reader.columns();
  point_.assign(point.begin(), point.end());
}

bool Searched::isInfinite() const { return result::isInfinite(facts_.objective, point_, result::kInfiniteValue); }

// How much better than the other one an objective is, beyond rounding; 0 when it is as good or when one is not known.
double Searched::improvement(double objective, double on) const {
  const bool isMost = user_.objective && user_.objective->sense == KAVO_MAXIMIZE;
  const double better = isMost ? objective - on : on - objective;
  return std::abs(better) > kObjectiveTolerance * std::max(1.0, std::abs(on)) ? better : 0;
}

bool Searched::isImproved(const kavo_finish& fixed) const { return improvement(fixed.objective, facts_.objective) > 0; }

std::string Searched::whyNot(const kavo_finish& fixed, std::span<const double> point) const {
  if (improvement(fixed.objective, facts_.objective) < 0 || improvement(fixed.objective, facts_.bound) > 0) {
    return fmt::format("its objective is {:.10g}, and that of the search {:.10g}", fixed.objective, facts_.objective);
  }
  for (std::size_t j = 0; j < point.size(); ++j) {
    if (isInteger(user_.columns.type[j]) && hasMoved(point_[j], point[j])) {
      return "integer variables have other values than in the point of the search";
    }
  }
  const double broken = result::largestOfBoundsAndSets(user_, point);
  if (broken > std::max(kTolerance, 2 * result::largestOfBoundsAndSets(user_, point_))) {
    return "its point breaks ordered sets or bounds of the model";
  }
  return {};
}

}  // namespace brel::plugin
