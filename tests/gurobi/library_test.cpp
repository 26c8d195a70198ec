// Finding a library, and what is said when there is none.
#include "grb/gurobi/library.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

#include "tests/gurobi/native_path.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

std::string failure(const LibrarySearch& search) {
  const auto error = thrown<LoadError>([&] { loadLibrary(search); });
  EXPECT_EQ(error.tag(), "Gurobi");
  return error.message();
}

TEST(LibraryLoad, AllMissesInOneErrorWithTheWaysOut) {
  LibrarySearch search;
  search.home = "/no/such/home";
  search.systemName = "libgurobi130_of_nobody.so";
  search.bridges = {"/no/bridge/libgurobi_py.so", ALMOST_GUROBI_12};
  EXPECT_THAT(failure(search),
              AllOf(HasSubstr("/no/such/home/lib/libgurobi130.so: cannot open shared object file"),
                    HasSubstr("libgurobi130_of_nobody.so: cannot open shared object file"),
                    HasSubstr("/no/bridge/libgurobi_py.so: cannot open"),
                    HasSubstr(": it is Gurobi 12.0.3, but Gurobi 13.0 is needed"), HasSubstr("set GUROBI_HOME"),
                    HasSubstr("pip install gurobipy"), HasSubstr("GRBLINK_GUROBI")));
}

TEST(LibraryLoad, ALibraryThatWasNamedIsTheOnlyOneTried) {
  const std::pair<std::string, const char*> cases[]{
      {"/no/such/library.so", "cannot open shared object file"},
      {"libm.so.6", "not a Gurobi library, it has no function GRBversion"},
      {ALMOST_GUROBI_12, "it is Gurobi 12.0.3, but Gurobi 13.0 is needed"},
      {ALMOST_GUROBI_13, "it is Gurobi 13.0.3, but these functions are missing: GRBplatform, GRBemptyenvinternal,"},
      {"gurobipy", "/no/bridge/libgurobi_py.so: cannot open"},
  };
  for (const auto& [choice, reason] : cases) {
    LibrarySearch search;
    search.choice = choice;
    search.home = "/no/such/home";
    search.bridges = {"/no/bridge/libgurobi_py.so"};
    EXPECT_THAT(failure(search), AllOf(HasSubstr(reason), HasSubstr("GRBLINK_GUROBI is \"" + choice + "\""),
                                       Not(HasSubstr("/no/such/home"))));
  }
}

TEST(LibraryLoad, MissingFunctionsAreAllNamed) {
  LibrarySearch search;
  search.choice = ALMOST_GUROBI_13;
  const std::string text = failure(search);
  for (std::size_t i = 1; i < kFnCount; ++i) EXPECT_THAT(text, HasSubstr(kFnNames[i]));
  EXPECT_THAT(text, Not(HasSubstr("GRBversion")));
}

TEST(LibraryLoad, TheFirstUsableOneIsTaken) {
  const std::filesystem::path home = std::filesystem::path(::testing::TempDir()) / "gurobi_home";
  std::filesystem::remove_all(home);
  std::filesystem::create_directories(home / "lib");
  std::filesystem::create_symlink(nativeGurobi(), home / "lib" / "libgurobi130.so");
  LibrarySearch search;
  search.systemName = "";
  search.home = home.string();
  search.bridges = {ALMOST_GUROBI_12};
  const auto library = loadLibrary(search);
  EXPECT_EQ(library->path(), (home / "lib" / "libgurobi130.so").string());
  EXPECT_EQ(library->text(), "Gurobi 13.0.2 (" + library->path() + ")");
  EXPECT_FALSE(library->isBridge());
}

// Once Python has imported the package, the system finds the package's copy by its bare name; a path stands for it.
TEST(LibraryLoad, TheCopyOfThePackageIsTakenOnlyWhenItIsNamed) {
  const auto folder = std::filesystem::path(::testing::TempDir()) / "gurobipy" / ".libs";
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  std::filesystem::create_symlink(nativeGurobi(), folder / "libgurobi130.so");
  LibrarySearch search;
  search.systemName = (folder / "libgurobi130.so").string();
  search.bridges = {"/no/bridge/libgurobi_py.so"};
  EXPECT_THAT(failure(search), AllOf(HasSubstr("libgurobi130.so: it is the copy inside the package gurobipy"),
                                     HasSubstr("/no/bridge/libgurobi_py.so: cannot open")));
  search.choice = search.systemName;
  EXPECT_EQ(loadLibrary(search)->path(), search.choice);
}

TEST(LibraryLoad, TheEnvironmentSaysWhereToLook) {
  setenv("GRBLINK_GUROBI", "/a/library.so", 1);
  setenv("GUROBI_HOME", "/a/home", 1);
  setenv("GRBLINK_TRACE", "/a/trace", 1);
  const LibrarySearch search = LibrarySearch::fromEnvironment();
  for (const char* name : {"GRBLINK_GUROBI", "GUROBI_HOME", "GRBLINK_TRACE"}) unsetenv(name);
  EXPECT_EQ(search.choice, "/a/library.so");
  EXPECT_EQ(search.home, "/a/home");
  EXPECT_EQ(search.traceFile, "/a/trace");
  EXPECT_EQ(search.systemName, "libgurobi130.so");
  const auto folder = std::filesystem::read_symlink("/proc/self/exe").parent_path();
  ASSERT_FALSE(search.bridges.empty());
  EXPECT_EQ(search.bridges.front(), (folder / "libgurobi_py.so").string());
  EXPECT_EQ(search.bridges.back(), (folder.parent_path() / "lib" / "libgurobi_py.so").string());
}

}  // namespace
}  // namespace grb
