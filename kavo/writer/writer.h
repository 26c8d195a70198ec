#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "kavo/model/model.h"
#include "kavo/result/results.h"

namespace kavo::writer {

// Writes a file through `fill` so that at no time a half-written one stands at `path`: the text goes to a temporary file
// in the same folder that is flushed and renamed. Throws Error (KAVO_FILE) naming the path; an earlier file stays intact.
class Text;
void writeFile(const std::string& path, const std::function<void(Text&)>& fill);

// Buffered text to a file descriptor. Numbers are written shortest such that reading gives the same value; infinities
// as the caller wants them. No locale.
class Text {
 public:
  explicit Text(int descriptor, std::string path) : descriptor_(descriptor), path_(std::move(path)) { buffer_.reserve(kFlushAt + 512); }
  Text& operator<<(std::string_view text);
  Text& operator<<(char c);
  Text& number(double value);
  Text& number(long long value);
  void flush();

 private:
  static constexpr std::size_t kFlushAt = 1 << 16;
  int descriptor_;
  std::string path_;
  std::string buffer_;
};

// results may be null: then no values are written. See kavo_write_sol, kavo_write_point, kavo_write_json.
void writeSol(const Model& model, const Results* results, const std::string& path, std::string_view message, int resultCode);
void writePoint(const Model& model, const Results& results, const std::string& path);
void writeJson(const Model& model, const Results& results, const std::string& path);

}  // namespace kavo::writer
