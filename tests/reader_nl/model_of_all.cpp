#include "tests/reader_nl/model_of_all.h"

namespace kavo::reader {

namespace {

Counts countsOfAll(int arithmetic) {
  return {.variables = 2,
          .constraints = 2,
          .objectives = 1,
          .logical = 1,
          .nonlinearConstraints = 1,
          .inConstraints = 1,
          .functions = 1,
          .arithmetic = arithmetic,
          .nonzeros = 2,
          .gradients = 1,
          .defined = 1};
}

const char* const kText =
    "F0 1 2 f\nS4 1 ref\n1 0.5\nS0 2 sosno\n0 -3\n1 -3\nS1 1 lazy\n0 -2\nV2 1 0\n0 3\nn0\nC0\no0\nf0 "
    "2\nh2:ab\nv2\no54\n3\nn-5\nl70000\nn0.1\n"
    "C1\nn0\nL0\no23\nv0\nn1\nO0 1\no64\n2\nn1\nn0\nn2\nv1\nd1\n1 2\nx1\n0 0.5\nr\n0 -1 1\n4 3\nb\n3\n2 0\nk1\n1\n"
    "J0 1\n0 0\nJ1 1\n1 1e-3\nG0 1\n1 0\n";

}  // namespace

std::string textOfAll() { return header(countsOfAll(0)) + kText; }

std::string bytesOfAll(bool big) {
  Bytes b(countsOfAll(big ? 2 : 1), big);
  b.c('F').i(0).i(1).i(2).name("f");
  b.c('S').i(4).i(1).name("ref").i(1).d(0.5);
  b.c('S').i(0).i(2).name("sosno").i(0).i(-3).i(1).i(-3);
  b.c('S').i(1).i(1).name("lazy").i(0).i(-2);
  b.c('V').i(2).i(1).i(0).i(0).d(3).c('n').d(0);
  b.c('C').i(0).c('o').i(0).c('f').i(0).i(2).c('h').name("ab").c('v').i(2);
  b.c('o').i(54).i(3).c('s').s(-5).c('l').i(70000).c('n').d(0.1);
  b.c('C').i(1).c('n').d(0).c('L').i(0).c('o').i(23).c('v').i(0).c('n').d(1);
  b.c('O').i(0).i(1).c('o').i(64).i(2).c('n').d(1).c('s').s(0).c('n').d(2).c('v').i(1);
  b.c('d').i(1).i(1).d(2).c('x').i(1).i(0).d(0.5);
  b.c('r').c('0').d(-1).d(1).c('4').d(3).c('b').c('3').c('2').d(0).c('k').i(1).i(1);
  b.c('J').i(0).i(1).i(0).d(0).c('J').i(1).i(1).i(1).d(1e-3).c('G').i(0).i(1).i(1).d(0);
  return b.text();
}

}  // namespace kavo::reader
