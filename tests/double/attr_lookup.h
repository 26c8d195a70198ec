// Finding attribute values: scripted ones first, then those that the model holds, then Gurobi's defaults.
#pragma once

#include <optional>
#include <string>

#include "tests/double/handles.h"

namespace gurobi_double {

/// All names in lower case. Nothing: not available now.
std::optional<double> findNumber(const State& state, const GRBmodel& model, const std::string& name);
std::optional<std::string> findText(const State& state, const GRBmodel& model, const std::string& name);
std::optional<double> findNumber(const State& state, const GRBmodel& model, const std::string& name, int element);
std::optional<std::string> findText(const State& state, const GRBmodel& model, const std::string& name, int element);

/// Whether GRBisattravailable says yes.
bool isAvailable(const State& state, const GRBmodel& model, const std::string& name);

}  // namespace gurobi_double
