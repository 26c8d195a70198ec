#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brel::plugin {

// A text file that grows line by line; every line is in the file when `add` returns.
class LineFile {
 public:
  // Makes the file, or empties it. Raises tav::UserException when it cannot be written.
  explicit LineFile(std::string path);
  ~LineFile();
  LineFile(const LineFile&) = delete;
  LineFile& operator=(const LineFile&) = delete;

  // line: without the newline. A line that cannot be written, as on a full disk, is the last: half of it is taken back,
  // and later ones are dropped.
  void add(std::string line);
  // Why a line could not be written.
  const std::optional<std::string>& failure() const { return failure_; }

 private:
  void fail();

  std::string path_;
  int descriptor_;
  long long size_ = 0;  // of all whole lines
  std::optional<std::string> failure_;
};

}  // namespace brel::plugin
