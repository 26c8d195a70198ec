#include "brel/plugin/plugins.h"

namespace brel::plugin {

std::unique_ptr<AbstractPlugin> makePlugin(Plugin plugin) {
  switch (plugin) {
    case Plugin::fixedSolve:
      return fixedSolve();
    case Plugin::multipleObjectives:
      return multipleObjectives();
    case Plugin::multipleStarts:
      return multipleStarts();
    case Plugin::rangeRestart:
      return rangeRestart();
    case Plugin::ranges:
      return ranges();
    case Plugin::pool:
      return pool();
    case Plugin::statistics:
      return statistics();
    case Plugin::writeBack:
      return writeBack();
    case Plugin::dumpSolutions:
      return dumpSolutions();
    case Plugin::trace:
      return trace();
    case Plugin::stopExpression:
      return stopExpression();
    default:
      return nullptr;
  }
}

}  // namespace brel::plugin
