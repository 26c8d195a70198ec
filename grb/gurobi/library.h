// The Gurobi library in use: found and opened at run time, so that grblink builds and starts without one.
//
//   std::shared_ptr<const grb::Library> library = grb::loadLibrary();
//   library->api().GRBversion(&major, &minor, &technical);
//
// Keep the shared pointer as long as any handle of that library lives: the code goes with it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "grb/gurobi/api.h"
#include "tav/util/exception.h"
#include "tav/util/source_location.h"

namespace grb {

/// No usable Gurobi library. The message lists what was tried, why each failed, and the ways to get Gurobi.
class LoadError : public tav::Exception {
 public:
  explicit LoadError(std::string message, tav::util::SourceLocation location = tav::util::SourceLocation::here());
};

/// An open library, or a table that stands for one. Immutable; closes the library at its end.
class Library {
 public:
  /// Opens one library file. `path` is a path, or a bare file name to be looked up on the system's library path.
  /// Checks the version and every function before it returns. Throws LoadError.
  static std::shared_ptr<const Library> open(const std::string& path);

  /// Wraps a filled table, whose code must outlive the library. `text` describes it to people.
  /// `keepAlive` is held as long as the library is.
  static std::shared_ptr<const Library> fromTable(const Api& api, std::string text,
                                                  std::shared_ptr<const void> keepAlive = nullptr);

  /// Another table over the code of `inner`, such as a trace: path and text stay those of `inner`.
  static std::shared_ptr<const Library> over(const Library& inner, const Api& api,
                                             std::shared_ptr<const void> keepAlive);

  ~Library();
  Library(const Library&) = delete;
  Library& operator=(const Library&) = delete;

  const Api& api() const noexcept { return api_; }

  /// The file that was opened, as the system resolved it; empty for a table.
  const std::string& path() const noexcept { return path_; }

  /// Which Gurobi this is, such as "Gurobi 13.0.2 (/opt/gurobi/lib/libgurobi130.so)" or
  /// "Gurobi 13.0.2 through gurobipy (/usr/lib/libgurobi_py.so)".
  const std::string& text() const noexcept { return text_; }

  /// Whether the library is the bridge, which reaches Gurobi through the Python package gurobipy.
  bool isBridge() const noexcept;

 private:
  Library() = default;

  Api api_;
  std::string path_;
  std::string text_;
  std::shared_ptr<const void> keepAlive_;
};

/// Where to look. Empty members are left out of the search.
struct LibrarySearch {
  /// A path, or the word "gurobipy" for the bridge. When it is given, nothing else is tried: a user who names a library
  /// must not get another one without a word. Environment variable GRBLINK_GUROBI.
  std::string choice;
  /// The installation folder of Gurobi, with lib/libgurobi130.so in it. Environment variable GUROBI_HOME.
  std::string home;
  /// A file name to look up on the system's library path. The copy of Gurobi inside the package gurobipy, which that
  /// name finds in a process that has imported the package, is passed over: it is reached through the bridge.
  std::string systemName = "libgurobi130.so";
  /// Places where the bridge may stand: beside the library or program that contains this code, and in the folder lib
  /// beside its folder.
  std::vector<std::string> bridges;
  /// A file that gets a line per Gurobi call, see trace.h. Environment variable GRBLINK_TRACE.
  std::string traceFile;

  static LibrarySearch fromEnvironment();
};

/// Opens the first usable library of a search, in the order of its members. Throws LoadError.
std::shared_ptr<const Library> loadLibrary(const LibrarySearch& search = LibrarySearch::fromEnvironment());

}  // namespace grb
