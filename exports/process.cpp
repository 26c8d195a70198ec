#include "exports/process.h"

#include "brel/link.h"

namespace exports {
namespace {

struct State {
  Process::Sections sections;
  bool created = false;
};

// Never destroyed: the order in which a process tears down its libraries is not ours.
State& state() {
  static State& only = *new State;
  return only;
}

__attribute__((constructor)) void onLoad() { Process::attach(); }
__attribute__((destructor)) void onUnload() { Process::detach(); }

}  // namespace

void Process::attach() {
  brel::Link::initialize();
  State& process = state();
  if (process.created) return;
  for (auto& section : process.sections) section.emplace();
  process.created = true;
}

void Process::detach() {
  brel::Link::finalize();
  State& process = state();
  if (!process.created) return;
  for (auto& section : process.sections) section.reset();
  process.created = false;
}

const Process::Sections& Process::sections() { return state().sections; }

}  // namespace exports
