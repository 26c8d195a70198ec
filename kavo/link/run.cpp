// What a link tells while it runs. What cannot be kept (no memory) is dropped: these functions have no result to say
// so.

#include <algorithm>

#include "kavo/api/guard.h"
#include "kavo/link.h"
#include "kavo/link/stop_request.h"

using kavo::api::guard;
using kavo::api::need;

extern "C" {

void kavo_link_log(trpRec* model, const char* text, size_t length) {
  guard([&] {
    const trpRec& record = need(model);
    if (record.logWrite != nullptr && text != nullptr && length > 0) record.logWrite(text, length, record.logData);
  });
}

void kavo_link_note(trpRec* model, const char* line) {
  guard([&] { need(model).notes.emplace_back(&need(line, "the note")); });
}

void kavo_link_lost_file(trpRec* model, const char* line) {
  guard([&] {
    trpRec& record = need(model);
    const std::string told = &need(line, "the line");
    if (std::find(record.lostFiles.begin(), record.lostFiles.end(), told) != record.lostFiles.end()) return;
    record.notes.push_back(told);
    record.lostFiles.push_back(told);
  });
}

void kavo_link_error(trpRec* model, const char* message) {
  guard([&] { need(model).linkError = &need(message, "the message"); });
}

void kavo_link_publish_solver(trpRec* model, const char* text) {
  guard([&] { need(model).solverText = &need(text, "the text"); });
}

void kavo_link_on_interrupt(trpRec* model, void (*stop)(void* data), void* data) {
  guard([&] { need(model).stop->setHook(stop, data); });
}

int kavo_link_stop_requested(const trpRec* model) { return model != nullptr && model->stop->requested() ? 1 : 0; }

}  // extern "C"
