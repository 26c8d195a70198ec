/* A model that is not linear, built by calls: the can that holds 330 cm3 and takes the least tin.
 *
 *     cc -std=c99 -I. examples/can.c -Lbuild/release/lib -lkavo -Wl,-rpath,"$PWD/build/release/lib" -o can
 *     ./can
 *
 * Radius r and height h; minimise 2 pi r^2 + 2 pi r h, so that pi r^2 h >= 330. The least can is as high as it is wide.
 */
#include <stdio.h>
#include <stdlib.h>

#include "kavo/kavo.h"

enum { kRadius = 0, kHeight = 1, kColumns = 2 };

static const double kPi = 3.14159265358979323846;

static void check(int status, trpRec** model) {
  if (status == KAVO_OK) return;
  fprintf(stderr, "can: %s\n", kavo_last_error());
  kavo_free(model);
  exit(EXIT_FAILURE);
}

/* Surface: an objective with two quadratic terms and nothing else. */
static void add_surface(trpRec** model) {
  const int objective = 0;
  const size_t start[] = {0, 2};
  const int first[] = {kRadius, kRadius}, second[] = {kRadius, kHeight};
  const double value[] = {2 * kPi, 2 * kPi};

  check(kavo_add_objective(*model, KAVO_MINIMIZE, 0, 0, NULL, NULL, "surface"), model);
  check(kavo_add_quadratic_terms(*model, KAVO_OBJECTIVE, 1, &objective, start, first, second, value), model);
}

/* Volume: a row whose only part is an expression, written operands first: pi, r, square, times, h, times. */
static void add_volume(trpRec** model) {
  static const char* const name[] = {"volume"};
  const double least = 330;
  const size_t no_terms[] = {0, 0};
  const int op[] = {KAVO_OP_NUMBER, KAVO_OP_VARIABLE, KAVO_OP_SQUARE, KAVO_OP_TIMES, KAVO_OP_VARIABLE, KAVO_OP_TIMES};
  const int index[] = {0, kRadius, 0, 0, kHeight, 0};
  const double value[] = {kPi, 0, 0, 0, 0, 0};
  const size_t start[] = {0, 6};
  const int row = 0;
  int expression;

  check(kavo_add_rows(*model, 1, &least, NULL, no_terms, NULL, NULL, name), model);
  check(kavo_add_expressions(*model, 1, start, op, index, value, &expression), model);
  check(kavo_set_expressions(*model, KAVO_ROW, 1, &row, &expression), model);
}

int main(int argc, char** argv) {
  static const char* const names[kColumns] = {"radius", "height"};
  static const double most[kColumns] = {20, 50}; /* bounds help the search for the global optimum */
  const double* values = NULL;
  kavo_outcome outcome;
  trpRec* model = NULL;
  size_t count = 0, i;

  check(kavo_create(&model), &model);
  check(kavo_add_columns(model, kColumns, NULL, most, NULL, names), &model);
  add_surface(&model);
  add_volume(&model);
  check(kavo_open_link(model, argc > 1 ? argv[1] : NULL), &model);

  check(kavo_solve(model), &model);
  check(kavo_get_outcome(model, &outcome), &model);
  printf("%s %s objective %.6g\n", outcome.status_text, outcome.termination, outcome.objective);
  check(kavo_result(model, KAVO_PRIMAL, &values, &count), &model);
  for (i = 0; i < count; ++i) printf("column %s value %.6g\n", names[i], values[i]);

  check(kavo_free(&model), &model);
  return EXIT_SUCCESS;
}
