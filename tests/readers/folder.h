#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kavo_test {

// A folder of its own that goes with the test.
class Folder {
 public:
  Folder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kavo-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("cannot make a folder for the test");
    path_ = pattern;
  }
  ~Folder() { std::filesystem::remove_all(path_); }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  // The path of a file in it.
  std::string operator/(const std::string& name) const { return (path_ / name).string(); }
  // Writes a file and returns its path.
  std::string write(const std::string& name, std::string_view content) const {
    std::ofstream(*this / name, std::ios::binary) << content;
    return *this / name;
  }
  // How many files it holds.
  long files() const {
    return std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator());
  }

 private:
  std::filesystem::path path_;
};

}  // namespace kavo_test
