#include "brel/result/write_back.h"

#include "brel/host.h"
#include "brel/plugin/plugins.h"

namespace brel::plugin {
namespace {

class WriteBack : public AbstractPlugin {
 public:
  void read(Solve& solve) override {
    solve.result = result::writeBack(solve.host, solve.solver, solve.model);
    int& stop = solve.result.stop;
    if (solve.watch.isStoppedByRule() && stop == KAVO_STOP_INTERRUPTED) stop = KAVO_STOP_RULE;
  }

  // After all others, so that what they note is still heard.
  void finish(Solve& solve) override { checkHost(kavo_link_finish(solve.host, &solve.result)); }
};

}  // namespace

std::unique_ptr<AbstractPlugin> writeBack() { return std::make_unique<WriteBack>(); }

}  // namespace brel::plugin
