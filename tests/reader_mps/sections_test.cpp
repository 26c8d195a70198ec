// What the lines of each section mean where Gurobi is no guide, and what the notes tell. What Gurobi reads too is
// compared with it (compare.py).
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/reader_mps/mps_text.h"

namespace kavo::reader {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(MpsBounds, GiveTypeAndRange) {
  const std::pair<const char*, const char*> cases[] = {
      {" FR x 7", "x C [-inf, inf]"},
      {" MI x\n UP x 4", "x C [-inf, 4]"},
      {" BV b x\n UP b x 0", "x B [0, 0]"},
      {" SC x 7", "x S [0, 7]"},
      {" SC b x", "x S [0, inf]"},
      {" SC x", "x S [0, inf]"},
      {" UP b x 5\n UP c x 6\n MI c x", "x C [0, 5]"},
      {" UP x 5\n UP b y 6\n UP c x 8", "x C [0, 5]"},
  };
  for (const auto& [lines, column] : cases) {
    const std::string name(column, 1);
    EXPECT_EQ(lineOf(readText(with({.head = "", .rhs = "", .ranges = "", .bounds = lines})), name), column) << lines;
  }
}

TEST(MpsSides, ComeFromRightHandSideAndRange) {
  struct Case {
    const char *rhs, *ranges, *row;
  } const cases[] = {
      {" l 4 g 5", "", "g [5, inf]: 3 x"},
      {" l 4\n R e 5", "", "e [5, 5]: 4 y"},
      {" R e 4", " e 0", "e [4, 4]: 4 y"},
      {" R e 4", " A e 1e20", "e [4, inf]: 4 y"},
      {" R l 4\n S l 5 g 6", "", "l [-inf, 4]: 2 x 6 i"},
  };
  for (const auto& [rhs, ranges, row] : cases) {
    const std::string name(row, 1);
    EXPECT_EQ(lineOf(readText(with({.head = "", .rhs = rhs, .ranges = ranges, .bounds = ""})), name), row)
        << rhs << "\n"
        << ranges;
  }
}

TEST(MpsObjective, IsTheFirstRowOfTypeNUnlessNamed) {
  const auto text = [](const std::string& head) {
    return head +
           "ROWS\n L c\n N o1\n N o2\n N o3\nCOLUMNS\n x c 1 o1 2\n x o2 3 o3 4\nRHS\n R o1 5 o2 6\nRANGES\n R o2 1\n" +
           "ENDATA\n";
  };
  const Model first = readText(text(""));
  EXPECT_EQ(describe(first), "min o1: 2 x -5\nc [-inf, 0]: 1 x\nx C [0, inf]\n");
  EXPECT_THAT(first.readNotes, ElementsAre("ranges of rows of type N, such as \"o2\" on line 12, are left out",
                                           "2 rows of type N besides the objective \"o1\" are left out: \"o2\", ..."));
  EXPECT_EQ(describe(readText(text("OBJSENSE Maximise\nOBJNAME\n o2\n"))),
            "max o2: 3 x -6\nc [-inf, 0]: 1 x\nx C [0, inf]\n");

  const Model none = readText("ROWS\n L c\nCOLUMNS\n x c 1\nENDATA\n");
  EXPECT_THAT(none.objectives, IsEmpty());
  EXPECT_THAT(none.readNotes, ElementsAre(HasSubstr("no objective")));
}

TEST(MpsNotes, TellWhatTheFileDoesNotSayClearly) {
  struct Case {
    Extra extra;
    const char* note;
  } const cases[] = {
      {{"", " R l 4\n S l 5\n T l 6", "", ""}, "section RHS has several sets: \"R\" is taken, \"S\" (line 16)"},
      {{"", "", " R l 4\n S l 5", ""}, "section RANGES has several sets: \"R\" is taken, \"S\" (line 16)"},
      {{"", "", "", " UP b x 4\n UP c x 5"}, "section BOUNDS has several sets: \"b\" is taken, \"c\" (line 16)"},
      {{"", "", "", " UP b y -4\n UP b x -4"},
       "2 columns (\"x\" first) with a negative upper bound and no lower bound"},
      {{"", " R l 1d2 g 1d3", "", ""}, "numbers such as \"1d2\" on line 15 are read with the exponent letter E"},
  };
  for (const Case& c : cases) EXPECT_THAT(readText(with(c.extra)).readNotes, ElementsAre(HasSubstr(c.note)));
}

TEST(MpsRows, OfLazyConstraintsAndUserCutsHaveASuffix) {
  const Model model = readText(
      "ROWS\n N o\n L c\nLAZYCONS\n G lazy\nLAZYCONS 2\n E lazy2\nUSERCUTS\n L cut\nCOLUMNS\n x o 1 c 1\n x lazy 2 cut "
      "3\n"
      "RHS\n R lazy 5\nENDATA\n");
  EXPECT_EQ(describe(model),
            "min o: 1 x\nc [-inf, 0]: 1 x\nlazy [5, inf]: 2 x\nlazy2 [0, 0]:\ncut [-inf, 0]: 3 x\nx C [0, inf]\n");
  ASSERT_EQ(model.suffixes.size(), 1u);
  EXPECT_EQ(model.suffixes[0].name, "lazy");
  EXPECT_EQ(model.suffixes[0].kind, KAVO_ROW);
  EXPECT_THAT(model.suffixes[0].index, ElementsAre(1, 2, 3));
  EXPECT_THAT(model.suffixes[0].value, ElementsAre(1, 2, -1));
}

TEST(MpsColumns, KeepNoZeros) {
  EXPECT_EQ(describe(readText("ROWS\n N o\n L c\nCOLUMNS\n x o 0 c 0\n y c 1 o 1e-400\nENDATA\n")),
            "min o:\nc [-inf, 0]: 1 y\nx C [0, inf]\ny C [0, inf]\n");
}

}  // namespace
}  // namespace kavo::reader
