#include "grb/procedure/solve.h"

#include <fmt/core.h>

#include "grb/callback/callbacks.h"
#include "grb/gurobi/constants.h"
#include "grb/gurobi/exception.h"
#include "grb/procedure/changes.h"
#include "grb/procedure/continuous_solve.h"
#include "grb/procedure/iis.h"
#include "grb/procedure/parameter_file.h"
#include "grb/procedure/relaxation.h"
#include "grb/procedure/tuning.h"
#include "grb/procedure/warm_start.h"
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

void solveWithIntegers(Data& data) {
  registerMipStarts(data);
  registerHints(data);
  registerPriorities(data);
  data.model->optimize();
}

void solveModel(Data& data) {
  if (data.model->getIntAttr("IsMIP") == 0) {
    solveContinuous(data);
  } else {
    solveWithIntegers(data);
  }
  data.forgetStarts();
}

// What the options ask for: one thing, whatever else is set.
void runProcedure(Data& data) {
  const bool relaxes = data.options.isSetTo(IntOption::feasopt, 1);
  if (!relaxes && data.options.isSetTo(IntOption::iis, 2)) return reportIis(data, status::kLoaded);
  if (!relaxes && !data.options.file(FileOption::tuning).empty()) return tune(data);
  data.outcome.hasSolved = true;
  if (relaxes) return solveRelaxation(data);
  solveModel(data);
}

// What was solved is an answer, whatever becomes of the file.
void writeParameters(Data& data) {
  onFile(data, FileOption::writeparams, [&](const std::string& file) {
    try {
      data.model->writeParams(file.c_str());
    } catch (const GurobiException& failure) {
      // What it says of a file that it could open is the text of whatever failed before.
      const bool isToldWhy = failure.code() != error::kFileWrite;
      data.outcome.lostFile = fmt::format("writeparams: cannot write {}: {}", file,
                                          isToldWhy ? failure.message() : "the disk may be full, Gurobi does not say");
      throw;
    }
  });
}

// Gurobi is heard while the solve goes on, and not while its results are read.
class Hearing {
 public:
  explicit Hearing(CallbackContext& callbacks) : callbacks_(callbacks) { callbacks_.isMuted = false; }
  ~Hearing() { callbacks_.isMuted = true; }
  Hearing(const Hearing&) = delete;
  Hearing& operator=(const Hearing&) = delete;

 private:
  CallbackContext& callbacks_;
};

// With the parameters that the procedure moves put back, also when it fails.
void runAsideFromParameters(Data& data) {
  try {
    listened(data, [&] { runProcedure(data); });
  } catch (...) {
    try {
      putBack(*data.model, data.beforeProcedure);
    } catch (const GurobiException&) {
      // tried again before the next solve; what failed first is to be told
    }
    throw;
  }
  putBack(*data.model, data.beforeProcedure);
}

bool isInfeasible(int status) {
  return status == status::kInfeasible || status == status::kInfOrUnbd || status == status::kLocallyInfeasible;
}

void runProcedureAndIis(Data& data) {
  runAsideFromParameters(data);
  const int status = data.model->getIntAttr("Status");
  if (isInfeasible(status) && data.options.isSetTo(IntOption::iis, 1)) {
    listened(data, [&] { reportIis(data, status); });
  }
}

}  // namespace

tav::opt::Termination solve(Data& data) {
  GurobiModel& model = *data.model;
  const Hearing hearing(data.callbacks);
  data.isInterrupted = false;
  data.outcome = {};
  putBack(model, data.beforeProcedure);  // what could not be put back when it should
  // A long solve is not to be lost for the sake of a file that comes after it.
  onFile(data, FileOption::writeparams, requireWritable);
  warnWithoutGpu(data);
  installCallbacks(data);
  onFile(data, FileOption::readparams, [&](const std::string& file) {
    readParameterFile(model, *data.callbacks.log, file, data.beforeParameterFile);
  });
  applyChanges(data);
  onFile(data, FileOption::writeprob, [&](const std::string& file) { model.write(file.c_str()); });
  try {
    runProcedureAndIis(data);
  } catch (const GurobiException&) {
    if (!data.outcome.conflictFailure.empty()) writeParameters(data);
    throw;
  }
  writeParameters(data);
  return termination(data.model->getIntAttr("Status"));
}

}  // namespace grb
