#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace app {

// Opens /dev/null in place of standard streams that are closed, so that no file opened later takes their number.
// Writing to a closed output still fails.
void holdStandardStreams();

// A stream that remembers its first failure, so that a full disk or a closed terminal ends in an error and not in
// silence.
class Output {
 public:
  static Output standard();
  // Throws Failure.
  static Output file(const std::string& path);

  void write(std::string_view text);
  // Writes out what is buffered. Throws Failure when anything was lost.
  void finish();

 private:
  Output(std::FILE* stream, std::string name, bool owned);

  struct Close {
    bool owned;
    void operator()(std::FILE* stream) const {
      if (owned) std::fclose(stream);
    }
  };
  std::unique_ptr<std::FILE, Close> stream_;
  std::string name_;
  int error_ = 0;
};

// Prints "grblink: message" on standard error.
void printError(std::string_view message);

}  // namespace app
