#include "bridge/handles.h"

namespace bridge {

// Neither registry is destroyed at exit: what they hold are Python objects, which may outlive main.

Registry<GRBenv, Env>& envs() {
  static auto* const kEnvs = new Registry<GRBenv, Env>;
  return *kEnvs;
}

Registry<GRBmodel, Model>& models() {
  static auto* const kModels = new Registry<GRBmodel, Model>;
  return *kModels;
}

}  // namespace bridge
