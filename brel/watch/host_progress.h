#pragma once

#include "brel/watch/progress.h"
#include "kavo/link.h"

namespace brel::watch {

// Hands progress on to the host: every new incumbent, and the rest at most every tenth of a second.
class HostProgress : public Listener {
 public:
  explicit HostProgress(trpRec* host) : host_(host) {}
  void hear(const Progress& now) override;

 private:
  trpRec* host_;
  double next_ = 0;  // seconds
};

}  // namespace brel::watch
