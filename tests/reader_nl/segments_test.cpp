// What the segments say arrives in the model.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/reader_nl/nl_text.h"
#include "tests/reader_nl/plain.h"

namespace kavo::reader {
namespace {

// minimise 3 + x - 2.5 z, two rows, in a scattered order and with comments.
const std::string kSmall = header({.variables = 3,
                                   .constraints = 3,
                                   .objectives = 1,
                                   .binaries = 1,
                                   .integers = 1,
                                   .nonzeros = 4,
                                   .gradients = 2}) +
                           "S0 2 priority\t# a comment\n1 5\n0 3\n"
                           "S5 1 weight\n2 -0.5\n"
                           "C0\nn0\nC1\t# row\nn2\nC2\nn0\n"
                           "O0 0\nn3\n"
                           "d1\n2 0.25\n"
                           "x2\t# two of three\n2 1\n0 -1e-3\n"
                           "r\n0 -1 1\n4 12\n1 1e20\n"
                           "b\n2 0\n0 0 1\n0 -1e30 7\n"
                           "k2\n2\n3\n"
                           "J1 3\n0 1\n1 -4\n2 0.5\n"
                           "J0 1\n0 1e3\n"
                           "G0 2\n2 -2.5\n0 1\n";

const std::string kSmallPlain =
    "2 discrete\n"
    "variable 0 inf\nvariable 0 1\nvariable -inf 7\n"
    "row -1 1 -1 [(0, 1000)] | \nrow 10 10 -1 [(0, 1), (1, -4), (2, 0.5)] | \nrow -inf inf -1 [] | \n"
    "objective 0 3 [(0, 1), (2, -2.5)] | \n"
    "logical \ndefined \nprimal [-0.001, nan, 1]\ndual [nan, nan, 0.25]\n"
    "suffix 0 priority false [(0, 3), (1, 5)]\nsuffix 1 weight true [(2, -0.5)]\n";

TEST(NlSegments, LinearModel) {
  const Model model = fromText(kSmall);
  EXPECT_EQ(plain(model).text(), kSmallPlain);
  EXPECT_EQ(model.columns.type, (std::vector<unsigned char>{KAVO_CONTINUOUS, KAVO_BINARY, KAVO_INTEGER}));
  EXPECT_TRUE(model.ampl);
  EXPECT_EQ(model.file, "m.nl");
  EXPECT_TRUE(model.rows.expression.empty());
}

TEST(NlSegments, SameModelInOtherSpelling) {
  std::string windows, blanks;
  for (char c : kSmall) {
    if (c == '\n') windows += '\r';
    windows += c;
    blanks += c;
    if (c == '\n') blanks += " \t";
    if (c == ' ') blanks += ' ';
  }
  std::string counts = kSmall;
  counts.replace(counts.find("k2\n2\n3\n"), 7, "K2\n2\n1\n");
  const std::string noEnd = kSmall.substr(0, kSmall.size() - 1);
  for (const std::string& text : {windows, blanks, counts, noEnd, kSmall + "\n  # the end\n\n"}) {
    EXPECT_EQ(plain(fromText(text)).text(), kSmallPlain) << text;
  }
}

TEST(NlSegments, HeaderFormsOfOldFiles) {
  const std::string rest = "O0 1\nn-7\nb\n1 4\n";
  struct Case {
    const char *first, *sizes, *variables, *network, *discrete, *defined;
    std::vector<int> options;
    double tolerance;
  };
  const Case cases[] = {
      {"g3 1 1 0", "1 0 1 0 0 0", "0 0 0", "0 0 0 1", "0 0 0 0 0", "0 0 0 0 0", {1, 1, 0}, 0},
      {"g", "1 0 1", "0 0", "0 0", "0 0", "0", {}, 0},
      {"g0 0 0 0\t# toy", "1 0 1 0 0", "0 0", "0 0 0", "0 0 0", "0 0", {}, 0},
      {"g5 1 3 0 0 7 0.25", "1 0 1", "0 0", "0 0", "0 0", "0 0", {1, 3, 0, 0, 7}, 0.25},
      {"g3 -1 1", "1 0 1", "0 0", "0 0", "0 0", "0 0", {-1, 1}, 0},
  };
  for (const Case& c : cases) {
    const std::string text = std::string(c.first) + "\n" + c.sizes + "\n0 0\n0 0\n" + c.variables + "\n" + c.network +
                             "\n" + c.discrete + "\n0 0\n0 0\n" + c.defined + "\n" + rest;
    const Model model = fromText(text);
    EXPECT_EQ(model.amplOptions, c.options) << text;
    EXPECT_EQ(model.amplTolerance, c.tolerance) << text;
    EXPECT_EQ(model.columns.upper, std::vector<double>{4}) << text;
    EXPECT_EQ(model.objectives.at(0).constant, -7) << text;
    EXPECT_EQ(model.objectives.at(0).sense, KAVO_MAXIMIZE) << text;
  }
}

// The order of the variables tells which are integer.
TEST(NlSegments, Types) {
  struct Case {
    Counts counts;
    std::string types;  // c, b, i per variable
  };
  const Case cases[] = {
      {{.variables = 4, .binaries = 1, .integers = 2}, "cbii"},
      {{.variables = 4,
        .inConstraints = 3,
        .inObjectives = 2,
        .inBoth = 2,
        .integers = 1,
        .integerInBoth = 1,
        .integerInConstraints = 1},
       "ciii"},
      // Some only in objectives: their count goes from the first variable to the last of them.
      {{.variables = 9,
        .inConstraints = 4,
        .inObjectives = 6,
        .inBoth = 2,
        .arcs = 1,
        .binaries = 1,
        .integerInBoth = 1,
        .integerInConstraints = 1,
        .integerInObjectives = 1},
       "cicicicc"
       "b"},
      {{.variables = 3, .inConstraints = 2, .integerInConstraints = 2}, "iic"},
      {{.variables = 3, .inObjectives = 2, .integerInObjectives = 1}, "cic"},
  };
  for (const Case& c : cases) {
    std::string bounds = "b\n";
    for (int i = 0; i < c.counts.variables; ++i) bounds += "3\n";
    const Model model = fromText(header(c.counts) + bounds);
    std::string types;
    for (unsigned char type : model.columns.type)
      types += type == KAVO_CONTINUOUS ? 'c' : type == KAVO_BINARY ? 'b' : 'i';
    EXPECT_EQ(types, c.types);
  }
}

TEST(NlSegments, BoundsOfEveryKind) {
  const double inf = std::numeric_limits<double>::infinity();
  const Model model =
      fromText(header({.variables = 7}) + "b\n0 -1 2\n1 3\n2 4\n3\n4 5\n0 -Infinity 1e20\n0 -9.9e19 +6.\n");
  EXPECT_EQ(model.columns.lower, (std::vector<double>{-1, -inf, 4, -inf, 5, -inf, -9.9e19}));
  EXPECT_EQ(model.columns.upper, (std::vector<double>{2, 3, inf, inf, 5, inf, 6}));
}

TEST(NlSegments, ComplementarityTellsWhichBoundsAreFinite) {
  const Model model =
      fromText(header({.variables = 2, .constraints = 4}) + "C1\nn3\nr\n5 1 2\n5 2 1\n5 3 1\n5 0 2\nb\n3\n3\n");
  std::vector<int> flags;
  for (const Complementarity& c : model.complementarity) flags.push_back(c.flags);
  EXPECT_EQ(flags, (std::vector{1, 2, 3, 0}));
}

TEST(NlSegments, StartsWithoutValuesAreNoStarts) {
  const Model model = fromText(header({.variables = 1}) + "x0\nb\n3\n");
  EXPECT_TRUE(model.primalStart.empty());
  EXPECT_TRUE(model.dualStart.empty());
}

// The numbers of AMPL's basis statuses: none 0, bas 1, sup 2, low 3, upp 4, equ 5, btw 6.
TEST(NlSegments, BasisStatusesAreTheStartBasis) {
  const std::string columns = "S0 7 sstatus\n0 1\n1 2\n2 3\n3 4\n4 5\n5 6\n6 0\n";
  const std::vector<int> statuses{3, 4, 1, 2, 1, 4, 0, 0};
  struct Case {
    std::string suffixes;
    std::vector<int> columns, rows;
  };
  const Case cases[] = {
      {columns, statuses, {0, 0}},
      {"S1 2 sstatus\n1 3\n2 1\n" + columns, statuses, {0, 1}},
      {"S5 1 sstatus\n0 1\n", std::vector<int>(8, 0), {3, 0}},
      {"S0 1 sstatus\n0 0\nS2 1 sstatus\n0 9\nS0 1 status\n0 9\n", {}, {}},
  };
  for (const Case& c : cases) {
    const Model model = fromText(header({.variables = 8, .constraints = 2, .objectives = 1, .logical = 1}) +
                                 c.suffixes + "L0\nn1\nO0 0\nn0\nr\n3\n3\nb\n3\n3\n3\n3\n3\n3\n3\n3\n");
    EXPECT_EQ(model.columnStart, c.columns) << c.suffixes;
    EXPECT_EQ(model.rowStart, c.rows) << c.suffixes;
  }
}

TEST(NlSegments, SuffixValuesOfLogicalConstraintsAreLeftOutWithANote) {
  const Model model = fromText(header({.variables = 1, .constraints = 1, .logical = 2}) +
                               "S1 3 level\n2 9\n0 7\n1 8\nL0\nn1\nL1\nn1\nr\n3\nb\n3\n");
  EXPECT_EQ(model.suffixes.at(0).index, std::vector<int>{0});
  EXPECT_EQ(model.suffixes.at(0).value, std::vector<double>{7});
  ASSERT_EQ(model.readNotes.size(), 1u);
  EXPECT_EQ(model.readNotes[0], "m.nl: suffix level: the values of 2 logical constraints are left out");
}

TEST(NlSegments, NothingAtAll) {
  for (const char* rest : {"", "k-1\n", "k0\n", "r\nb\nx0\n"}) {
    EXPECT_TRUE(fromText(header({}) + rest).empty()) << rest;
  }
}

}  // namespace
}  // namespace kavo::reader
