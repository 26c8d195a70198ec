// What is wrong is told with file, line and section.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/reader_mps/mps_text.h"

namespace kavo::reader {
namespace {

void expectMessages(const std::vector<BadText>& texts) { reader::expectMessages("model.mps", texts); }

// COLUMNS begins on line 5, its first data line is 6.
std::string columns(const std::string& lines) { return "ROWS\n N o\n L c\n G d\nCOLUMNS\n" + lines + "\nENDATA\n"; }
std::string rhs(const std::string& lines) { return with({.head = "", .rhs = lines, .ranges = "", .bounds = ""}); }
std::string ranges(const std::string& lines) { return with({.head = "", .rhs = "", .ranges = lines, .bounds = ""}); }
std::string bounds(const std::string& lines) { return with({.head = "", .rhs = "", .ranges = "", .bounds = lines}); }

TEST(MpsErrors, OfTheOrderOfSections) {
  const std::string rows = "ROWS\n N o\nCOLUMNS\n x o 1\n";
  expectMessages({
      {" x", "line 1: expected the next section"},
      {"NAME\n x", "line 2, section NAME: expected the next section"},
      {"\n\n*\nFOO\n", "line 4: there is no section \"FOO\"; the lines of a section begin with a blank"},
      {"ROWS\nN o\n", "line 2: there is no section \"N\""},
      {"NAME a\nNAME b\n", "line 2: section NAME comes a second time"},
      {rows + "OBJSENSE MAX\nENDATA\n", "line 5: section OBJSENSE comes too late"},
      {rows + "ROWS\n", "line 5: section ROWS comes a second time"},
      {rows + "RHS\nRHS\n", "line 6: section RHS comes a second time"},
      {"COLUMNS\n", "line 1: expected section ROWS first"},
      {"ROWS\nRHS\n", "line 2: expected section COLUMNS first"},
      {"NAME\nENDATA\n", "line 2: expected section ROWS first"},
      {"ROWS\n N o\nENDATA\n", "line 3: expected section COLUMNS first"},
      {rows, "the file ends without ENDATA"},
      {rows + "RHS\n R o 1", "the file ends without ENDATA"},
      {"OBJSENSE\nROWS\n", "line 2, section OBJSENSE: expected MAX, MAXIMIZE, MIN or MINIMIZE"},
      {"OBJSENSE\n UP\nROWS\n", "line 2, section OBJSENSE: expected MAX, MAXIMIZE, MIN or MINIMIZE, found \"UP\""},
      {"OBJSENSE MAX MIN\nROWS\n", "line 1, section OBJSENSE: expected MAX, MAXIMIZE, MIN or MINIMIZE, found 3 fields"},
      {"OBJSENSE MAX\n MIN\nROWS\n", "line 2, section OBJSENSE: expected the next section"},
      {"OBJNAME p\n" + rows + "ENDATA\n", "there is no row \"p\" of type N, which OBJNAME names"},
      {rows + "RHS o 2\n", "line 5, section RHS: expected nothing behind the name of the section"},
      {std::string("NAME x\0y\n", 9), "line 1: byte 7 of the line is 0"},
      {"NAME\x7f \x0b", "line 1: byte 7 of the line is 11"},
  });
}

TEST(MpsErrors, OfRows) {
  expectMessages({
      {"ROWS\n N\n", "line 2, section ROWS: expected type and name of a row, found 1 field"},
      {"ROWS\n N o 2\n", "expected type and name of a row, found 3 fields"},
      {"ROWS\n N o 0 1 1e-06 0 7\n", "expected type and name of a row, found more than 6 fields"},
      {"ROWS\n Q o\n", "line 2, section ROWS: expected N, E, L or G as the type of row \"o\", found \"Q\""},
      {"ROWS\n L c\n G d\n E c\nCOLUMNS\n", "line 4, section COLUMNS: there is a row \"c\" already"},
      {"ROWS\n L c\n N c\nCOLUMNS\n", "line 3, section COLUMNS: there is a row \"c\" already"},
      {"ROWS\n N o\n N p\n L p\nCOLUMNS\n", "line 4, section COLUMNS: there is a row \"p\" already"},
      {"ROWS\n N o\n N p\n N p\nCOLUMNS\n", "line 4, section COLUMNS: there is a row \"p\" already"},
      {"ROWS\n N o\n N o\nCOLUMNS\n", "line 3, section COLUMNS: there is a row \"o\" already"},
      {"ROWS\n N o\n L c\nLAZYCONS\n L c\nCOLUMNS\n", "line 5, section COLUMNS: there is a row \"c\" already"},
      {"ROWS\nLAZYCONS\n N c\n", "line 3, section LAZYCONS: expected E, L or G as the type of row \"c\", found \"N\""},
      {"ROWS\nLAZYCONS 0\n", "line 2, section LAZYCONS: expected nothing or a number from 1 on"},
  });
}

TEST(MpsErrors, OfColumns) {
  std::string many;  // more lines than are looked up at once
  for (int i = 0; i < 200; ++i) many += fmt::format(" x{} c 1 d 1\n", i);
  expectMessages({
      {columns(" x c"), "line 6, section COLUMNS: expected column, row, number, and maybe another row and number"},
      {columns(" x"), "found 1 field"},
      {columns(" x c 1 d"), "found 4 fields"},
      {columns(" x c 1 d 2 3"), "found 6 fields"},
      {columns(" x c 1\n x zz 2"), "line 7, section COLUMNS: there is no row \"zz\" in section ROWS"},
      {columns(" x zz 1\n x c"), "line 6, section COLUMNS: there is no row \"zz\""},
      {columns(" x c 1a"), "line 6, section COLUMNS: expected a number, found \"1a\""},
      {columns(" x c 1,5"), "expected a number, found \"1,5\""},
      {columns(" x c 0x10"), "expected a number, found \"0x10\""},
      {columns(" x c nan"), "expected a number, found \"nan\""},
      {columns(" x c 1d"), "expected a number, found \"1d\""},
      {columns(" x c --1"), "expected a number, found \"--1\""},
      {columns(" x c inf"), "expected a number below 1e20 in size, found \"inf\""},
      {columns(" x o -1e20"), "expected a number below 1e20 in size, found \"-1e20\""},
      {columns(" x c 1e999"), "expected a number below 1e20 in size, found \"1e999\""},
      {columns(" x c " + std::string(100, 'z')), "expected a number, found \"" + std::string(64, 'z') + "...\""},
      {columns(" x c 1\n x d 2 c 1"), "line 7, section COLUMNS: column \"x\" has an entry in row \"c\" already"},
      {columns(" x c 0 c 1"), "line 6, section COLUMNS: column \"x\" has an entry in row \"c\" already"},
      {columns(" x o 1 o 1"), "line 6, section COLUMNS: column \"x\" has an entry in row \"o\" already"},
      {columns(" x c 1\n y c 1\n* z\n x d 1\n y d 1"), "line 9, section COLUMNS: there is a column \"x\" already"},
      {columns(" x c 1\n M 'MARKER' 'INTORG'\n x d 1"), "line 8, section COLUMNS: there is a column \"x\" already"},
      {columns(" M 'MARKER' 'INTORG' 3"), "line 6, section COLUMNS: expected name, 'MARKER' and 'INTORG' or 'INTEND'"},
      {columns(" M MARKER INTORG"), "line 6, section COLUMNS: expected a number, found \"INTORG\""},
      {columns(many + " y c 1 zz 2\n" + many), "line 206, section COLUMNS: there is no row \"zz\""},
      {columns(many + " y c 1 c 2\n" + many),
       "line 206, section COLUMNS: column \"y\" has an entry in row \"c\" already"},
      {columns(many + " x3 o 2\n y c 1"), "line 206, section COLUMNS: there is a column \"x3\" already"},
  });
}

TEST(MpsErrors, OfSides) {
  expectMessages({
      {rhs(" R"), "line 15, section RHS: expected name of the set or nothing, row, number"},
      {rhs(" R l"), "line 15, section RHS: expected a number, found \"l\""},
      {rhs(" R zz 1"), "line 15, section RHS: there is no row \"zz\""},
      {rhs(" R l 1 g 2 e"), "found 6 fields"},
      {rhs(" R l 1\n R l 2"), "line 16, section RHS: row \"l\" has another value in section RHS already: 1, now 2"},
      {rhs(" R obj 1\n R obj 2"), "line 16, section RHS: row \"obj\" has another value"},
      {rhs(" R obj 1e20"), "line 15, section RHS: expected a number below 1e20 in size"},
      {rhs(" R e 1e20"), "line 15, section RHS: no point can satisfy row \"e\" of type E with the side \"1e20\""},
      {rhs(" R l -1e20"), "no point can satisfy row \"l\" of type L"},
      {rhs(" R g inf"), "no point can satisfy row \"g\" of type G"},
      {ranges(" R zz 1"), "line 15, section RANGES: there is no row \"zz\""},
      {ranges(" R l nan"), "line 15, section RANGES: expected a number, found \"nan\""},
      {ranges(" R l 1 l 2"), "line 15, section RANGES: row \"l\" has another value"},
      {with({"", " R l 1e20", " R l 5", ""}), "row \"l\" has an infinite right-hand side and a range"},
  });
}

TEST(MpsErrors, OfBounds) {
  expectMessages({
      {bounds(" UP"), "line 15, section BOUNDS: expected type, name of the set or nothing, column, and number"},
      {bounds(" UP b x 1 2"), "found 5 fields"},
      {bounds(" UP x"), "line 15, section BOUNDS: expected type, name of the set or nothing, column, and number"},
      {bounds(" UP b x"), "line 15, section BOUNDS: there is no column \"b\""},
      {bounds(" UP x y"), "line 15, section BOUNDS: expected a number, found \"y\""},
      {bounds(" XX b x 1"), "line 15, section BOUNDS: expected a bound type (UP, LO, FX,"},
      {bounds(" U b x 1"), "expected a bound type"},
      {bounds(" FR b zz"), "line 15, section BOUNDS: there is no column \"zz\""},
      {bounds(" FR b x z"), "expected a number, found \"z\""},
      {bounds(" UP b x nan"), "expected a number, found \"nan\""},
      {bounds(" LO b x 1e20"), "no value satisfies the lower bound \"1e20\" of column \"x\""},
      {bounds(" UP b x -inf"), "no value satisfies the upper bound \"-inf\" of column \"x\""},
      {bounds(" FX b x 1e30"), "no value satisfies the lower bound \"1e30\""},
      {bounds(" UP b x 4\n UP b x 5"),
       "line 16, section BOUNDS: column \"x\" has another upper bound already: 4, now 5"},
      {bounds(" FR b x\n UP b x 5"), "column \"x\" has another upper bound already: inf, now 5"},
      {bounds(" MI b x\n FX b x 3"), "column \"x\" has another lower bound already: -inf, now 3"},
      {bounds(" SC b x 5\n BV b x"), "line 16, section BOUNDS: column \"x\" is binary and semi-continuous at once"},
  });
  expectMessages({{"ROWS\n L c\nCOLUMNS\n x c 1\n 7 c 1\nBOUNDS\n FR x 7\nENDATA\n",
                   "line 7, section BOUNDS: \"x\" may be a set and \"7\" a column, or a column and a value"}});
}

std::string beyond(const std::string& sections) { return withSections(sections + "\n"); }

TEST(MpsErrors, OfObjectives) {
  expectMessages({
      {"ROWS\n N o 1 1 0 0\n N p\n", "line 3, section ROWS: expected priority, weight, absolute and relative"},
      {"ROWS\n N o\n N p 1 1 0 0\n", "line 3, section ROWS: expected priority, weight, absolute and relative"},
      {"ROWS\n N o 1.5 1 0 0\n", "line 2, section ROWS: expected a whole number as the priority, found \"1.5\""},
      {"ROWS\n N o 1 1 a 0\n", "line 2, section ROWS: expected a number, found \"a\""},
      {"ROWS\n L c 1 1 0 0\n", "expected type and name of a row, found 6 fields"},
      {"ROWS\n N o 1 1 0 0\n N p 2 1 0 0\nCOLUMNS\n x p 1 p 2\n", "column \"x\" has an entry in row \"p\" already"},
  });
}

TEST(MpsErrors, OfQuadraticTerms) {
  expectMessages({
      {beyond("QUADOBJ\n x"), "line 15, section QUADOBJ: expected column, column, number, and maybe another"},
      {beyond("QUADOBJ\n x zz 1"), "line 15, section QUADOBJ: there is no column \"zz\""},
      {beyond("QUADOBJ\n x x 1e20"), "line 15, section QUADOBJ: expected a number below 1e20 in size"},
      {beyond("QUADOBJ\n x x 1\nQMATRIX\n y y 1"), "line 16, section QMATRIX: objective 0 (\"obj\"): it has quadratic"},
      {beyond("QUADOBJ\nQUADOBJ"), "line 15: section QUADOBJ comes a second time"},
      {beyond("QUADOBJ l\n x x 1"), "line 14, section QUADOBJ: expected nothing behind the name of the section"},
      {beyond("QMATRIX\n x y 3\n y x 4"),
       "line 14, section QMATRIX: the entries of \"x\" \"y\" and of \"y\" \"x\" must be the same"},
      {beyond("QCMATRIX l\n y x 3"), "line 14, section QCMATRIX: the entries of \"x\" \"y\" and of \"y\" \"x\" must"},
      {beyond("QCMATRIX"), "line 14, section QCMATRIX: expected the name of a row behind QCMATRIX"},
      {beyond("QCMATRIX zz"), "line 14, section QCMATRIX: there is no row \"zz\""},
      {beyond("QCMATRIX obj\n x x 1"), "\"obj\" is an objective; its quadratic terms stand in section QUADOBJ"},
      {beyond("QCMATRIX l\n x x 1\nQCMATRIX l\n y y 1"), "line 16, section QCMATRIX: row 0 (\"l\"): it has quadratic"},
      {"ROWS\n L c\nCOLUMNS\n x c 1\nQUADOBJ\n", "line 5, section QUADOBJ: there is no objective"},
      {"ROWS\n N o\n N p\nCOLUMNS\n x o 1\nQSECTION p\n", "row \"p\" of type N is not the objective"},
  });
}

TEST(MpsErrors, OfSetsAndSwitches) {
  expectMessages({
      {beyond("SOS\n x 1"), "line 15, section SOS: expected S1 or S2 and the name of a set before its members"},
      {beyond("SOS\n S3 s"), "line 15, section SOS: expected S1 or S2 as the type of a set, found \"S3\""},
      {beyond("SOS\n S1 a b 1 2"), "line 15, section SOS: expected S1 or S2 and the name of the set, found 5 fields"},
      {beyond("SOS\n S1 s\n x"), "line 16, section SOS: expected column and weight, or S1 or S2"},
      {beyond("SOS\n S1 s\n zz 1"), "line 16, section SOS: there is no column \"zz\""},
      {beyond("SOS\n S1 s\n x 1\n y 1"),
       "line 15, section SOS: set 0 (\"s\"): column 0 (\"x\") and column 1 (\"y\") have"},
      {beyond("SOS\n S1 s\n x 1\n x 2\n S2 t"),
       "line 15, section SOS: set 0 (\"s\"): column 0 (\"x\") is a member twice"},
      {beyond("INDICATORS\n l i 1"), "line 15, section INDICATORS: expected IF, row, column, and 0 or 1"},
      {beyond("INDICATORS\n IF l i 2"), "line 15, section INDICATORS: expected 0 or 1, found \"2\""},
      {beyond("INDICATORS\n IF obj i 1"), "there is no row \"obj\""},
      {beyond("INDICATORS\n IF l x 1"), "row 0 (\"l\"): its switch, column 0 (\"x\"), is not binary"},
      {beyond("INDICATORS\n IF l i 1\n IF l i 0"), "line 16, section INDICATORS: row \"l\" is switched already"},
      {beyond("INDICATORS\n IF l i 1\nBOUNDS"), "line 16: section BOUNDS comes too late"},
      {beyond("PWLOBJ\n x 1"), "line 15, section PWLOBJ: expected column and the two coordinates of a point"},
      {beyond("PWLOBJ\n x 1 2\n x 1 3\n y 1 2"), "line 15, section PWLOBJ: the first and the last two points"},
      {beyond("PWLOBJ\n x 1 2\n x 0 3"), "line 15, section PWLOBJ: the points of a piecewise-linear function must not"},
      {beyond("PWLOBJ\n x 1 2"), "line 15, section PWLOBJ: a piecewise-linear function takes two points or more"},
      {beyond("PWLOBJ\n x 1 2\n x 2 3\n y 1 2\n y 2 3\n x 4 5"), "line 19, section PWLOBJ: column \"x\" has points"},
  });
}

TEST(MpsErrors, OfGeneralConstraints) {
  const auto general = [](const std::string& lines) { return beyond("GENCONS\n" + lines); };
  expectMessages({
      {general(" x y"), "line 15, section GENCONS: expected a constraint such as MAX, ABS, PWL or NL, found \"x\""},
      {general(" MAX"), "line 15, section GENCONS: expected MAX and the name of the constraint, found 1 field"},
      {general(" NORM g"), "line 15, section GENCONS: expected NORM, which one, and the name of the constraint"},
      {general(" NORM inf g"), "line 15, section GENCONS: expected the norm 0, 1, 2 or INF, found \"inf\""},
      {general(" MAX g\n x y"), "line 16, section GENCONS: expected the column that is the result, found 2 fields"},
      {general(" MAX g"), "section GENCONS: expected the column that is the result"},
      {general(" MAX g\n x\n zz"), "line 17, section GENCONS: expected a column or a number, found \"zz\""},
      {general(" MAX g\n x\n MAX h\n x\n y"), "line 15, section GENCONS: MAX of nothing"},
      {general(" MAX g\n x\n 1e20"), "line 15, section GENCONS: MAX takes numbers below 1e20 in size"},
      {general(" ABS g\n x\n y\n i"), "line 15, section GENCONS: ABS takes 1 column, not 2"},
      {general(" AND g\n x\n y"), "line 15, section GENCONS: AND takes binary columns, y is not binary"},
      {general(" NORM 1 g\n x\n y\n 3"), "line 15, section GENCONS: NORM 1 takes 0 constants, not 1"},
      {general(" EXP g\n x"), "line 16, section GENCONS: expected the column of the operand and that of the result"},
      {general(" EXP g\n Options 0 0 0 0 a\n x y"), "line 16, section GENCONS: expected a number, found \"a\""},
      {general(" EXPA g\n x y\n -1"), "line 15, section GENCONS: EXPA takes a base above 0, not -1"},
      {general(" LOGA g\n x y\n 1"), "line 15, section GENCONS: LOGA takes a base above 0 that is not 1"},
      {general(" POW g\n x y\n SIN h\n x y"), "line 17, section GENCONS: expected a number, found 2 fields"},
      {general(" POLY g\n x y\n 101 3"), "line 17, section GENCONS: expected a power from 0 to 100, found \"101\""},
      {general(" POLY g\n x y\n 1 3\n 1 4"), "line 18, section GENCONS: there is a coefficient of the power 1 already"},
      {general(" POLY g\n x y"), "line 15, section GENCONS: POLY takes one coefficient or more"},
      {general(" PWL g\n x y\n 1 3\n 1 4"), "line 15, section GENCONS: the first and the last two points"},
      {general(" NL g\n x\n SIN -1 0"), "line 17, section GENCONS: the first node has the parent 0, not -1"},
      {general(" NL g\n x\n ASIN -1 -1"), "line 17, section GENCONS: there is no operator \"ASIN\""},
      {general(" NL g\n x\n SIN -1 b"), "line 17, section GENCONS: expected the number of the parent, found \"b\""},
      {general(" NL g\n x\n SIN -1 -1\n VARIABLE y 0\n VARIABLE y 0"),
       "line 15, section GENCONS: node 0, SIN, takes 1"},
      {general(" NL g\n x\n CONSTANT inf -1"), "line 17, section GENCONS: node 0 is the number inf"},
      {general(" NL g\n x"), "line 15, section GENCONS: an expression needs a node"},
  });
}

}  // namespace
}  // namespace kavo::reader
