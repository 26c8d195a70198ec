#pragma once

#include <string_view>

// The names by which parts of a model are asked for.
namespace tav::opt::tag {

inline constexpr std::string_view kIntervalDomain = "tav:interval_domain";
inline constexpr std::string_view kStaticBoundedDomain = "tav:static_bounded_domain";
inline constexpr std::string_view kSenseDomain = "tav:sense_domain";
inline constexpr std::string_view kSosDomain = "tav:sos_domain";
inline constexpr std::string_view kLinearFunction = "tav:linear_function";
inline constexpr std::string_view kQuadraticFunction = "tav:quadratic_function";
inline constexpr std::string_view kIdentityFunction = "tav:identity_function";
inline constexpr std::string_view kConstraintLink = "tav:constr_link";

// Groups of a block.
inline constexpr std::string_view kVariable = "tav:variable";
inline constexpr std::string_view kConstraint = "tav:constraint";

inline constexpr std::string_view kContext = "tav:context";
inline constexpr std::string_view kSolver = "tav:solver";
inline constexpr std::string_view kCommand = "tav:command";

}  // namespace tav::opt::tag
