// The files that results go to.

#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <cmath>
#include <csignal>

#include "fixture.h"

namespace kavo_test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::StartsWith;

using SolOfSmall = SmallModel;
using Point = SmallModel;
using JsonOfSmall = SmallModel;

const Settings kFull = {{"point", "1"},  {"give", kDualsAndBasis}, {"objective", "8"},
                        {"bound", "10"}, {"gap", "0.25"},          {"iterations", "1000000"}};

TEST_F(SolOfSmall, HoldsEverythingInTheProtocolsOrder) {
  solve(kFull);
  EXPECT_EQ(solOf(model, folder, "one\n\nOptions are fine\r\nthree"),
            "one\n Options are fine\nthree\n\n"
            "Options\n3\n1\n1\n0\n2\n2\n2\n2\n"
            "1.5\n2.5\n0\n0\nobjno 0 0\n"
            "suffix 0 2 8 0 0\nsstatus\n0 3\n1 4\n"
            "suffix 1 2 8 0 0\nsstatus\n0 3\n1 5\n"  // the second row is an equation
            "suffix 4 2 3 0 0\nrc\n0 -0.5\n1 0.5\n"
            "suffix 6 1 10 0 0\nbestbound\n0 10\nsuffix 7 1 10 0 0\nbestbound\n0 10\n"
            "suffix 6 1 10 0 0\nrelmipgap\n0 0.25\nsuffix 7 1 10 0 0\nrelmipgap\n0 0.25\n"
            "suffix 6 1 10 0 0\nabsmipgap\n0 2\nsuffix 7 1 10 0 0\nabsmipgap\n0 2\n");
  EXPECT_EQ(folder.files(), 1) << "no temporary file stays";
}

TEST_F(SolOfSmall, WithoutPointOrSolveHasNoValues) {
  EXPECT_EQ(solOf(model, folder, "failed", 503), "failed\n\nOptions\n3\n1\n1\n0\n2\n0\n2\n0\nobjno 0 503\n");
  solve({{"status", "2"}});
  EXPECT_EQ(solOf(model, folder), "\nOptions\n3\n1\n1\n0\n2\n0\n2\n0\nobjno 0 201\n");
}

// Head of a .nl file with 2 variables, 1 constraint and no objective.
std::string nlHead(const std::string& firstLine) {
  return firstLine + "\n 2 1 0 0 0\n 0 0\n 0 0\n 0 0 0\n 0 0 0 1\n 0 0 0 0 0\n 0 0\n 0 0\n 0 0 0 0 0\n";
}

TEST(Sol, OptionsOfTheNlFileGoBack) {
  Folder folder;
  struct Case {
    const char *firstLine, *options;
  };
  for (const Case& c :
       {Case{"g3 1 1 0", "3\n1\n1\n0\n1\n0\n2\n0\n"}, Case{"g3 0 3 0 1e-05", "5\n0\n3\n0\n1\n0\n2\n0\n1e-05\n"}}) {
    writeTo(folder / "m.nl", nlHead(c.firstLine) + "b\n3\n3\n");  // no bounds of the constraint: refused
    Model model;
    EXPECT_EQ(kavo_read(model, (folder / "m.nl").c_str()), KAVO_FILE);
    ASSERT_EQ(kavo_write_failure_sol((folder / "m.nl").c_str(), (folder / "m.sol").c_str(), "broken", 500), KAVO_OK)
        << kavo_last_error();
    EXPECT_EQ(contentOf(folder / "m.sol"), std::string("broken\n\nOptions\n") + c.options + "objno 0 500\n");
    writeTo(folder / "m.nl", nlHead(c.firstLine) + "r\n3\nb\n3\n3\nk1\n0\n");
    ASSERT_EQ(kavo_read(model, (folder / "m.nl").c_str()), KAVO_OK) << kavo_last_error();
    EXPECT_EQ(solOf(model, folder, "read", 0), std::string("read\n\nOptions\n") + c.options + "objno 0 0\n");
  }
  writeTo(folder / "m.nl", "nonsense");
  EXPECT_EQ(kavo_write_failure_sol((folder / "m.nl").c_str(), (folder / "n.sol").c_str(), "broken", 500), KAVO_FILE);
  EXPECT_FALSE(std::filesystem::exists(folder / "n.sol"));
}

TEST_F(Point, IsObjectiveAndNamesWithValues) {
  EXPECT_EQ(kavo_write_point(model, (folder / "m.sol").c_str()), KAVO_NO_RESULT);
  solve({{"objective", "0.1"}});
  EXPECT_EQ(kavo_write_point(model, (folder / "m.sol").c_str()), KAVO_NO_RESULT);
  EXPECT_EQ(folder.files(), 0);
  solve({{"point", "1"}});
  ASSERT_EQ(kavo_write_point(model, (folder / "m.sol").c_str()), KAVO_OK);
  EXPECT_EQ(contentOf(folder / "m.sol"), "# Objective value = 0.1\nx 0\n_svar[2] 0\n");
}

TEST_F(JsonOfSmall, HoldsEverythingKnown) {
  Settings settings = kFull;
  settings.insert(settings.end(), {{"violation", "0.5"}, {"bound", "inf"}, {"note", "a \"note\""}});
  solve(settings);
  json found = jsonOf(model, folder);
  EXPECT_GE(found["seconds"].get<double>(), 0);
  found.erase("seconds");
  EXPECT_EQ(found, json::parse(R"({
    "status": "optimal", "termination": "finished", "message": "optimal solution",
    "objective": 8, "bound": 1e100, "gap": 0.25, "iterations": 1000000, "nodes": null, "solutions": null,
    "kappa": null, "kappa_exact": null, "ranges": null, "pool": null, "objectives": null, "fixed": null,
    "relaxation": null, "iis": null,
    "variables": {"name": ["x", "_svar[2]"], "value": [0, 0], "reduced_cost": [-0.5, 0.5], "basis": ["lower", "upper"]},
    "rows": {"name": ["c1", "_scon[2]"], "activity": [0, 0], "dual": [1.5, 2.5], "slack": null, "basis": ["lower", "upper"]},
    "violations": {"rows": {"value": 0.5, "name": "c1"}, "bounds": null, "integrality": null,
                   "logical": null, "ordered_sets": null},
    "notes": ["a \"note\""]})"));
}

TEST(Json, OfAnEmptyModelAndOfNoResult) {
  Model model;
  Folder folder;
  EXPECT_EQ(kavo_write_json(model, (folder / "m.json").c_str()), KAVO_NO_RESULT);
  ASSERT_EQ(solveFake(model, {{"status", "2"}}), KAVO_OK);
  const json found = jsonOf(model, folder);
  EXPECT_EQ(found["variables"], json::parse(R"({"name": [], "value": null, "reduced_cost": null, "basis": null})"));
  EXPECT_TRUE(found["violations"].is_null());
}

TEST(Json, NamesOfAnyBytesStayReadable) {
  const std::string longName(300, 'n');
  const std::pair<std::string, std::string> names[] = {{"plain", "plain"},
                                                       {"q\"u\\o", "q\"u\\o"},
                                                       {"tab\tbell\x07 del\x7f", "tab\tbell\x07 del\x7f"},
                                                       {"\xC3\xA9", "\xC3\xA9"},
                                                       {"\xE2\x82\xAC", "\xE2\x82\xAC"},
                                                       {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80"},
                                                       {"bad\xFF", "bad\uFFFD"},
                                                       {"cut\xE2\x82", "cut\uFFFD\uFFFD"},
                                                       {"slash\xC0\xAF", "slash\uFFFD\uFFFD"},
                                                       {"half\xED\xA0\x80", "half\uFFFD\uFFFD\uFFFD"},
                                                       {longName, longName}};
  Model model;
  Folder folder;
  for (const auto& [given, expected] : names) {
    const char* name = given.c_str();
    ASSERT_EQ(kavo_add_columns(model, 1, nullptr, nullptr, nullptr, &name), KAVO_OK);
  }
  ASSERT_EQ(solveFake(model, {}), KAVO_OK);
  const json found = jsonOf(model, folder)["variables"]["name"];
  for (std::size_t i = 0; i < std::size(names); ++i) EXPECT_EQ(found[i].get<std::string>(), names[i].second) << i;
}

TEST(File, FailedWriteLeavesTheEarlierFile) {
  Folder folder;
  Model model;
  std::vector<double> lower(20000, 0.123456789);
  ASSERT_EQ(kavo_add_columns(model, lower.size(), lower.data(), nullptr, nullptr, nullptr), KAVO_OK);
  ASSERT_EQ(solveFake(model, {{"point", "1"}}), KAVO_OK);
  writeTo(folder / "m.sol", "earlier");
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{}, small{100000, 0};
  getrlimit(RLIMIT_FSIZE, &before);
  small.rlim_max = before.rlim_max;
  setrlimit(RLIMIT_FSIZE, &small);
  const int status = kavo_write_sol(model, (folder / "m.sol").c_str(), "", -1);
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(status, KAVO_FILE);
  EXPECT_THAT(kavo_last_error(), StartsWith("cannot write " + (folder / "m.sol") + ": File too large"));
  EXPECT_EQ(contentOf(folder / "m.sol"), "earlier");
  EXPECT_EQ(folder.files(), 1);
}

TEST(File, PathsThatCannotBeWritten) {
  Folder folder;
  Model model;
  std::filesystem::create_directory(folder / "d");
  for (const std::string& path : {folder / "nosuch/m.sol", folder / "d", std::string("/dev/full"), std::string()}) {
    EXPECT_EQ(kavo_write_sol(model, path.c_str(), "", 0), KAVO_FILE) << path;
    EXPECT_THAT(kavo_last_error(), HasSubstr("cannot write " + path));
    EXPECT_EQ(kavo_check_writable(path.c_str()), path == "/dev/full" ? KAVO_OK : KAVO_FILE) << path;
  }
  EXPECT_EQ(kavo_check_writable((folder / "new.sol").c_str()), KAVO_OK);
  EXPECT_EQ(kavo_check_writable("/dev/null"), KAVO_OK);
  EXPECT_EQ(folder.files(), 1);
}

TEST(File, LinksDevicesAndModesStayWhatTheyAre) {
  Folder folder;
  Model model;
  writeTo(folder / "real", "earlier");
  chmod((folder / "real").c_str(), 0640);
  std::filesystem::create_symlink("real", folder / "m.sol");
  ASSERT_EQ(kavo_write_sol(model, (folder / "m.sol").c_str(), "new", 0), KAVO_OK);
  EXPECT_TRUE(std::filesystem::is_symlink(folder / "m.sol"));
  EXPECT_THAT(contentOf(folder / "real"), StartsWith("new\n"));
  struct stat found{};
  ASSERT_EQ(stat((folder / "real").c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & 0777, 0640u);
  ASSERT_EQ(kavo_write_sol(model, "/dev/null", "new", 0), KAVO_OK);
  EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

}  // namespace
}  // namespace kavo_test
