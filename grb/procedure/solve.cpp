#include "grb/procedure/solve.h"

#include "grb/callback/callbacks.h"
#include "grb/gurobi/exception.h"
#include "grb/procedure/parameter_file.h"
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

// Runs a step in which Gurobi may call back. What a listener raised matters more than the error that stopping for it
// may have caused.
template <class Step>
void listened(Data& data, const Step& step) {
  try {
    step();
  } catch (const GurobiException&) {
    data.callbacks.rethrowKept();
    throw;
  }
  data.callbacks.rethrowKept();
}

// Runs a step on the file that an option names, if it names one.
template <class Step>
void onFile(Data& data, FileOption option, const Step& step) {
  const std::string file = data.options.file(option);
  if (!file.empty()) listened(data, [&] { step(file); });
}

}  // namespace

tav::opt::Termination solve(Data& data) {
  GurobiModel& model = *data.model;
  // A long solve is not to be lost for the sake of a file that comes after it.
  onFile(data, FileOption::writeparams, requireWritable);
  warnWithoutGpu(data);
  installCallbacks(data);
  onFile(data, FileOption::readparams, [&](const std::string& file) {
    readParameterFile(model, *data.callbacks.log, file, data.beforeParameterFile);
  });
  onFile(data, FileOption::writeprob, [&](const std::string& file) { model.write(file.c_str()); });
  listened(data, [&] { model.optimize(); });
  onFile(data, FileOption::writeparams, [&](const std::string& file) { model.writeParams(file.c_str()); });
  return termination(data.model->getIntAttr("Status"));
}

}  // namespace grb
