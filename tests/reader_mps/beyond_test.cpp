// What the sections mean that linear models do not have; compare.py asks Gurobi.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/reader_mps/mps_text.h"

namespace kavo::reader {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST(MpsBeyondLinear, EverySectionIsRead) {
  const Model model = readText(kBeyondSample);
  EXPECT_EQ(describe(model),
            "min cost: 1 x + 1 x*x + 3 x*y {0 1 1 2 1 4 3 9 z piecewise-linear by points(9)}\n"
            "min goal: 2 x 3 z -3\n"
            "c1 [-inf, 4]: 1 x 2 y + 2 y*y + 2 y*z\n"
            "c2 [0, inf]: 1 x 1 a 1 b if a=1\n"
            "c3 [0, 0]: 1 y 1 z if b=0\n"
            "g1 [0, 0]: 1 x {y z 4.5 max(3) negate}\n"
            "g2 [0, 0]: 1 a {b forall(1) negate}\n"
            "g3 [0, 0]: 1 x {y z infinity norm(2) negate}\n"
            "g4 [0, 0]: 1 y {0 2 1 3 4 4 x piecewise-linear by points(7) negate}\n"
            "g5 [0, 0]: 1 y {2 0 0 5 x polynomial(5) negate}\n"
            "g6 [0, 0]: 1 y {3.5 x power with constant base negate}\n"
            "g7 [0, 0]: 1 x {y 2 power with constant exponent z plus negate}\n"
            "x C [0, inf]\ny C [0, inf]\nz C [-inf, inf]\na I [0, 1]\nb I [0, 1]\n"
            "s1 S1: x 1, y 2\ns2 S2: x 3, y 7, z 9\n");
  EXPECT_THAT(model.readNotes,
              ElementsAre(HasSubstr("of single constraints, such as \"g6\" on line 67, are left out")));
  std::string ranks;
  for (const Suffix& suffix : model.suffixes) {
    EXPECT_THAT(suffix.index, ElementsAre(0, 1));
    ranks += fmt::format("{}{}: {} {}\n", suffix.kind, suffix.name, suffix.value[0], suffix.value[1]);
  }
  EXPECT_EQ(ranks, "2objpriority: 2 1\n2objweight: 1 2.5\n2objabstol: 1e-06 0\n2objreltol: 0 0.1\n");
}

TEST(MpsBeyondLinear, FormsOfTheSections) {
  struct Case {
    const char *sections, *line;
  } const cases[] = {
      {"QSECTION l\n x x 2\n y x 3\nRHS\n R l 4\n", "l [-inf, 4]: 2 x 6 i + 1 x*x + 3 x*y\n"},
      {"SOS\n S1 s 5\n x 1\n y 2\nBOUNDS\n UP B x 4\n", "s S1: x 1, y 2\n"},
      {"GENCONS\n NORM 0 g\n x\n y\n i\n", "g [0, 0]: 1 x {y 0 != i 0 != count(2) negate}\n"},
      {"GENCONS\n OR g\n x\n", "g [0, 0]: 1 x {0 negate}\n"},
      {"GENCONS\n NL g\n x\n multiply 7 -1\n variable y 0\n constant 4 0\n PLUS -1 0\n variable i 3\n NORM 1 h\n y\n "
       "x\n",
       "g [0, 0]: 1 x {y 4 times i times negate}\nh [0, 0]: 1 y {x norm1(1) negate}\n"},
  };
  for (const auto& [sections, line] : cases) {
    EXPECT_THAT(fmt::format("\n{}", describe(readText(withSections(sections)))), HasSubstr(fmt::format("\n{}", line)))
        << sections;
  }
}

// What begins behind one blank is a type of set, even where a column has such a name.
TEST(MpsBeyondLinear, ColumnsNamedLikeTypesOfSets) {
  const std::string text =
      "ROWS\n N o\nCOLUMNS\n S1 o 1\n x o 1\nSOS\n S1 s\n    S1 1\n    x 2\n S2 S1\n    x 1\n  S1 2\nENDATA\n";
  EXPECT_THAT(describe(readText(text)), HasSubstr("s S1: S1 1, x 2\nS1 S2: x 1, S1 2\n"));
}

TEST(MpsBeyondLinear, NamesWithBlanksInQuadraticSections) {
  const std::string text =
      kBlankSample.substr(0, kBlankSample.find("BOUNDS")) +
      "QUADOBJ\n    x 1       x 1                4\nQCMATRIX at most\n    x 1       x 1               -2\n"
      "INDICATORS\n IF 12 3      i                  1\nENDATA\n";
  const std::string model = describe(readText(text));
  EXPECT_THAT(model, HasSubstr("min the cost: 1 x 1 4 i + 2 x 1*x 1\n"));
  EXPECT_THAT(model, HasSubstr("at most [5, 7]: 2 x 1 + -2 x 1*x 1\n12 3 [8, 8]: 3 x 1 if i=1\n"));
}

// The objective that is named counts alone, and points take the place of coefficients; notes tell.
TEST(MpsBeyondLinear, NotesTellWhatIsLeftOut) {
  const Model named = readText("OBJNAME goal\n" + kBeyondSample);
  EXPECT_EQ(describe(named).substr(0, 4), "min ");
  EXPECT_EQ(named.objectives.size(), 1u);
  EXPECT_EQ(named.objectives[0].name, "goal");
  EXPECT_TRUE(named.suffixes.empty());
  EXPECT_THAT(named.readNotes,
              ElementsAre(HasSubstr("coefficients of variables with a piecewise-linear part (1 of them) are left out"),
                          HasSubstr("FuncPieces"), HasSubstr("1 row of type N besides the objective \"goal\"")));
  const Model sets = readText(withSections("SOS\n S1 s\n x 1\n S2\n y 3\n S2 t\n x 1\n y 2\n"));
  EXPECT_THAT(describe(sets), HasSubstr("\nt S2: x 1, y 2\n"));
  EXPECT_EQ(sets.sets.size(), 1u);
  EXPECT_THAT(sets.readNotes,
              ElementsAre("2 special ordered sets (\"s\" first) of less than two columns, which restrict "
                          "nothing, are left out"));
}

}  // namespace
}  // namespace kavo::reader
