#include "kavo/reader/input.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <limits>
#include <new>
#include <system_error>

#include "kavo/error.h"

namespace kavo::reader {

namespace {

constexpr std::size_t kFirstBlock = std::size_t{1} << 16;
constexpr std::string_view kGzipMagic = "\x1f\x8b";

// Closes a file on every way out.
class File {
 public:
  explicit File(const std::string& path) : number_(::open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}
  ~File() {
    if (number_ >= 0) ::close(number_);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;
  int number() const { return number_; }

 private:
  int number_;
};

class Inflater {
 public:
  Inflater() {
    if (inflateInit2(&stream_, 16 + MAX_WBITS) != Z_OK) throw std::bad_alloc();
  }
  ~Inflater() { inflateEnd(&stream_); }
  Inflater(const Inflater&) = delete;
  Inflater& operator=(const Inflater&) = delete;
  z_stream* operator->() { return &stream_; }
  z_stream* get() { return &stream_; }

 private:
  z_stream stream_{};
};

// What people read of a system's error number; the same text in every locale of the program.
std::string reasonOf(int error) {
  switch (error) {
    case ENOENT:
      return "there is no such file; check the path";
    case ENOTDIR:
      return "a part of its path is not a folder; check the path";
    case EACCES:
      return "no permission to read it; change the file's permissions";
    case ENAMETOOLONG:
      return "its path is too long";
    default:
      return std::system_category().message(error);
  }
}

}  // namespace

void Input::Free::operator()(char* block) const { std::free(block); }
void Input::Unmap::operator()(char* address) const { ::munmap(address, size); }

// Memory that grows without being cleared first: what is read next overwrites it.
class Input::Growing {
 public:
  explicit Growing(std::size_t first) { reserve(first); }
  char* free() { return block_.get() + used_; }
  std::size_t room() const { return capacity_ - used_; }
  std::size_t used() const { return used_; }
  void use(std::size_t bytes) { used_ += bytes; }
  void grow() { reserve(2 * capacity_); }
  Block take() { return std::move(block_); }

 private:
  void reserve(std::size_t capacity) {
    char* larger = static_cast<char*>(std::realloc(block_.get(), capacity));
    if (larger == nullptr) throw std::bad_alloc();
    (void)block_.release();
    block_.reset(larger);
    capacity_ = capacity;
  }

  Block block_;
  std::size_t capacity_ = 0, used_ = 0;
};

void Input::fail(const std::string& reason) const {
  throw Error(KAVO_FILE, fmt::format("cannot read \"{}\": {}", path_, reason));
}

Input::Input(const std::string& path) : path_(path) {
  const File file(path);
  struct stat status{};
  if (file.number() < 0 || ::fstat(file.number(), &status) != 0) fail(reasonOf(errno));
  if (S_ISDIR(status.st_mode)) fail("it is a folder; give the path of a file");
  if (S_ISREG(status.st_mode) && status.st_size > 0) {
    map(file.number(), static_cast<std::size_t>(status.st_size));
  } else {
    readAll(file.number());  // also the files of the system that say size 0 and have content
  }
  if (text_.empty()) fail("the file is empty; write the model again");
  if (text_.starts_with(kGzipMagic)) inflateAll();
}

void Input::map(int file, std::size_t size) {
  void* address = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
  if (address == MAP_FAILED) {
    readAll(file);
    return;
  }
  ::madvise(address, size, MADV_SEQUENTIAL);
  mapping_ = {static_cast<char*>(address), Unmap{size}};
  text_ = {static_cast<const char*>(address), size};
}

void Input::giveBack(const char* first, const char* last) const {
  if (!mapping_ || last < first) return;
  const std::size_t page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  const std::size_t begin = static_cast<std::size_t>(first - mapping_.get()) / page * page;
  const std::size_t end = static_cast<std::size_t>(last - mapping_.get()) / page * page;
  if (end > begin) ::madvise(mapping_.get() + begin, end - begin, MADV_DONTNEED);
}

void Input::readAll(int file) {
  Growing content(kFirstBlock);
  while (true) {
    if (content.room() == 0) content.grow();
    const ssize_t got = ::read(file, content.free(), content.room());
    if (got == 0) break;
    if (got < 0 && errno != EINTR) fail(reasonOf(errno));
    if (got > 0) content.use(static_cast<std::size_t>(got));
  }
  const std::size_t size = content.used();
  block_ = content.take();
  text_ = {block_.get(), size};
}

void Input::inflateAll() {
  constexpr std::size_t kMost = std::numeric_limits<uInt>::max();
  std::string_view rest = text_;
  Growing content(std::max(kFirstBlock, 4 * rest.size()));
  Inflater inflater;
  bool memberEnded = false;
  while (!memberEnded || !rest.empty()) {
    if (memberEnded) {  // a gzip file may have several members, one after the other
      if (!rest.starts_with(kGzipMagic)) fail("something else follows its gzip data; compress the model again");
      inflateReset(inflater.get());
      memberEnded = false;
    }
    if (content.room() == 0) content.grow();
    const uInt given = static_cast<uInt>(std::min(rest.size(), kMost));
    const uInt room = static_cast<uInt>(std::min(content.room(), kMost));
    inflater->next_in = reinterpret_cast<Bytef*>(const_cast<char*>(rest.data()));
    inflater->avail_in = given;
    inflater->next_out = reinterpret_cast<Bytef*>(content.free());
    inflater->avail_out = room;
    const int result = inflate(inflater.get(), Z_NO_FLUSH);
    rest.remove_prefix(given - inflater->avail_in);
    content.use(room - inflater->avail_out);
    if (result == Z_MEM_ERROR) throw std::bad_alloc();
    if (result == Z_STREAM_END) {
      memberEnded = true;
    } else if (result == Z_BUF_ERROR || (result == Z_OK && rest.empty() && inflater->avail_out > 0)) {
      fail("its gzip data end too early; copy or compress the model again");
    } else if (result != Z_OK) {
      fail("its gzip data are damaged; copy or compress the model again");
    }
  }
  if (content.used() == 0) fail("the gzip file holds nothing; write the model again");
  const std::size_t size = content.used();
  block_ = content.take();
  text_ = {block_.get(), size};
  mapping_.reset();
}

}  // namespace kavo::reader
