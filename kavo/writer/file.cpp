#include "kavo/writer/file.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <system_error>
#include <utility>

#include "kavo/error.h"

namespace kavo::writer {

namespace {

// Where the text really goes: the file behind a symbolic link, so that the link stays one.
std::string resolved(const std::string& path) {
  char buffer[PATH_MAX];
  return realpath(path.c_str(), buffer) != nullptr ? buffer : path;
}

// A file under a temporary name in the folder of `target`, removed again unless it took the target's place.
class TemporaryFile {
 public:
  TemporaryFile(std::string path, std::string target, mode_t mode)
      : path_(std::move(path)), target_(std::move(target)) {
    static std::atomic<unsigned> serial = 0;
    const auto slash = target_.rfind('/');
    const std::string folder = slash == std::string::npos ? "" : target_.substr(0, slash + 1);
    do {
      name_ = fmt::format("{}.kavo-{}-{}.tmp", folder, getpid(), serial++);
      descriptor_ = open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    } while (descriptor_ < 0 && (errno == EEXIST || errno == EINTR));
    if (descriptor_ < 0) failToWrite(path_, errno);
  }

  ~TemporaryFile() {
    if (descriptor_ >= 0) close(descriptor_);
    if (!name_.empty()) unlink(name_.c_str());
  }

  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  int descriptor() const { return descriptor_; }

  void takePlace() {
    // Some file systems cannot flush; others tell only here that the disk is full.
    if (fsync(descriptor_) != 0 && errno != EINVAL && errno != ENOTSUP) failToWrite(path_, errno);
    if (close(std::exchange(descriptor_, -1)) != 0) failToWrite(path_, errno);
    if (std::rename(name_.c_str(), target_.c_str()) != 0) failToWrite(path_, errno);
    name_.clear();
  }

 private:
  std::string path_, target_, name_;
  int descriptor_ = -1;
};

// What stands at the path already.
struct Target {
  std::string path;
  mode_t mode = 0666;
  bool device = false;  // or a pipe: nothing that could be replaced
};

Target targetOf(const std::string& path) {
  Target target{resolved(path)};
  struct stat found{};
  if (stat(target.path.c_str(), &found) != 0) return target;
  if (S_ISDIR(found.st_mode)) failToWrite(path, EISDIR);
  if (access(target.path.c_str(), W_OK) != 0) failToWrite(path, errno);
  target.device = !S_ISREG(found.st_mode);
  target.mode = found.st_mode & 0777;
  return target;
}

void writeDevice(const std::string& path, const std::function<void(Text&)>& fill) {
  const int descriptor = open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (descriptor < 0) failToWrite(path, errno);
  try {
    Text text(descriptor, path);
    fill(text);
    text.flush();
  } catch (...) {
    close(descriptor);
    throw;
  }
  if (close(descriptor) != 0) failToWrite(path, errno);
}

}  // namespace

void failToWrite(const std::string& path, int error) {
  throw Error(KAVO_FILE, fmt::format("cannot write {}: {}", path, std::generic_category().message(error)));
}

void writeFile(const std::string& path, const std::function<void(Text&)>& fill) {
  const Target target = targetOf(path);
  if (target.device) return writeDevice(path, fill);
  TemporaryFile file(path, target.path, target.mode);
  Text text(file.descriptor(), path);
  fill(text);
  text.flush();
  file.takePlace();
}

void checkWritable(const std::string& path) {
  if (path.empty() || path.back() == '/') failToWrite(path.empty() ? "a file without name" : path, EISDIR);
  const Target target = targetOf(path);
  if (!target.device) const TemporaryFile file(path, target.path, target.mode);
}

}  // namespace kavo::writer
