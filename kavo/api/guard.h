#pragma once

#include <utility>

#include "kavo/error.h"
#include "kavo/model/record.h"

namespace kavo::api {

// Keeps the message of the exception in flight for kavo_last_error() and returns the status that goes with it. To be
// called in a catch clause only.
int keepFailure() noexcept;
const char* lastFailure() noexcept;

// Runs the body of an extern "C" function; whatever it throws becomes a status and a message.
template <class Body>
int guard(Body&& body) noexcept {
  try {
    std::forward<Body>(body)();
    return KAVO_OK;
  } catch (...) {
    return keepFailure();
  }
}

// The object behind an argument that must not be null; `what` names it in the error.
template <class T>
T& need(T* pointer, const char* what) {
  if (pointer == nullptr) throw Error(KAVO_INVALID, std::string(what) + " is null");
  return *pointer;
}

inline trpRec& need(trpRec* model) { return need(model, "the model"); }
inline const trpRec& need(const trpRec* model) { return need(model, "the model"); }

// A model that may be changed or solved now: not from within its own solve.
trpRec& needIdle(trpRec* model);

// Runs the body of an extern "C" function that changes what is to be solved beyond what kavo_changes can tell; when it
// went well, results of an earlier solve no longer fit and are dropped.
template <class Body>
int guardChange(trpRec* model, Body&& body) noexcept {
  return guard([&] {
    trpRec& record = needIdle(model);
    std::forward<Body>(body)(record.model);
    record.changes.becomeStructural();
    record.results.reset();
  });
}

}  // namespace kavo::api
