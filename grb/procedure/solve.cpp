#include "grb/procedure/solve.h"

#include "grb/callback/callbacks.h"
#include "grb/gurobi/exception.h"
#include "grb/result/solution_status.h"

namespace grb {
namespace {

void warnWithoutGpu(Data& data) {
  if (data.model->getIntParam("PDHGGPU") == 0 || data.model->isGpuSupported()) return;
  data.callbacks.log->headed("Warning",
                             "'PDHGGPU' has been set to 1, but this is not a Gurobi GPU build.\n"
                             "In order to download and install a Gurobi GPU build, follow instructions at\n"
                             "https://docs.gurobi.com/current/#features/gpu");
}

void installCallbacks(Data& data) {
  GurobiModel& model = *data.model;
  data.callbacks.stop = [&model] { model.terminate(); };
  model.setLogCallbackFunc(grbLogCallback, &data.callbacks);
  if (data.callbacks.handler) model.setCallbackFuncAdv(grbAdvancedCallback, &data.callbacks, kCallbackMask);
}

// What a listener raised matters more than the error that stopping for it may have caused.
void optimize(Data& data) {
  try {
    data.model->optimize();
  } catch (const GurobiException&) {
    data.callbacks.rethrowKept();
    throw;
  }
  data.callbacks.rethrowKept();
}

}  // namespace

tav::opt::Termination solve(Data& data) {
  warnWithoutGpu(data);
  installCallbacks(data);
  optimize(data);
  return termination(data.model->getIntAttr("Status"));
}

}  // namespace grb
