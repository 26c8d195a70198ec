#pragma once

#include <functional>
#include <string>
#include <utility>

#include "kavo/link.h"
#include "tav/opt/log.h"
#include "tav/util/exception.h"

namespace brel {

// Raises when a call of the host failed; the host's message says why.
inline void checkHost(int status, tav::util::SourceLocation at = tav::util::SourceLocation::here()) {
  if (status != KAVO_OK) throw tav::Exception("Host", kavo_last_error(), status, "", at);
}

// The log of a run: everything goes to the host, which decides where it appears.
class HostLog : public tav::opt::AbstractLog {
 public:
  explicit HostLog(trpRec* model) : model_(model) {}
  void write(std::string_view text) override {
    kavo_link_log(model_, text.data(), text.size());
    if (written_) written_();
  }
  // Calls a function after everything that is written, until it is given an empty one. Not while something is written.
  void onWrite(std::function<void()> written) { written_ = std::move(written); }

 private:
  trpRec* model_;
  std::function<void()> written_;
};

}  // namespace brel
