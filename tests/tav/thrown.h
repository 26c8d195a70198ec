#pragma once

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tav/util/exception.h"

// The error that f raises; a test that expects one fails when there is none.
template <class E = tav::Exception, class F>
tav::Exception thrown(F&& f) {
  try {
    f();
  } catch (const E& error) {
    return static_cast<const tav::Exception&>(error);
  }
  ADD_FAILURE() << "nothing was raised";
  return tav::Exception("nothing was raised");
}

template <class E = tav::Exception, class F>
std::string messageOf(F&& f) {
  return thrown<E>(f).message();
}
