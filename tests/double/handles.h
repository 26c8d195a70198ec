// What stands behind the handles of the double, and what is scripted: the state that its answers come from.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "grb/gurobi/types.h"

namespace gurobi_double {

/// Names without regard to case, as Gurobi takes them.
std::string lower(const char* name);

using ParamValue = std::variant<int, double, std::string>;

/// Kinds of elements that attributes belong to.
enum class Kind { kModel, kVar, kRow, kQRow, kSos, kGen };
inline constexpr int kKinds = 6;

/// The kind that an attribute (in lower case) belongs to; kModel for those not known.
Kind attrKind(const std::string& name);

/// Attribute values. Integers and letters are kept as numbers, which is exact.
struct AttrValues {
  std::map<std::string, double> numbers;
  std::map<std::string, std::string> texts;
  std::map<std::string, std::map<int, double>> elementNumbers;
  std::map<std::string, std::map<int, std::string>> elementTexts;

  bool empty() const { return numbers.empty() && texts.empty() && elementNumbers.empty() && elementTexts.empty(); }
  /// Takes over everything that `newer` holds.
  void merge(const AttrValues& newer);
};

}  // namespace gurobi_double

struct GRBenv {
  std::string label;
  bool started = false;
  bool freed = false;
  std::string message;
  std::map<std::string, gurobi_double::ParamValue> params;
};

struct GRBmodel {
  std::string label;
  GRBenv env;
  bool freed = false;
  // Elements per kind and attribute values: what reads see, and what is queued until the next update.
  int committed[gurobi_double::kKinds] = {};
  int queued[gurobi_double::kKinds] = {};
  gurobi_double::AttrValues values;
  gurobi_double::AttrValues queuedValues;
  bool coefficientsQueued = false;
  grb::GurobiCallback callback = nullptr;
  void* callbackContext = nullptr;
  unsigned callbackMask = 0;
  grb::GurobiLogCallback logCallback = nullptr;
  void* logContext = nullptr;
  int terminations = 0;

  int total(gurobi_double::Kind kind) const {
    return committed[static_cast<int>(kind)] + queued[static_cast<int>(kind)];
  }
  bool hasQueue() const;
  void commit();
  void discard();
};

namespace gurobi_double {

/// A parameter that the double knows like Gurobi does: with a type, a default and bounds (numeric types).
struct ParamDefinition {
  std::string name;
  ParamValue defaultValue;
  double minimum = 0;
  double maximum = 0;
};

/// Everything that the answers of a double depend on. Keys are names in lower case.
struct State {
  std::vector<std::unique_ptr<GRBenv>> envs;
  std::vector<std::unique_ptr<GRBmodel>> models;
  std::vector<std::string> paramOrder;
  std::map<std::string, ParamDefinition> params;
  bool unknownParamsRefused = false;
  AttrValues scripted;
  std::map<std::string, bool> available;
  std::map<int, int> callbackInts;
  std::map<int, std::vector<double>> callbackDoubles;
  double relaxation = 0;
  std::string textBuffer;  // a text handed out lives until the next one
};

}  // namespace gurobi_double
