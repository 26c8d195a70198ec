/* Builds a small model by calls, solves it, and prints everything about the result.
 *
 *     cc -std=c99 -I. examples/solve.c -Lbuild/release/lib -lkavo -Wl,-rpath,"$PWD/build/release/lib" -o solve
 *     ./solve
 *
 * A day's food at the least cost: portions of three foods, three demands. One word may follow: the path of another link
 * library than the one beside libkavo.so.
 */
#include <stdio.h>
#include <stdlib.h>

#include "kavo/kavo.h"

enum { kFoods = 3, kDemands = 3 };

static const char* const kBasisWords[] = {"", "lower", "upper", "basic", "superbasic"};

/* Every function tells by its result whether it worked; the message says what is wrong and what to do. */
static void check(int status, trpRec** model) {
  if (status == KAVO_OK) return;
  fprintf(stderr, "solve: %s\n", kavo_last_error());
  kavo_free(model);
  exit(EXIT_FAILURE);
}

static void build(trpRec** model) {
  static const char* const foods[kFoods] = {"Oats", "Milk", "Beans"};
  static const double least[kFoods] = {0, 0, 0};
  static const double most[kFoods] = {4, 1e20, 1e20}; /* 1e20 and more: no bound */
  static const double cost[kFoods] = {0.15, 0.48, 0.56};
  static const int all[kFoods] = {0, 1, 2};

  static const char* const demands[kDemands] = {"energy", "protein", "calcium"};
  static const double from[kDemands] = {18, 28, 18};
  static const double to[kDemands] = {26, 1e20, 1e20};
  static const size_t start[kDemands + 1] = {0, 3, 6, 9}; /* row i has the terms start[i] .. start[i+1]-1 */
  static const int column[] = {0, 1, 2, 0, 1, 2, 0, 1, 2};
  static const double value[] = {4, 2, 3, 3, 4, 8, 1, 6, 2};

  check(kavo_set_name(*model, "diet"), model);
  check(kavo_add_columns(*model, kFoods, least, most, NULL, foods), model); /* no types: continuous */
  check(kavo_add_rows(*model, kDemands, from, to, start, column, value, demands), model);
  check(kavo_add_objective(*model, KAVO_MINIMIZE, 0, kFoods, all, cost, "cost"), model);
}

/* The values of one quantity; NULL when the solve has not given it, which is no error here. */
static const double* values(trpRec** model, int quantity) {
  const double* first = NULL;
  size_t count = 0;
  const int status = kavo_result(*model, quantity, &first, &count);
  if (status != KAVO_NO_RESULT) check(status, model);
  return first;
}

static const int* basis(trpRec** model, int kind) {
  const int* first = NULL;
  size_t count = 0;
  const int status = kavo_result_basis(*model, kind, &first, &count);
  if (status != KAVO_NO_RESULT) check(status, model);
  return first;
}

static const char* name(trpRec** model, int kind, size_t index) {
  const char* text = "";
  check(kavo_name(*model, kind, index, &text), model);
  return text;
}

static void print_elements(trpRec** model) {
  const double* primal = values(model, KAVO_PRIMAL);
  const double* reduced_cost = values(model, KAVO_REDUCED_COST);
  const double* activity = values(model, KAVO_ACTIVITY);
  const double* dual = values(model, KAVO_DUAL);
  const double* slack = values(model, KAVO_SLACK);
  const int* column_basis = basis(model, KAVO_COLUMN);
  const int* row_basis = basis(model, KAVO_ROW);
  size_t i;
  for (i = 0; primal && i < kFoods; ++i) {
    printf("column %s value %.6g", name(model, KAVO_COLUMN, i), primal[i]);
    if (reduced_cost) printf(" reduced_cost %.6g", reduced_cost[i]);
    if (column_basis) printf(" basis %s", kBasisWords[column_basis[i]]);
    printf("\n");
  }
  for (i = 0; activity && i < kDemands; ++i) {
    printf("row %s activity %.6g", name(model, KAVO_ROW, i), activity[i]);
    if (dual) printf(" dual %.6g", dual[i]);
    if (slack) printf(" slack %.6g", slack[i]);
    if (row_basis) printf(" basis %s", kBasisWords[row_basis[i]]);
    printf("\n");
  }
}

int main(int argc, char** argv) {
  trpRec* model = NULL;
  const char* solver = NULL;
  kavo_outcome outcome;

  check(kavo_create(&model), &model);
  build(&model);
  check(kavo_set_option(model, "timelimit", "60", "solve.c", 0), &model);
  check(kavo_open_link(model, argc > 1 ? argv[1] : NULL), &model);
  check(kavo_solver_text(model, &solver), &model);
  printf("solver %s\n", solver);

  check(kavo_solve(model), &model); /* fine also when the model is infeasible or a limit is reached */
  check(kavo_get_outcome(model, &outcome), &model);
  printf("%s %s objective %.6g\n", outcome.status_text, outcome.termination, outcome.objective);
  print_elements(&model);

  check(kavo_free(&model), &model);
  return EXIT_SUCCESS;
}
