#pragma once

namespace tav::opt {

// Something a solver can do to its model on request.
class AbstractCommand {
 public:
  virtual ~AbstractCommand() = default;
  virtual bool canRun() const = 0;
  // Does nothing when it cannot run.
  virtual void run() = 0;
};

}  // namespace tav::opt
