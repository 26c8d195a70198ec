// Option files, settings of the host's own, and what a link tells about settings.
#include <gmock/gmock.h>

#include <cmath>

#include "kavo/link.h"
#include "tests/kavo/fixture.h"

namespace kavo_test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::string given(trpRec* model) {
  const kavo_setting* first = nullptr;
  std::size_t count = 0;
  EXPECT_EQ(kavo_link_settings(model, &first, &count), KAVO_OK);
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    const kavo_setting& setting = first[i];
    text += std::to_string(setting.line) + " " + setting.name + "|" + setting.value + "\n";
  }
  return text;
}

class OptionFileTest : public testing::Test {
 protected:
  int read(const std::string& text) {
    writeTo(path, text);
    return kavo_read_options(model, path.c_str());
  }

  Folder folder;
  const std::string path = folder / "run.opt";
  Model model;
};

TEST_F(OptionFileTest, IsReadAsWritten) {
  ASSERT_EQ(read("\xEF\xBB\xBF* a comment\r\n"
                 "timelimit 60\r\n"
                 "\t# another = one\n"
                 "\n"
                 " MIPGap=1e-3 \n"
                 "threads \t = \t4\n"
                 "nodefiledir /tmp/a folder  \n"
                 "resultfile = \"  in quotes = '  \"\n"
                 "solfiles ''\n"
                 "tuning a'b\n"
                 "mipstopexpr = = 3 # 4\n"
                 "last caf\xE9"),
            KAVO_OK)
      << kavo_last_error();
  EXPECT_EQ(given(model),
            "2 timelimit|60\n5 MIPGap|1e-3\n6 threads|4\n7 nodefiledir|/tmp/a folder\n8 resultfile|  in quotes = '  \n"
            "9 solfiles|\n10 tuning|a'b\n11 mipstopexpr|= 3 # 4\n12 last|caf\xE9\n");
  const kavo_setting* first = nullptr;
  std::size_t count = 0;
  ASSERT_EQ(kavo_link_settings(model, &first, &count), KAVO_OK);
  EXPECT_EQ(first->source, path);
  for (const char* nothing : {"", "\xEF\xBB\xBF", "\n\r\n*", "#\n"}) EXPECT_EQ(read(nothing), KAVO_OK) << nothing;
}

TEST_F(OptionFileTest, WhatIsWrongNamesFileAndLineAndGivesNothing) {
  struct Case {
    std::string text;
    const char* message;
  };
  const Case cases[]{
      {"threads 1\ntimelimit", ", line 2: timelimit has no value"},
      {"timelimit = \n", ", line 1: timelimit has no value"},
      {"\n\r\n= 3", ", line 3: a name is missing in front of the value"},
      {"a 'b", ", line 1: the quote of a does not end"},
      {"a \"", ", line 1: the quote of a does not end"},
      {"a \"b' ", ", line 1: the quote of a does not end"},
      {"a \"b\" c", ", line 1: something follows the quoted value of a"},
      {"a 'it's'", ", line 1: something follows the quoted value of a"},
      {std::string("a b\0c", 5), ", line 1: this is no text; is it an option file?"},
      {"a 1\rb 2\r", ", line 1: this is no text; is it an option file?"},
      {std::string("\xFF\xFE\x61\0 \0\x31\0", 8), ", line 1: this is no text; is it an option file?"},
      {"a 1\n" + std::string(70000, 'x') + " 1\n", ", line 2: the line is longer than 65536 bytes"},
      {std::string(1000, 'x'), "xxx... has no value"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(read(c.text), KAVO_FILE) << c.message;
    EXPECT_THAT(kavo_last_error(), testing::AllOf(StartsWith(path + ", line"), HasSubstr(c.message)));
    EXPECT_LT(std::string(kavo_last_error()).size(), path.size() + 110);
  }
  EXPECT_EQ(given(model), "");
}

TEST_F(OptionFileTest, WhatCannotBeReadIsNamed) {
  for (const std::string& missing : {folder / "nosuch", folder / ""}) {
    EXPECT_EQ(kavo_read_options(model, missing.c_str()), KAVO_FILE);
    EXPECT_THAT(kavo_last_error(), StartsWith("cannot read \"" + missing + "\": "));
  }
  EXPECT_EQ(kavo_read_options(model, nullptr), KAVO_INVALID);
  EXPECT_EQ(kavo_read_options(nullptr, path.c_str()), KAVO_INVALID);
}

// Whatever is read by mistake ends at its first bad line, also what has no end; what is long and right is read.
TEST_F(OptionFileTest, LargeFiles) {
  constexpr std::size_t kSize = 10'000'000;
  for (const char c : {'x', '\0'}) {
    std::string bytes;
    bytes.resize(kSize, c);
    EXPECT_EQ(read(bytes), KAVO_FILE);
    EXPECT_THAT(kavo_last_error(), HasSubstr(", line 1: "));
  }
  EXPECT_EQ(kavo_read_options(model, "/dev/zero"), KAVO_FILE);
  std::string lines;
  for (int i = 0; i < 500'000; ++i) lines += "threads = 4 \n";
  EXPECT_EQ(read(lines), KAVO_OK);
}

constexpr kavo_setting_info kOutlev{"outlev", KAVO_SETTING_INT, "1", 0, 100, "Host", "Shows the log."};

TEST(OwnSettingsTest, GoToTheHostAndNotToTheLink) {
  Model model;
  ASSERT_EQ(kavo_declare_setting(model, &kOutlev), KAVO_OK) << kavo_last_error();
  for (const char* name : {"OutLev", "threads", "outlev"}) {
    ASSERT_EQ(kavo_set_option(model, name, "1", "here", 7), KAVO_OK);
  }
  EXPECT_EQ(given(model), "7 threads|1\n");
  kavo_setting own{};
  ASSERT_EQ(kavo_own_setting_at(model, 0, &own), KAVO_OK);
  EXPECT_THAT((std::vector<std::string>{own.name, own.value, own.source}), testing::ElementsAre("OutLev", "1", "here"));
  EXPECT_EQ(own.line, 7);
  ASSERT_EQ(kavo_own_setting_at(model, 2, &own), KAVO_OK);
  EXPECT_EQ(own.name, nullptr);
}

TEST(OwnSettingsTest, AreDeclaredOnceAndFirst) {
  Model model;
  ASSERT_EQ(kavo_set_option(model, "wantsol", "1", nullptr, 0), KAVO_OK);
  ASSERT_EQ(kavo_declare_setting(model, &kOutlev), KAVO_OK);
  kavo_setting_info noName = kOutlev, noType = kOutlev, noHelp = kOutlev, again = kOutlev, late = kOutlev;
  noName.name = "";
  noType.type = 3;
  noHelp.help = nullptr;
  again.name = "OUTLEV";
  late.name = "WantSol";
  for (const auto& [info, why] : {std::pair{&noName, "empty"},
                                  {&noType, "no type 3"},
                                  {&noHelp, "help"},
                                  {&again, "declared already"},
                                  {&late, "before it was declared"}}) {
    EXPECT_EQ(kavo_declare_setting(model, info), KAVO_INVALID);
    EXPECT_THAT(kavo_last_error(), HasSubstr(why));
  }
  EXPECT_EQ(kavo_declare_setting(model, nullptr), KAVO_INVALID);
  ASSERT_EQ(kavo_open_link(model, FAKE_LINK), KAVO_OK) << kavo_last_error();
  again.name = "another";
  EXPECT_EQ(kavo_declare_setting(model, &again), KAVO_INVALID);
}

std::vector<std::string> infos(trpRec* model) {
  std::vector<std::string> found;
  kavo_setting_info info{};
  for (std::size_t i = 0; kavo_setting_info_at(model, i, &info) == KAVO_OK && info.name != nullptr; ++i) {
    const char* initial = info.default_text != nullptr ? info.default_text : "none";
    found.push_back(std::string(info.group) + "/" + info.name + " " + initial + ": " + info.help);
  }
  return found;
}

TEST(PublishedSettingsTest, AreThereWhileALinkIsOpen) {
  const Folder folder;
  const std::string path = folder / "all.yaml";
  Model model;
  EXPECT_THAT(infos(model), IsEmpty());
  EXPECT_EQ(kavo_describe_options(model, path.c_str()), KAVO_NO_RESULT);
  ASSERT_EQ(kavo_declare_setting(model, &kOutlev), KAVO_OK);
  for (int round = 0; round < 2; ++round) {
    ASSERT_EQ(kavo_open_link(model, FAKE_LINK), KAVO_OK) << kavo_last_error();
    EXPECT_THAT(infos(model), testing::ElementsAre("Answers/status 0: What to answer.",
                                                   "Answers/note none: ", "Host/outlev 1: Shows the log."));
    ASSERT_EQ(kavo_describe_options(model, path.c_str()), KAVO_OK) << kavo_last_error();
    EXPECT_EQ(contentOf(path), "fake: 1\n");
    EXPECT_EQ(folder.files(), 1);
    ASSERT_EQ(kavo_close_link(model), KAVO_OK);
    EXPECT_THAT(infos(model), IsEmpty());
  }
  EXPECT_EQ(kavo_describe_options(model, nullptr), KAVO_INVALID);
}

}  // namespace
}  // namespace kavo_test
