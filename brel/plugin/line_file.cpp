#include "brel/plugin/line_file.h"

#include <fcntl.h>
#include <fmt/core.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "tav/util/exception.h"

namespace brel::plugin {
namespace {

std::string cannotWrite(const std::string& path, int error) {
  return fmt::format("cannot write {}: {}", path, std::generic_category().message(error));
}

}  // namespace

LineFile::LineFile(std::string path)
    : path_(std::move(path)), descriptor_(open(path_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666)) {
  if (descriptor_ < 0) throw tav::UserException(cannotWrite(path_, errno));
}

LineFile::~LineFile() { close(descriptor_); }

void LineFile::add(std::string line) {
  if (failure_) return;
  line += '\n';
  std::string_view left = line;
  while (!left.empty()) {
    const ssize_t written = write(descriptor_, left.data(), left.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return fail();
    left.remove_prefix(static_cast<std::size_t>(written));
  }
  size_ += static_cast<long long>(line.size());
}

void LineFile::fail() {
  failure_ = cannotWrite(path_, errno);
  // Fails for pipes and devices, from which nothing can be taken back.
  [[maybe_unused]] const int cut = ftruncate(descriptor_, size_);
}

}  // namespace brel::plugin
