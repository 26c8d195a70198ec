#include "brel/plugin/plugins.h"

namespace brel::plugin {

std::unique_ptr<AbstractPlugin> makePlugin(Plugin plugin) {
  switch (plugin) {
    case Plugin::writeBack:
      return writeBack();
    default:
      return nullptr;
  }
}

}  // namespace brel::plugin
