#pragma once

#include <algorithm>
#include <limits>
#include <optional>
#include <string>

#include "grb/gurobi/constants.h"
#include "grb/result/attribute_container.h"
#include "tav/opt/codes.h"
#include "tav/util/cast.h"
#include "tav/util/exception.h"

// Maps from Gurobi's codes and sentinels to the framework's (see tav/attr/transform.h).
namespace grb::transform {

// Basis statuses of variables. It has no way back: nobody writes a basis through such a view. What was not read is no
// status of Gurobi's and stays "unread".
struct Basis {
  using Inner = int;
  using Outer = int;
  static int read(const int& status) {
    using tav::opt::BasisStatus;
    switch (status) {
      case basis::kBasic:
        return static_cast<int>(BasisStatus::basic);
      case basis::kNonbasicLower:
        return static_cast<int>(BasisStatus::lower);
      case basis::kNonbasicUpper:
        return static_cast<int>(BasisStatus::upper);
      case ElementAccess<int>::kUnread:
        return status;
      default:
        return static_cast<int>(BasisStatus::superbasic);
    }
  }
  static std::optional<int> convert(const int& status) {
    return status >= 1 && status <= 3 ? status : static_cast<int>(tav::opt::BasisStatus::superbasic);
  }
};

// Only the exact sentinels mean something: 1e100 and -1e100 infinity, 1e101 no value. Other values pass as they are.
struct DoubleValues {
  using Inner = double;
  using Outer = double;
  static double read(const double& value) {
    if (value == kInfinity) return std::numeric_limits<double>::infinity();
    if (value == -kInfinity) return -std::numeric_limits<double>::infinity();
    if (value == kUndefined) return std::numeric_limits<double>::quiet_NaN();
    return value;
  }
  static double write(const double& value) { return value; }
  static std::optional<double> convert(const double& value) { return std::clamp(value, -kInfinity, kInfinity); }
};

// A double that counts something. Raises the cast error when it is no count.
struct DoubleToSize {
  using Inner = double;
  using Outer = unsigned long long;
  static unsigned long long read(const double& value) { return tav::numCast<unsigned long long>(value); }
};

// A parameter that is a text. Gurobi would cut a longer one without a word.
struct ParameterText {
  using Inner = std::string;
  using Outer = std::string;
  static std::string read(const std::string& text) { return text; }
  static std::string write(const std::string& text) {
    if (text.size() < kStringParamSize) return text;
    throw tav::CheckException::failedLessThan("length of a text parameter", text.size(), kStringParamSize);
  }
};

// One that is nobody's business: whether there is one is all that can be read.
struct Secret {
  using Inner = std::string;
  using Outer = std::string;
  static std::string read(const std::string& text) { return text.empty() ? "" : "***"; }
  static std::string write(const std::string& text) { return ParameterText::write(text); }
};

}  // namespace grb::transform
