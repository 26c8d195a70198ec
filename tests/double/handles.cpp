#include "tests/double/handles.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace gurobi_double {
namespace {

using Names = std::set<std::string>;

const Names kVarNames{"lb",        "ub",       "obj",        "vtype",   "varname", "branchpriority",
                      "partition", "start",    "varhintval", "pstart",  "vbasis",  "x",
                      "rc",        "xn",       "poolnx",     "salblow", "salbup",  "saublow",
                      "saubup",    "saobjlow", "saobjup",    "iislb",   "iisub",   "objn"};
const Names kRowNames{"rhs", "sense", "constrname", "lazy",    "dstart",   "cbasis",
                      "pi",  "slack", "sarhslow",   "sarhsup", "iisconstr"};
const Names kQRowNames{"qcrhs", "qcsense", "qcname", "qcslack", "qcpi", "iisqconstr"};
const Names kSosNames{"iissos"};
const Names kGenNames{"genconstrname", "genconstrtype", "funcnonlinear", "iisgenconstr"};

}  // namespace

std::string lower(const char* name) {
  std::string result = name != nullptr ? name : "";
  std::transform(result.begin(), result.end(), result.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return result;
}

Kind attrKind(const std::string& name) {
  if (kVarNames.contains(name)) return Kind::kVar;
  if (kRowNames.contains(name)) return Kind::kRow;
  if (kQRowNames.contains(name)) return Kind::kQRow;
  if (kSosNames.contains(name)) return Kind::kSos;
  return kGenNames.contains(name) ? Kind::kGen : Kind::kModel;
}

void AttrValues::merge(const AttrValues& newer) {
  for (const auto& [name, value] : newer.numbers) numbers[name] = value;
  for (const auto& [name, value] : newer.texts) texts[name] = value;
  for (const auto& [name, values] : newer.elementNumbers) {
    for (const auto& [element, value] : values) elementNumbers[name][element] = value;
  }
  for (const auto& [name, values] : newer.elementTexts) {
    for (const auto& [element, value] : values) elementTexts[name][element] = value;
  }
}

}  // namespace gurobi_double

bool GRBmodel::hasQueue() const {
  const bool noElements = std::all_of(std::begin(queued), std::end(queued), [](int n) { return n == 0; });
  return !noElements || coefficientsQueued || !queuedValues.empty();
}

void GRBmodel::commit() {
  for (int kind = 0; kind < gurobi_double::kKinds; ++kind) committed[kind] += queued[kind];
  values.merge(queuedValues);
  discard();
}

void GRBmodel::discard() {
  std::fill(std::begin(queued), std::end(queued), 0);
  queuedValues = {};
  coefficientsQueued = false;
}
