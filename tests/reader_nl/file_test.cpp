// Files: how their content, their names and their kind are found.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <fstream>
#include <string>
#include <thread>

#include "kavo/error.h"
#include "kavo/reader/input.h"
#include "kavo/reader/reader.h"
#include "tests/reader_nl/nl_text.h"
#include "tests/readers/folder.h"
#include "tests/readers/model_text.h"

namespace kavo::reader {
namespace {

using kavo_test::Folder;

using testing::HasSubstr;

template <class Action>
std::string errorOf(Action action) {
  try {
    action();
    return "";
  } catch (const Error& error) {
    EXPECT_EQ(error.status(), KAVO_FILE);
    return error.what();
  }
}

TEST(Input, GivesTheContent) {
  const Folder folder;
  std::string large;
  for (int i = 0; i < 100000; ++i) large += std::to_string(i % 977 * (i % 331)) + "\n";
  const std::string repeated(1 << 20, 'a');  // inflates to far more than a guess from the packed size
  for (const std::string& content : {std::string("x"), large, repeated, std::string(4096, 'p')}) {
    EXPECT_EQ(Input(folder.write("plain", content)).text(), content);
    EXPECT_EQ(Input(folder.write("packed", gzip(content))).text(), content);
    EXPECT_EQ(Input(folder.write("members", gzip(content) + gzip("") + gzip(content))).text(), content + content);
  }
}

TEST(Input, ReadsPipes) {
  const Folder folder;
  const std::string path = folder / "pipe";
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  const std::string content(300000, 'z');
  std::thread writer([&] { std::ofstream(path) << content; });
  EXPECT_EQ(Input(path).text(), content);
  writer.join();
}

TEST(Input, Failures) {
  const Folder folder;
  std::string content;
  for (int i = 0; i < 5000; ++i) content += std::to_string(i * 7919 % 104729);
  const std::string packed = gzip(content);
  std::string damaged = packed;
  damaged[damaged.size() / 2] ^= 0x55;
  const std::pair<std::string, const char*> cases[] = {
      {folder / "none", "there is no such file; check the path"},
      {folder.write("plain", "x") + "/below", "a part of its path is not a folder"},
      {folder / "", "it is a folder; give the path of a file"},
      {folder.write("empty", ""), "the file is empty"},
      {folder.write("short", packed.substr(0, packed.size() / 2)), "its gzip data end too early"},
      {folder.write("cut", packed.substr(0, packed.size() - 1)), "its gzip data end too early"},
      {folder.write("damaged", damaged), "its gzip data are damaged"},
      {folder.write("more", packed + "rest"), "something else follows its gzip data"},
      {folder.write("nothing", gzip("")), "the gzip file holds nothing"},
      {folder / std::string(300, 'n'), "its path is too long"},
  };
  for (const auto& [path, message] : cases) {
    const std::string text = errorOf([&path = path] { Input{path}; });
    EXPECT_THAT(text, HasSubstr("cannot read \"" + path + "\": "));
    EXPECT_THAT(text, HasSubstr(message));
  }
}

const std::string kModel =
    header({.variables = 2, .constraints = 2, .objectives = 1, .logical = 1}) + "L0\nn1\nO0 0\nn0\nr\n3\n3\nb\n3\n3\n";

TEST(Read, ChoosesByTheEnding) {
  const Folder folder;
  const std::string path = folder.write("m.nl", kModel);
  folder.write("a.b", "other");
  EXPECT_EQ(read(path).columns.size(), 2u);
  EXPECT_EQ(read(folder / "m").file, path);
  EXPECT_EQ(read(folder.write("UPPER.NL", gzip(kModel))).columns.size(), 2u);
  EXPECT_THAT(
      errorOf([&] { read(folder / "a.b"); }),
      HasSubstr("its ending is none of .nl, .mps, .mps.gz, .lp, .lp.gz, and there is no file \"" + folder / "a.b.nl"));
  EXPECT_THAT(errorOf([&] { read(folder / "none.nl"); }), HasSubstr("there is no such file"));
  const std::string wrong = folder.write("wrong.nl", "g3 1 1 0\nxyz\n");
  EXPECT_THAT(errorOf([&] { read(wrong); }), testing::StartsWith(wrong + ", line 2: header: "));
}

TEST(Read, Names) {
  struct Case {
    const char *columns, *rows;  // content of the name files, nullptr: no file
    std::string names;           // of columns, rows, logical constraints, objectives
    std::vector<const char*> notes;
  };
  const Case cases[] = {
      {nullptr, nullptr, ",|,|||", {}},
      {"x\ny[1,'a b']\n", "r1\nr2\nl\ncost\n", "x,y[1,'a b']|r1,r2|l|cost|", {}},
      {"x\r\n", "r1", "x,|r1,|||", {}},
      {"\ny\n", "\n\n\ncost", ",y|,||cost|", {}},
      {"a\nb\nc\n",
       "1\n2\n3\n4\n5\n",
       ",|,|||",
       {"3 names, but the model has 2 elements", "5 names, but the model has 4"}},
      {"a\na\n",
       "r\ns\nt\ns\n",
       "a,a|r,s|t|s|",
       {"the name \"a\" stands for more than one", "the name \"s\" stands for"}},
      {"", nullptr, ",|,|||", {"the file is empty"}},
  };
  for (const Case& c : cases) {
    const Folder folder;
    const std::string path = folder.write("m.x.nl", kModel);
    if (c.columns != nullptr) folder.write("m.x.col", c.columns);
    if (c.rows != nullptr) folder.write("m.x.row", c.rows);
    const Model m = readNl(path);
    const std::string names = std::string(m.columns.names.at(0)) + "," + m.columns.names.at(1) + "|" +
                              m.rows.names.at(0) + "," + m.rows.names.at(1) + "|" + m.logicalNames.at(0) + "|" +
                              m.objectives[0].name + "|";
    EXPECT_EQ(names, c.names);
    ASSERT_EQ(m.readNotes.size(), c.notes.size());
    for (std::size_t i = 0; i < c.notes.size(); ++i) EXPECT_THAT(m.readNotes[i], HasSubstr(c.notes[i]));
  }
}

}  // namespace
}  // namespace kavo::reader
