"""What the cheapest repair of an infeasible model costs, compared with gurobipy's on the same file, for models of the corpus
that were made infeasible by a limit on their objective that is 5 % better than the optimum. Without the corpus the small
model remains.
"""

import pathlib
import tempfile
import unittest

import gurobipy
from gurobipy import GRB

from harness import BINARY, CORPUS, INF, Model, has_corpus, make

MODELS = CORPUS / "lp"
NAMES = ("adlittle.mps", "share2b.mps", "stocfor1.mps")  # without ranged rows
OBJECTIVES = (0, 2, 1)  # of gurobipy's feasRelax, by half the mode


def silent(**parameters):
    return gurobipy.Env(params={"OutputFlag": 0} | parameters)


class Repairs(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.small = cls.folder / "small.lp"
        firm = "".join(f" firm{v}: {v} >= -100\n" for v in "xyz")
        cls.small.write_text("Minimize obj: x + 2 y + 3 z\nSubject To\n c1: x + y >= 7\n c2: x - z <= 1\n"
                             f" c3: y + z <= 3\n c4: x + 2 y + z = 9\n{firm}Bounds\n x <= 2\n y <= 4\nEnd\n",
                             encoding="utf-8")
        cls.tightened = {}
        for name in NAMES if has_corpus() else ():
            model = gurobipy.read(str(MODELS / name), silent())
            model.optimize()
            limit = model.ObjVal - model.ModelSense * (0.05 * abs(model.ObjVal) + 1)
            model.addLConstr(model.getObjective(), "<" if model.ModelSense > 0 else ">", limit, "limit")
            cls.tightened[name] = cls.folder / name
            model.write(str(cls.tightened[name]))

    def relaxed_by_gurobipy(self, path, mode):
        model = gurobipy.read(str(path), silent(IntFeasTol=1e-9))  # counts by binaries with a large coefficient
        columns = model.getVars()
        rows = [row for row in model.getConstrs() if not row.ConstrName.startswith("firm")]
        ones = [1.0] * len(columns)
        value = model.feasRelax(OBJECTIVES[mode // 2], mode % 2 == 1, columns, ones, ones, rows, [1.0] * len(rows))
        model.optimize()
        self.assertEqual(model.Status, GRB.OPTIMAL)
        return model, model.ObjVal if mode % 2 == 0 else value

    def check_relaxation(self, path, mode):
        theirs, cost = self.relaxed_by_gurobipy(path, mode)
        with Model(path) as model:
            model.suffix(1, "feaspref", [float(not name.startswith("firm")) for name in model.names(1)])
            found = model.solve(feasopt=1, feasoptmode=mode, intfeastol=1e-9)
            self.assertEqual((found.status, found.sol_code), ("unknown", 100))
            self.assertIn("feasible relaxation", found.message.decode())
            self.assertAlmostEqual(found.relaxation, cost, delta=1e-6 * (1 + abs(cost)))
            self.assertGreater(model.violation(), 1e-6)
            if mode % 2 == 1:  # the user's objective is the second one then, so it is the same at every best point
                self.assertAlmostEqual(found.objective, theirs.ObjVal, delta=1e-6 * (1 + abs(theirs.ObjVal)))

    def test_relaxations_cost_what_gurobipy_says(self):
        for mode in range(6):
            with self.subTest(mode):
                self.check_relaxation(self.small, mode)
        for name in self.tightened:
            for mode in (0, 1, 2):  # quadratic ones exceed the evaluation licence
                with self.subTest(name, mode=mode):
                    self.check_relaxation(self.tightened[name], mode)

    # Where bounds give way expressions mean what they say, and binary variables stay 0 or 1. Columns and their
    # preferences, rows, costs; how expressions are given; values, price, objective.
    MEANT = {
        "an absolute value": (
            [("x", 0, 1), ("y", 0, 1)], (1, 0.1), [("a", -INF, {1: 1}, -3), ("b", -INF, {0: 1}, -2)], (1, 1),
            lambda m: m.give_expressions(1, {0: ("abs", "x0")}), ([-2, -5], 52, -7)),
        "an absolute value in the objective": (
            [("x", 0, 1)], (1,), [("b", -INF, {0: 1}, -2)], (0,), lambda m: m.give_expressions(2, {0: ("abs", "x0")}),
            ([-2], 2, 2)),
        "a condition": (
            [("x", 0, 1), ("y", 0, 9)], (1, 1), [("a", 5, {0: 1}, INF)], (1, 1),
            lambda m: m.add_logical([("==>", (">=", "x0", 2), (">=", "x1", 4), 1)]), ([5, 4], 4, 9)),
        "a binary variable": (
            [("b", 0, 1, BINARY), ("y", 0, 0, 0)], (1, 0), [("a", 2, {0: 1}, INF), ("c", 2, {0: 1, 1: 1}, INF)], (0, 0),
            lambda m: m.suffix(1, "feaspref", [1, 1]), ([1, 0], 2, 0)),
    }

    def test_expressions_and_types_hold_where_bounds_give_way(self):
        for name, (columns, preferences, rows, costs, give, expected) in self.MEANT.items():
            with self.subTest(name), make("min", columns, rows, costs) as model:
                model.suffix(0, "feaspref", preferences)
                model.suffix(1, "feaspref", [0] * len(rows))
                give(model)
                found = model.solve(feasopt=1, feasoptmode=1)
                for one, other in zip((*found.values, found.relaxation, found.objective), (*expected[0], *expected[1:])):
                    self.assertAlmostEqual(one, other, delta=1e-5)
                told = "the bounds of binary variables do not give way in a relaxation (variables: 1)" in found.notes
                self.assertEqual(told, name == "a binary variable", found.notes)
                checks = model.json()["violations"]
                self.assertLess(max(checks[what]["value"] for what in ("rows", "logical")), 1 + 1e-5 if told else 1e-5)

    def test_where_nothing_may_give_way_there_is_no_relaxation(self):
        with make("min", [("x", 0, 1), ("y", 0, 1)], [("c", 3, {0: 1, 1: 1}, INF)], [1, 1]) as model:
            model.suffix(0, "feaspref", [0, 0])
            model.suffix(1, "feaspref", [0])
            for mode in range(6):
                with self.subTest(mode):
                    found = model.solve(feasopt=1, feasoptmode=mode)
                    self.assertEqual(found.status, "infeasible")
                    self.assertIsNone(found.values)
                    self.assertIsNone(found.relaxation)
                    self.assertIn("there is no feasible relaxation", " ".join(found.notes))
