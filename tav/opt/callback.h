#pragma once

namespace tav::opt {

// A subscription to an event of a running solve. kind: 0 and 1 a node of the search tree was solved, 2 a new incumbent
// was found; id: the subscriber's own number.
struct ContextEntry {
  int kind = 0;
  int id = 0;
};

// Hears of the events that were subscribed to, on the thread that solves. What is known at the event is read through
// the solver's containers and attributes for the context "tav:context" of the entry's kind, during the call only. An
// exception stops the solve and leaves it when the solver has returned.
class AbstractCallback {
 public:
  virtual ~AbstractCallback() = default;
  virtual void notify(const ContextEntry& entry) = 0;
};

}  // namespace tav::opt
