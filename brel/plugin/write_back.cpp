#include "brel/result/write_back.h"

#include "brel/host.h"
#include "brel/plugin/plugins.h"

namespace brel::plugin {
namespace {

class WriteBack : public AbstractPlugin {
 public:
  void read(Solve& solve) override { result_ = result::writeBack(solve.host, solve.solver, solve.model); }

  // After all others, so that what they note is still heard.
  void finish(Solve& solve) override {
    if (solve.watch.isStoppedByRule() && result_.stop == KAVO_STOP_INTERRUPTED) result_.stop = KAVO_STOP_RULE;
    checkHost(kavo_link_finish(solve.host, &result_));
  }

 private:
  kavo_finish result_{};
};

}  // namespace

std::unique_ptr<AbstractPlugin> writeBack() { return std::make_unique<WriteBack>(); }

}  // namespace brel::plugin
