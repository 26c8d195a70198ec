// A link tells how far a solve is; the host may answer that it wants it stopped.

#include "kavo/api/guard.h"
#include "kavo/link.h"
#include "kavo/link/stop_request.h"

using kavo::api::guard;
using kavo::api::need;

extern "C" {

int kavo_set_progress(trpRec* model, int (*progress)(const kavo_progress* now, void* data), void* data) {
  return guard([&] {
    trpRec& record = kavo::api::needIdle(model);
    record.progress = progress;
    record.progressData = data;
  });
}

int kavo_link_wants_progress(const trpRec* model) { return model != nullptr && model->progress != nullptr ? 1 : 0; }

int kavo_link_progress(trpRec* model, const kavo_progress* now) {
  guard([&] {
    const trpRec& record = need(model);
    if (record.progress == nullptr) return;
    if (record.progress(&need(now, "the progress"), record.progressData) != 0) record.stop->request(false);
  });
  return kavo_link_stop_requested(model);
}

}  // extern "C"
