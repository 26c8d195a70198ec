#include "grb/gurobi/trace.h"

#include <fmt/format.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <mutex>
#include <set>
#include <string_view>
#include <system_error>
#include <tuple>
#include <type_traits>
#include <utility>

namespace grb {
namespace {

struct CloseFile {
  void operator()(std::FILE* file) const noexcept { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

class Trace {
 public:
  Trace(std::shared_ptr<const Library> inner, File file, std::string path)
      : inner_(std::move(inner)), file_(std::move(file)), path_(std::move(path)) {}

  const Api& api() const noexcept { return inner_->api(); }

  // One write per line, which the C library keeps whole among threads; the buffer ends with the line, so that a crash
  // loses nothing. A line that cannot be written is the last.
  void write(const std::string& line) noexcept {
    if (error_ == 0 && std::fputs(line.c_str(), file_.get()) < 0) error_ = errno != 0 ? errno : EIO;
  }

  std::string failure() const {
    const int error = error_;
    if (error == 0) return {};
    return fmt::format("the trace of calls ends early: cannot write {}: {}", path_,
                       std::generic_category().message(error));
  }

 private:
  const std::shared_ptr<const Library> inner_;
  const File file_;
  const std::string path_;
  std::atomic<int> error_ = 0;
};

// The rows of a table are plain functions, without a place for an object: they find the living trace here.
std::atomic<Trace*> current{nullptr};

// Goes on from one trace of the process to the next, since they may share a file.
std::atomic<std::uint64_t> calls{0};

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      result += '\\';
      result += c;
    } else if (static_cast<unsigned char>(c) < ' ') {
      result += fmt::format("\\x{:02x}", c);
    } else {
      result += c;
    }
  }
  return result + '"';
}

bool isSecretName(std::string_view name) {
  std::string lower;
  std::transform(name.begin(), name.end(), std::back_inserter(lower),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lower.find("password") != std::string::npos || lower.find("secret") != std::string::npos;
}

template <typename T>
std::string text(const T& value) {
  if constexpr (std::is_arithmetic_v<T>) {
    if constexpr (std::is_same_v<T, char>) return fmt::format("'{}'", value);
    return fmt::format("{}", value);
  } else {
    static_assert(std::is_pointer_v<T>);
    if (value == nullptr) return "null";
    if constexpr (std::is_same_v<T, const char*>) return quoted(value);
    if constexpr (std::is_same_v<T, GRBenv*>) return "env";
    if constexpr (std::is_same_v<T, GRBmodel*>) return "model";
    return "*";
  }
}

template <typename... Args>
std::string argumentText(const Args&... args) {
  std::string result;
  ((result += (result.empty() ? "" : ", ") + text(args)), ...);
  return result;
}

template <Fn kFn, typename... Args>
std::string callText(const Args&... args) {
  if constexpr (kFn == Fn::GRBsetstrparam) {
    const auto& [env, name, value] = std::tie(args...);
    if (name != nullptr && value != nullptr && isSecretName(name)) {
      return fmt::format("{}({}, {}, ***)", fnName(kFn), text(env), text(name));
    }
  }
  return fmt::format("{}({})", fnName(kFn), argumentText(args...));
}

// A row of the traced table: the same signature as the row that it wraps.
template <auto kRow, Fn kFn, typename Result, typename... Args>
auto traced(Result (*Api::*)(Args...)) -> Result (*)(Args...) {
  return [](Args... args) -> Result {
    using Clock = std::chrono::steady_clock;
    Trace& trace = *current.load(std::memory_order_acquire);
    const std::uint64_t number = ++calls;
    const std::string call = callText<kFn>(args...);
    const auto start = Clock::now();
    const auto line = [&](const std::string& outcome) {
      const auto spent = std::chrono::duration_cast<std::chrono::microseconds>(Clock::now() - start);
      trace.write(fmt::format("{} {}{} [{} us]\n", number, call, outcome, spent.count()));
    };
    if constexpr (std::is_void_v<Result>) {
      (trace.api().*kRow)(args...);
      line("");
    } else {
      const Result result = (trace.api().*kRow)(args...);
      line(" = " + text<std::conditional_t<std::is_same_v<Result, char*>, const char*, Result>>(result));
      return result;
    }
  };
}

Api tracedTable() {
  Api table;
#define GRB_FN(result, name, params, since) table.name = traced<&Api::name, Fn::name>(&Api::name);
#include "grb/gurobi/functions.def"
  return table;
}

File openFile(const std::string& path, bool append) {
  File file(std::fopen(path.c_str(), append ? "ae" : "we"));
  if (!file) {
    throw LoadError(fmt::format("The trace file {} cannot be written: {}", path,
                                std::error_code(errno, std::generic_category()).message()));
  }
  std::setvbuf(file.get(), nullptr, _IOLBF, BUFSIZ);
  return file;
}

std::mutex mutex;
std::weak_ptr<Trace> living;

}  // namespace

std::string traceFailure() {
  const std::lock_guard lock(mutex);
  const std::shared_ptr<Trace> trace = living.lock();
  return trace ? trace->failure() : std::string();
}

std::shared_ptr<const Library> traceCalls(std::shared_ptr<const Library> inner, const std::string& file) {
  static std::set<std::string> files;

  const std::lock_guard lock(mutex);
  const Library& library = *inner;
  std::shared_ptr<Trace> trace = living.lock();
  if (!trace) {
    File opened = openFile(file, files.contains(file));
    files.insert(file);
    trace = std::make_shared<Trace>(inner, std::move(opened), file);
    living = trace;
    current.store(trace.get(), std::memory_order_release);
  } else if (trace->api().GRBversion != library.api().GRBversion) {
    throw LoadError("The calls of another Gurobi library are being traced; one trace at a time is possible.");
  }
  return Library::over(library, tracedTable(), trace);
}

}  // namespace grb
