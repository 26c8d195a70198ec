// What a solve starts from, as the link sees it; points read from files; progress.

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <cmath>
#include <filesystem>

#include "kavo/link.h"
#include "tests/kavo/fixture.h"

namespace kavo_test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(Starts, LinkHasWhatIsNotWithheld) {
  Model model;
  fillSmall(model);
  const double primal[] = {1, NAN}, second[] = {NAN, 2};
  const int columns[] = {KAVO_BASIC, 0};
  ASSERT_EQ(kavo_set_start(model, primal, second), KAVO_OK);
  ASSERT_EQ(kavo_add_mip_start(model, second), KAVO_OK);
  ASSERT_EQ(kavo_set_basis(model, columns, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_add_columns(model, 1, nullptr, nullptr, nullptr, nullptr), KAVO_OK);  // the starts grow with the model
  const double third[] = {5, 6, 7};
  const int all[] = {1, 2, 3};
  ASSERT_EQ(kavo_add_mip_start(model, third), KAVO_OK);
  ASSERT_EQ(kavo_open_link(model, FAKE_LINK), KAVO_OK);
  const std::string values = "starts: x 1,nan,nan y nan,2", points = " mip nan,2,nan mip 5,6,7\n";
  struct Case {
    double ratio;
    std::string told, note;
  };
  const Case cases[] = {
      {0, values + " columns 3,0,0 rows 0,0" + points, ""},
      {0.2, values + " columns 3,0,0 rows 0,0" + points, ""},
      {0.21, values + points, "the start basis is withheld: it has 1 of 5 statuses, and the basis ratio is 0.21"},
      {1, "withheld\n", "withheld, as the basis ratio is 1: the start basis, start values, MIP starts"},
  };
  for (const Case& c : cases) {
    ASSERT_EQ(kavo_set_basis_ratio(model, c.ratio), KAVO_OK);
    EXPECT_THAT(logOfSolve(model, {{"tell", "1"}}), HasSubstr(c.told)) << c.ratio;
    EXPECT_THAT(notesOf(model),
                c.note.empty() ? testing::Matcher<std::vector<std::string>>(IsEmpty()) : ElementsAre(c.note))
        << c.ratio;
  }
  ASSERT_EQ(kavo_set_basis(model, all, all), KAVO_OK);
  ASSERT_EQ(kavo_set_basis_ratio(model, 0.99), KAVO_OK);
  EXPECT_THAT(logOfSolve(model, {{"tell", "1"}}), HasSubstr(" columns 1,2,3 rows 1,2 "));
  ASSERT_EQ(kavo_set_basis(model, nullptr, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_set_start(model, nullptr, nullptr), KAVO_OK);
  ASSERT_EQ(kavo_clear_mip_starts(model), KAVO_OK);
  EXPECT_THAT(logOfSolve(model, {{"tell", "1"}}), HasSubstr("starts:\n"));
  ASSERT_EQ(kavo_set_basis_ratio(model, 1), KAVO_OK);
  EXPECT_THAT(logOfSolve(model, {{"tell", "1"}}), HasSubstr("withheld\n"));
  EXPECT_THAT(notesOf(model), IsEmpty()) << "nothing was there to withhold";
}

class Points : public testing::Test {
 protected:
  Points() {
    const char* names[] = {"x", nullptr, "a name", " #odd ", "#c", "twice", "twice", "_svar[1]"};
    const double values[] = {1, 2, 3, 4, 5, 6, 7, 8};
    EXPECT_EQ(kavo_add_columns(model_, 8, values, nullptr, nullptr, names), KAVO_OK);
  }

  std::string read(const std::string& text) {
    writeTo(path_, text);
    std::vector<double> values(8, 77);
    std::size_t unknown = 77;
    if (kavo_read_point(model_, path_.c_str(), values.data(), &unknown) != KAVO_OK) {
      EXPECT_EQ(values, std::vector<double>(8, 77)) << "a failure changes nothing";
      return kavo_last_error();
    }
    std::string told;
    for (std::size_t i = 0; i < 8; ++i) {
      if (!std::isnan(values[i])) told += fmt::format("{}={} ", i, values[i]);
    }
    return told + fmt::format("unknown {}", unknown);
  }

  Model model_;
  Folder folder_;
  const std::string path_ = folder_ / "start.sol";
};

TEST_F(Points, NamesAndValues) {
  const std::pair<const char*, const char*> cases[] = {
      {"# Objective value = 5\nx 3\n", "0=3 unknown 0"},
      {"\xEF\xBB\xBFx 3\r\n\r\n   \r\n_svar[2]\t4\r\na name 5 \r\n", "0=3 1=4 2=5 unknown 0"},
      {"  x   -3.5e-1", "0=-0.35 unknown 0"},
      {"x 3\nx 4\n", "0=4 unknown 0"},
      {" #odd  3\n#c 4\n#d 5\n#\n# \n", "3=3 4=4 unknown 0"},
      {"_svar[1] 3\n_svar[3] 4\n", "2=4 7=3 unknown 0"},  // a given name goes first
      {"y 1\n_svar[0] 1\n_svar[9] 1\n_svar[02] 1\n_svar[ 2] 1\n_svar[2 1\nX 1\nname 1\n", "unknown 8"},
      {"# nothing\n", "unknown 0"},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(read(text), expected) << text;
}

TEST_F(Points, BadLinesAreNamed) {
  const std::string line2 = "cannot read \"" + path_ + "\": line 2: ";
  const std::pair<const char*, std::string> cases[] = {
      {"x 3\ny\n", line2 + "expected a name and a value, found \"y\""},
      {"x 3\n 5\n", line2 + "expected a name and a value, found \"5\""},
      {"x 3\nx nan\n", line2 + "the value \"nan\" is not a finite number"},
      {"x 3\ny inf\n", line2 + "the value \"inf\" is not a finite number"},
      {"x 3\nx 1e999\n", line2 + "the value \"1e999\" is not a finite number"},
      {"x 3\nx 4,5\n", line2 + "the value \"4,5\" is not a finite number"},
      {"x 3\na name\n", line2 + "the value \"name\" is not a finite number"},
      {"x 3\ntwice 1\n", line2 + "several columns have the name \"twice\""},
  };
  for (const auto& [text, expected] : cases) EXPECT_EQ(read(text), expected) << text;
  EXPECT_THAT(read(""), HasSubstr("empty"));
  double values[8];
  EXPECT_EQ(kavo_read_point(model_, "/nosuch/file", values, nullptr), KAVO_FILE);
  EXPECT_THAT(kavo_last_error(), HasSubstr("/nosuch/file"));
}

TEST(PointFiles, AreReadAsTheyAreWritten) {
  Model model;
  const Folder folder;
  const double lower[] = {0.1,  -1e-300,           3,   1e19, 5, 1.0 / 3, 123456789012345678.0, 5e-324,
                          1e15, 999999999999999.0, -0.0};
  constexpr std::size_t kCount = std::size(lower);
  const char* names[kCount] = {"a b", "#", " ", "x\ty", "_svar[1]"};
  ASSERT_EQ(kavo_add_columns(model, kCount, lower, nullptr, nullptr, names), KAVO_OK);
  ASSERT_EQ(solveFake(model, {{"point", "1"}, {"objective", "2"}}), KAVO_OK);
  ASSERT_EQ(kavo_write_point(model, (folder / "p.sol").c_str()), KAVO_OK);
  double values[kCount];
  std::size_t unknown = 1;
  ASSERT_EQ(kavo_read_point(model, (folder / "p.sol").c_str(), values, &unknown), KAVO_OK) << kavo_last_error();
  EXPECT_THAT(values, testing::ElementsAreArray(lower));
  EXPECT_EQ(unknown, 0u);
}

TEST(Progress, ReachesTheHostWhoMayStop) {
  struct Case {
    double stopAt;
    std::size_t calls;
    const char* termination;
  };
  const Case cases[] = {{99, 5, "finished"}, {3, 3, "interrupted_by_host"}};
  for (const Case& c : cases) {
    Model model;
    fillSmall(model);
    std::pair host{c.stopAt, std::size_t{0}};  // the incumbent at which it stops, and how often it was told
    const auto progress = [](const kavo_progress* now, void* data) {
      auto& [stopAt, calls] = *static_cast<std::pair<double, std::size_t>*>(data);
      ++calls;
      return now->incumbent >= stopAt ? -1 : 0;
    };
    ASSERT_EQ(kavo_set_progress(model, progress, &host), KAVO_OK);
    ASSERT_EQ(solveFake(model, {{"progress", "5"}, {"point", "1"}}), KAVO_OK);
    EXPECT_EQ(host.second, c.calls);
    EXPECT_STREQ(outcomeOf(model).termination, c.termination);
    ASSERT_EQ(kavo_set_progress(model, nullptr, nullptr), KAVO_OK);
    EXPECT_EQ(kavo_link_wants_progress(model), 0);
  }
}

}  // namespace
}  // namespace kavo_test
