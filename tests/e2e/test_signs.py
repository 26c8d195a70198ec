"""Small linear models worked out by hand: values, duals, reduced costs, slacks and basis statuses of every kind of row.

A dual is the change of the objective per unit of the side that binds, a reduced cost that per unit of the variable,
whichever the direction of the objective.
"""

import unittest

from harness import INF, make

TOLERANCE = 1e-9

# Each: sense, costs, constant, columns (name, lower, upper), rows, objective, per column (value, reduced cost, basis),
# per row (activity, dual, slack, basis).
CASES = {
    # x is the cheaper one: 3 of it, as many as the cap allows, and 1 of y. More demand is met by y (3); a larger cap
    # lets x take the place of y (2 - 3).
    "minimise, >= and <=": (
        "min", [2, 3], 0, [("x", 0, INF), ("y", 0, INF)],
        [("demand", 4, {0: 1, 1: 1}, INF), ("cap", -INF, {0: 1}, 3)], 9,
        [(3, 0, "basic"), (1, 0, "basic")], [(4, 3, 0, "lower"), (3, -1, 0, "upper")]),
    # x at its bound of 3, then 1 of y. A wider limit gives one more y (2); one more x takes a y away (3 - 2).
    "maximise, <=": (
        "max", [3, 2], 0, [("x", 0, 3), ("y", 0, INF)], [("limit", -INF, {0: 1, 1: 1}, 4)], 11,
        [(3, 1, "upper"), (1, 0, "basic")], [(4, 2, 0, "upper")]),
    # The same demand as a loss: one unit more costs 2 (as y), one more x instead of y saves 1.
    "maximise, >=, constant": (
        "max", [-1, -2], 10, [("x", 0, 2), ("y", 0, INF)], [("demand", 3, {0: 1, 1: 1}, INF)], 6,
        [(2, 1, "upper"), (1, 0, "basic")], [(3, -2, 0, "lower")]),
    # z is dear and stays at its lower bound of 1, x is cheap and goes to 3, y fills up: the dual is y's cost.
    "minimise, =, bounds": (
        "min", [1, 2, 4], 0, [("x", 0, 3), ("y", 0, INF), ("z", 1, INF)], [("sum", 5, {0: 1, 1: 1, 2: 1}, 5)], 9,
        [(3, -1, "upper"), (1, 0, "basic"), (1, 2, "lower")], [(5, 2, 0, "lower")]),
    # A row between 2 and 6 at its lower side: x to its bound, the rest is y.
    "minimise, range at its lower side": (
        "min", [1, 3], 0, [("x", 0, 1), ("y", 0, INF)], [("range", 2, {0: 1, 1: 1}, 6)], 4,
        [(1, -2, "upper"), (1, 0, "basic")], [(2, 3, 0, "lower")]),
    # At its upper side: y to its bound of 3, then 3 of x.
    "maximise, range at its upper side": (
        "max", [2, 3], 0, [("x", 0, 4), ("y", 0, 3)], [("range", 2, {0: 1, 1: 1}, 6)], 15,
        [(3, 0, "basic"), (3, 1, "upper")], [(6, 2, 0, "upper")]),
    # Inside: both variables at their bounds, the activity 4 is 2 from either side.
    "minimise, inside a range": (
        "min", [1, -1], 0, [("x", 3, 9), ("y", 0, 1)], [("range", 2, {0: 1, 1: 1}, 6)], 2,
        [(3, 1, "lower"), (1, -1, "upper")], [(4, 0, 2, "basic")]),
    # Of a free row only the activity is known: 3 - 2 * 1.
    "a free row beside another": (
        "max", [3, 2], 0, [("x", 0, 3), ("y", 0, INF)],
        [("free", -INF, {0: 1, 1: -2}, INF), ("limit", -INF, {0: 1, 1: 1}, 4)], 11,
        [(3, 1, "upper"), (1, 0, "basic")], [(1, 0, float("inf"), "basic"), (4, 2, 0, "upper")]),
    # Only free rows: the bounds alone decide.
    "nothing but a free row": (
        "min", [1, -2], 0, [("x", 2, 5), ("y", 0, 4)], [("free", -INF, {0: 3, 1: 1}, INF)], -6,
        [(2, 1, "lower"), (4, -2, "upper")], [(10, 0, float("inf"), "basic")]),
    # A variable without bounds is held by a row alone.
    "a free variable": (
        "min", [1], 0, [("x", -INF, INF)], [("floor", -7, {0: 1}, INF)], -7, [(-7, 0, "basic")], [(-7, 1, 0, "lower")]),
    # Between its sides -1 and 1, x - y can only rise by x, whose cost is the negative of what it earns.
    "maximise, a range of differences at its lower side": (
        "max", [-1, 0.5], 0, [("x", 0, INF), ("y", 0, 8)], [("difference", -1, {0: 1, 1: -1}, 1)], 0.5,
        [(0, -0.5, "lower"), (1, 0, "basic")], [(-1, -0.5, 0, "lower")]),
}


class Signs(unittest.TestCase):
    def test_all_quantities_are_those_worked_out_by_hand(self):
        for name, (sense, costs, constant, columns, rows, objective, of_columns, of_rows) in CASES.items():
            with self.subTest(name), make(sense, columns, rows, costs, constant) as model:
                found = model.solve()
                self.assertEqual((found.status, found.termination), ("optimal", "finished"))
                self.assertAlmostEqual(found.objective, objective, delta=TOLERANCE)
                self.assert_all(zip(found.values, found.reduced_costs, found.column_basis), of_columns)
                self.assert_all(zip(found.activities, found.duals, found.slacks, found.row_basis), of_rows)
                self.assertLess(model.violation(), TOLERANCE)

    def assert_all(self, found, expected):
        found = list(found)
        self.assertEqual(len(found), len(expected))
        for i, facts in enumerate(expected):
            self.assertEqual(found[i][-1], facts[-1], f"basis of {i}")
            for value, wanted in zip(found[i][:-1], facts[:-1]):
                self.assertAlmostEqual(value, wanted, delta=TOLERANCE, msg=f"element {i}: {found[i]}")
