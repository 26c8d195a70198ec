"""Models that change between solves: every answer is that of a fresh model with the same numbers, and the solver's
model is kept where only numbers of linear rows, bounds and the objective have changed."""

import copy
import os
import random
import re
import tempfile
import unittest
from ctypes import byref, c_double

from harness import BINARY, CONTINUOUS, INF, INTEGER, environment, example, ints, make, market_split


class Numbers:
    """A random model that is feasible at a point of small whole numbers and bounded, as plain lists."""

    def __init__(self, seed):
        rng = self.rng = random.Random(seed)
        count = rng.randrange(4, 9)
        discrete = seed % 3 == 0
        self.point = [rng.randrange(0, 2) for _ in range(count)]
        self.columns = []
        for j in range(count):
            kind = rng.choice([BINARY, INTEGER, CONTINUOUS]) if discrete else CONTINUOUS
            self.columns.append([None, rng.choice([0, -1]), rng.choice([1, 3, 8]), kind])
        self.rows = [self.row() for _ in range(rng.randrange(3, 7))]
        self.sense = rng.choice(["min", "max"])
        self.costs = [rng.randrange(-5, 6) for _ in range(count)]
        self.constant = 0.0

    def row(self):
        rng = self.rng
        terms = {j: rng.choice([-3, -2, -1, 1, 2, 4]) for j in rng.sample(range(len(self.columns)), 3)}
        row = [None, -INF, terms, INF]
        self.set_sides(row, rng.choice("<>=rf"))
        return row

    def set_sides(self, row, kind):
        """Sides of a kind (f: none, r: two) around the row's value at the point."""
        here = sum(a * self.point[j] for j, a in row[2].items())
        row[1] = here if kind == "=" else here - self.rng.randrange(3) if kind in ">r" else -INF
        row[3] = here if kind == "=" else here + 1 + self.rng.randrange(3) if kind in "<r" else INF

    @staticmethod
    def kind(row):
        if row[1] == row[3]:
            return "="
        return {(True, True): "r", (True, False): ">", (False, True): "<", (False, False): "f"}[row[1] > -INF,
                                                                                               row[3] < INF]

    def make(self):
        return make(self.sense, [tuple(c) for c in self.columns], [tuple(r) for r in copy.deepcopy(self.rows)],
                    self.costs, self.constant)

    def change(self, model, what):
        """Changes one thing in the numbers and in the model; tells whether the solver's model can be kept."""
        rng = self.rng
        i, j = rng.randrange(len(self.rows)), rng.randrange(len(self.columns))
        row, column = self.rows[i], self.columns[j]
        kind = self.kind(row)
        if what == "coefficient":
            row[2][j] = rng.choice([-2, 0, 1, 3])
            model.call("kavo_change_coefficients", 1, ints([i]), ints([j]), example.doubles(row[2][j]))
        if what in ("coefficient", "sides", "kind"):
            self.set_sides(row, rng.choice("<>=rf") if what == "kind" else kind)
            model.change_sides(i, row[1], row[3])
        elif what == "bounds":
            column[1], column[2] = self.point[j] - rng.randrange(2), self.point[j] + rng.randrange(4)
            model.call("kavo_change_bounds", 1, ints([j]), example.doubles(column[1]), example.doubles(column[2]))
        elif what == "objective":
            self.costs[j] = rng.randrange(-5, 6)
            self.constant = rng.choice([0.0, 7.0, self.constant])
            model.call("kavo_change_objective", 0, byref(c_double(self.constant)), 1, ints([j]),
                       example.doubles(self.costs[j]))
        return self.kind(row) == kind


def loads_in(path):
    """The kinds of calls that each solve has made, as sets of names."""
    with open(path, encoding="utf-8") as file:
        names = re.findall(r"^\d+ (GRB\w+)\(", file.read(), re.MULTILINE)
    solves, current = [], set()
    for name in names:
        current.add(name)
        if name == "GRBoptimize":
            solves.append(current)
            current = set()
    return solves


class Changes(unittest.TestCase):
    def check_same(self, found, numbers):
        with numbers.make() as fresh:
            wanted = fresh.solve(threads=1)
        self.assertEqual(found.status, wanted.status)
        self.assertAlmostEqual(found.objective, wanted.objective, delta=1e-6 * max(1, abs(wanted.objective)))
        for i, row in enumerate(numbers.rows):
            value = sum(a * found.values[j] for j, a in row[2].items())
            self.assertAlmostEqual(value, found.activities[i], delta=1e-6)
            self.assertTrue(row[1] - 1e-5 <= value <= row[3] + 1e-5, (row, value))
        if wanted.duals is None:
            self.assertIsNone(found.duals)
        else:  # of several optimal duals any will do, as long as it proves the value
            self.assertAlmostEqual(self.dual_value(found, numbers), wanted.objective,
                                   delta=1e-5 * max(1, abs(wanted.objective)))

    @staticmethod
    def dual_value(found, numbers):
        value = numbers.constant
        sign = 1 if numbers.sense == "min" else -1
        for row, dual in zip(numbers.rows, found.duals):
            if abs(dual) > 1e-9:
                value += dual * (row[1] if sign * dual > 0 else row[3])
        for column, reduced in zip(numbers.columns, found.reduced_costs):
            if abs(reduced) > 1e-9:
                value += reduced * (column[1] if sign * reduced > 0 else column[2])
        return value

    def test_every_change_gives_what_a_fresh_model_gives(self):
        kept = anew = 0
        for seed in range(30):
            numbers = Numbers(seed)
            whats = numbers.rng.sample(["coefficient", "sides", "bounds", "objective", "kind"] * 2, 6)
            with self.subTest(seed=seed), tempfile.TemporaryDirectory() as folder:
                path = os.path.join(folder, "trace")
                keeps = [False]
                with numbers.make() as model:
                    with environment(GRBLINK_TRACE=path):
                        found = model.solve(threads=1)
                    self.check_same(found, numbers)
                    for what in whats:
                        keeps.append(numbers.change(model, what))
                        self.check_same(model.solve(), numbers)
                for keep, calls in zip(keeps, loads_in(path), strict=True):
                    self.assertEqual("GRBaddvars" in calls, not keep)
                kept, anew = kept + sum(keeps), anew + len(keeps) - sum(keeps)
        self.assertGreater(min(kept, anew), 30)

    def test_what_is_not_only_numbers_loads_the_model_anew(self):
        """Each step: options, a call beside the change, and whether the solver's model is kept."""
        start = ("kavo_set_start", example.doubles(1, 1, 1), None)
        priority = ("kavo_set_suffix", 0, b"priority", 1, ints([0]), example.doubles(3))
        with tempfile.TemporaryDirectory() as folder:
            parameters, path = os.path.join(folder, "use.prm"), os.path.join(folder, "trace")
            with open(parameters, "w", encoding="utf-8") as file:
                file.write("Presolve 0\n")
            steps = [({}, None, False), ({"method": 1}, None, True), ({}, None, True), ({}, start, False),
                     ({}, None, True), ({}, priority, False), ({"varhint": 1}, None, False),
                     ({"varhint": 1}, None, True), ({"feasopt": 1, "feasoptmode": 1}, None, False), ({}, None, False),
                     ({"readparams": parameters}, None, True), ({}, None, False), ({"names": 0}, None, False),
                     ({"timelimit": 50}, ("kavo_set_name", b"other"), False), ({"timelimit": 50}, None, True),
                     ({}, ("kavo_add_columns", 1, None, None, None, None), False), ({}, None, True)]

            def model_of(side):
                rows = [("a", -INF, {0: 1, 1: 2, 2: 3}, side), ("b", 1, {0: 1, 1: 1}, 6)]
                return make("max", [(f"x{j}", 0, 5, CONTINUOUS) for j in range(3)], rows, [1, 2, 4])

            method = []
            with model_of(9) as model:
                for number, (options, call, _) in enumerate(steps):
                    side = 9 + number
                    model.change_sides(0, None, side)
                    if call:
                        model.call(*call)
                    model.call("kavo_clear_options")
                    with environment(GRBLINK_TRACE=None if model.is_open else path):
                        found = model.solve(**({"method": "?"} | options))
                    method += [note for note in found.notes if note.startswith("Method")]
                    with model_of(side) as fresh:
                        self.assertAlmostEqual(found.objective, fresh.solve().objective, delta=1e-6)
            self.assertEqual(method, ["Method=-1 (default -1)"] * (len(steps) - 1))
            solves = loads_in(path)
        self.assertEqual(["GRBaddvars" not in calls for calls in solves], [keeps for _, _, keeps in steps])

    def test_a_ray_that_a_kept_model_finds_is_not_the_last_word(self):
        for options, status in (({"dualreductions": 0}, "infeasible"), ({}, "unbounded")):
            with self.subTest(options), make("max", [("x", 0, 4), ("y", 1, 2)], [("r", -6, {1: -2}, INF)], [-4]) as model:
                self.assertEqual(model.solve(iis=1, **options).status, "optimal")
                model.call("kavo_change_bounds", 1, ints([0]), example.doubles(-INF), example.doubles(4))
                model.change_sides(0, 6, INF)
                found = model.solve()
                self.assertEqual((found.status, model.json()["iis"] is not None), (status, status == "infeasible"))
                self.assertEqual([note.split(":")[0] for note in found.notes], ["unbounded"] * (status == "unbounded"))

    def test_no_search_is_taken_up_where_it_was(self):
        """Solves with a change between them that changes nothing: options of each, and whether the model is kept. The
        answer is always that of a fresh model under the same settings."""

        def unbounded():
            model = make("max", [("a", -INF, INF), ("b", -INF, INF), ("c", 0, 3), ("d", 0, 8), ("e", -2, 3)],
                         [("free", -INF, {1: 4, 4: 2, 3: -3}, INF), ("r", -8, {3: 2, 4: 1, 0: -3}, INF)],
                         [1, -4, 3, -5, -5])
            model.add_set(1, [0, 1, 2])
            return model

        def pair(kind, side):
            return lambda: make("max", [("x", 0, 3, kind), ("y", 0, 9, kind)],
                                [("r", -INF, {0: 2, 1: 3}, side), ("s", 0.5, {0: 1, 1: 1}, INF)], [2, 3])

        some, half = {"nodelimit": 200, "threads": 1, "seed": 1}, {"mipgap": 0.5}
        none = {"iterationlimit": 0, "presolve": 0}
        cases = ((unbounded, None, [{}, {"dualreductions": 0}, {}], [False] * 3),
                 (market_split, None, [some, some], [False] * 2),
                 (pair(INTEGER, 8), 8, [{}, {}, half, half, {}], [False, True, False, True, False]),
                 (pair(CONTINUOUS, 8), 8, [{}, {"method": 1}, {}], [False, True, True]),
                 (pair(CONTINUOUS, 0.5), 0.5, [none, {}, {}], [False, False, True]),
                 (pair(CONTINUOUS, -1), -1, [{}, {"dualreductions": 0}], [False, True]),
                 (pair(INTEGER, -1), -1, [{}, {}], [False] * 2))
        for build, side, steps, keeps in cases:
            with self.subTest(steps=steps, side=side), tempfile.TemporaryDirectory() as folder, build() as model:
                path = os.path.join(folder, "trace")
                for number, options in enumerate(steps):
                    if build is market_split and number:
                        model.call("kavo_change_bounds", 1, ints([0]), None, example.doubles(1))
                    elif number:
                        model.change_sides(0, None, INF if side is None else side)
                    model.call("kavo_clear_options")
                    with environment(GRBLINK_TRACE=None if model.is_open else path):
                        found = model.solve(**options)
                    with build() as fresh:
                        wanted = fresh.solve(**options)
                    self.assertEqual((found.status, found.termination, found.objective),
                                     (wanted.status, wanted.termination, wanted.objective), number)
                self.assertEqual(["GRBaddvars" not in calls for calls in loads_in(path)], keeps)
