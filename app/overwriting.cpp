#include "app/overwriting.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "app/failure.h"
#include "app/gurobi_files.h"
#include "kavo/kavo.h"

namespace app {

namespace {

namespace fs = std::filesystem;
using One = RunFiles::One;
using Numbered = RunFiles::Numbered;

// The file itself, behind all links.
fs::path fileAt(const std::string& path) {
  std::error_code none;
  return fs::weakly_canonical(fs::absolute(path, none), none);
}

// The name in its folder, which may be a link.
fs::path entryAt(const std::string& path) {
  std::error_code none;
  const fs::path whole = fs::absolute(path, none);
  return fs::weakly_canonical(whole.parent_path(), none) / whole.filename();
}

// Nothing is lost when a device is written to.
bool isDevice(const std::string& path) {
  std::error_code none;
  return fs::exists(path, none) && !fs::is_regular_file(path, none);
}

bool isSameFile(const std::string& a, const std::string& b) {
  std::error_code none;
  if (isDevice(a)) return false;
  const fs::path file = fileAt(a);  // none when there is no working folder any more
  return fs::equivalent(a, b, none) || (!file.empty() && file == fileAt(b));
}

bool isThere(const std::string& path) {
  std::error_code none;
  return fs::is_regular_file(path, none);
}

// A number as it stands in a name.
bool isNumber(std::string_view text) {
  return !text.empty() && (text.size() == 1 || text[0] != '0') &&
         std::all_of(text.begin(), text.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::string nameOf(const Numbered& files, int number) { return fmt::format("{}{}{}", files.begin, number, files.end); }

// What the whole paths of these files begin with.
std::string beginOf(const Numbered& files) {
  const std::string path = entryAt(files.begin + "1").string();
  return path.substr(0, path.empty() ? 0 : path.size() - 1);
}

bool isAmong(const Numbered& files, const std::string& path) {
  const std::string begin = beginOf(files);
  for (const fs::path& place : {fileAt(path), entryAt(path)}) {
    const std::string text = place.string();
    if (!text.starts_with(begin) || !text.ends_with(files.end)) continue;
    if (text.size() <= begin.size() + files.end.size()) continue;
    if (isNumber(std::string_view(text).substr(begin.size(), text.size() - begin.size() - files.end.size()))) {
      return true;
    }
  }
  return false;
}

// Whether a number behind the beginning of `longer` can be read as one behind that of `shorter`.
bool isWithin(const Numbered& longer, const Numbered& shorter) {
  const std::string begin = beginOf(longer), part = beginOf(shorter);
  if (part.empty() || longer.end != shorter.end || !begin.starts_with(part)) return false;
  const std::string_view rest = std::string_view(begin).substr(part.size());
  return rest.empty() || (rest[0] != '0' && isNumber(rest));
}

[[noreturn]] void refuseInput(const std::string& what, const std::string& path, const One& input) {
  throw Failure(fmt::format("{}: {} would overwrite {}", what, path, input.what));
}

[[noreturn]] void refuseTwice(const std::string& path, const std::string& one, const std::string& other) {
  throw Failure(fmt::format("{} is named for two outputs: {} and {}", path, one, other));
}

void checkInputs(const RunFiles& files) {
  for (const One& input : files.read) {
    if (!isThere(input.path)) continue;
    for (const One& output : files.written) {
      if (isSameFile(output.path, input.path)) refuseInput(output.what, output.path, input);
    }
    for (const Numbered& outputs : files.numbered) {
      if (isAmong(outputs, input.path)) refuseInput(outputs.what, input.path, input);
    }
  }
}

void checkTwice(const RunFiles& files) {
  for (auto output = files.written.begin(); output != files.written.end(); ++output) {
    for (auto other = files.written.begin(); other != output; ++other) {
      if (isSameFile(output->path, other->path)) refuseTwice(output->path, other->what, output->what);
    }
    if (isDevice(output->path)) continue;
    for (const Numbered& others : files.numbered) {
      if (isAmong(others, output->path)) refuseTwice(output->path, output->what, others.what);
    }
  }
  for (auto outputs = files.numbered.begin(); outputs != files.numbered.end(); ++outputs) {
    for (auto others = files.numbered.begin(); others != outputs; ++others) {
      if (isWithin(*outputs, *others)) refuseTwice(nameOf(*outputs, 1), others->what, outputs->what);
      if (isWithin(*others, *outputs)) refuseTwice(nameOf(*others, 1), others->what, outputs->what);
    }
  }
}

// The link checks its own.
void checkWritable(const One& output) {
  const bool isResult = output.what == kResultFile || output.what == kFixedResultFile;
  if (output.writer == RunFiles::Writer::us) check(kavo_check_writable(output.path.c_str()));
  if (output.writer == RunFiles::Writer::gurobi) checkGurobiOutput(output.what, output.path, isResult);
}

}  // namespace

void checkOutputs(const RunFiles& files) {
  checkInputs(files);
  checkTwice(files);
  for (const One& output : files.written) checkWritable(output);
  for (const Numbered& outputs : files.numbered) checkWritable({nameOf(outputs, 1), outputs.what, outputs.writer});
}

bool isRead(const RunFiles& files, const std::string& path) {
  return std::any_of(files.read.begin(), files.read.end(),
                     [&](const One& input) { return isThere(input.path) && isSameFile(path, input.path); });
}

}  // namespace app
