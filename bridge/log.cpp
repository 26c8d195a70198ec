#include "bridge/log.h"

#include <pybind11/eval.h>
#include <pybind11/pybind11.h>

#include <string>

#include "bridge/call.h"
#include "bridge/exports.h"
#include "bridge/model.h"
#include "bridge/stop.h"

namespace py = pybind11;

namespace bridge {
namespace {

thread_local Model* current = nullptr;

/// A handler without the lock that handlers have: two models that solve in two threads must not wait for each other's
/// callback. A level that the program itself chose is left alone; otherwise records are let through that would have
/// been dropped, and kept from handlers that never asked for them.
constexpr const char* kHandler = R"(
import logging

class Handler(logging.Handler):
    def __init__(self, sink):
        super().__init__()
        self.sink = sink

    def createLock(self):
        self.lock = None

    def emit(self, record):
        self.sink(record.getMessage())

def install(sink):
    logger = logging.getLogger("gurobipy")
    if not logger.isEnabledFor(logging.INFO):
        logger.setLevel(logging.INFO)
        logger.propagate = False
    logger.addHandler(Handler(sink))
)";

void deliver(const std::string& line) {
  Model* const model = current;
  if (model == nullptr || model->logCallback.function == nullptr) return;
  const Model::LogCallback callback = model->logCallback;
  std::string text = line + '\n';
  {
    const WithoutGil released;
    callback.function(text.data(), callback.data);
  }
  passOnStop(*model);
}

}  // namespace

LogScope::LogScope(Model* model) : before_(current) { current = model; }

LogScope::~LogScope() { current = before_; }

void installLogHandler() {
  py::dict names;
  names["__builtins__"] = py::module_::import("builtins");
  py::exec(kHandler, names);
  names["install"](py::cpp_function(&deliver));
}

extern "C" int GRBsetlogcallbackfunc(GRBmodel* model, int (*cb)(char* msg, void* logdata), void* logdata) {
  return onModel(model, [&](Model& m) { m.logCallback = {cb, logdata}; });
}

}  // namespace bridge
