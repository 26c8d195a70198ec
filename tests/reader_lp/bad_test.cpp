// What is wrong is told with file, line and section.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/reader_lp/lp_text.h"

namespace kavo::reader {
namespace {

using testing::HasSubstr;

void expectMessages(const std::vector<BadText>& texts) { reader::expectMessages("model.lp", texts); }

TEST(LpErrors, OfTheOrderOfSections) {
  expectMessages({
      {"x >= 1\nend\n", "line 1: expected section Minimize or Maximize, found \"x\""},
      {"\n\\ min\n", "line 3: expected section Minimize or Maximize, found the end of the file"},
      {"max: 3 x;", "line 1: expected section Minimize or Maximize, found \"max\""},
      {"end\nmin x\n", "line 1: the file holds no model"},
      {"min x\nmax y\nend", "line 2: there are two objectives; write \"multi-objectives\" behind"},
      {"min x\nbounds\n x <= 1\nst\n x >= 1\nend", "line 4: section Subject To comes too late"},
      {"min x\ngencons\n x = ABS ( y )\nbin\n y\nend", "line 4: section Binaries comes too late"},
      {"min x y\nend", "line 1, section Objective: expected +, - or the next section, found \"y\""},
      {"min x >= 1\nend", "line 1, section Objective: expected +, - or the next section, found \">=\""},
      {std::string("min x\0y\n", 8),
       "line 1, section Objective: byte 6 of the line is 0, which does not belong in a text file"},
      {"\x7f"
       "ELF\x02\x01",
       "line 1: expected section Minimize or Maximize, found \"\x7F"
       "ELF\""},
      {"min x\nst\n c: x \x0b >= 1", "line 3, section Subject To: byte 7 of the line is 11"},
      {std::string(10 << 20, 'x'), "line 1: expected section Minimize or Maximize, found \"" + std::string(64, 'x')},
      {"min" + std::string(10 << 20, ' ') + "+", "line 1, section Objective: expected a number, a variable or \"[\""},
  });
}

TEST(LpErrors, OfObjectives) {
  expectMessages({
      {"min 2 3 x\nend", "line 1, section Objective: expected the name of a variable, found \"3\""},
      {"min 2 x +\nend", "line 2, section Objective: expected a number, a variable or \"[\", found \"end\""},
      {"min --x\nend", "line 1, section Objective: expected a number, a variable or \"[\", found \"--x\""},
      {"min 1e20 x\nend",
       "line 1, section Objective: expected a number below 1e20 in size before \"x\", found \"1e20\""},
      {"min 9e19 x + 9e19 x\nend", "section Objective: the coefficients of \"x\" sum up to 1e20 or more in size"},
      {"min inf\nend", "section Objective: the constant of the objective is 1e20 or more in size"},
      {"min x + nan\nend", "line 1, section Objective: expected a number, found \"nan\""},
      {"min [ x ^2\nend", "line 2, section Objective: expected +, - or \"]\", found \"end\""},
      {"min [ x ^2 -", "line 1, section Objective: expected the name of a variable, found the end of the file"},
      {"min [ x ^2 + y ]/2\nend", "expected \"^ 2\", or \"*\" and a variable, behind \"y\", found \"]/2\""},
      {"min [ x ^3 ]/2\nend", "line 1, section Objective: expected the power 2, found \"3\""},
      {"min [ x ^2 ]/3\nend", "line 1, section Objective: expected 2 behind \"/\", found \"3\""},
      {"min [ x ^2 y ^2 ]/2\nend", "line 1, section Objective: expected +, - or \"]\", found \"y\""},
      {"min [ 9e19 x * y + 9e19 y * x ]\nend", "line 1, section Objective: objective 0: the coefficient 1.8e+20 of"},
      {"min 2 __pwl(x)\nend", "line 1, section Objective: \"__pwl(x)\" stands in objectives, without a coefficient"},
      {"min __pwl(x)\nend", "line 1: there is no section PWLObj that gives the points of \"x\""},
      {"min multi-objectives\n x\nend", "line 2, section Objective: expected the name of an objective and \":\""},
      {"min multi-objectives\n o: Priority=1.5\nend", "expected a whole number behind \"=\", found \"Priority=1.5\""},
      {"min multi-objectives\n o: x\n p: RelTol=x\nend", "line 3, section Objective: expected a finite number behind"},
  });
}

TEST(LpErrors, OfRows) {
  const auto row = [](const std::string& text, const std::string& message) {
    return BadText{withRows(text), "section Subject To: " + message};
  };
  expectMessages({
      row("c: x", "expected +, -, <=, = or >=, found \"end\""),
      row("c:", "expected a term, <=, = or >=, found \"end\""),
      row("c: x >=", "expected a number or a variable, found \"end\""),
      row("c: x >= 2 3", "expected +, -, <=, = or >=, found \"end\""),
      row("c: x y >= 2", "expected +, -, <=, = or >=, found \"y\""),
      row("c: x>=1", "expected +, -, <=, = or >=, found \"end\""),
      row("c: x <> 1", "expected a number or a variable, found \">\""),
      row("c: x >= 2;", "expected a number or a variable, found \"2;\""),
      row("c: 2 <= 3x", "expected a number or a variable, found \"3x\""),
      row(": x >= 1", "expected a number, a variable or \"[\", found \":\""),
      row("c: x >= inf", "no point can satisfy a row with such an infinite side"),
      row("c: x = 1e20", "no point can satisfy a row with such an infinite side"),
      row("c: inf + x >= inf", "no point can satisfy a row with such an infinite side"),
      row("c: 2 <= x >= 8", "expected <= twice or >= twice in one row"),
      row("c: 2 = x = 8", "expected <= twice or >= twice in one row"),
      row("c: 2 <= x <= y", "expected a number behind the second relation of a row"),
      row("c: x <= 1 <= 2", "expected the next row, found \"<=\""),
      row("c: 2 <= x + 3\n y <= 8", "\"y\" may belong to the number on the line before or begin the next row"),
      row("c: 3 >= 2\n d: 2 y x >= 1", "expected +, -, <=, = or >=, found \"x\""),
      row("c: x >= 1\n x + __pwl(y) <= 1", "\"__pwl(y)\" stands in objectives"),
      row("c: x >= 2\nd: x = 2 -> y >= 1", "expected a variable = 0 or a variable = 1 before \"->\""),
      row("c: 2 b = 1 -> y >= 1", "expected a variable = 0 or a variable = 1 before \"->\""),
      row("c: x + y >= 2\n c >= 3", "row \"c\" has the side 2 there already, now 3"),
      {withRows("c: x + y >= 2\n c <= 3\n d: c + x >= 1"), "line 4: \"c\" is here a row, and a variable elsewhere"},
      {withRows("c: b = 1 -> x >= 2"), "line 3: row 0 (\"c\"): its switch, column 1 (\"b\"), is not binary"},
      {withRows("c: x >= 1\nlazy constraints 4\n d: x >= 2"),
       "line 4, section Lazy Constraints: expected a level from 1"},
      {withRows("c: x >= 1\nuser cuts\n d: [ x ^2 ] >= 2"), "section User Cuts: only linear rows can stand in this"},
      {withRows("2 x + 3 >= 1\n 3 3 >= 1\n 3 <= x"), "line 5, section Subject To: the left side of the row may be"},
  });
}

TEST(LpErrors, OfBoundsAndTypes) {
  const auto bound = [](const std::string& text, const std::string& message) {
    return BadText{withSections("bounds\n" + text), "line 5, section Bounds: " + message};
  };
  expectMessages({
      bound("x +", "expected free, <=, = or >=, found \"+\""),
      bound("x <= y", "expected a number, found \"y\""),
      bound("x <= 4x", "expected a number, found \"4x\""),
      bound("x <= 1,5", "expected a number, found \"1,5\""),
      bound("x <= nan", "expected a number, found \"nan\""),
      bound("2 x <= 4", "expected <=, = or >=, found \"x\""),
      bound("-x <= 4", "expected a number, found \"-x\""),
      bound("x <= 4 <= 5", "expected the next bound, found \"<=\""),
      bound("2 <= x >= 4", "expected <= twice or >= twice in one bound"),
      bound("2 <= +x", "expected the name of a variable, found \"+x\""),
      bound("x >= inf", "no value satisfies the lower bound inf of \"x\""),
      bound("x = -1e20", "no value satisfies the upper bound -inf of \"x\""),
      {withSections("gen\n x <= 4"), "line 5, section Generals: expected the name of a variable, found \"<=\""},
      {withSections("gen\n 2 <= 4"), "line 5, section Generals: expected the name of a variable, found \"2\""},
      {withSections("bin\n x\n\\\n free >= 2"),
       "line 7, section Binaries: expected the name of a variable, found \">=\""},
  });
}

TEST(LpErrors, OfSetsAndPieces) {
  const auto in = [](const std::string& section, const std::string& text, const std::string& message) {
    return BadText{withSections(section + "\n" + text), message};
  };
  expectMessages({
      in("sos", "x:1", "line 5, section SOS: expected S1 or S2, found \"1\""),
      in("sos", "s: S3 :: x:1 y:2", "line 5, section SOS: expected S1 or S2, found \"S3\""),
      in("sos", "T :: x:1 y:2", "line 5, section SOS: expected S1 or S2, found \"T\""),
      in("sos", "s: S1 : x:1", "line 5, section SOS: expected \"::\", found \"x\""),
      in("sos", "s: S1 :: x y", "line 5, section SOS: expected \":\", found \"y\""),
      in("sos", "s: S1 :: x:y b:1", "line 5, section SOS: expected a number, found \"y\""),
      in("sos", "s: S1 :: x:1 y:1",
         "line 5, section SOS: set 0 (\"s\"): column 0 (\"x\") and column 1 (\"y\") have the"),
      in("sos", "s: S1 :: x:1\n x:2", "line 5, section SOS: set 0 (\"s\"): column 0 (\"x\") is a member twice"),
      in("pwlobj", "x (0, 1)", "line 5, section PWLObj: expected \":\", found \"(0,\""),
      in("pwlobj", "x: (0 1)", "line 5, section PWLObj: expected \",\", found \"1)\""),
      in("pwlobj", "x: (0, 1", "expected \")\", found \"end\""),
      in("pwlobj", "x: (0, 1)", "line 5: a piecewise-linear function takes two points or more"),
      in("pwlobj", "x: (1, 1) (0, 2)", "line 5: the points of a piecewise-linear function must not go back"),
      in("pwlobj", "x: (0, 1) (1, 2)\n x: (0, 1) (1, 2)", "line 6: section PWLObj has \"x\" twice"),
      {"max multi-objectives\n o: x\npwlobj\n x: (0, 1) (1, 2)\nend",
       "line 4: section PWLObj is for a single objective"},
  });
}

TEST(LpErrors, OfGeneralConstraints) {
  const auto line = [](const std::string& text, const std::string& message) {
    return BadText{withSections("general constraints\n" + text), "section General Constraints: " + message};
  };
  expectMessages({
      line("g: -3 = SIN ( y )", "expected the name of a variable, found \"-3\""),
      line("g: x <= SIN ( y )", "expected = behind the result of a function"),
      line("g: x SIN ( y )", "expected <=, = or >=, found \"SIN\""),
      line("g: x = SINH ( y )", "expected a function such as MAX, PWL, EXP or NL, found \"SINH\""),
      line("g: x = SIN y", "expected \"(\", found \"y\""),
      line("g: x = SIN ( y", "expected \",\", found \"end\""),
      line("g: x = SIN ( y , b )", "SIN takes 1 column, not 2"),
      line("g: x = MAX ( )", "MAX of nothing"),
      line("g: x = MAX ( y,b )", "there is no variable \"y,b\"; blanks must stand around the commas of a list"),
      line("g: x = MAX ( y , )", "expected a variable or a number, found \")\""),
      line("g: x = MAX ( y , , b )", "expected a variable or a number, found \",\""),
      line("g: x = MIN ( y , 1e20 )", "MIN takes numbers below 1e20 in size, not 1e+20"),
      line("g: x = AND ( y , b )", "AND takes binary columns, y is not binary"),
      line("g: x = NORM ( 3 ) ( y )", "expected the norm 0, 1, 2 or INF, found \"3\""),
      line("g: x = LOG_1 ( y )", "LOGA takes a base above 0 that is not 1"),
      line("g: x = EXPA ( -2 ^ y )", "EXPA takes a base above 0, not -2"),
      line("g: x = POW ( y ^ b )", "expected a number, found \"b\""),
      line("g: x = POLY ( 3 y ^ 2 + 2 y ^ 2 )", "POLY has the power 2 twice"),
      line("g: x = POLY ( 3 y ^ 2 2 y )", "expected +, - or \")\", found \"2\""),
      line("g: x = POLY ( 3 y ^ 2 + b )", "POLY takes powers of one variable"),
      line("g: x = POLY ( y ^ 101 )", "expected a power from 0 to 100, found \"101\""),
      line("g: x = POLY ( 3 )", "expected a variable in POLY"),
      line("g: x = PWL ( y ) : (0, 1) (0, 2)", "the first and the last two points of a piecewise-linear function must"),
      line("g: ( Foo=4 ) x = SIN ( y )", "expected an attribute such as FuncPieces=4, found \"Foo=4\""),
      line("g: ( FuncPieces=a ) x = SIN ( y )", "expected a number, found \"a\""),
      line("g: x = NL : ( VARIABLE , y , 0 )", "the first node has the parent 0, not -1"),
      line("g: x = NL : ( FOO , -1 , -1 )", "there is no operator \"FOO\""),
      line("g: x = NL : ( SIN , -1 , -1 ) ( VARIABLE , y , 1 )",
           "node 1 has the parent 1, which takes no operand there"),
      line("g: x = NL : ( MINUS , -1 , -1 ) ( VARIABLE , y , 0 )", "node 0, MINUS, takes 2 operands, not 1"),
      line("g: x = NL : ( PLUS , -1 , -1 )", "node 0, PLUS, takes at least 1 operand, not 0"),
      line("g: x = NL : ( SIGNPOW , -1 , -1 ) ( CONSTANT , 2 , 0 ) ( VARIABLE , y , 0 )",
           "node 0, SIGNPOW, needs a number"),
      line("g: x = NL : ( SIN , -1 , y )", "expected the number of the parent, found \"y\""),
      line("g: x = NL : ( SIN , b , -1 )", "expected a number, found \"b\""),
      line("g: x = NL :", "an expression needs a node"),
  });
}

TEST(LpErrors, OfTheFile) {
  EXPECT_THAT(messageAs("model.lp", ""), HasSubstr("the file is empty; write the model again"));
}

}  // namespace
}  // namespace kavo::reader
