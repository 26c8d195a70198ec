#include "kavo/api/guard.h"

#include <exception>
#include <new>
#include <string>

namespace kavo::api {

namespace {

// A message that must not need memory, or one that was composed.
struct LastFailure {
  std::string composed;
  const char* text = "";

  int keep(int status, const char* message) noexcept {
    try {
      composed = message;
      text = composed.c_str();
    } catch (...) {
      text = "out of memory";
    }
    return status;
  }
};

thread_local LastFailure last;

}  // namespace

int keepFailure() noexcept {
  try {
    throw;
  } catch (const Error& error) {
    return last.keep(error.status(), error.what());
  } catch (const std::bad_alloc&) {
    last.text = "out of memory";
    return KAVO_MEMORY;
  } catch (const std::exception& error) {
    return last.keep(KAVO_INTERNAL, error.what());
  } catch (...) {
    return last.keep(KAVO_INTERNAL, "a failure of unknown kind");
  }
}

const char* lastFailure() noexcept { return last.text; }

trpRec& needIdle(trpRec* model) {
  trpRec& record = need(model);
  if (record.solving) throw Error(KAVO_INVALID, "the model is being solved and cannot be changed now");
  return record;
}

}  // namespace kavo::api
