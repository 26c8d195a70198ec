"""The points of the solution pool: all and in order, as enumeration of a small knapsack tells them; once each, however
many ways the solver's own columns may take for the same point; and statistics of the model before the solve.
"""

import itertools
import math
import os
import pathlib
import tempfile
import unittest
from ctypes import POINTER, byref, c_double, c_size_t

from harness import BINARY, CONTINUOUS, INF, INTEGER, OBJECTIVE, Model, environment, make

WEIGHTS, VALUES, CAPACITY = (4, 3, 5, 2), (7, 5, 8, 3.5), 8


def knapsack():
    columns = [(name, 0, 1, BINARY) for name in "abcd"]
    return make("max", columns, [("capacity", 1, dict(enumerate(map(float, WEIGHTS))), CAPACITY)], VALUES, 1.0)


def pool(model):
    """(objective, values) of each point."""
    count, objective, values, columns = c_size_t(), c_double(), POINTER(c_double)(), c_size_t()
    model.call("kavo_pool_size", byref(count))
    points = []
    for k in range(count.value):
        model.call("kavo_pool_point", c_size_t(k), byref(objective), byref(values), byref(columns))
        points.append((objective.value, tuple(values[:columns.value])))
    return points


def enumerated():
    points = itertools.product((0.0, 1.0), repeat=len(WEIGHTS))
    feasible = [p for p in points if 1 <= sum(w * x for w, x in zip(WEIGHTS, p)) <= CAPACITY]
    return sorted(((1 + sum(v * x for v, x in zip(VALUES, p)), p) for p in feasible), reverse=True)


class Pool(unittest.TestCase):
    def test_all_points_in_order(self):
        expected = enumerated()
        self.assertGreater(len(expected), 8)
        for options, count in (({"poolsearchmode": 2, "poolsolutions": 100}, len(expected)),
                               ({"poolsearchmode": 2, "poolsolutions": 4}, 4)):
            with self.subTest(options), knapsack() as model:
                found = model.solve(**options)
                points = [(round(value, 9), tuple(map(round, point))) for value, point in pool(model)]
                self.assertEqual([value for value, _ in points], [value for value, _ in expected[:count]])
                if count == len(expected):
                    self.assertEqual(sorted(points), sorted((value, tuple(map(round, p))) for value, p in expected))
                self.assertEqual(points[0], (round(found.objective, 9), tuple(map(round, found.values))))
                self.assertEqual(found.solutions, count)

    def test_what_is_asked_for_and_put_back(self):
        for options, isGiven in (({}, False), ({"pool": 1}, True), ({"poolsearchmode": 1}, True)):
            with self.subTest(options), tempfile.TemporaryDirectory() as folder:
                parameters = pathlib.Path(folder, "second.prm")
                with environment(GRBLINK_TRACE=os.path.join(folder, "calls")), knapsack() as model:
                    model.solve(**options)
                    self.assertEqual(bool(pool(model)), isGiven)
                    model.solve(writeparams=parameters)  # the solver's own parameters after all was read
                self.assertNotIn("Number", parameters.read_text(encoding="utf-8"))
        with make("max", [("x", 0, 3)], [], [2]) as model:
            model.solve(pool=1)
            self.assertEqual(pool(model), [(6.0, (3.0,))])
        with make("max", [("x", 0, 3)], [("no", 5, {0: 1.0}, INF)], [2]) as model:
            self.assertEqual((model.solve(pool=1).status, pool(model)), ("infeasible", []))

    def test_points_that_differ_in_auxiliary_columns_are_one(self):
        # where both are true, either operand's column may carry the "or"
        with Model() as model:
            model.add_columns([("x", 0, 2, INTEGER), ("y", 0, 2, INTEGER)])
            model.add_objective("max", [1.0, 1.0])
            model.add_logical([("or", ("<=", "x0", 1), ("<=", "x1", 1))])
            found = model.solve(poolsearchmode=2, poolsolutions=1000)
            points = [tuple(map(round, point)) for _, point in pool(model)]
            self.assertEqual(sorted(points), sorted(set(itertools.product(range(3), repeat=2)) - {(2, 2)}))
            self.assertGreater(found.solutions, len(points))

    def test_a_point_whose_objective_the_solver_holds_loosely_is_one(self):
        """Gurobi finds (1, 1) several times, with objectives that differ in the fourth digit."""
        with Model() as model:
            model.add_columns([("x", 0, 1, BINARY), ("y", 0, 1, BINARY)])
            model.add_objective("max", [0.0, 0.1])
            model.give_expressions(OBJECTIVE, {0: ("asin", "x0")})
            for count in (2, 1000):
                found = model.solve(poolsearchmode=2, poolsolutions=count, threads=1)
                points = [tuple(map(round, point)) for _, point in pool(model)]
                self.assertEqual(len(points), len(set(points)))
                self.assertAlmostEqual(found.objective, math.pi / 2 + 0.1, 4)
            self.assertEqual(len(points), 4)

    def test_statistics_come_before_the_solve(self):
        with knapsack() as model:
            model.add_columns([("wide", 0, INF, CONTINUOUS)])
            model.add_rows([("tiny", -INF, {4: 1e-6, 0: 1e5}, 1e6)])
            _, lines = model.logged_solve(statistics=1)
        begin = lines.index("Model statistics")
        told = {line[2:31].strip(): line[32:] for line in lines[begin + 1:begin + 10] if line.startswith("  ")}
        self.assertEqual(told["variables"], "5 (continuous 1, binary 4)")
        self.assertEqual(told["rows"], "2 (inequalities 1, with two sides 1)")
        self.assertEqual((told["nonzeros"], told["coefficients of rows"]), ("6", "1e-06 to 1e+05"))
        warnings = [line for line in lines if "span more than" in line]
        self.assertEqual(len(warnings), 1)
        self.assertIn("coefficients of rows", warnings[0])
        self.assertLess(begin, next(i for i, line in enumerate(lines) if line.startswith("Optimize a model")))
