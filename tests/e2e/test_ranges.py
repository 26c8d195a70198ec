"""Duals, bases and sensitivity ranges of the linear models of the corpus: they are right by the model's own numbers, and
those that gurobipy has for the same file at the same basis; so are those of the same models turned into maximisation.
What rows with two sides have is checked by solving again with the side moved.

The corpus is that of test_corpus; without it the small models remain.
"""

import math
import pathlib
import tempfile
import unittest

import gurobipy
from gurobipy import GRB

from harness import CORPUS, INF, Model, example, has_corpus, make

MODELS = CORPUS / "lp"
NAMES = ("25fv47.mps.gz", "adlittle.mps", "bandm.mps", "brandy.mps", "capri.mps", "e226.mps", "recipe.mps", "scfxm1.mps",
         "scrs8.mps", "share2b.mps", "shell.mps", "standgub.mps", "stocfor1.mps", "tuff.mps", "vtpbase.mps")
COST, LOWER, UPPER, SIDE = (5, 6), (7, 8), (9, 10), (11, 12)  # kavo_quantity
STATUSES = {"basic": 0, "lower": -1, "upper": -2, "superbasic": -3}  # Gurobi's
SIMPLEX = {"threads": 1, "method": 1}  # one thread of the dual simplex: the same basis each time


def solved(path, env, found=None):
    """The file as gurobipy solves it, from the basis of our results if there are any: often several are optimal."""
    model = gurobipy.read(str(path), env)
    if found:
        model.setAttr("VBasis", model.getVars(), [STATUSES[status] for status in found.column_basis])
        model.setAttr("CBasis", model.getConstrs(), [0 if status == "basic" else -1 for status in found.row_basis])
    model.optimize()
    return model


def theirs(attribute, elements):
    return [getattr(e, attribute) for e in elements]


class Ranges(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(cls.enterClassContext(tempfile.TemporaryDirectory()))
        cls.env = gurobipy.Env(params={"OutputFlag": 0, "Threads": 1, "Method": 1})
        cls.addClassCleanup(cls.env.close)
        cls.names = NAMES if has_corpus() else ()

    def models(self):
        """(name, path) of each linear model and of its twin that maximises the negated objective."""
        for name in self.names:
            yield name, MODELS / name
            model = gurobipy.read(str(MODELS / name), self.env)
            model.setObjective(-1 * model.getObjective(), GRB.MAXIMIZE)
            twin = self.folder / (name.split(".")[0] + ".mps")
            model.write(str(twin))
            yield f"{name}, maximised", twin

    def assert_near(self, found, expected, what):
        for i, (one, other) in enumerate(zip(found, expected, strict=True)):
            if not (one == other or abs(one - other) <= 1e-7 * max(1, abs(other))):
                self.fail(f"{what} {i}: {one}, expected {other}")

    def test_they_are_gurobipys_own_and_right_by_the_model(self):
        for name, path in self.models():
            with self.subTest(name), Model(path) as model:
                found = model.solve(ranges=1, **SIMPLEX)
                direct = solved(path, self.env, found)
                self.assertEqual(direct.IterCount, 0)
                self.assertEqual(found.notes, [])
                self.assertLess(model.violation(), 1e-6)
                self.assert_same(model, found, direct)
                self.assert_dual_feasible(found, direct)

    def assert_same(self, model, found, direct):
        columns, rows = direct.getVars(), direct.getConstrs()
        self.assertEqual(model.names(0) + model.names(1), theirs("VarName", columns) + theirs("ConstrName", rows))
        self.assertEqual([STATUSES[status] for status in found.column_basis], theirs("VBasis", columns))
        self.assertEqual([status == "basic" for status in found.row_basis], [c.CBasis == 0 for c in rows])
        self.assert_near(found.values, theirs("X", columns), "value")
        self.assert_near(found.duals, theirs("Pi", rows), "dual")
        for (low, high), attribute, elements in ((COST, "SAObj", columns), (LOWER, "SALB", columns),
                                                 (UPPER, "SAUB", columns), (SIDE, "SARHS", rows)):
            self.assert_near(model.values(low), theirs(attribute + "Low", elements), attribute + "Low")
            self.assert_near(model.values(high), theirs(attribute + "Up", elements), attribute + "Up")

    def assert_dual_feasible(self, found, direct):
        """c - A'y are the reduced costs, and the duals alone tell the objective by the sides and bounds that they ask."""
        columns, rows = direct.getVars(), direct.getConstrs()
        for column, reduced in zip(columns, found.reduced_costs, strict=True):
            entries = direct.getCol(column)
            terms = [entries.getCoeff(k) * found.duals[entries.getConstr(k).index] for k in range(entries.size())]
            size = 1 + abs(column.Obj) + sum(map(abs, terms))
            self.assertAlmostEqual(column.Obj - sum(terms), reduced, delta=1e-8 * size)
        value = direct.ObjCon + sum(y * c.RHS for y, c in zip(found.duals, rows))
        for cost, column in zip(found.reduced_costs, columns):
            if abs(cost) > 1e-8:
                value += cost * (column.LB if (cost > 0) == (direct.ModelSense > 0) else column.UB)
        for dual, row in zip(found.duals, rows):
            if row.Sense != "=" and abs(dual) > 1e-8:
                self.assertEqual(dual > 0, (row.Sense == ">") == (direct.ModelSense > 0))
        self.assertAlmostEqual(value, found.objective, delta=1e-6 * max(1, abs(found.objective)))

    # x and y have costs, a row keeps x + y between its sides. Sense, costs, bounds of x and y, sides, the side at which
    # the row is (0 lower, 1 upper) and its range.
    SMALL = {
        "at its lower side": ("min", (1, 3), ((0, 1), (0, 10)), (2, 6), 0, (1, 6)),
        "at its upper side": ("max", (3, 1), ((0, 1), (0, 10)), (2, 6), 1, (2, 11)),
        "inside, nearer to the lower side": ("min", (1, -1), ((2, 9), (0, 1)), (2, 6), 0, (-math.inf, 3)),
        "inside, nearer to the upper side": ("min", (1, -1), ((4, 9), (0, 1)), (2, 6), 1, (5, math.inf)),
        "maximised losses": ("max", (-1, -3), ((0, 1), (0, 10)), (2, 6), 0, (1, 6)),
    }

    def test_a_side_may_move_within_its_range_and_no_farther(self):
        for name, (sense, costs, bounds, sides, which, expected) in self.SMALL.items():
            with self.subTest(name):
                _, dual, low, high = self.small(sense, costs, bounds, sides)
                self.assert_near((low, high), expected, "range")
                for end, inward in ((low, 1e-3), (high, -1e-3)):
                    if math.isinf(end) or end == sides[1 - which]:
                        continue  # no farther, since the sides would cross
                    for step, isWithin in ((inward, True), (-inward, False)):
                        moved = list(sides)
                        moved[which] = end + step
                        found = self.small(sense, costs, bounds, moved)[1]
                        self.assertEqual(found is not None and abs(found - dual) < 1e-9, isWithin, (end, step))

    def small(self, sense, costs, bounds, sides):
        """Objective, dual and range of the side; Nones when it is infeasible."""
        columns = [(n, *b) for n, b in zip("xy", bounds)]
        with make(sense, columns, [("row", sides[0], {0: 1.0, 1: 1.0}, sides[1])], costs) as model:
            found = model.solve(ranges=1, **SIMPLEX)
            if found.status != "optimal":
                return None, None, None, None
            return found.objective, found.duals[0], model.values(SIDE[0])[0], model.values(SIDE[1])[0]

    def test_free_and_constant_rows_and_what_has_none(self):
        # the row without sides may have any; the others are told by the user's own sides, constants or not
        rows = [("free", -INF, {0: 1.0}, INF), ("low", 2, {0: 1.0, 1: 1.0}, INF), ("high", -INF, {0: 1.0}, 9)]
        with make("min", [("x", 0, 5), ("y", 0, 10)], rows, [1, 2], 7.0) as model:
            model.solve(ranges=1, **SIMPLEX)
            self.assert_near(model.values(SIDE[0]), (-math.inf, 0, 2), "side from")
            self.assert_near(model.values(SIDE[1]), (math.inf, 5, math.inf), "side to")
            self.assert_near(model.values(COST[0]), (0, 1), "cost from")
            self.assert_near(model.values(COST[1]), (2, math.inf), "cost to")
        for tree, why in ((("abs", "x0"), "the model is not linear"), (("times", "x0", 1), None)):
            with self.subTest(why), make("min", [("x", 0.5, 1), ("y", -5, 9)], [("c", -INF, {1: -1}, 0)], [0, 1]) as model:
                model.give_expressions(1, {0: tree})  # y >= |x|: x may move to 0, and no farther; y >= x
                found = model.solve(ranges=1, **SIMPLEX)
                self.assertEqual((found.values, found.notes), ([0.5, 0.5], ["no ranges: " + why] if why else []))
                self.assertEqual(model.values(LOWER[0]) is None if why else model.values(LOWER[0])[0], why is not None or -5)
        for columns, options, why in ((("x", 0, 5, 2), {}, "integer variables"),
                                      (("x", 0, 5, 0), {"method": 2, "crossover": 0}, "without a basis"),
                                      (("x", 0, 1, 0), {}, "did not end optimal"),
                                      (("x", 0, 1, 0), {"feasopt": 1}, "a feasible relaxation was solved")):
            with self.subTest(why), make("min", [columns], [("c", 2, {0: 1.0}, INF)], [1]) as model:
                found = model.solve(ranges=1, presolve=0, **options)
                told = [note for note in found.notes if note.startswith("no ranges: ")]
                self.assertEqual([why in note for note in told], [True], found.notes)
                self.assertIsNone(model.values(example.PRIMAL + COST[0]))
