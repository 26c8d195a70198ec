#include "grb/procedure/fix_command.h"

namespace grb {

bool FixNonContinuousCommand::canRun() const {
  const auto model = model_.lock();
  return model && !model->fixed();
}

void FixNonContinuousCommand::run() {
  const auto model = model_.lock();
  if (model && !model->fixed()) model->convertToFixed();
}

}  // namespace grb
