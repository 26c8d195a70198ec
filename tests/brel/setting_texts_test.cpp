// Texts of settings: names that were meant, and the description of all settings.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include "brel/settings/near_names.h"
#include "grb/solver.h"
#include "tav/attr/lib/info_registry.h"
#include "tav/yaml/parser.h"
#include "tests/brel/host.h"

namespace brel_test {
namespace {

using brel::settings::nearNames;
using testing::IsEmpty;

TEST(SettingTexts, DistanceCountsTypingErrors) {
  struct Case {
    const char *a, *b;
    std::size_t distance;
  };
  for (const Case& c : {Case{"", "", 0},
                        {"", "abc", 3},
                        {"mipgap", "mipgap", 0},
                        {"mipgap", "mipgpa", 1},
                        {"mipgap", "mpgap", 1},
                        {"mipgap", "mipggap", 1},
                        {"mipgap", "mixgap", 1},
                        {"kitten", "sitting", 3},
                        {"ab", "ba", 1}}) {
    EXPECT_EQ(brel::settings::editDistance(c.a, c.b), c.distance) << c.a << " " << c.b;
    EXPECT_EQ(brel::settings::editDistance(c.b, c.a), c.distance) << c.b << " " << c.a;
  }
}

TEST(SettingTexts, NamesThatWereMeant) {
  const std::vector<std::string> known{"outlev",    "iis",         "MIPGap",         "MIPGapAbs", "TuneTargetMIPGap",
                                       "TimeLimit", "NodeLimit",   "IterationLimit", "Threads",   "FeasibilityTol",
                                       "feasopt",   "feasoptmode", "Presolve",       "WorkLimit"};
  const std::pair<const char*, std::vector<std::string>> cases[]{
      {"mipgpa", {"MIPGap"}},
      {"MIPGAPP", {"MIPGap"}},
      {"tune", {"TuneTargetMIPGap"}},
      {"timelim", {"TimeLimit"}},
      {"lim:time", {"TimeLimit"}},
      {"NodeLim", {"NodeLimit"}},
      {"iterlim", {"IterationLimit"}},
      {"absmipgap", {"MIPGapAbs", "MIPGap"}},
      {"mip:gap", {"MIPGap"}},
      {"tech:threads", {"Threads"}},
      {"feastol", {"FeasibilityTol"}},
      {"feas", {"feasopt", "feasoptmode", "FeasibilityTol"}},
      {"outlvl", {"outlev"}},
      {"is", {"iis"}},
      {"xyz", {}},
      {"", {}},
  };
  for (const auto& [wanted, names] : cases) EXPECT_EQ(nearNames(wanted, known), names) << wanted;
  EXPECT_THAT(nearNames("limit", known), testing::SizeIs(3)) << "never more than three";
  EXPECT_THAT(nearNames("timelimit", {}), IsEmpty());
  EXPECT_THAT(nearNames(std::string(1'000'000, 'a'), known), IsEmpty());
}

// Everything that an info says, by property.
std::map<std::string, std::string> said(const tav::attr::AbstractBaseInfo& info) {
  std::map<std::string, std::string> all{{"kind", info.documentedKind()},
                                         {"has default", info.hasDefault() ? "yes" : "no"}};
  for (const std::string_view property : info.properties()) all.emplace(property, info.propertyText(property));
  return all;
}

TEST(SettingTexts, DescriptionReadsBackAsTheCatalogue) {
  LinkOverDouble link;
  link.definition.enable(brel::Plugin::multipleObjectives);
  link.definition.setName(brel::PluginAttrib{4}, "multobj");
  HostModel model;
  const kavo_setting_info own{"outlev", KAVO_SETTING_INT, "1", 0, 100, "Host", "Shows: \"the log\" # 'or' not"};
  ASSERT_EQ(kavo_declare_setting(model, &own), KAVO_OK);
  ASSERT_EQ(kavo_open_link(model, FORWARD_LINK), KAVO_OK) << kavo_last_error();
  EXPECT_EQ(link.gurobi->count(gurobi_double::Fn::GRBstartenv), 0);
  const auto path = std::filesystem::temp_directory_path() / "brel-description.yaml";
  ASSERT_EQ(kavo_describe_options(model, path.c_str()), KAVO_OK) << kavo_last_error();
  std::ostringstream text;
  text << std::ifstream(path).rdbuf();
  std::filesystem::remove(path);

  using tav::yaml::EventKind;
  tav::yaml::Parser parser(text.str());
  for (const EventKind kind : {EventKind::kStreamStart, EventKind::kDocumentStart, EventKind::kMapStart})
    parser.take(kind);
  std::map<std::string, std::map<std::string, std::string>> found;
  while (parser.peek() != EventKind::kMapEnd) {
    const std::string group(parser.take(EventKind::kScalar).text());
    EXPECT_NE(group, "");
    parser.take(EventKind::kListStart);
    while (parser.peek() != EventKind::kListEnd) {
      const auto read =
          std::dynamic_pointer_cast<tav::attr::AbstractBaseInfo>(tav::attr::lib::infoRegistry().read(parser));
      EXPECT_TRUE(found.emplace(read->name(), said(*read)).second) << read->name();
    }
    parser.take(EventKind::kListEnd);
  }

  grb::Solver solver(link.gurobi->library());
  const auto dictionary = solver.makeModelAttributes("grb", {});
  EXPECT_EQ(dictionary->count(), 176);
  for (const int key : dictionary->keys()) EXPECT_EQ(found[dictionary->name(key)], said(*dictionary->info(key)));
  EXPECT_EQ(found["multobj"]["up"], "1");
  EXPECT_EQ(found["ranges"], (std::map<std::string, std::string>{})) << "its plug-in is off";
  EXPECT_EQ(found["outlev"]["doc"], own.help);
  EXPECT_EQ(found["outlev"]["kind"], "RangeInfo_Int32");
  EXPECT_EQ(found.size(), 176U + 1 + 4 + 1 + 1)
      << "Gurobi's, the framework's, the plug-ins', the host's, and the empty one made by asking";
}

}  // namespace
}  // namespace brel_test
