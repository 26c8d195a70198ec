#include "app/signals.h"

#include <fmt/format.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <utility>

#include "app/failure.h"

namespace app {

namespace {

constexpr int kRepeatMilliseconds = 20;

sigset_t stopSignals() {
  sigset_t set;
  sigemptyset(&set);
  sigaddset(&set, SIGINT);
  sigaddset(&set, SIGTERM);
  return set;
}

int openSignals() {
  const sigset_t set = stopSignals();
  return signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK);
}

}  // namespace

void blockSignals() {
  const sigset_t set = stopSignals();
  pthread_sigmask(SIG_BLOCK, &set, nullptr);
  // A reader that went away and a limit on the size of files are errors of the write, not ends of the program.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
}

SignalWatch::SignalWatch(trpRec* model, std::function<void()> last)
    : model_(model), last_(std::move(last)), signals_(openSignals()), end_(eventfd(0, EFD_CLOEXEC)) {
  if (signals_ < 0 || end_ < 0) throw Failure(fmt::format("cannot watch for signals: {}", std::strerror(errno)));
  thread_ = std::thread([this] { watch(); });
}

SignalWatch::~SignalWatch() {
  const std::uint64_t one = 1;
  while (write(end_, &one, sizeof one) < 0 && errno == EINTR) continue;
  thread_.join();
  close(signals_);
  close(end_);
}

// A stop that comes before the solve has begun counts for nothing there, so it is repeated.
void SignalWatch::watch() {
  pollfd waiting[] = {{signals_, POLLIN, 0}, {end_, POLLIN, 0}};
  while ((waiting[1].revents & POLLIN) == 0) {
    signalfd_siginfo info{};
    while (read(signals_, &info, sizeof info) == sizeof info) {
      if (interrupted_.exchange(true)) {
        last_();
        _exit(kExitInterrupted);
      }
    }
    if (interrupted_) kavo_interrupt(model_, KAVO_STOP_SIGNAL);
    poll(waiting, 2, interrupted_ ? kRepeatMilliseconds : -1);
  }
}

}  // namespace app
