#include "grb/callback/callbacks.h"

#include "grb/callback/callback_context.h"

namespace grb {
namespace {

void notifyAll(const CallbackContext& context, int where) {
  const CallbackContext::Entries* entries = context.entries(where);
  if (entries == nullptr) return;  // polling arrives whatever the mask says
  for (const auto& [id, entry] : *entries) context.handler->notify(entry);
}

}  // namespace

extern "C" int grbLogCallback(char* message, void* context) {
  auto& callbacks = *static_cast<CallbackContext*>(context);
  if (callbacks.isMuted) return 0;
  try {
    callbacks.log->write(message);
  } catch (...) {
    callbacks.stopWithException();
  }
  return 0;
}

extern "C" int grbAdvancedCallback(GRBmodel* model, void* cbdata, int where, void* context) {
  auto& callbacks = *static_cast<CallbackContext*>(context);
  if (!callbacks.handler) return 0;
  *callbacks.live = {model, cbdata, where};
  try {
    notifyAll(callbacks, where);
  } catch (...) {
    callbacks.stopWithException();
  }
  *callbacks.live = {};
  return 0;
}

}  // namespace grb
