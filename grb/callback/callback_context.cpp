#include "grb/callback/callback_context.h"

#include <utility>

namespace grb {

bool CallbackContext::subscribe(int index, const tav::opt::ContextEntry& entry) {
  if (index < 0 || index > 2) return false;
  stores_[index == 2 ? 1 : 0].insert_or_assign(entry.id, entry);
  return true;
}

const CallbackContext::Entries* CallbackContext::entries(int where) const {
  if (where == where::kMipNode) return &stores_[0];
  if (where == where::kMipSol) return &stores_[1];
  return nullptr;
}

void CallbackContext::stopWithException() noexcept {
  {
    const std::lock_guard lock(lock_);
    if (!kept_) kept_ = std::current_exception();
  }
  if (stop) stop();
}

void CallbackContext::rethrowKept() {
  std::exception_ptr kept;
  {
    const std::lock_guard lock(lock_);
    kept = std::exchange(kept_, nullptr);
  }
  if (kept) std::rethrow_exception(kept);
}

}  // namespace grb
