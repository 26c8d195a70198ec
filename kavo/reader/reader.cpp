#include "kavo/reader/reader.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

#include "kavo/error.h"

namespace kavo::reader {

namespace {

bool endsWith(std::string_view path, std::string_view ending) {
  if (path.size() < ending.size()) return false;
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
  return std::equal(ending.begin(), ending.end(), path.end() - static_cast<std::ptrdiff_t>(ending.size()),
                    [lower](char a, char b) { return a == lower(b); });
}

}  // namespace

Model read(const std::string& path) {
  if (endsWith(path, ".nl")) return readNl(path);
  if (endsWith(path, ".mps") || endsWith(path, ".mps.gz")) return readMps(path);
  if (endsWith(path, ".lp") || endsWith(path, ".lp.gz")) return readLp(path);
  const std::string withEnding = path + ".nl";
  if (::access(withEnding.c_str(), F_OK) == 0) return readNl(withEnding);
  throw Error(
      KAVO_FILE,
      fmt::format("cannot read \"{}\": its ending is none of .nl, .mps, .mps.gz, .lp, .lp.gz, and there is no file "
                  "\"{}\"; check the path",
                  path, withEnding));
}

}  // namespace kavo::reader
