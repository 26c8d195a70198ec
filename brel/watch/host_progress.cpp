#include "brel/watch/host_progress.h"

namespace brel::watch {
namespace {

constexpr double kEvery = 0.1;

int eventOf(Reason reason) {
  switch (reason) {
    case Reason::node:
      return KAVO_PROGRESS_NODE;
    case Reason::incumbent:
      return KAVO_PROGRESS_INCUMBENT;
    case Reason::end:
      return KAVO_PROGRESS_END;
    default:
      return KAVO_PROGRESS_TICK;
  }
}

}  // namespace

void HostProgress::hear(const Progress& now) {
  if (now.seconds < next_ && (now.reason == Reason::tick || now.reason == Reason::node)) return;
  next_ = now.seconds + kEvery;
  const kavo_progress told{eventOf(now.reason), now.seconds, now.nodes,    now.incumbent,
                           now.bound,           now.gap,     now.solutions};
  kavo_link_progress(host_, &told);  // a stop that it asks for comes by the host's own way
}

}  // namespace brel::watch
