#include "tests/double/attr_lookup.h"

#include <fmt/format.h>

#include "grb/gurobi/constants.h"

namespace gurobi_double {
namespace {

const std::map<std::string, Kind> kCounts{{"numvars", Kind::kVar},
                                          {"numconstrs", Kind::kRow},
                                          {"numqconstrs", Kind::kQRow},
                                          {"numsos", Kind::kSos},
                                          {"numgenconstrs", Kind::kGen}};

const std::map<std::string, double> kScalarDefaults{{"status", grb::status::kLoaded},
                                                    {"modelsense", 1},
                                                    {"numobj", 1},
                                                    {"objcon", 0},
                                                    {"solcount", 0},
                                                    {"numstart", 0},
                                                    {"ismip", 0},
                                                    {"runtime", 0},
                                                    {"work", 0},
                                                    {"numqnzs", 0},
                                                    {"numqcnzs", 0},
                                                    {"objncon", 0},
                                                    {"objnweight", 1},
                                                    {"objnpriority", 0},
                                                    {"objnabstol", 1e-6},
                                                    {"objnreltol", 0}};

const std::map<std::string, double> kElementDefaults{{"start", grb::kUndefined},
                                                     {"varhintval", grb::kUndefined},
                                                     {"branchpriority", 0},
                                                     {"partition", -1},
                                                     {"lazy", 0},
                                                     {"objn", 0},
                                                     {"funcnonlinear", -1}};

// Letters before the position in the names that Gurobi makes.
const std::map<std::string, std::string> kNamePrefixes{{"varname", "C"}, {"constrname", "R"}, {"genconstrname", "GC"}};

template <typename Map>
auto lookUp(const Map& map, const typename Map::key_type& key) {
  const auto found = map.find(key);
  return found != map.end() ? std::optional<typename Map::mapped_type>(found->second) : std::nullopt;
}

template <typename Value>
std::optional<Value> lookUp(const std::map<std::string, std::map<int, Value>>& map, const std::string& name, int i) {
  const auto found = map.find(name);
  return found != map.end() ? lookUp(found->second, i) : std::nullopt;
}

}  // namespace

std::optional<double> findNumber(const State& state, const GRBmodel& model, const std::string& name) {
  if (const auto value = lookUp(state.scripted.numbers, name)) return value;
  if (const auto kind = lookUp(kCounts, name)) return model.committed[static_cast<int>(*kind)];
  if (const auto value = lookUp(model.values.numbers, name)) return value;
  return lookUp(kScalarDefaults, name);
}

std::optional<std::string> findText(const State& state, const GRBmodel& model, const std::string& name) {
  if (const auto value = lookUp(state.scripted.texts, name)) return value;
  if (const auto value = lookUp(model.values.texts, name)) return value;
  return name == "modelname" ? std::optional<std::string>("") : std::nullopt;
}

std::optional<double> findNumber(const State& state, const GRBmodel& model, const std::string& name, int element) {
  if (const auto value = lookUp(state.scripted.elementNumbers, name, element)) return value;
  if (const auto value = lookUp(model.values.elementNumbers, name, element)) return value;
  return lookUp(kElementDefaults, name);
}

std::optional<std::string> findText(const State& state, const GRBmodel& model, const std::string& name, int element) {
  if (const auto value = lookUp(state.scripted.elementTexts, name, element)) return value;
  if (const auto value = lookUp(model.values.elementTexts, name, element)) return value;
  if (const auto prefix = lookUp(kNamePrefixes, name)) return fmt::format("{}{}", *prefix, element);
  return name == "qcname" ? std::optional<std::string>("") : std::nullopt;
}

bool isAvailable(const State& state, const GRBmodel& model, const std::string& name) {
  if (const auto said = lookUp(state.available, name)) return *said;
  if (attrKind(name) == Kind::kModel) return findNumber(state, model, name) || findText(state, model, name);
  const bool stored = state.scripted.elementNumbers.contains(name) || model.values.elementNumbers.contains(name);
  return stored || kElementDefaults.contains(name) || findText(state, model, name, 0).has_value();
}

}  // namespace gurobi_double
