"""What the cheapest repair of an infeasible model costs, compared with gurobipy's on the same file, for models of the corpus
that were made infeasible by a limit on their objective that is 5 % better than the optimum. Without the corpus the small
model remains.
"""

import pathlib
import tempfile
import unittest

import gurobipy
from gurobipy import GRB

from harness import CORPUS, INF, Model, has_corpus, make

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
