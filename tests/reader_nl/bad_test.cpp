// Files that are wrong: each is an Error that tells the place and what was expected.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/reader_nl/nl_text.h"

namespace kavo::reader {
namespace {

using testing::HasSubstr;

struct Bad {
  std::string text;
  const char* message;  // a part of it
};

void expectFailures(const std::vector<Bad>& cases) {
  for (const Bad& bad : cases) {
    const std::string message = failure(bad.text);
    EXPECT_THAT(message, HasSubstr(bad.message)) << bad.text;
    EXPECT_THAT(message, testing::StartsWith("m.nl, ")) << bad.text;
    EXPECT_THAT(message, testing::Not(HasSubstr("\n"))) << bad.text;
  }
}

const Counts kTwo = {.variables = 2, .constraints = 2, .objectives = 1, .nonzeros = 2, .gradients = 1};
const std::string kHead = header(kTwo);
const std::string kSegments = "O0 0\nn0\nr\n1 1\n1 1\nb\n3\n3\nk1\n1\nJ0 1\n0 1\nJ1 1\n1 1\nG0 1\n1 1\n";

// kHead and kSegments with one piece replaced.
std::string changed(const std::string& from, const std::string& to) {
  std::string text = kHead + kSegments;
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

TEST(NlBad, Headers) {
  ASSERT_EQ(failure(kHead + kSegments), "");
  const std::string first = "g3 1 1 0\n";
  expectFailures({
      {"NAME diet\nROWS\n",
       "line 1: header: expected a .nl file, which begins with \"g\" (text) or \"b\" (binary), found "
       "\"NAME\""},
      {"\x7f"
       "ELF\1\n",
       "found \"?ELF?\""},
      {"g3 1 x 0\n", "line 1: header: expected an option, found \"x\""},
      {"g12 1 1 0\n", "line 1: header: expected 0 to 9 options, found \"12\""},
      {"g3 1 3 0 nan\n", "line 1: header: expected a finite tolerance"},
      {"g", "expected a count from 0 to 2147483647, found the end of the file"},
      {first + " 2 2\n", "line 2: header: expected a count from 0 to 2147483647, found the end of the line"},
      {first + " 2 -1 0\n", "line 2: header: expected a count from 0 to 2147483647, found \"-1\""},
      {first + " 2 2.5 0\n", "line 2: header: expected a count from 0 to 2147483647, found \"2.5\""},
      {first + " 4294967298 1 1\n", "found \"4294967298\""},
      {first + " 1 0 0 0 0 0 9\n", "line 2: header: expected the end of the line, found \"9\""},
      {first + " 1 2000000000 1 0 0 0\n",
       "line 2: header: 2000000000 constraints are announced, more than a file of 31 "
       "bytes can hold"},
      {first + " 2000000000 1 1\n", "2000000000 variables are announced"},
      {first + " 1 1 2000000000\n", "2000000000 objectives are announced"},
      {first + " 1 1 1 0 0 2000000000\n", "2000000000 logical constraints are announced"},
      {header({.functions = 1000000}), "line 6: header: 1000000 imported functions are announced"},
      {header({.nonzeros = 1000000}), "line 8: header: 1000000 nonzeros of constraints are announced"},
      {header({.gradients = 1000000}), "line 8: header: 1000000 nonzeros of objectives are announced"},
      {header({.defined = 1000000}), "line 10: header: 1000000 defined variables are announced"},
      {header({.constraints = 1, .nonlinearConstraints = 2}), "line 3: header: 2 nonlinear constraints, but only 1"},
      {header({.nonlinearObjectives = 1}), "line 3: header: 1 nonlinear objectives, but only 0"},
      {header({.variables = 1, .inConstraints = 2}),
       "line 5: header: 2 nonlinear variables in constraints, but only 1"},
      {header({.variables = 2, .inConstraints = 1, .inObjectives = 2, .inBoth = 2}), "line 5: header: 2 nonlinear"},
      {header({.variables = 2, .inConstraints = 2, .inObjectives = 1, .inBoth = 2}), "line 5: header: 2 nonlinear"},
      {header({.variables = 2, .inConstraints = 1, .integerInBoth = 1}), "line 7: header: 1 nonlinear integer"},
      {header({.variables = 2, .inConstraints = 1, .integerInConstraints = 2}), "line 7: header: 2 nonlinear integer"},
      {header({.variables = 2, .inConstraints = 2, .inObjectives = 1, .integerInObjectives = 1}), "line 7: header: 1"},
      {header({.variables = 3, .inConstraints = 1, .arcs = 1, .binaries = 1, .integers = 1}),
       "line 7: header: 4 nonlinear, network, binary and integer variables, but only 3 variables"},
      {header({.variables = 2, .binaries = 2147483647, .integers = 2147483647}), "line 7: header: 4294967294"},
  });
}

TEST(NlBad, Segments) {
  expectFailures({
      {kHead + "Z0\n", "line 11: expected a segment (one of F S V C L O d x r b k K J G), found \"Z0\""},
      {kHead + kSegments + "junk\n", "line 27: expected a segment"},
      {kHead + kSegments + "J0 1\n0 1\n", "segment J0: this segment comes twice"},
      {kHead + kSegments + "G0 0\n", "segment G0: this segment comes twice"},
      {kHead + kSegments + "O0 0\nn0\n", "segment O0: this segment comes twice"},
      {kHead + kSegments + "r\n", "segment r: this segment comes twice"},
      {kHead + kSegments + "b\n", "segment b: this segment comes twice"},
      {kHead + kSegments + "K1\n1\n", "segment K: this segment comes twice"},
      {kHead + "x0\nx0\n", "segment x: this segment comes twice"},
      {kHead + "C1\nn0\nC1\nn0\n", "segment C1: this segment comes twice"},
      {kHead + "C2\nn0\n", "line 11: segment C: expected the number of a constraint from 0 to 1, found 2"},
      {kHead + "L0\nn0\n", "segment L: found 0 as the number of a logical constraint, but the header announces none"},
      {kHead + "O0 2\nn0\n", "line 11: segment O0: expected 0 (minimise) or 1 (maximise), found 2"},
      {kHead + "C\n", "segment C: expected the number of a constraint, found the end of the line"},
      {kHead + "C0 7\n", "line 11: segment C0: expected the end of the line, found \"7\""},
      {kHead + "F0 0 1 f\n", "segment F: found 0 as the number of a function, but the header announces none"},
      {header({.functions = 1}) + "F0 2 1 f\n", "segment F0: expected 0 (numbers) or 1 (also strings) as the type"},
      {header({.functions = 1}) + "F0 0 1\n", "segment F0: expected the name of a function, found the end of the line"},
      {header({.functions = 1}) + "F0 0 1 f\nF0 0 1 g\n", "line 12: segment F0: this segment comes twice"},
  });
}

TEST(NlBad, Missing) {
  const std::string nonlinear = header({.constraints = 1, .logical = 1, .nonlinearConstraints = 1, .defined = 1});
  expectFailures({
      {kHead, "line 11: expected segment b (bounds of the variables), found the end of the file"},
      {kHead + "b\n3\n3\n", "line 14: expected segment r (sides of the constraints)"},
      {changed("O0 0\nn0\n", ""), "expected segment O0 (objective)"},
      {changed("J1 1\n1 1\n", ""), "expected segments J with 2 terms in all, as the header says, not 1"},
      {changed("G0 1\n1 1\n", ""), "expected segments G with 1 terms in all, as the header says, not 0"},
      {nonlinear + "r\n3\n", "expected segment C0 (nonlinear constraint)"},
      {nonlinear + "r\n3\nC0\nn0\n", "expected segment L0 (logical constraint)"},
      {nonlinear + "r\n3\nC0\nn0\nL0\nn0\n", "expected segment V0 (defined variable)"},
  });
}

TEST(NlBad, LinearParts) {
  expectFailures({
      {changed("J0 1\n0 1", "J2 1\n0 1"), "segment J: expected the number of a constraint from 0 to 1, found 2"},
      {changed("J0 1\n0 1", "J0 -1\n0 1"), "segment J0: expected 0 to 2 terms"},
      {changed("J0 1\n0 1", "J0 3\n0 1"), "line 21: segment J0: expected 0 to 2 terms"},
      {changed("J1 1\n1 1", "J1 2\n1 1"), "segment J1: expected 0 to 1 terms"},
      {changed("G0 1\n1 1", "G0 2\n1 1"), "segment G0: expected 0 to 1 terms"},
      {changed("J0 1\n0 1", "J0 1\n2 1"),
       "line 22: segment J0: expected the number of a variable from 0 to 1, found 2"},
      {changed("J0 1\n0 1", "J0 1\n-1 1"), "expected the number of a variable from 0 to 1, found -1"},
      {changed("J0 1\n0 1\nJ1 1\n1 1", "J0 2\n0 1\n0 1"), "segment J0: variable 0 comes twice"},
      {changed("J0 1\n0 1", "J0 1\n0 nan"), "segment J0: expected a coefficient below 1e20 in size, found \"nan\""},
      {changed("J0 1\n0 1", "J0 1\n0 -1e20"), "found \"-1e20\""},
      {changed("J0 1\n0 1", "J0 1\n0 1e999"), "found \"1e999\""},
      {changed("G0 1\n1 1", "G0 1\n1 inf"), "segment G0: expected a coefficient below 1e20 in size, found \"inf\""},
      {changed("J0 1\n0 1", "J0 1\n0 1,5"), "segment J0: expected a coefficient, found \"1,5\""},
      {changed("J0 1\n0 1", "J0 1\n0 1 1"), "expected the end of the line, found \"1\""},
      {changed("J0 1\n0 1", "J0 1\n0"), "expected a coefficient, found the end of the line"},
      {changed("k1\n1", "k2\n1"), "line 19: segment k: expected 1 columns (all but the last), found 2"},
      {changed("k1\n1", "k1\n3"), "segment k: column 0 cannot have 3 nonzeros in 2 constraints"},
      {changed("k1\n1", "k1\n-2147483647"), "segment k: column 0 cannot have -2147483647 nonzeros"},
      {changed("k1\n1", "k1\n2"),
       "line 19: segment k: variable 0 is said to appear in 2 constraints, the segments J have it in 1"},
  });
}

TEST(NlBad, Values) {
  expectFailures({
      {changed("b\n3", "b\n5 1 1"), "line 17: segment b: expected a kind of bounds (0 to 4), found \"5\""},
      {changed("r\n1 1", "r\n6 1"), "segment r: expected a kind of sides (0 to 5), found \"6\""},
      {changed("r\n1 1", "r\n1 nan"), "segment r: expected a bound, found \"nan\""},
      {changed("r\n1 1", "r\n0 1"), "segment r: expected a bound, found the end of the line"},
      {changed("r\n1 1", "r\n2 1e20"), "expected a lower end below 1e20, found \"1e20\""},
      {changed("r\n1 1", "r\n0 1 -1e30"), "expected an upper end above -1e20, found \"-1e30\""},
      {changed("r\n1 1", "r\n4 1e30"), "expected a finite number behind 4 (equal to), found \"1e30\""},
      {changed("r\n1 1", "r\n5 4 1"), "expected which bounds of the complementing variable are finite, from 0 to 3"},
      {changed("r\n1 1", "r\n5 1 0"), "expected the number of a variable from 1 to 2, found 0"},
      {changed("r\n1 1", "r\n5 1 3"), "expected the number of a variable from 1 to 2, found 3"},
      {kHead + "x3\n", "segment x: expected 0 to 2 start values, found 3"},
      {kHead + "x1\n2 0\n", "line 12: segment x: expected the number of a variable from 0 to 1, found 2"},
      {kHead + "x2\n0 1\n0 1\n", "line 13: segment x: element 0 has two start values"},
      {kHead + "x1\n0 nan\n", "segment x: expected a finite start value, found \"nan\""},
      {kHead + "d1\n0 1e999\n", "segment d: expected a finite start value, found \"1e999\""},
      {kHead + "S8 0 a\n", "segment S: expected the kind of a suffix from 0 to 7, found 8"},
      {kHead + "S3 2 a\n", "segment S3: expected 0 to 1 values of a suffix, found 2"},
      {kHead + "S0 1\n", "segment S0: expected the name of a suffix, found the end of the line"},
      {kHead + "S0 0 a\nS0 0 a\n", "line 12: segment S0: this suffix comes twice"},
      {kHead + "S0 1 a\n0 1.5\n", "segment S0: expected a whole value, found \"1.5\""},
      {kHead + "S4 1 a\n0 nan\n", "segment S4: expected a value, found \"nan\""},
      {kHead + "S0 1 sstatus\n0 7\n", "line 12: segment S0: expected a basis status from 0 to 6, found \"7\""},
      {kHead + "S0 1 sstatus\n0 -1\n", "expected a basis status from 0 to 6, found \"-1\""},
      {kHead + "S5 1 sstatus\n0 1.5\n", "segment S5: expected a basis status from 0 to 6, found \"1.5\""},
      {kHead + "S0 2 a\n1 1\n1 2\n", "segment S0: element 1 has two values"},
  });
}

TEST(NlBad, Expressions) {
  const auto body = [](const char* tree) { return withBody(tree); };
  const auto calling = [](const std::string& tree) { return withBody(tree, "F0 0 -2 f\n", {.functions = 2}); };
  const auto defining = [](const std::string& segment) { return withBody("v1\n", segment, {.defined = 2}); };
  expectFailures({
      {body("q1\n"), "line 12: segment C0: expected a node of an expression (f, h, l, n, o, s or v), found \"q1\""},
      {body("n1e400\n"), "expected a finite number, found \"1e400\""},
      {body("nnan\n"), "expected a finite number, found \"nan\""},
      {body("v1\n"), "segment C0: there is no variable 1: there are 1 variables and 0 defined ones"},
      {body("v-1\n"), "there is no variable -1"},
      {body("o7\n"), "segment C0: there is no operator o7"},
      {body("o79\n"), "there is no operator o79"},
      {body("o54\n0\n"), "line 13: segment C0: sum needs an operand, not 0"},
      {body("o0\nv0\n"), "line 14: segment C0: expected a node of an expression (f, h, l, n, o, s or v), found \"r\""},
      {body("o64\n1\nn1\nv0\n"), "a piecewise-linear term has 2 to 536870912 slopes, not 1"},
      {body("o64\n3\nn1\nn5\nn2\nn4\nn3\nv0\n"), "line 17: segment C0: the breakpoints of a piecewise-linear term"},
      {body("o64\n2\nn1\nn5\nv0\n"), "expected a slope, found \"v0\""},
      {body("o64\n2\nn1\nn5\nn2\nn3\n"), "expected the variable of a piecewise-linear term, found \"n3\""},
      {body("h3:abc\n"), "segment C0: the expression is a string, not a number"},
      {body("o44\nh3:abc\n"), "operand 1 of exp must be a number, not a string"},
      {body("o65\nh1:a\nn0\nn0\n"), "operand 1 of symbolic if must be a number, not a string"},
      {body("o16\no65\nv0\nn0\nn0\n"), "operand 1 of negate must be a number, not a string"},
      {body("h9999:abc\n"), "a string is longer than the rest of the file"},
      {body("h-1:abc\n"), "expected a string's length and a colon"},
      {body("o76\nn2\nv0\n"), "operand 2 of power with constant exponent must be a constant"},
      {body("o78\nv0\nn2\n"), "operand 1 of power with constant base must be a constant"},
      {calling("f2 1\nv0\n"), "function 2 is called, but no segment F before tells of it"},
      {calling("f1 1\nv0\n"), "function 1 is called, but no segment F before tells of it"},
      {calling("f0 0\n"), "function \"f\" is called with 0 arguments, other than its segment F says"},
      {calling("f0 1\nh1:a\n"), "operand 1 of function call must be a number, not a string"},
      {defining("V1 0 0\nv1\n"), "line 12: segment V1: defined variable 1 is used by one with a lower number"},
      {defining("V2 0 0\nv1\nV1 0 0\nv0\n"), "segment V2: defined variable 1 is used before its segment V"},
      {defining("V2 0 0\nv0\nV1 0 0\nv2\n"), "segment V1: defined variable 2 is used by one with a lower number"},
      {defining("V1 0 0\nn0\nV1 0 0\nn0\n"), "segment V1: this segment comes twice"},
      {defining("V0 0 0\nn0\n"),
       "segment V: expected the number of a defined variable (2 of them, from 1 on), found 0"},
      {defining("V1 2 0\n"), "segment V1: expected 0 to 1 linear terms, found 2"},
      {defining("V1 1 0\n0 1e20\n"), "segment V1: expected a coefficient below 1e20 in size, found \"1e20\""},
      {defining("V1 0 0\nn0\n"), "expected segment V2 (defined variable)"},
  });
}

// However a file is cut off, it is refused, but for a last number that became shorter and the last line's end.
TEST(NlBad, Truncated) {
  const std::string text = kHead + kSegments;
  for (std::size_t length = 0; length + 2 < text.size(); ++length) {
    EXPECT_NE(failure(text.substr(0, length)), "") << text.substr(0, length);
  }
}

}  // namespace
}  // namespace kavo::reader
