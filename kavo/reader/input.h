#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace kavo::reader {

// The whole content of a file: mapped read-only, or inflated when it begins like a gzip file, whatever its name. What
// is not a regular file (a pipe) is read into memory first.
//
// The constructor throws Error with KAVO_FILE, one line that names the file and what to do, when the file is missing,
// unreadable, a folder or empty, and when gzip data are cut short, damaged or followed by something else.
class Input {
 public:
  explicit Input(const std::string& path);

  // Never empty, not ended by NUL, valid as long as this object lives.
  std::string_view text() const { return text_; }
  const std::string& path() const { return path_; }

  // Tells that the text between two places is not read again soon. What is mapped goes back to the system, so that a
  // large file does not count as memory of this program; it stays readable.
  void giveBack(const char* first, const char* last) const;

 private:
  struct Free {
    void operator()(char* block) const;
  };
  struct Unmap {
    std::size_t size;
    void operator()(char* address) const;
  };
  using Block = std::unique_ptr<char, Free>;
  class Growing;

  void map(int file, std::size_t size);
  void readAll(int file);
  void inflateAll();
  [[noreturn]] void fail(const std::string& reason) const;

  std::string path_;
  std::string_view text_;
  std::unique_ptr<char, Unmap> mapping_;
  Block block_;
};

}  // namespace kavo::reader
