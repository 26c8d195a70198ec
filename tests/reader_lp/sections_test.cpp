// What the sections mean where Gurobi's reading is no guide: what other programs write, and what the notes tell. What
// Gurobi reads too is compared with it (compare.py).
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/reader_lp/lp_text.h"

namespace kavo::reader {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Table = std::vector<std::pair<std::string, std::string>>;

TEST(LpFile, EverySectionIsRead) {
  const Model model = readText(kSample, "model.lp.gz");
  EXPECT_EQ(describe(model),
            "max cost: 2.5 x -1 y[1,2] +7 + 1 x*x + 3 x*y[1,2] + -2 z*z"
            " {0 1 1 2 1 4 3 9 w piecewise-linear by points(9)}\n"
            "c1 [-inf, 4]: 1 x 2 y[1,2] -1 z\n"
            " [2, 10]: 1 x 1 z\n"
            "c3 [-5, inf]: 1 x -1 y[1,2]\n"
            "c4 [-inf, 5]: 1 x + 1 x*x + -1 y[1,2]*z\n"
            "c5 [2, inf]: 1 x 1 z if b=1\n"
            "c6 [-8, -2]: 1 x 1 y[1,2] 1 z\n"
            "l1 [-7, inf]: 1 x -1 z\n"
            "u1 [-inf, 90]: 1 x 1 z\n"
            "g1 [0, 0]: 1 x {z w 4.5 max(3) negate}\n"
            "g2 [0, 0]: 1 a {b a forall(2) negate}\n"
            "g3 [0, 0]: 1 x {z i infinity norm(2) negate}\n"
            "g4 [0, 0]: 1 w {0 2 1 3 4 4 x piecewise-linear by points(7) negate}\n"
            "g5 [0, 0]: 1 w {2 0 0 5 x polynomial(5) negate}\n"
            "g6 [0, 0]: 1 w {3.5 x power with constant base negate}\n"
            " [0, 0]: 1 w {x 2.5 logarithm to a base negate}\n"
            "g8 [0, 0]: 1 w {x 2.5 power with constant exponent negate}\n"
            "g9 [0, 0]: 1 w {x 2 power with constant exponent z sin plus negate}\n"
            "x C [0, inf]\ny[1,2] C [0, inf]\nz C [-inf, 40]\nw S [0, 9]\nb B [0, 1]\ni I [-3, inf]\na B [0, 1]\n"
            "n N [0, inf]\n"
            "s1 S1: x 1, w 2.5\ns2 S2: x 1, i 2, z 3\n");
  ASSERT_EQ(model.suffixes.size(), 1u);
  EXPECT_EQ(model.suffixes[0].name, "lazy");
  EXPECT_THAT(model.suffixes[0].index, ElementsAre(6, 7));
  EXPECT_THAT(model.suffixes[0].value, ElementsAre(2, -1));
  EXPECT_THAT(model.readNotes,
              ElementsAre(HasSubstr("numbers without a variable (\"3\" on line 8)"),
                          "variables (\"i\" on line 20 and 2 more) are first named behind rows and objectives; "
                          "check their names",
                          HasSubstr("FuncNonlinear of single constraints (\"g5\" on line 38) are left")));
}

TEST(LpFile, SeveralObjectivesHaveRanks) {
  const Model model = readText(kSeveral);
  EXPECT_EQ(describe(model),
            "min cost: 1 x 2 y\nmin goal: -1 y +3 + 0.5 x*x\n [-7, inf]: 2 x -3 y\nc2 [2, 2]: + 0.5 x*y\n"
            "x N [-inf, 4]\ny C [-inf, inf]\n");
  std::string ranks;
  for (const Suffix& suffix : model.suffixes) {
    EXPECT_THAT(suffix.index, ElementsAre(0, 1));
    ranks += fmt::format("{}{}: {} {}\n", suffix.kind, suffix.name, suffix.value[0], suffix.value[1]);
  }
  EXPECT_EQ(ranks, "2objpriority: 2 0\n2objweight: 1.5 -1\n2objabstol: 0.1 1e-06\n2objreltol: 0.01 0\n");
}

TEST(LpRows, ReadWhatOtherProgramsWrite) {
  const Table cases = {
      {"c: 2 <= x + 2 y", "c [2, inf]: 1 x 2 y"},
      {"c: - 2 >= x", "c [-inf, -2]: 1 x"},
      {"c: 8 >= x + y + 1 >= 2", "c [1, 7]: 1 x 1 y"},
      {"c: -inf <= x <= 8", "c [-inf, 8]: 1 x"},
      {"c: 2\n <=\n 3\n + x\n + y\n <=\n 8", "c [-1, 5]: 1 x 1 y"},
      {"c: 3 x + 4 >= 2 y - 5 + x", "c [-9, inf]: 2 x -2 y"},
      {"c: x >= 1 + 2 - 5", "c [-2, inf]: 1 x"},
      {"c: x >= y", "c [0, inf]: 1 x -1 y"},
      {"c: x >= 2 y\n + 3 z", "c [0, inf]: 1 x -2 y -3 z"},
      {"c: x = x", "c [0, 0]:"},
      {"c: x >=1 d: y =<1", "c [1, inf]: 1 x"},
      {"c: y =<-1", "c [-inf, -1]: 1 y"},
      {"c: x + - 2 y - - z => 3", "c [3, inf]: 1 x -2 y 1 z"},
      {"c: [x^2 + x * y]/2 <= [ y *y ] + 2", "c [-inf, 2]: + 0.5 x*x + 0.5 x*y + -1 y*y"},
      {"c: 2 <= [ x ^2 ] <= 8", "c [2, 8]: + 1 x*x"},
      {"c: b = 1 ->2 <= x <= 3\nbin\nb", "c [2, 3]: 1 x if b=1"},
      {"c: bin >= 2", "c [2, inf]: 1 bin"},
      {"c: x + y <= 8\n c >= 2", "c [2, 8]: 1 x 1 y"},
      {"c: x + y >= -8\n -c >= 2", "c [-8, -2]: 1 x 1 y"},
      {"c: x + y >= 1\n -5 <= -2 c", "c [1, 2.5]: 1 x 1 y"},
  };
  for (const auto& [rows, line] : cases) {
    EXPECT_EQ(lineOf(readText(withRows(rows)), "c"), line) << rows;
  }
}

// A sum that is long, so that its terms are no longer searched one by one.
TEST(LpRows, SumUpTheTermsOfAColumn) {
  std::string row = "c:", line = "c [1, inf]:";
  for (int k = 0; k < 3; ++k) {
    for (int j = 0; j < 50; ++j) row += fmt::format(" + {} x{}\n", j % 7 == k ? 0 : j % 5 - 2, j);
  }
  for (int j = 0; j < 50; ++j) {
    const int sum = (j % 7 < 3 ? 2 : 3) * (j % 5 - 2);
    if (sum != 0) line += fmt::format(" {} x{}", sum, j);
  }
  EXPECT_EQ(lineOf(readText(withRows(row + " >= 1")), "c"), line);
}

TEST(LpSections, ReadWhatOtherProgramsWrite) {
  const Table cases = {
      {"int\n x\nints\n x\ngens\n x", "x I [0, inf]"},
      {"bins\n x\nbounds\n x <= 7", "x B [0, 1]"},
      {"sec\n x\nsemicontinuous\n x\nbounds\n x <= 7", "x S [0, 7]"},
      {"semi-integer\n x", "x N [0, inf]"},
      {"semi\n x\ngen\n x", "x N [0, inf]"},
      {"semi\n x\nbin\n x", "x N [0, 1]"},
      {"gen\n int x", "x I [0, inf]"},
      {"bounds\n 4 >= x >= - 2", "x C [-2, 4]"},
      {"bounds\n x =< 4 y free", "x C [0, 4]"},
      {"bounds\n y <= 5 1 <= x <=7", "x C [1, 7]"},
      {"sos\n s: s1 :: x:1 y:2", "s S1: x 1, y 2"},
      {"general constraints\n g: x = max(y, b, 3)", "g [0, 0]: 1 x {y b 3 max(3) negate}"},
      {"general constraints\n g: x = poly(y + 3 + 2 y^2)", "g [0, 0]: 1 x {2 1 3 y polynomial(4) negate}"},
      {"general constraints\n g: x = nl:(SIN, -1, -1)(VARIABLE, y, 0)", "g [0, 0]: 1 x {y sin negate}"},
  };
  for (const auto& [sections, line] : cases) {
    EXPECT_EQ(lineOf(readText(withSections(sections)), line.substr(0, line.find(' '))), line) << sections;
  }
}

TEST(LpObjective, HasSenseTermsAndConstant) {
  const Table cases = {
      {"Maximise x + 3 - 2 y - 5", "max : 1 x -2 y -2"},
      {"minimise o: 3\n", "min o: +3"},
      {"min x + 2\n y + 1e3 Constant\nbounds\n Constant = 1", "min : 1 x 2 y +1000"},
      {"min x + Constant\nbounds\n Constant = 1\ngen\n Constant", "min : 1 x 1 Constant"},
      {"min [ x ^2 ] + 2 x", "min : 2 x + 1 x*x"},
      {"subject \t to", ""},
  };
  for (const auto& [text, line] : cases) {
    const std::string found = describe(readText(text + "\nend\n"));
    EXPECT_EQ(found.substr(0, line.empty() ? 0 : found.find('\n')), line) << text;
  }
}

TEST(LpNotes, TellWhatMayBeMeantOtherwise) {
  const Table cases = {
      {"min x\nst\n c: 3 x >= 2\nend", ""},
      {"min x + 3\nst\n c: 3 + x >= 2\n d: 3 <= x\nend",
       "numbers without a variable (\"3\" on line 1 and 1 more) are constants; Gurobi takes them for names of "
       "variables"},
      {"min x + 3\nst\n c: 2 3 + x >= 2\nend",
       "numbers without a variable (\"3\" on line 1) are names of variables, as other numbers of the file must be"},
      {"min 2x + y\nst\n c: 2x + y+z >= 2\nend",
       "names of variables (\"2x\" on line 1 and 1 more) hold numbers or operators; blanks must stand around what is "
       "no "
       "part of a name"},
      {"min [ x ^2 ]\nend",
       "the quadratic part of the objective (\"]\" on line 1) ends without / 2; it counts as it is "
       "written"},
      {"min x\nbounds\n x <= 2\n x <= 2\n x <= 3\nend",
       "bounds of a variable (\"x\" on line 5) are given twice; the last "
       "ones count"},
      {"min x\nbounds\n z <= 2\ngen\n x z\nend",
       "variables (\"z\" on line 3) are first named behind rows and objectives; check their names"},
      {"min x\nsos\n s: S1 :: x:1\nend",
       "sets (\"s\" on line 3) have fewer than two members and say nothing; they are left "
       "out"},
      {"min x + y\npwlobj\n x: (0, 1) (1, 2)\nend",
       "coefficients of variables with a piecewise-linear part (1 of them) are left out of the objective"},
      {"min x", "the file ends without End; make sure that no part of it is missing"},
      {"st\n x >= 1\nend", "there is no objective: any feasible point is a solution"},
  };
  for (const auto& [text, note] : cases) {
    if (note.empty()) {
      EXPECT_THAT(readText(text).readNotes, IsEmpty());
    } else {
      EXPECT_THAT(readText(text).readNotes, ElementsAre(note)) << text;
    }
  }
}

}  // namespace
}  // namespace kavo::reader
