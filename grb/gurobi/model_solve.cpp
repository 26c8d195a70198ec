#include "grb/gurobi/model.h"
#include "grb/gurobi/span_args.h"

namespace grb {

void GurobiModel::optimize() {
  GRBmodel* const handle = model();
  dirty_ = false;  // before the call, so that a read inside a callback asks for no update, which Gurobi would refuse
  runChecked([&] { return api_->GRBoptimize(handle); }, "GRBoptimize");
}

void GurobiModel::computeIIS() {
  GRBmodel* const handle = model();
  runChecked([&] { return api_->GRBcomputeIIS(handle); }, "GRBcomputeIIS");
}

double GurobiModel::feasRelax(int relaxobjtype, int minrelax, std::span<const double> lbpen,
                              std::span<const double> ubpen, std::span<const double> rhspen) {
  GRBmodel* const handle = reading();
  double value = 0;
  runChecked(
      [&] {
        return api_->GRBfeasrelax(handle, relaxobjtype, minrelax, data(lbpen), data(ubpen), data(rhspen), &value);
      },
      "GRBfeasrelax");
  relaxed_ = true;
  return value;
}

void GurobiModel::convertToFixed() {
  GRBmodel* const handle = changing();
  runChecked([&] { return api_->GRBconverttofixed(handle); }, "GRBconverttofixed");
  fixed_ = true;
}

void GurobiModel::tuneModel() { env_->check(api_->GRBtunemodel(model()), "GRBtunemodel"); }

void GurobiModel::getTuneResult(int i) { check(api_->GRBgettuneresult(model(), i), "GRBgettuneresult"); }

void GurobiModel::write(const char* filename) { check(api_->GRBwrite(model(), filename), "GRBwrite"); }

void GurobiModel::setCallbackFuncAdv(GurobiCallback callback, void* context, unsigned wheres) {
  check(api_->GRBsetcallbackfuncadv(model(), callback, context, wheres), "GRBsetcallbackfuncadv");
}

void GurobiModel::setLogCallbackFunc(GurobiLogCallback callback, void* context) {
  check(api_->GRBsetlogcallbackfunc(model(), callback, context), "GRBsetlogcallbackfunc");
}

// Not by model(): what that looks at may change on the other thread.
void GurobiModel::terminate() const {
  if (!model_) failUnusable();
  api_->GRBterminate(model_.get());
}

}  // namespace grb
