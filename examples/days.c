/* One model, a hundred days: only the right-hand sides differ, so the solver keeps the model and goes on from the basis
 * of the day before.
 *
 *     cc -std=c99 -I. examples/days.c -Lbuild/release/lib -lkavo -Wl,-rpath,"$PWD/build/release/lib" -o days
 *     ./days
 *
 * The food of solve.c, for demands that change from day to day. Settings may follow, such as method=1.
 */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include "kavo/kavo.h"

enum { kFoods = 3, kDemands = 3, kDays = 100 };

static void check(int status, trpRec** model) {
  if (status == KAVO_OK) return;
  fprintf(stderr, "days: %s\n", kavo_last_error());
  kavo_free(model);
  exit(EXIT_FAILURE);
}

static void build(trpRec** model) {
  static const char* const foods[kFoods] = {"Oats", "Milk", "Beans"};
  static const double most[kFoods] = {4, 1e20, 1e20};
  static const double cost[kFoods] = {0.15, 0.48, 0.56};
  static const int all[kFoods] = {0, 1, 2};

  static const char* const demands[kDemands] = {"energy", "protein", "calcium"};
  static const double from[kDemands] = {18, 28, 18};
  static const double to[kDemands] = {26, 1e20, 1e20};
  static const size_t start[kDemands + 1] = {0, 3, 6, 9};
  static const int column[] = {0, 1, 2, 0, 1, 2, 0, 1, 2};
  static const double value[] = {4, 2, 3, 3, 4, 8, 1, 6, 2};

  check(kavo_add_columns(*model, kFoods, NULL, most, NULL, foods), model);
  check(kavo_add_rows(*model, kDemands, from, to, start, column, value, demands), model);
  check(kavo_add_objective(*model, KAVO_MINIMIZE, 0, kFoods, all, cost, "cost"), model);
}

/* More protein every day of ten, more calcium every ten days. */
static void change_demands(trpRec** model, int day) {
  static const int rows[] = {1, 2};
  double least[2];
  least[0] = 20 + 5 * (day % 10);
  least[1] = 12 + 4 * (day / 10);
  check(kavo_change_sides(*model, 2, rows, least, NULL), model); /* the upper sides stay */
}

/* A word "name=value" of the command line. */
static void give(trpRec** model, char* word) {
  char* sign = strchr(word, '=');
  if (sign == NULL) {
    fprintf(stderr, "days: expected name=value, not %s\n", word);
    exit(EXIT_FAILURE);
  }
  *sign = '\0';
  check(kavo_set_option(*model, word, sign + 1, "command line", 0), model);
}

int main(int argc, char** argv) {
  trpRec* model = NULL;
  kavo_outcome outcome;
  double seconds = 0, iterations = 0;
  int day, i;

  check(kavo_create(&model), &model);
  build(&model);
  for (i = 1; i < argc; ++i) give(&model, argv[i]);
  check(kavo_open_link(model, NULL), &model);

  for (day = 0; day < kDays; ++day) {
    change_demands(&model, day);
    check(kavo_solve(model), &model);
    check(kavo_get_outcome(model, &outcome), &model); /* some days ask too much: then there is no objective */
    if (outcome.status == KAVO_OPTIMAL) {
      printf("day %d %s cost %.6g\n", day, outcome.status_text, outcome.objective);
    } else {
      printf("day %d %s\n", day, outcome.status_text);
    }
    seconds += outcome.seconds;
    iterations += outcome.iterations;
  }
  printf("%d solves in %.3f seconds with %.0f simplex iterations\n", (int)kDays, seconds, iterations);

  check(kavo_free(&model), &model);
  return EXIT_SUCCESS;
}
