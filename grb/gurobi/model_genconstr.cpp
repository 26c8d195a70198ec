#include "grb/gurobi/model.h"
#include "grb/gurobi/span_args.h"

namespace grb {

void GurobiModel::addGenConstrMax(const char* name, int resvar, std::span<const int> vars, double constant) {
  check(api_->GRBaddgenconstrMax(changing(), name, resvar, count(vars), data(vars), constant), "GRBaddgenconstrMax");
}

void GurobiModel::addGenConstrMin(const char* name, int resvar, std::span<const int> vars, double constant) {
  check(api_->GRBaddgenconstrMin(changing(), name, resvar, count(vars), data(vars), constant), "GRBaddgenconstrMin");
}

void GurobiModel::addGenConstrAbs(const char* name, int resvar, int argvar) {
  check(api_->GRBaddgenconstrAbs(changing(), name, resvar, argvar), "GRBaddgenconstrAbs");
}

void GurobiModel::addGenConstrAnd(const char* name, int resvar, std::span<const int> vars) {
  check(api_->GRBaddgenconstrAnd(changing(), name, resvar, count(vars), data(vars)), "GRBaddgenconstrAnd");
}

void GurobiModel::addGenConstrOr(const char* name, int resvar, std::span<const int> vars) {
  check(api_->GRBaddgenconstrOr(changing(), name, resvar, count(vars), data(vars)), "GRBaddgenconstrOr");
}

void GurobiModel::addGenConstrNorm(const char* name, int resvar, std::span<const int> vars, double which) {
  check(api_->GRBaddgenconstrNorm(changing(), name, resvar, count(vars), data(vars), which), "GRBaddgenconstrNorm");
}

// No mark of its own: the variable or row that comes with every expression has marked the update.
void GurobiModel::addGenConstrNL(const char* name, int resvar, std::span<const int> opcodes,
                                 std::span<const double> nodeData, std::span<const int> parents) {
  check(api_->GRBaddgenconstrNL(model(), name, resvar, count(opcodes), data(opcodes), data(nodeData), data(parents)),
        "GRBaddgenconstrNL");
}

void GurobiModel::addGenConstrIndicator(const char* name, int binvar, int binval, std::span<const int> vars,
                                        std::span<const double> values, char sense, double rhs) {
  check(api_->GRBaddgenconstrIndicator(changing(), name, binvar, binval, count(vars), data(vars), data(values), sense,
                                       rhs),
        "GRBaddgenconstrIndicator");
}

void GurobiModel::addGenConstrPoly(const char* name, int xvar, int yvar, std::span<const double> coefficients,
                                   const char* options) {
  check(api_->GRBaddgenconstrPoly(changing(), name, xvar, yvar, count(coefficients), data(coefficients), options),
        "GRBaddgenconstrPoly");
}

void GurobiModel::addGenConstrExp(const char* name, int xvar, int yvar, const char* options) {
  check(api_->GRBaddgenconstrExp(changing(), name, xvar, yvar, options), "GRBaddgenconstrExp");
}

void GurobiModel::addGenConstrExpA(const char* name, int xvar, int yvar, double base, const char* options) {
  check(api_->GRBaddgenconstrExpA(changing(), name, xvar, yvar, base, options), "GRBaddgenconstrExpA");
}

void GurobiModel::addGenConstrLog(const char* name, int xvar, int yvar, const char* options) {
  check(api_->GRBaddgenconstrLog(changing(), name, xvar, yvar, options), "GRBaddgenconstrLog");
}

void GurobiModel::addGenConstrLogA(const char* name, int xvar, int yvar, double base, const char* options) {
  check(api_->GRBaddgenconstrLogA(changing(), name, xvar, yvar, base, options), "GRBaddgenconstrLogA");
}

void GurobiModel::addGenConstrLogistic(const char* name, int xvar, int yvar, const char* options) {
  check(api_->GRBaddgenconstrLogistic(changing(), name, xvar, yvar, options), "GRBaddgenconstrLogistic");
}

void GurobiModel::addGenConstrPow(const char* name, int xvar, int yvar, double exponent, const char* options) {
  check(api_->GRBaddgenconstrPow(changing(), name, xvar, yvar, exponent, options), "GRBaddgenconstrPow");
}

void GurobiModel::addGenConstrSin(const char* name, int xvar, int yvar, const char* options) {
  check(api_->GRBaddgenconstrSin(changing(), name, xvar, yvar, options), "GRBaddgenconstrSin");
}

void GurobiModel::addGenConstrCos(const char* name, int xvar, int yvar, const char* options) {
  check(api_->GRBaddgenconstrCos(changing(), name, xvar, yvar, options), "GRBaddgenconstrCos");
}

void GurobiModel::addGenConstrTan(const char* name, int xvar, int yvar, const char* options) {
  check(api_->GRBaddgenconstrTan(changing(), name, xvar, yvar, options), "GRBaddgenconstrTan");
}

}  // namespace grb
