#include "bridge/callback.h"

#include "bridge/call.h"
#include "bridge/exports.h"
#include "bridge/stop.h"

namespace py = pybind11;
using namespace py::literals;

namespace bridge {
namespace {

thread_local CallbackFrame* innermost = nullptr;

/// Lets GRBcbget find the frame while the callback runs, and only then.
class FrameScope {
 public:
  explicit FrameScope(CallbackFrame& frame) { innermost = &frame; }
  ~FrameScope() { innermost = innermost->outer; }
  FrameScope(const FrameScope&) = delete;
  FrameScope& operator=(const FrameScope&) = delete;
};

int callOut(Model& model, int where) {
  CallbackFrame frame{&model, where, {}, innermost};
  const FrameScope scope(frame);
  const Model::Callback callback = model.callback;
  const WithoutGil released;
  return callback.function(model.handle(), &frame, where, callback.data);
}

py::list placesOf(unsigned int mask) {
  constexpr int kBits = 32;
  py::list places;
  for (int where = 0; where < kBits; ++where)
    if ((mask >> where & 1U) != 0) places.append(where);
  return places;
}

}  // namespace

CallbackFrame* findFrame(const void* cbdata) {
  for (CallbackFrame* frame = innermost; frame != nullptr; frame = frame->outer)
    if (frame == cbdata) return frame;
  return nullptr;
}

void runWithCallback(Model& model, const char* method) {
  const StopWatch watch(model);
  if (model.callback.function == nullptr) {
    model.object().attr(method)();
    return;
  }
  bool refused = false;
  const py::cpp_function callback([&model, &refused](const py::object& object, int where) {
    if (refused || model.callback.function == nullptr) return;
    refused = callOut(model, where) != 0;
    if (refused) object.attr("terminate")();
    passOnStop(model);
  });
  model.object().attr(method)(callback, "wheres"_a = placesOf(model.callback.wheres));
  if (refused) throw Failure(grb::error::kCallback, "The callback ended the call by a non-zero result");
}

extern "C" {

int GRBsetcallbackfuncadv(GRBmodel* model, int (*cb)(GRBmodel* model, void* cbdata, int where, void* usrdata),
                          void* usrdata, unsigned int wheres) {
  return onModel(model, [&](Model& m) {
    if (cb != nullptr && wheres == 0) throw Failure(grb::error::kInvalidArgument, "Invalid callback 'where' flags");
    m.callback = {cb, usrdata, wheres};
  });
}

int GRBoptimize(GRBmodel* model) {
  return onModel(model, [](Model& m) { runWithCallback(m, "optimize"); });
}

}  // extern "C"

}  // namespace bridge
