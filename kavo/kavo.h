/* kavo: a model, the way to a solver link, and the results. The host's face of libkavo.so.
 *
 * A host fills a model in bulk (or reads it from a file), gives settings, opens a link by path, solves, and reads
 * results as borrowed arrays:
 *
 *     trpRec* model = NULL;
 *     kavo_create(&model);
 *     kavo_read(model, "diet.mps");
 *     kavo_set_option(model, "timelimit", "60", NULL, 0);
 *     if (kavo_open_link(model, NULL) != KAVO_OK || kavo_solve(model) != KAVO_OK) puts(kavo_last_error());
 *     kavo_free(&model);
 *
 * Conventions, the same for every function:
 *   - The result is a kavo_status. On anything but KAVO_OK the call changed nothing (unless said otherwise) and
 *     kavo_last_error() tells what is wrong and what to do. No function throws.
 *   - Strings are UTF-8 and end with NUL. Strings and arrays given by the caller are copied.
 *   - Arrays handed out belong to the model and stay valid until the model changes, is solved again, or is freed.
 *   - Element numbers count from 0. A bound or side of 1e20 or more is infinite, and so is -1e20 or less.
 *   - Unknown numbers are NaN.
 *   - One thread at a time per model, but for kavo_interrupt, which any thread may call. Models are independent.
 */
#ifndef KAVO_KAVO_H
#define KAVO_KAVO_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

#define KAVO_API __attribute__((visibility("default")))

/* A model with its settings, link and results. */
typedef struct trpRec trpRec;

typedef enum kavo_status {
  KAVO_OK = 0,
  KAVO_INVALID = 1,       /* an argument is wrong: null, out of range, NaN, wrong length */
  KAVO_FILE = 2,          /* a file cannot be read or written, or what it says is wrong; see also kavo_solve */
  KAVO_NOT_SUPPORTED = 3, /* understood, but not taken (docs/limits.md) */
  KAVO_LINK = 4,          /* the link cannot be loaded, or reports a failure */
  KAVO_NO_RESULT = 5,     /* the result asked for does not exist */
  KAVO_MEMORY = 6,
  KAVO_INTERNAL = 7
} kavo_status;

/* The message of the last call on this thread that failed; "" before any failure. Valid until the next failure. */
KAVO_API const char* kavo_last_error(void);
/* The library's version, such as "0.1.0". */
KAVO_API const char* kavo_version(void);

/* ---- life ---- */

/* Makes an empty model in *model, which is set to NULL on failure. */
KAVO_API int kavo_create(trpRec** model);
/* Frees the model with its link and results, and sets *model to NULL. A NULL *model is fine. */
KAVO_API int kavo_free(trpRec** model);

/* ---- building ---- */

typedef enum kavo_type {
  KAVO_CONTINUOUS = 0,
  KAVO_BINARY = 1, /* integer within [0, 1] and its own bounds */
  KAVO_INTEGER = 2,
  KAVO_SEMICONTINUOUS = 3, /* 0, or within [lower, upper] */
  KAVO_SEMIINTEGER = 4     /* 0, or an integer within [lower, upper] */
} kavo_type;

/* Appends `count` columns (variables). lower, upper, type, names: count entries each, or NULL for 0, infinity,
 * continuous, no names. An entry of names may be NULL or "". */
KAVO_API int kavo_add_columns(trpRec* model, size_t count, const double* lower, const double* upper,
                              const unsigned char* type, const char* const* names);

/* Appends `count` rows lower <= sum of value*column <= upper. start: count + 1 entries, start[0] = 0, not decreasing;
 * column, value: start[count] entries; the terms of row i are start[i] .. start[i+1]-1, several terms of one column are
 * summed. lower, upper: count entries, or NULL for -infinity, +infinity; names as for columns. */
KAVO_API int kavo_add_rows(trpRec* model, size_t count, const double* lower, const double* upper, const size_t* start,
                           const int* column, const double* value, const char* const* names);

/* Operators of expressions. The numbers up to 82 are those of the .nl format, the others are kavo's own. Truth values
 * are numbers: 0 is false, anything else true; a comparison gives 0 or 1. Operands that must be numbers say so: there
 * stands a node KAVO_OP_NUMBER. */
typedef enum kavo_operator {
  KAVO_OP_PLUS = 0,
  KAVO_OP_MINUS = 1,
  KAVO_OP_TIMES = 2,
  KAVO_OP_DIVIDE = 3,
  KAVO_OP_MOD = 4, /* x - y * trunc(x / y) */
  KAVO_OP_POWER = 5,
  KAVO_OP_LESS = 6, /* max(x - y, 0) */
  KAVO_OP_MIN = 11,
  KAVO_OP_MAX = 12,
  KAVO_OP_FLOOR = 13,
  KAVO_OP_CEIL = 14,
  KAVO_OP_ABS = 15,
  KAVO_OP_NEGATE = 16,
  KAVO_OP_LOGICAL_OR = 20,
  KAVO_OP_LOGICAL_AND = 21,
  KAVO_OP_LESS_THAN = 22,
  KAVO_OP_LESS_EQUAL = 23,
  KAVO_OP_EQUAL = 24,
  KAVO_OP_GREATER_EQUAL = 28,
  KAVO_OP_GREATER_THAN = 29,
  KAVO_OP_NOT_EQUAL = 30,
  KAVO_OP_LOGICAL_NOT = 34,
  KAVO_OP_IF_THEN_ELSE = 35, /* condition, then, else */
  KAVO_OP_TANH = 37,
  KAVO_OP_TAN = 38,
  KAVO_OP_SQRT = 39,
  KAVO_OP_SINH = 40,
  KAVO_OP_SIN = 41,
  KAVO_OP_LOG10 = 42,
  KAVO_OP_LOG = 43,
  KAVO_OP_EXP = 44,
  KAVO_OP_COSH = 45,
  KAVO_OP_COS = 46,
  KAVO_OP_ATANH = 47,
  KAVO_OP_ATAN2 = 48,
  KAVO_OP_ATAN = 49,
  KAVO_OP_ASINH = 50,
  KAVO_OP_ASIN = 51,
  KAVO_OP_ACOSH = 52,
  KAVO_OP_ACOS = 53,
  KAVO_OP_SUM = 54,
  KAVO_OP_INTEGER_DIVIDE = 55, /* trunc(x / y) */
  KAVO_OP_PRECISION = 56,      /* x, digits */
  KAVO_OP_ROUND = 57,          /* x, digits */
  KAVO_OP_TRUNC = 58,          /* x, digits */
  KAVO_OP_COUNT = 59,          /* of true operands */
  KAVO_OP_NUMBER_OF = 60,      /* the value, then where it is counted */
  KAVO_OP_NUMBER_OF_SYMBOLIC = 61,
  KAVO_OP_AT_LEAST = 62, /* number, count: count >= number */
  KAVO_OP_AT_MOST = 63,  /* number, count */
  /* slope, breakpoint, slope, ..., slope (numbers, at least two slopes; breakpoints not decreasing), then x; the
   * function is continuous and 0 at x = 0 */
  KAVO_OP_PIECEWISE_LINEAR = 64,
  KAVO_OP_IF_SYMBOLIC = 65,
  KAVO_OP_EXACTLY = 66, /* number, count */
  KAVO_OP_NOT_AT_LEAST = 67,
  KAVO_OP_NOT_AT_MOST = 68,
  KAVO_OP_NOT_EXACTLY = 69,
  KAVO_OP_FOR_ALL = 70,
  KAVO_OP_EXISTS = 71,
  KAVO_OP_IMPLIES = 72, /* condition, then, else */
  KAVO_OP_IF_AND_ONLY_IF = 73,
  KAVO_OP_ALL_DIFFERENT = 74,
  KAVO_OP_NOT_ALL_DIFFERENT = 75,
  KAVO_OP_POWER_CONSTANT_EXPONENT = 76, /* exponent: a number */
  KAVO_OP_SQUARE = 77,
  KAVO_OP_POWER_CONSTANT_BASE = 78, /* base: a number */
  KAVO_OP_CALL = 79,                /* index: the number of arguments; value: the number of the function */
  KAVO_OP_NUMBER = 80,              /* value */
  KAVO_OP_STRING = 81,              /* index: number of the string */
  KAVO_OP_VARIABLE = 82,            /* index: the column */
  KAVO_OP_DEFINED_VARIABLE = 83,    /* index: number of the defined variable */
  KAVO_OP_LOG_BASE = 84,            /* x, base (a number above 0, not 1) */
  KAVO_OP_LOG2 = 85,
  KAVO_OP_SIGMOID = 86,      /* 1 / (1 + exp(-x)) */
  KAVO_OP_SIGNED_POWER = 87, /* x, exponent (a number): sign(x) |x|^e */
  KAVO_OP_POLYNOMIAL = 88,   /* coefficients (numbers, at least one), of the highest power first, then x */
  KAVO_OP_NORM1 = 89,
  KAVO_OP_NORM2 = 90,
  KAVO_OP_NORM_INF = 91, /* the largest absolute value */
  /* x1, y1, x2, y2, ..., xn, yn (numbers, at least two points; x not decreasing, equal ones make a jump, but not at the
   * ends), then x; the first and the last piece go on beyond the points */
  KAVO_OP_PIECEWISE_LINEAR_POINTS = 92
} kavo_operator;

/* The operator's name for messages, such as "atan2"; "" for a number that is no operator. */
KAVO_API const char* kavo_operator_name(int op);
/* How many operands it takes: 0 or more; -1: as many as the node's index says; -2: no operator. */
KAVO_API int kavo_operator_arity(int op);

/* Appends `count` expressions; *first (which may be NULL) is the number of the first of them. They are written in
 * postfix order, operands before their operator: (x0 + 2) * x1 is VARIABLE, NUMBER, PLUS, VARIABLE, TIMES. start:
 * count + 1 entries, start[0] = 0; op (a kavo_operator), index, value: start[count] entries; the nodes of expression i
 * are start[i] .. start[i+1]-1, at least one. index counts for variables, defined variables and operators that take any
 * number of operands (their number, 1 or more), value for numbers (finite); elsewhere both are ignored. Strings, calls
 * of imported functions and the operators of strings come from .nl files only (KAVO_NOT_SUPPORTED). An expression does
 * nothing until an element uses it; several may use the same. */
KAVO_API int kavo_add_expressions(trpRec* model, size_t count, const size_t* start, const int* op, const int* index,
                                  const double* value, int* first);

/* Appends `count` defined variables, given like expressions, each of which stands for its expression wherever
 * KAVO_OP_DEFINED_VARIABLE has its number: what several elements use is written, and computed, once. *first is the
 * number of the first. A defined variable may use those with a lower number, also of the same call. */
KAVO_API int kavo_add_defined_variables(trpRec* model, size_t count, const size_t* start, const int* op,
                                        const int* index, const double* value, int* first);

typedef enum kavo_sense { KAVO_MINIMIZE = 0, KAVO_MAXIMIZE = 1 } kavo_sense;

/* Appends an objective: constant + sum of value*column. name may be NULL. */
KAVO_API int kavo_add_objective(trpRec* model, int sense, double constant, size_t terms, const int* column,
                                const double* value, const char* name);

/* Which objective is solved: 0 none (find a feasible point), 1 the first (the default), ... The solve fails when it
 * does not exist; a model without any is solved without. */
KAVO_API int kavo_set_objective_number(trpRec* model, int number);

/* Elements of a model. The numbers 0 to 3 are those of suffixes in the AMPL protocol. */
typedef enum kavo_kind {
  KAVO_COLUMN = 0,
  KAVO_ROW = 1,
  KAVO_OBJECTIVE = 2,
  KAVO_MODEL = 3,
  KAVO_LOGICAL = 4, /* logical constraints */
  KAVO_SET = 5      /* special ordered sets */
} kavo_kind;

/* Gives `count` rows (KAVO_ROW) or objectives (KAVO_OBJECTIVE) a nonlinear part: expression[i] is added to what element
 * index[i] has of linear and quadratic terms. It takes the place of an earlier one; -1: none. */
KAVO_API int kavo_set_expressions(trpRec* model, int kind, size_t count, const int* index, const int* expression);

/* Gives `count` rows or objectives quadratic terms: element index[i] gets the sum of value*first*second over the terms
 * start[i] .. start[i+1]-1, which is added to its linear terms. start: count + 1 entries, start[0] = 0; first, second,
 * value: start[count] entries, columns and coefficients. x*y and y*x are one pair; the terms of one pair are summed,
 * and no term is halved or doubled: the square of column 0 is 0, 0, 1. An element can be given quadratic terms once. */
KAVO_API int kavo_add_quadratic_terms(trpRec* model, int kind, size_t count, const int* index, const size_t* start,
                                      const int* first, const int* second, const double* value);
/* The quadratic terms of a row or objective, in the order of (first, second) with first <= second; *count is 0 when it
 * has none. The pointers may be NULL when they are not wanted. */
KAVO_API int kavo_quadratic_terms(const trpRec* model, int kind, size_t index, size_t* count, const int** first,
                                  const int** second, const double** value);

/* Appends `count` logical constraints: the value of expression[i] must be true. Names as for columns. */
KAVO_API int kavo_add_logical(trpRec* model, size_t count, const int* expression, const char* const* names);

/* Appends `count` special ordered sets. type: 1 (at most one member is not 0) or 2 (at most two, which are neighbours);
 * start: count + 1 entries, start[0] = 0; column, weight: start[count] entries; the members of set i are start[i] ..
 * start[i+1]-1, at least two different columns, in the order of their weights, which differ. weight NULL: the order is
 * that in which they are given. Names as for columns. */
KAVO_API int kavo_add_sets(trpRec* model, size_t count, const unsigned char* type, const size_t* start,
                           const int* column, const double* weight, const char* const* names);

/* Switches `count` rows: row[i] must hold only when column[i] has the value value[i], 0 or 1 (NULL: 1). The column must
 * be KAVO_BINARY, or KAVO_INTEGER with bounds within [0, 1], and stays so. A second call for a row replaces the
 * first. */
KAVO_API int kavo_set_indicators(trpRec* model, size_t count, const int* row, const int* column,
                                 const unsigned char* value);

/* Start values: primal one per column, dual one per row; NaN: unknown; NULL: none. Any finite number may be one. */
KAVO_API int kavo_set_start(trpRec* model, const double* primal, const double* dual);

/* Adds a point from which a search over integer variables may start, besides that of kavo_set_start: one value per
 * column, infinite ones are refused; NaN: not given. There can be several; they are tried in the order in which they
 * came. */
KAVO_API int kavo_add_mip_start(trpRec* model, const double* values);
KAVO_API int kavo_clear_mip_starts(trpRec* model);

/* A basis to start from: a kavo_basis per column and per row (0: unknown); a row at its lower side is KAVO_BASIS_LOWER.
 * NULL: all unknown; both NULL: no basis. The solver is given one that is complete, and a note tells why another is not
 * used. A .nl file gives it by its suffixes sstatus. */
KAVO_API int kavo_set_basis(trpRec* model, const int* columns, const int* rows);

/* Which share of all columns and rows must have a known basis status for the start basis to go to the link: 0 (the
 * default) any; 1 withholds basis, start values and MIP starts alike. A note of the solve tells what was withheld.
 * KAVO_INVALID outside [0, 1]. */
KAVO_API int kavo_set_basis_ratio(trpRec* model, double ratio);

/* Gives `count` elements of a kind a named value (a suffix); integer values are given as doubles. Elements not listed
 * have none. A second call with the same kind and name replaces the first. The link takes of these
 *   columns: priority   the integer variable with the largest is branched on first; 0: not given; an infinite one has
 *                       no effect, and a note says so
 *            partition  as Gurobi's attribute Partition
 *            feaspref   preference in a relaxation, 1 when none is given; or lbpen and ubpen, penalties: 1 / preference
 *   rows:    lazy, trynonlin   how the row is sent (docs/limits.md)
 *            feaspref   as for columns; or rhspen
 * and ignores the others, sstatus too: a basis is given by kavo_set_basis. objpriority, objweight, objabstol and
 * objreltol of objectives act in a solve of several objectives at once (the option multobj). */
KAVO_API int kavo_set_suffix(trpRec* model, int kind, const char* name, size_t count, const int* index,
                             const double* value);

KAVO_API int kavo_set_name(trpRec* model, const char* name);

/* Number of columns, rows, nonzeros, objectives. Any pointer may be NULL. */
KAVO_API int kavo_counts(const trpRec* model, size_t* columns, size_t* rows, size_t* nonzeros, size_t* objectives);

/* What else a model has. */
typedef struct kavo_sizes {
  size_t expressions, nodes; /* all, used or not */
  size_t defined_variables;
  size_t quadratic_terms; /* of rows and objectives */
  size_t logical;
  size_t sets, members; /* special ordered sets, and their members in all */
  size_t indicators;    /* switched rows */
} kavo_sizes;
KAVO_API int kavo_get_sizes(const trpRec* model, kavo_sizes* sizes);

/* Name of an element of a kind; when none was given, "_svar[1]", "_scon[1]", "_sobj[1]", "_slogcon[1]", "_sset[1]"
 * (counted from 1). Valid until the next call with this model. */
KAVO_API int kavo_name(trpRec* model, int kind, size_t index, const char** name);

/* ---- changes ----
 * New numbers in a model that was built or read. A solve after these alone keeps the solver's model and gives it what
 * has changed (docs/c-api.md tells for which models); any other change of the model makes it load anew. All of a call's
 * entries are checked first; an index that does not exist, a NaN or a value that building would refuse changes nothing
 * at all. Of several entries for one place the last counts. Start values, basis and MIP starts stay as they were given,
 * the results of the solve before go. */

/* The coefficient of column[k] in the linear part of row[k] becomes value[k]; the row need not have had the column. New
 * terms cost time linear in the model, once per call. */
KAVO_API int kavo_change_coefficients(trpRec* model, size_t count, const int* row, const int* column,
                                      const double* value);
/* lower, upper: count entries each, or NULL for no change on that side. A lower one may exceed the upper one, as in
 * building: the model is infeasible then. */
KAVO_API int kavo_change_sides(trpRec* model, size_t count, const int* row, const double* lower, const double* upper);
/* The same for bounds. An integer column that switches a row must stay within 0 and 1. */
KAVO_API int kavo_change_bounds(trpRec* model, size_t count, const int* column, const double* lower,
                                const double* upper);
/* The linear coefficients of column[k] in an objective; constant NULL: no change. */
KAVO_API int kavo_change_objective(trpRec* model, size_t objective, const double* constant, size_t count,
                                   const int* column, const double* value);

/* ---- statistics ---- */

/* The smallest and the largest absolute value of some numbers, not counting 0 and what is infinite (1e20 or more); both
 * 0 when there is none. */
typedef struct kavo_range {
  double smallest, largest;
} kavo_range;

/* What a model consists of, as it is now. */
typedef struct kavo_statistics {
  size_t columns[5]; /* by kavo_type */
  size_t rows;       /* the sum of the next seven, in which each row counts once: */
  /* rows with linear terms alone (or with none), by their sides: both the same; one of them infinite; both finite and
   * different; none */
  size_t equalities, inequalities, ranges, free_rows;
  size_t quadratic_rows; /* rows with quadratic terms, without an expression and not switched */
  size_t nonlinear_rows; /* rows with an expression, not switched */
  size_t switched_rows;  /* rows that an indicator switches */
  size_t logical, sets1, sets2, objectives;
  size_t nonzeros;         /* linear terms of rows other than 0 */
  size_t quadratic_terms;  /* of rows and objectives */
  size_t nodes;            /* of expressions, used or not */
  kavo_range coefficients; /* of the linear and quadratic terms of all rows */
  kavo_range objective;    /* of the linear and quadratic terms of the objective that is solved, not its constant */
  kavo_range bounds;       /* of the columns as they were given: of a binary one those of its own */
  kavo_range sides;        /* of all rows */
} kavo_statistics;
KAVO_API int kavo_get_statistics(const trpRec* model, kavo_statistics* statistics);

/* ---- files ---- */

/* Reads a model into an empty one, by the ending of the path: .nl (text or binary; with .row and .col beside it), .mps,
 * .mps.gz, .lp, .lp.gz. A path without a known ending is tried with .nl added. The error names file, line or byte, and
 * what was expected. */
KAVO_API int kavo_read(trpRec* model, const char* path);

/* The .sol file of the AMPL protocol. message: lines before the options block, no line may start with "Options". The
 * file is complete or not there at all (written beside and renamed). Needs no results: without a point no values are
 * written. result_code < 0: the code of the outcome (docs/results.md), otherwise this one. */
KAVO_API int kavo_write_sol(const trpRec* model, const char* path, const char* message, int result_code);
/* A .sol file without values for a .nl file that could not be read or was not taken, so that the caller of the AMPL
 * protocol hears why. The counts come from the head of the .nl file; KAVO_FILE when that cannot be read either. */
KAVO_API int kavo_write_failure_sol(const char* nl_path, const char* path, const char* message, int result_code);
/* "# Objective value = v" and a line "name value" per column, as Gurobi reads it. KAVO_NO_RESULT without a point. */
KAVO_API int kavo_write_point(const trpRec* model, const char* path);
/* The same as kavo_write_sol and kavo_write_point for a point of the pool. The .sol file has the values alone; its code
 * and the last line of its message are the point's own (docs/results.md). KAVO_NO_RESULT when there is no such point.
 */
KAVO_API int kavo_write_pool_sol(const trpRec* model, size_t index, const char* path, const char* message);
KAVO_API int kavo_write_pool_point(const trpRec* model, size_t index, const char* path);
/* Reads a file of the form of kavo_write_point for the columns of this model: values has one entry per column, NaN
 * where the file says nothing. A column goes by the name it was given, any may go by "_svar[1]" and so on; a name may
 * have blanks, the value is what stands behind the last one. Of several lines for a column the last counts. Empty lines
 * are passed over, and those that begin with # unless that is a column's name. unknown: how many lines have a name that
 * no column has; may be NULL. KAVO_FILE names the line that has no name or value, whose value is no finite number, or
 * whose name several columns have. */
KAVO_API int kavo_read_point(const trpRec* model, const char* path, double* values, size_t* unknown);
/* Everything known, as one JSON object (docs/results.md). */
KAVO_API int kavo_write_json(const trpRec* model, const char* path);
/* Writes a text of the host's own as the files above are written: complete or not at all. */
KAVO_API int kavo_write_text(const char* path, const char* text, size_t length);
/* Tells before a long solve whether a file can be written at the path; leaves no trace. KAVO_FILE says why not. */
KAVO_API int kavo_check_writable(const char* path);

/* ---- settings ---- */

/* Gives a setting to the link: a Gurobi parameter or an option of the link, by its name in any case. source and line
 * tell where it was given ("command line", a file's name) and stand in error messages; NULL and 0 when unknown. Names
 * and values are checked at the solve, before a licence is taken. A later setting of the same name wins. The value "?"
 * changes nothing and asks for the value in force, which a note of the solve tells. */
KAVO_API int kavo_set_option(trpRec* model, const char* name, const char* value, const char* source, int line);

/* Takes back all settings given so far; the next solve has what is given from then on, and defaults for the rest. */
KAVO_API int kavo_clear_options(trpRec* model);

/* Gives all settings of an option file, with the path as source. A line is "name value" or "name = value"; lines that
 * begin with * or # are comments; the value is the rest of the line, less the blanks and one pair of quotes around it.
 * KAVO_FILE names file and line when the file cannot be read or a line has no name, no value, or a quote that does not
 * end; nothing is given then. */
KAVO_API int kavo_read_options(trpRec* model, const char* path);

typedef enum kavo_setting_type {
  KAVO_SETTING_INT = 0,
  KAVO_SETTING_DOUBLE = 1,
  KAVO_SETTING_TEXT = 2
} kavo_setting_type;

/* What is known of a setting. */
typedef struct kavo_setting_info {
  const char* name;
  int type;                 /* a kavo_setting_type */
  const char* default_text; /* NULL: none */
  double lower, upper;      /* of numbers, both included; -infinity, infinity: none */
  const char* group;        /* what it belongs to, a heading for lists */
  const char* help;         /* a few sentences, "" when there are none */
} kavo_setting_info;

/* All settings that can be given, in the order of a catalogue; there are some once a link is open. out->name is NULL
 * when index is beyond the last. Valid until a link is opened or closed. */
KAVO_API int kavo_setting_info_at(const trpRec* model, size_t index, kavo_setting_info* out);
/* Writes the same as YAML: a map from each group to the list of its settings. KAVO_NO_RESULT without an open link. */
KAVO_API int kavo_describe_options(const trpRec* model, const char* path);

/* A setting as it was given. */
typedef struct kavo_setting {
  const char* name;
  const char* value;
  const char* source; /* "" when unknown */
  int line;           /* 0 when unknown */
} kavo_setting;

/* Declares a setting that the host acts on itself, such as where its log goes: it stands among all settings, but goes
 * to the host (kavo_own_setting_at) and not to the link. KAVO_INVALID when the name is declared or was given already,
 * and when a link is open. */
KAVO_API int kavo_declare_setting(trpRec* model, const kavo_setting_info* info);
/* What was given under declared names, in its order and unchecked. out->name is NULL when index is beyond the last. */
KAVO_API int kavo_own_setting_at(const trpRec* model, size_t index, kavo_setting* out);

/* What was given to the link, in its order and unchecked. out->name is NULL when index is beyond the last. */
KAVO_API int kavo_setting_at(const trpRec* model, size_t index, kavo_setting* out);

/* ---- solving ---- */

/* Loads a link and makes it ready for this model. path NULL: libgrblink.so beside this library. */
KAVO_API int kavo_open_link(trpRec* model, const char* path);
/* What the link says of its solver, such as "Gurobi 13.0.2 through gurobipy". "" without a link. */
KAVO_API int kavo_solver_text(const trpRec* model, const char** text);
/* Solves. KAVO_OK also for infeasible, unbounded, or stopped by a limit: see kavo_outcome. KAVO_FILE says that all went
 * well and the results are there, but for a file that a setting asks for (such as rngrestart, miptrace or writeparams):
 * the message and a note tell which one was lost, and why. KAVO_NOT_SUPPORTED for complementarity conditions, which a
 * .nl file may hold. The results of the solve before are gone, also when this one fails. */
KAVO_API int kavo_solve(trpRec* model);
/* Closes the link; results stay. */
KAVO_API int kavo_close_link(trpRec* model);

/* Why a stop is asked for; told apart in the termination words. */
typedef enum kavo_stop_source { KAVO_STOP_HOST = 0, KAVO_STOP_SIGNAL = 1 } kavo_stop_source;
/* Asks a running solve to stop and keep its best point; remembered until the solve returns, so it cannot come too
 * early within one. Without a running solve it does nothing. Any thread, but not a signal handler. */
KAVO_API int kavo_interrupt(trpRec* model, int source);

/* Where log text goes: called with pieces of text, lines end with "\n"; during a solve, on whichever thread the link
 * logs. The function must not change the model. NULL: nowhere (the default). */
KAVO_API int kavo_set_log(trpRec* model, void (*write)(const char* text, size_t length, void* data), void* data);

/* How far a running solve is. */
typedef enum kavo_progress_event {
  KAVO_PROGRESS_TICK = 0,      /* time has passed, or the solver has logged something */
  KAVO_PROGRESS_NODE = 1,      /* a node of the search tree was solved */
  KAVO_PROGRESS_INCUMBENT = 2, /* a better point was found */
  KAVO_PROGRESS_END = 3        /* the solver has returned; the last call of a solve */
} kavo_progress_event;
typedef struct kavo_progress {
  int event;
  double seconds;               /* since the solver began */
  double nodes;                 /* NaN before the first event of the search */
  double incumbent, bound, gap; /* of the objective that is solved; NaN while there is none; gap relative */
  double solutions;             /* how many incumbents there were so far */
} kavo_progress;

/* Tells of the progress of each solve: `progress` is called at every new incumbent, and otherwise at most every tenth
 * of a second, never by two threads at once but not always by the same. A result other than 0 asks for a stop, as
 * kavo_interrupt(model, KAVO_STOP_HOST) does. The function must not change the model. NULL: nobody is told. */
KAVO_API int kavo_set_progress(trpRec* model, int (*progress)(const kavo_progress* now, void* data), void* data);

/* ---- results ---- */

typedef enum kavo_solution_status {
  KAVO_OPTIMAL = 0,
  KAVO_LOCALLY_OPTIMAL = 1,
  KAVO_INFEASIBLE = 2,
  KAVO_LOCALLY_INFEASIBLE = 3,
  KAVO_UNBOUNDED = 4,
  KAVO_INFEASIBLE_OR_UNBOUNDED = 5,
  KAVO_UNKNOWN = 6
} kavo_solution_status;

typedef struct kavo_outcome {
  int status;              /* a kavo_solution_status */
  const char* status_text; /* "optimal", "locally_optimal", "infeasible", ..., "unknown" */
  const char* termination; /* why it stopped: "finished", "time_limit", "interrupted_by_signal", ... */
  int sol_code;            /* the solve_result_num of the AMPL protocol */
  const char* message;     /* a sentence for people, such as "optimal solution" */
  /* NaN when it does not exist; seconds: the whole run of kavo_solve */
  double objective, bound, gap, iterations, nodes, seconds, solutions;
  /* What the relaxation of an infeasible model costs; then the point is that of the relaxation, and the objective the
   * model's own at it. NaN when nothing was relaxed. */
  double relaxation;
  double condition, exact_condition; /* of the scaled basis matrix, the first one estimated; NaN: not asked for */
} kavo_outcome;

/* The outcome of the last solve; KAVO_NO_RESULT before one. */
KAVO_API int kavo_get_outcome(const trpRec* model, kavo_outcome* outcome);

/* The codes and messages that an outcome can have, in no order, some twice; *message is NULL when index is beyond the
 * last. */
KAVO_API int kavo_outcome_row(size_t index, int* sol_code, const char** message);

/* Signs: a dual is the change of the objective per unit of the row's right-hand side, and a reduced cost the change per
 * unit of the variable, for minimise and maximise alike. A slack is the distance of the activity to the nearer side of
 * the row: positive inside, 0 at a side, negative when violated. */
typedef enum kavo_quantity {
  KAVO_PRIMAL = 0,       /* columns */
  KAVO_REDUCED_COST = 1, /* columns */
  KAVO_ACTIVITY = 2,     /* rows */
  KAVO_DUAL = 3,         /* rows */
  KAVO_SLACK = 4,        /* rows */
  /* Sensitivity ranges: as long as this number alone stays within, the basis stays optimal. Infinite ends are infinite.
   * Columns: the objective coefficient, the lower bound, the upper bound. Rows: the side at which the row is; of a row
   * at none, the side that is nearer (docs/results.md). */
  KAVO_COST_LOW = 5,
  KAVO_COST_HIGH = 6,
  KAVO_LOWER_LOW = 7,
  KAVO_LOWER_HIGH = 8,
  KAVO_UPPER_LOW = 9,
  KAVO_UPPER_HIGH = 10,
  KAVO_SIDE_LOW = 11,
  KAVO_SIDE_HIGH = 12
} kavo_quantity;
/* Added to a kavo_quantity or to the kind of a basis: that of the fixed model, a MIP whose integer variables stand at
 * the values of the point, solved again as a continuous model. */
#define KAVO_OF_FIXED 256

/* One value per column or row, NaN where there is none (the dual of a row that is neither linear nor quadratic);
 * KAVO_NO_RESULT (and NULL, 0) when the solve has not given this quantity at all. */
KAVO_API int kavo_result(const trpRec* model, int quantity, const double** values, size_t* count);

typedef enum kavo_basis { KAVO_BASIS_LOWER = 1, KAVO_BASIS_UPPER = 2, KAVO_BASIC = 3, KAVO_SUPERBASIC = 4 } kavo_basis;
/* A kavo_basis per column (kind KAVO_COLUMN) or row (KAVO_ROW); KAVO_NO_RESULT when there is no basis. A row at its
 * lower side is KAVO_BASIS_LOWER, at its upper side KAVO_BASIS_UPPER. */
KAVO_API int kavo_result_basis(const trpRec* model, int kind, const int** statuses, size_t* count);

typedef enum kavo_check {
  KAVO_CHECK_ROW = 0,         /* by how much a row's activity is beyond a side; infinite when it is no number there */
  KAVO_CHECK_BOUND = 1,       /* by how much a column is beyond a bound */
  KAVO_CHECK_INTEGRALITY = 2, /* how far an integer column is from a whole number */
  KAVO_CHECK_LOGICAL = 3,     /* 1 for a logical constraint that is not true */
  KAVO_CHECK_SET = 4          /* the largest value of a member that a special ordered set wants to be 0 */
} kavo_check;
/* The largest violation of the model's own elements at the returned point, and the row, column, logical constraint or
 * set that has it; 0 and -1 when nothing is violated at all. A row that is switched counts where it is on. Comparisons
 * inside expressions hold within 1e-6. KAVO_NO_RESULT without a point. */
KAVO_API int kavo_violation(const trpRec* model, int check, double* value, long long* element);

/* The outcome of the fixed model; seconds is the solver's own time. KAVO_NO_RESULT when there was none. */
KAVO_API int kavo_get_fixed_outcome(const trpRec* model, kavo_outcome* outcome);

/* The value of each of the model's objectives at the point, solved or not. KAVO_NO_RESULT without a point. */
KAVO_API int kavo_objective_values(const trpRec* model, const double** values, size_t* count);

/* The points of the solution pool, the best first; *count is 0 when none was asked for or there is no point. objective
 * may be NULL; KAVO_NO_RESULT when index is beyond the last. */
KAVO_API int kavo_pool_size(const trpRec* model, size_t* count);
KAVO_API int kavo_pool_point(const trpRec* model, size_t index, double* objective, const double** values,
                             size_t* count);

/* An infeasible model's conflict: bounds, sides and constraints that contradict each other. */
typedef enum kavo_conflict_mark {
  KAVO_CONFLICT_NONE = 0,
  KAVO_CONFLICT_LOWER = 1, /* the lower bound or side */
  KAVO_CONFLICT_UPPER = 2,
  KAVO_CONFLICT_BOTH = 3,
  KAVO_CONFLICT_MEMBER = 4 /* the element as a whole, where sides are not told apart */
} kavo_conflict_mark;
/* A kavo_conflict_mark per element of a kind (KAVO_COLUMN, KAVO_ROW, KAVO_LOGICAL, KAVO_SET); KAVO_NO_RESULT when no
 * conflict was computed. */
KAVO_API int kavo_conflict(const trpRec* model, int kind, const unsigned char** marks, size_t* count);
/* 1: without any one of its members it would be none; 0: it may hold more than is needed. */
KAVO_API int kavo_conflict_is_minimal(const trpRec* model, int* minimal);

/* Notes of the last solve for the user, one line each: what is odd about the model, what was left out; also those of a
 * solve that failed. *note is NULL when index is beyond the last. */
KAVO_API int kavo_note(const trpRec* model, size_t index, const char** note);

#ifdef __cplusplus
}
#endif
#endif
