#include "grb/gurobi/library.h"

#include <dlfcn.h>
#include <fmt/format.h>
#include <link.h>

#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string_view>
#include <utility>

#include "grb/gurobi/constants.h"
#include "grb/gurobi/trace.h"

namespace grb {
namespace {

constexpr const char* kBridgeName = "libgurobi_py.so";
constexpr const char* kNativeName = "libgurobi130.so";

struct CloseHandle {
  void operator()(void* handle) const noexcept { dlclose(handle); }
};
using Handle = std::unique_ptr<void, CloseHandle>;

// Why dlopen failed; the system mostly puts the path in front, which the caller names anyway.
std::string openFailure(const std::string& path) {
  const char* text = dlerror();
  const std::string_view reason = text != nullptr ? text : "unknown error";
  const std::string prefix = path + ": ";
  return std::string(reason.starts_with(prefix) ? reason.substr(prefix.size()) : reason);
}

// The address of a function as a pointer of its type. The platform promises that the two look alike.
template <typename Pointer>
bool bind(void* handle, const char* name, Pointer& pointer) {
  pointer = reinterpret_cast<Pointer>(dlsym(handle, name));
  return pointer != nullptr;
}

std::string resolvedPath(void* handle, const std::string& path) {
  link_map* map = nullptr;
  if (dlinfo(handle, RTLD_DI_LINKMAP, &map) == 0 && map != nullptr && map->l_name != nullptr && *map->l_name != '\0') {
    return map->l_name;
  }
  return path;
}

struct Version {
  int major = 0;
  int minor = 0;
  int technical = 0;

  std::string text() const { return fmt::format("{}.{}.{}", major, minor, technical); }
};

// Asked before anything else: a library of another version refuses to make an environment, and says so only on the
// standard output.
Version checkedVersion(void* handle) {
  void (*gurobiVersion)(int*, int*, int*) = nullptr;
  if (!bind(handle, "GRBversion", gurobiVersion))
    throw LoadError("not a Gurobi library, it has no function GRBversion");
  Version version;
  gurobiVersion(&version.major, &version.minor, &version.technical);
  if (version.major != kVersionMajor || version.minor != kVersionMinor) {
    throw LoadError(
        fmt::format("it is Gurobi {}, but Gurobi {}.{} is needed", version.text(), kVersionMajor, kVersionMinor));
  }
  return version;
}

Api boundTable(void* handle, const Version& version) {
  Api api;
  std::string missing;
  const int number = version.major * 100 + version.minor;
#define GRB_FN(result, name, params, since) \
  if (!bind(handle, #name, api.name) && number >= (since)) missing += std::string(missing.empty() ? "" : ", ") + #name;
#include "grb/gurobi/functions.def"
  if (!missing.empty()) {
    throw LoadError(fmt::format("it is Gurobi {}, but these functions are missing: {}", version.text(), missing));
  }
  return api;
}

bool isBridgePath(const std::string& path) { return std::filesystem::path(path).filename() == kBridgeName; }

std::string environmentValue(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

// The library or program that contains this very code.
std::filesystem::path ownFile() {
  Dl_info info{};
  if (dladdr(reinterpret_cast<const void*>(&ownFile), &info) == 0 || info.dli_fname == nullptr) return {};
  std::error_code ignored;
  const std::filesystem::path resolved = std::filesystem::canonical(info.dli_fname, ignored);
  return resolved.empty() ? std::filesystem::path(info.dli_fname) : resolved;
}

// Python keeps its own copy of Gurobi in the folder of the package. A bare name finds that copy once the host, or the
// bridge of an earlier link, has imported the package; but the licence of the package serves it through Python only.
bool isCopyOfPackage(const std::string& path) {
  const std::filesystem::path folder = std::filesystem::path(path).parent_path();
  return folder.filename() == ".libs" && folder.parent_path().filename() == "gurobipy";
}

// Opens a candidate. Throws LoadError.
std::shared_ptr<const Library> openCandidate(const LibrarySearch& search, const std::string& path) {
  auto library = Library::open(path);
  if (search.choice.empty() && path == search.systemName && isCopyOfPackage(library->path())) {
    throw LoadError(fmt::format("it is the copy inside the package gurobipy ({}), which is reached through the bridge",
                                library->path()));
  }
  return library;
}

std::vector<std::string> candidates(const LibrarySearch& search) {
  if (!search.choice.empty() && search.choice != "gurobipy") return {search.choice};
  std::vector<std::string> paths;
  if (search.choice.empty()) {
    if (!search.home.empty()) paths.push_back((std::filesystem::path(search.home) / "lib" / kNativeName).string());
    if (!search.systemName.empty()) paths.push_back(search.systemName);
  }
  paths.insert(paths.end(), search.bridges.begin(), search.bridges.end());
  return paths;
}

std::string failureText(const LibrarySearch& search, const std::string& tried) {
  std::string text = "No usable Gurobi library was found. Tried:\n" + tried;
  if (tried.empty()) text += "  nothing: no place to look at was given\n";
  if (!search.choice.empty()) {
    text += fmt::format("Only this was tried because GRBLINK_GUROBI is \"{}\"; unset it to search for Gurobi.\n",
                        search.choice);
  }
  return text + fmt::format(
                    "Ways to get Gurobi {}.{}: install it and set GUROBI_HOME to its folder (the one with lib/{}), or "
                    "run \"pip install gurobipy\" for its size-limited evaluation licence. GRBLINK_GUROBI names a "
                    "library file, or is the word gurobipy.",
                    kVersionMajor, kVersionMinor, kNativeName);
}

// Whether the user has a licence file where gurobipy looks for one; it goes before the licence that comes with
// gurobipy.
bool hasOwnLicence() {
  const char* home = std::getenv("HOME");
  std::error_code ignored;
  return std::getenv("GRB_LICENSE_FILE") != nullptr || std::filesystem::exists("/opt/gurobi/gurobi.lic", ignored) ||
         (home != nullptr && std::filesystem::exists(std::filesystem::path(home) / "gurobi.lic", ignored));
}

const char* bridgeText() {
  return hasOwnLicence() ? " through gurobipy" : " through gurobipy, size-limited evaluation licence";
}

}  // namespace

LoadError::LoadError(std::string message, tav::util::SourceLocation location)
    : tav::Exception("Gurobi", std::move(message), std::nullopt, "", location) {}

std::shared_ptr<const Library> Library::open(const std::string& path) {
  Handle handle(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL));
  if (!handle) throw LoadError(openFailure(path));
  const Version version = checkedVersion(handle.get());
  const std::shared_ptr<Library> library(new Library);
  library->api_ = boundTable(handle.get(), version);
  library->path_ = resolvedPath(handle.get(), path);
  library->text_ =
      fmt::format("Gurobi {}{} ({})", version.text(), isBridgePath(library->path_) ? bridgeText() : "", library->path_);
  library->keepAlive_ = std::shared_ptr<void>(std::move(handle));
  return library;
}

std::shared_ptr<const Library> Library::fromTable(const Api& api, std::string text,
                                                  std::shared_ptr<const void> keepAlive) {
  const std::shared_ptr<Library> library(new Library);
  library->api_ = api;
  library->text_ = std::move(text);
  library->keepAlive_ = std::move(keepAlive);
  return library;
}

std::shared_ptr<const Library> Library::over(const Library& inner, const Api& api,
                                             std::shared_ptr<const void> keepAlive) {
  const std::shared_ptr<Library> library(new Library);
  library->api_ = api;
  library->path_ = inner.path_;
  library->text_ = inner.text_;
  library->keepAlive_ = std::move(keepAlive);
  return library;
}

Library::~Library() = default;

bool Library::isBridge() const noexcept { return isBridgePath(path_); }

LibrarySearch LibrarySearch::fromEnvironment() {
  LibrarySearch search;
  search.choice = environmentValue("GRBLINK_GUROBI");
  search.home = environmentValue("GUROBI_HOME");
  search.traceFile = environmentValue("GRBLINK_TRACE");
  const std::filesystem::path folder = ownFile().parent_path();
  search.bridges.push_back((folder / kBridgeName).string());
  search.bridges.push_back((folder.parent_path() / "lib" / kBridgeName).string());
  if (search.bridges[0] == search.bridges[1]) search.bridges.pop_back();
  return search;
}

std::shared_ptr<const Library> loadLibrary(const LibrarySearch& search) {
  std::string tried;
  for (const std::string& path : candidates(search)) {
    std::shared_ptr<const Library> library;
    try {
      library = openCandidate(search, path);
    } catch (const LoadError& error) {
      tried += fmt::format("  {}: {}\n", path, error.message());
      continue;
    }
    return search.traceFile.empty() ? library : traceCalls(library, search.traceFile);
  }
  throw LoadError(failureText(search, tried));
}

}  // namespace grb
