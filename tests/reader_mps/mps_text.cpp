#include "tests/reader_mps/mps_text.h"

#include <fmt/format.h>

namespace kavo::reader {

const std::string kSample =
    "NAME          diet plan\n"
    "OBJSENSE\n"
    "    MAX\n"
    "ROWS\n"
    " N  cost\n"
    " L  lim1\n"
    " G  lim2\n"
    "COLUMNS\n"
    "    x         cost               1.0   lim1               2.0\n"
    "    x         lim2               -.5\n"
    "    M1        'MARKER'                 'INTORG'\n"
    "    y         cost            +1.5e1   lim1               2.5\n"
    "    M2        'MARKER'                 'INTEND'\n"
    "RHS\n"
    "    RHS       lim1                10   lim2                 3\n"
    "    RHS       cost               -7.\n"
    "RANGES\n"
    "    RNG       lim1                 4\n"
    "BOUNDS\n"
    " UP BND       x                  4.0\n"
    " MI BND       x\n"
    "ENDATA\n";

const std::string kBlankSample =
    "NAME\n"
    "ROWS\n"
    " N  the cost\n"
    " L  at most\n"
    " E  12 3\n"
    "COLUMNS\n"
    "    x 1       the cost             1   at most              2.\n"
    "    x 1       12 3                3.0\n"
    "    M         'MARKER'                 'INTORG'\n"
    "    i         the cost             4\n"
    "RHS\n"
    "              at most              7   12 3                  8\n"
    "RANGES\n"
    "    my range  at most              2\n"
    "BOUNDS\n"
    " FR           x 1\n"
    " UP my set    i                    9\n"
    "ENDATA\n";

const std::string kBeyondSample =
    "NAME\nROWS\n N  cost 2 1 1e-6 0\n N  goal 1 2.5 0 .1\n L  c1\n G  c2\n E  c3\nCOLUMNS\n"
    " x cost 1 goal 2\n x c1 1 c2 1\n y c1 2 c3 1\n z goal 3 c3 1\n M 'MARKER' 'INTORG'\n a c2 1\n b c2 1\n"
    " M 'MARKER' 'INTEND'\nRHS\n R c1 4 goal 3\nBOUNDS\n MI B z\n"
    "SOS\n S1 s1\n    x 1\n    y 2\n S2 SOS s2 5\n    z 9\n    x 3\n    y 7\n"
    "QUADOBJ\n x x 2\n x y 3\nQCMATRIX c1\n y y 2\n y z 1\n z y 1\n"
    "PWLOBJ\n z 0 1\n z 1 2\n z 1 4\n z 3 9\nINDICATORS\n IF c2 a 1\n IF c3 b 0\n"
    "GENCONS\n MAX g1\n    x\n    y\n    z\n    4.5\n AND g2\n    a\n    b\n NORM INF g3\n    x\n    y\n    z\n"
    " PWL g4\n    x  y\n    0  2\n    1  3\n    4  4\n POLY g5\n    x  y\n    3  2\n    0  5\n EXPA g6\n"
    "    Options  -1  0.01  0.001  -1  -1\n    x  y\n    3.5\n NL g7\n    x\n    PLUS  -1  -1\n    POW  -1  0\n"
    "    VARIABLE  y  1\n    CONSTANT  2  1\n    VARIABLE  z  0\nENDATA\n";

std::string with(const Extra& extra) {
  const auto section = [](const char* name, const std::string& text) {
    return text.empty() ? text : fmt::format("{}\n{}\n", name, text);
  };
  return "NAME small\n" + extra.head +
         "ROWS\n N obj\n L l\n G g\n E e\nCOLUMNS\n x obj 1 l 2\n x g 3\n y e 4\n"
         " M 'MARKER' 'INTORG'\n i obj 5 l 6\n M 'MARKER' 'INTEND'\n" +
         section("RHS", extra.rhs) + section("RANGES", extra.ranges) + section("BOUNDS", extra.bounds) + "ENDATA\n";
}

std::string withSections(const std::string& sections) {
  std::string text = with({.head = "", .rhs = "", .ranges = "", .bounds = ""});
  return text.insert(text.find("ENDATA"), sections);
}

}  // namespace kavo::reader
