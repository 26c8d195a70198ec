// The link, and the solve.

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <chrono>
#include <utility>

#include "kavo/api/guard.h"
#include "kavo/link/loaded_link.h"
#include "kavo/link/stop_request.h"
#include "kavo/model/element.h"
#include "kavo/model/oddities.h"
#include "kavo/model/starts.h"

using kavo::Error;
using kavo::api::guard;
using kavo::api::need;
using kavo::api::needIdle;

namespace {

// The state of a record while its link runs.
class Solving {
 public:
  explicit Solving(trpRec& record) : record_(record) {
    record.solving = true;
    record.stop->begin();
  }
  ~Solving() {
    record_.stop->end();
    record_.solving = false;
  }
  Solving(const Solving&) = delete;
  Solving& operator=(const Solving&) = delete;

 private:
  trpRec& record_;
};

std::string linkFailure(const trpRec& record) {
  return record.linkError.empty() ? "the link failed and did not say why" : record.linkError;
}

void forgetPublished(trpRec& record) {
  record.solverText.clear();
  record.settingInfos.clear();
  record.description.clear();
}

void checkObjectiveNumber(const trpRec& record) {
  const std::size_t count = record.model.objectives.size();
  const auto number = static_cast<std::size_t>(record.objectiveNumber);
  if (number > count && number > 1) {
    throw Error(KAVO_INVALID, fmt::format("objective {} cannot be solved: the model has {}", number, count));
  }
}

// No solver behind a link takes these, so that links cannot even ask for them.
void refuseComplementarity(const kavo::Model& model) {
  if (model.complementarity.empty()) return;
  const auto row = static_cast<std::size_t>(model.complementarity[0].row);
  throw Error(KAVO_NOT_SUPPORTED, fmt::format("row {} is a complementarity condition, which the solver does not take",
                                              kavo::elementName(model, KAVO_ROW, row)));
}

// Lets the link see the model; one that has solved it before hears first that it has changed.
void callLink(trpRec& record) {
  const Solving solving(record);
  const bool isChanged = std::exchange(record.wasSolved, true) && record.changes.any();
  record.changes.tidy();
  const bool isDone = (!isChanged || record.link->modify() == 0) && record.link->call() == 0;
  if (isDone && record.filling.finished) return record.changes.forget();
  // What the link has of the model now, nobody knows.
  record.changes.becomeStructural();
  throw Error(KAVO_LINK, isDone ? "the link returned without results" : linkFailure(record));
}

void solve(trpRec& record) {
  if (!record.link) throw Error(KAVO_INVALID, "no link is open");
  checkObjectiveNumber(record);
  refuseComplementarity(record.model);
  record.results.reset();
  record.filling = {};
  record.linkError.clear();
  record.lostFiles.clear();
  record.notes = record.model.readNotes;
  kavo::noteOddities(record.model, record.notes);
  kavo::noteWithheld(record, record.notes);
  const auto begin = std::chrono::steady_clock::now();
  callLink(record);
  record.filling.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  record.filling.signalled = record.stop->signalled();
  record.results = std::move(record.filling);
  if (!record.lostFiles.empty()) throw Error(KAVO_FILE, fmt::format("{}", fmt::join(record.lostFiles, "\n")));
}

}  // namespace

extern "C" {

int kavo_open_link(trpRec* model, const char* path) {
  return guard([&] {
    trpRec& record = needIdle(model);
    if (record.link) throw Error(KAVO_INVALID, "a link is open already");
    auto link = std::make_unique<kavo::LoadedLink>(path ? path : kavo::LoadedLink::defaultPath());
    record.linkError.clear();
    forgetPublished(record);
    if (link->ready(&record) != 0) throw Error(KAVO_LINK, linkFailure(record));
    record.link = std::move(link);
    record.wasSolved = false;
    record.changes.becomeStructural();
  });
}

int kavo_solver_text(const trpRec* model, const char** text) {
  return guard([&] { need(text, "the address of the text") = need(model).solverText.c_str(); });
}

int kavo_solve(trpRec* model) {
  return guard([&] { solve(needIdle(model)); });
}

int kavo_close_link(trpRec* model) {
  return guard([&] {
    trpRec& record = needIdle(model);
    record.link.reset();
    forgetPublished(record);
  });
}

int kavo_interrupt(trpRec* model, int source) {
  return guard([&] {
    if (source != KAVO_STOP_HOST && source != KAVO_STOP_SIGNAL)
      throw Error(KAVO_INVALID, fmt::format("there is no stop source {}", source));
    need(model).stop->request(source == KAVO_STOP_SIGNAL);
  });
}

int kavo_set_log(trpRec* model, void (*write)(const char* text, size_t length, void* data), void* data) {
  return guard([&] {
    trpRec& record = needIdle(model);
    record.logWrite = write;
    record.logData = data;
  });
}

}  // extern "C"
