/* kavo: what a link may ask of a model and tell it. The only road between a link and its host.
 *
 * A link is a library that exports grbCreate, grbFree, grbReadyAPI, grbCallSolver, grbModifyProblem. Calls stand in the
 * order of one solve. The functions return a kavo_status and never throw. Spans are borrowed: valid while the host's
 * call of the link runs, and as long as the model is not changed.
 */
#ifndef KAVO_LINK_H
#define KAVO_LINK_H

#include "kavo/kavo.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The exports of a link, as a host calls them. Results: 0 for success. */
typedef int (*kavo_link_create)(void** handle, char* message, int length);
typedef void (*kavo_link_free)(void** handle);
typedef int (*kavo_link_ready)(void* handle, trpRec* model);
typedef int (*kavo_link_call)(void* handle);

/* ---- the model ---- */

/* Names of elements 0 .. n-1: name i is the NUL-terminated text + start[i], "" when the element has none. start is NULL
 * when no element has a name. */
typedef struct kavo_names {
  const char* text;
  const size_t* start;
} kavo_names;

typedef struct kavo_columns {
  size_t count;
  const double* lower;       /* count; -1e20 or less: none */
  const double* upper;       /* count; 1e20 or more: none */
  const unsigned char* type; /* count; a kavo_type */
  kavo_names names;
} kavo_columns;

typedef struct kavo_rows {
  size_t count;
  const size_t* start;   /* count + 1 */
  const int* column;     /* start[count] */
  const double* value;   /* start[count]; finite */
  const double* lower;   /* count */
  const double* upper;   /* count */
  const int* expression; /* count: number of the row's expression, -1: none; NULL when no row has one */
  const int* quadratic;  /* count: number of the row's quadratic terms, -1: none; NULL when no row has any */
  const int* indicator;  /* count: binary column that switches the row on, -1: none; NULL when no row is switched */
  const unsigned char* indicator_value; /* count: the value of that column, 0 or 1, at which the row holds; or NULL */
  kavo_names names;
} kavo_rows;

typedef struct kavo_objective {
  int sense; /* a kavo_sense */
  double constant;
  size_t terms;
  const int* column;
  const double* value;
  int expression; /* -1: none */
  int quadratic;  /* -1: none */
  const char* name;
} kavo_objective;

/* Expressions in postfix order (operands before their operator), one after the other: the nodes of expression e are
 * start[e] .. start[e+1]-1, its root is the last. What index and value mean: kavo_operator; the index of an operator
 * that takes any number of operands is their number. */
typedef struct kavo_expressions {
  size_t count;
  const size_t* start; /* count + 1 */
  const kavo_operator* op;
  const int* index;
  const double* value;
  size_t defined_count;
  const int* defined; /* defined_count: the expression of each defined variable; it uses only lower-numbered ones */
} kavo_expressions;

/* Sums of value * first * second: the terms of sum q are start[q] .. start[q+1]-1; first <= second, no pair twice. */
typedef struct kavo_quadratics {
  size_t count;
  const size_t* start; /* count + 1 */
  const int *first, *second;
  const double* value;
} kavo_quadratics;

/* Special ordered sets: the members of set s are start[s] .. start[s+1]-1, in the order of their weights, which differ.
 */
typedef struct kavo_sets {
  size_t count;
  const unsigned char* type; /* 1 or 2 */
  const size_t* start;       /* count + 1 */
  const int* column;
  const double* weight;
  kavo_names names;
} kavo_sets;

/* Constraints that an expression (of truth values) must be true. */
typedef struct kavo_logical {
  size_t count;
  const int* expression; /* count */
  kavo_names names;
} kavo_logical;

typedef struct kavo_suffix {
  size_t count;
  const int* index;
  const double* value;
} kavo_suffix;

KAVO_API int kavo_link_columns(const trpRec* model, kavo_columns* out);
KAVO_API int kavo_link_rows(const trpRec* model, kavo_rows* out);
/* Number of the objective to solve: 0 none, 1 the first, ...; 0 when the model has none. */
KAVO_API int kavo_link_objective_number(const trpRec* model, int* number);
/* index counts from 0. */
KAVO_API int kavo_link_objective(const trpRec* model, size_t index, kavo_objective* out);
KAVO_API int kavo_link_expressions(const trpRec* model, kavo_expressions* out);
KAVO_API int kavo_link_quadratics(const trpRec* model, kavo_quadratics* out);
KAVO_API int kavo_link_sets(const trpRec* model, kavo_sets* out);
KAVO_API int kavo_link_logical(const trpRec* model, kavo_logical* out);
/* The name of an imported function, by its number in a call. */
KAVO_API int kavo_link_function_name(const trpRec* model, size_t index, const char** name);
/* count 0 when the model has no such suffix. kind: a kavo_kind. */
KAVO_API int kavo_link_suffix(const trpRec* model, int kind, const char* name, kavo_suffix* out);
/* NULL when none were given; NaN: unknown. */
KAVO_API int kavo_link_starts(const trpRec* model, const double** primal, const double** dual);
/* kavo_basis statuses to start from, 0: unknown; NULL when there are none or they are withheld. */
KAVO_API int kavo_link_basis(const trpRec* model, const int** columns, const int** rows);
/* MIP starts besides the start values; *values is NULL when index is beyond the last. NaN: not given. */
KAVO_API int kavo_link_mip_start(const trpRec* model, size_t index, const double** values);
/* 1 when the host withholds starts of every kind; the functions above then have none. */
KAVO_API int kavo_link_starts_withheld(const trpRec* model);

/* What has changed since the last solve that succeeded, as it was when the solve began; the new numbers stand in the
 * model. An element stands there once, in the order of the elements. Settings, start values, bases, MIP starts and
 * suffixes that are read at each solve are no changes. */
typedef struct kavo_changes {
  int structure; /* 1: more than what follows, or there was no such solve */
  size_t coefficients;
  const int *coefficient_row, *coefficient_column; /* an entry may be new, and 0 */
  const double* coefficient_value;
  size_t sides;
  const int* side_row;
  size_t bounds;
  const int* bound_column;
  size_t costs; /* of the objective that is solved */
  const int* cost_column;
  const double* cost_value;
  int constant; /* 1: the constant of that objective */
  int others;   /* 1: something of another objective */
} kavo_changes;
KAVO_API int kavo_link_changes(const trpRec* model, kavo_changes* out);

/* The model's name, "" when it has none. */
KAVO_API int kavo_link_model_name(const trpRec* model, const char** name);

/* What was given to the link, in the order in which it was given. */
KAVO_API int kavo_link_settings(const trpRec* model, const kavo_setting** first, size_t* count);
/* What the host has declared as its own; out->name is NULL when index is beyond the last. */
KAVO_API int kavo_link_own_setting_info(const trpRec* model, size_t index, kavo_setting_info* out);

/* ---- before the solve ---- */

/* Text about the solver in use. */
KAVO_API void kavo_link_publish_solver(trpRec* model, const char* text);
/* One setting that can be given, those of the host included; the order of the calls is that of the catalogue. */
KAVO_API int kavo_link_publish_setting(trpRec* model, const kavo_setting_info* info);
/* All of them as YAML, for kavo_describe_options. */
KAVO_API int kavo_link_publish_description(trpRec* model, const char* yaml);

/* ---- while it runs ---- */

KAVO_API void kavo_link_log(trpRec* model, const char* text, size_t length);
/* A line for the user that stands in the summary and in the message of the .sol file. */
KAVO_API void kavo_link_note(trpRec* model, const char* line);
/* A file that a setting asks for was not written, or not to its end, although the solve goes well: the line names it
 * and says why. It is a note too; the results stand, and kavo_solve gives KAVO_FILE. */
KAVO_API void kavo_link_lost_file(trpRec* model, const char* line);
/* The failure that makes the link's next return value non-zero: kavo_last_error() tells it to the host. */
KAVO_API void kavo_link_error(trpRec* model, const char* message);
/* The way to stop the running solve; called, maybe many times and from another thread, from the moment a stop is asked
 * for until it is taken back with NULL. Once this function returns, the hook that was set before is not running. */
KAVO_API void kavo_link_on_interrupt(trpRec* model, void (*stop)(void* data), void* data);
/* Tells the host of progress; 1 when a stop was asked for, be it by its answer or before. Any thread, one at a time. */
KAVO_API int kavo_link_progress(trpRec* model, const kavo_progress* now);
/* 1 when the host wants to hear of progress. */
KAVO_API int kavo_link_wants_progress(const trpRec* model);
/* Writes a point that was found meanwhile, one value per column, as kavo_write_point does. Any thread. */
KAVO_API int kavo_link_write_point(const trpRec* model, const char* path, double objective, const double* values);
/* 1 when a stop was asked for in this solve. */
KAVO_API int kavo_link_stop_requested(const trpRec* model);

/* Writes a file that is complete or not there at all, as kavo's own are. KAVO_FILE says why not. */
KAVO_API int kavo_link_write_file(const char* path, const char* text, size_t length);

/* ---- results ---- */

typedef enum kavo_stop {
  KAVO_STOP_NOT_RUN = 0,
  KAVO_STOP_FINISHED = 1,
  KAVO_STOP_SUBOPTIMAL = 2,
  KAVO_STOP_ITERATIONS = 3,
  KAVO_STOP_NODES = 4,
  KAVO_STOP_TIME = 5,
  KAVO_STOP_SOLUTIONS = 6,
  KAVO_STOP_CUTOFF = 7,
  KAVO_STOP_TARGET = 8,
  KAVO_STOP_WORK = 9,
  KAVO_STOP_MEMORY = 10,
  KAVO_STOP_NUMERIC = 11,
  KAVO_STOP_INTERRUPTED = 12,
  KAVO_STOP_RULE = 13 /* a stop expression */
} kavo_stop;

/* NaN where there is no such number. seconds is the solver's own; the host measures the run. */
typedef struct kavo_finish {
  int status; /* a kavo_solution_status */
  int stop;   /* a kavo_stop */
  double objective, bound, gap, iterations, nodes, seconds, solutions;
  double relaxation, condition, exact_condition; /* as in kavo_outcome */
} kavo_finish;

/* The array to fill with one value per column or row (a kavo_quantity), NaN so far; from this call on the quantity
 * counts as given. Only during a solve, like all below. Giving KAVO_PRIMAL says that there is a feasible point. */
KAVO_API int kavo_link_result(trpRec* model, int quantity, double** values, size_t* count);
/* The same for the basis statuses of columns or rows (a kavo_kind). */
KAVO_API int kavo_link_result_basis(trpRec* model, int kind, int** statuses, size_t* count);
/* 1 when this solve has been given the quantity, or the basis of the kind. */
KAVO_API int kavo_link_has_result(const trpRec* model, int quantity);
KAVO_API int kavo_link_has_basis(const trpRec* model, int kind);
/* The largest violation of a kavo_check; element -1: none. */
KAVO_API int kavo_link_violation(trpRec* model, int check, double value, long long element);
/* The value of each objective of the model at the point: one entry per objective to fill, NaN so far. */
KAVO_API int kavo_link_objective_values(trpRec* model, double** values, size_t* count);
/* Appends a point of the pool: one entry per column to fill, NaN so far. */
KAVO_API int kavo_link_pool_point(trpRec* model, double objective, double** values, size_t* count);
/* The kavo_conflict_marks of a kind (columns, rows, logical constraints, sets) to fill, none so far; from the first
 * call on (of one of these two) there is a conflict, which is taken for not minimal until the link says so. */
KAVO_API int kavo_link_conflict(trpRec* model, int kind, unsigned char** marks, size_t* count);
KAVO_API int kavo_link_conflict_minimal(trpRec* model, int minimal);
/* Closes the results of a solve; those of the fixed model. Quantities and bases of the fixed model are given by the
 * functions above with KAVO_OF_FIXED added. */
KAVO_API int kavo_link_finish(trpRec* model, const kavo_finish* finish);
KAVO_API int kavo_link_finish_fixed(trpRec* model, const kavo_finish* finish);

#ifdef __cplusplus
}
#endif
#endif
