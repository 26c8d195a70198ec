#include "grb/gurobi/model.h"
#include "grb/gurobi/span_args.h"

namespace grb {

void GurobiModel::addVar(std::span<const int> rows, std::span<const double> values, double obj, double lb, double ub,
                         char vtype, const char* name) {
  check(api_->GRBaddvar(changing(), count(rows), data(rows), data(values), obj, lb, ub, vtype, name), "GRBaddvar");
}

void GurobiModel::addVars(int count, std::span<const double> obj, std::span<const double> lb,
                          std::span<const double> ub, std::span<const char> vtype, std::span<const char* const> names) {
  check(api_->GRBaddvars(changing(), count, 0, nullptr, nullptr, nullptr, data(obj), data(lb), data(ub), data(vtype),
                         const_cast<char**>(data(names))),
        "GRBaddvars");
}

void GurobiModel::addQConstr(std::span<const int> linColumns, std::span<const double> linValues,
                             std::span<const int> rows, std::span<const int> columns, std::span<const double> values,
                             char sense, double rhs, const char* name) {
  check(api_->GRBaddqconstr(changing(), count(linColumns), data(linColumns), data(linValues), count(rows), data(rows),
                            data(columns), data(values), sense, rhs, name),
        "GRBaddqconstr");
}

void GurobiModel::addQpTerms(std::span<const int> rows, std::span<const int> columns, std::span<const double> values) {
  check(api_->GRBaddqpterms(changing(), count(rows), data(rows), data(columns), data(values)), "GRBaddqpterms");
}

void GurobiModel::addSos(std::span<const int> types, std::span<const int> begins, std::span<const int> members,
                         std::span<const double> weights) {
  check(api_->GRBaddsos(changing(), count(types), count(members), data(types), data(begins), data(members),
                        data(weights)),
        "GRBaddsos");
}

void GurobiModel::xchgCoeffs(std::span<const int> rows, std::span<const int> columns, std::span<const double> values) {
  check(api_->GRBXchgcoeffs(model(), rows.size(), data(rows), data(columns), data(values)), "GRBXchgcoeffs");
}

}  // namespace grb
