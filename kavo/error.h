#pragma once

#include <stdexcept>
#include <string>

#include "kavo/kavo.h"

namespace kavo {

// A failure on its way to the C boundary: the status a call returns and the message kavo_last_error() tells. The
// message is one line and says which file, line or element it is about and what to do.
class Error : public std::runtime_error {
 public:
  Error(kavo_status status, const std::string& message) : std::runtime_error(message), status_(status) {}
  kavo_status status() const { return status_; }

 private:
  kavo_status status_;
};

}  // namespace kavo
