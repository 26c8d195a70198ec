#include "app/output.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "app/failure.h"

namespace app {

namespace {

std::string failure(const std::string& name, int error) {
  return fmt::format("cannot write {}: {}", name, std::generic_category().message(error));
}

}  // namespace

void holdStandardStreams() {
  for (int descriptor = 0; descriptor <= 2; ++descriptor) {
    if (fcntl(descriptor, F_GETFD) < 0) open("/dev/null", O_RDONLY);
  }
}

Output::Output(std::FILE* stream, std::string name, bool owned) : stream_(stream, {owned}), name_(std::move(name)) {}

Output Output::standard() { return {stdout, "the standard output", false}; }

Output Output::file(const std::string& path) {
  std::FILE* stream = std::fopen(path.c_str(), "we");
  if (stream == nullptr) throw Failure(failure(path, errno));
  return {stream, path, true};
}

// Flushed piece by piece: people watch the log while it grows, and a failure has its reason here.
void Output::write(std::string_view text) {
  if (error_ != 0) return;
  errno = 0;
  const bool written = std::fwrite(text.data(), 1, text.size(), stream_.get()) == text.size();
  if (!written || std::fflush(stream_.get()) != 0) error_ = errno != 0 ? errno : EIO;
}

void Output::finish() {
  if (error_ != 0) throw Failure(failure(name_, error_));
}

void printError(std::string_view message) { std::fputs(fmt::format("grblink: {}\n", message).c_str(), stderr); }

}  // namespace app
