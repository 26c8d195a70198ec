"""The model corpus: every linear model has the answer of its manifest, every other one is refused with a clean error,
and on plain linear models all results are gurobipy's own.

The corpus is a folder of its own (GRBLINK_MODELS, otherwise ../shared/models beside the project). Without it this says
so and checks the models of the examples only; where CI is true its absence is a failure.
"""

import csv
import os
import pathlib
import unittest

import gurobipy

from harness import ROOT, KavoError, Model

CORPUS = pathlib.Path(os.environ.get("GRBLINK_MODELS") or ROOT.parent / "shared" / "models")
FOLDERS = ("lp", "mip", "nl")
LINEAR = ("lp", "mip")
TAKEN = (".mps", ".mps.gz", ".nl")
# Worked out beside the examples.
OWN = {"examples/diet.mps": 2.12, "examples/diet.nl": 2.12, "examples/knapsack.mps": 15}

# Rows, columns and right-hand sides reach Gurobi as they stand in the file, and the optimum is one vertex.
PLAIN = ("adlittle.mps", "bandm.mps", "brandy.mps", "share2b.mps", "stocfor1.mps", "scrs8.mps")


def manifests():
    """(folder, row) of every model."""
    for name in FOLDERS:
        with open(CORPUS / name / "manifest.csv", encoding="utf-8", newline="") as file:
            for row in csv.DictReader(file):
                yield CORPUS / name, row


class Own(unittest.TestCase):
    def test_the_models_of_the_examples(self):
        for path, objective in OWN.items():
            with self.subTest(path), Model(ROOT / path) as model:
                self.assertAlmostEqual(model.solve().objective, objective, delta=1e-9)


class Corpus(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.models = []
        if CORPUS.is_dir():
            cls.models = list(manifests())
        elif os.environ.get("CI") == "true":
            raise AssertionError(f"there is no model corpus in {CORPUS} (set GRBLINK_MODELS)")
        else:
            print(f"The model corpus was not run: there is no folder {CORPUS} (set GRBLINK_MODELS).")

    def test_linear_models_have_the_known_answers(self):
        solved = 0
        for folder, row in self.models:
            if row["class"] in LINEAR and row["file"].endswith(TAKEN):
                with self.subTest(row["file"]), Model(folder / row["file"]) as model:
                    self.assert_answer(model, row, model.solve(timelimit=30, threads=2))
                    solved += 1
        self.assertTrue(solved > 40 or not self.models, solved)

    def assert_answer(self, model, row, found):
        expected = row["expected_status"]
        if expected != "optimal":
            self.assertIn(found.status, (expected, "infeasible_or_unbounded"))
            return
        self.assertEqual((found.status, found.termination), ("optimal", "finished"))
        if row["expected_objective"]:
            wanted, tolerance = float(row["expected_objective"]), float(row["tolerance"])
            self.assertAlmostEqual(found.objective, wanted, delta=tolerance * max(1, abs(wanted)))
        self.assertLess(model.violation(), 1e-4)
        self.assertEqual((len(found.values), len(found.activities)), model.counts())
        if row["class"] == "mip":
            self.assertIsNone(found.duals)

    def test_other_models_are_refused_in_one_line(self):
        refused = 0
        for folder, row in self.models:
            if row["class"] not in LINEAR or not row["file"].endswith(TAKEN):
                with self.subTest(row["file"]):
                    try:
                        with Model(folder / row["file"]) as model:
                            self.assert_answer(model, row, model.solve(timelimit=30))  # linear after all
                    except KavoError as error:
                        self.assertRegex(str(error), r"\A[^\n]{20,400}\Z")
                        refused += 1
        self.assertTrue(refused > 100 or not self.models, refused)

    def test_results_are_those_of_gurobipy(self):
        by_name = {row["file"]: folder for folder, row in self.models}
        for name in PLAIN if by_name else ():
            with self.subTest(name), Model(by_name[name] / name) as model:
                found = model.solve(threads=1)
                with gurobipy.Env(params={"OutputFlag": 0, "Threads": 1}) as env:
                    with gurobipy.read(str(by_name[name] / name), env) as direct:
                        direct.optimize()
                        self.assert_same(model, found, direct)

    def assert_same(self, model, found, direct):
        columns, rows = direct.getVars(), direct.getConstrs()
        self.assertEqual(model.names(0), [v.VarName for v in columns])
        self.assertEqual(model.names(1), [c.ConstrName for c in rows])
        words = {0: "basic", -1: "lower", -2: "upper", -3: "superbasic"}
        self.assertEqual(found.column_basis, [words[v.VBasis] for v in columns])
        self.assertEqual([status == "basic" for status in found.row_basis], [c.CBasis == 0 for c in rows])
        for mine, theirs in ((found.values, [v.X for v in columns]), (found.reduced_costs, [v.RC for v in columns]),
                             (found.duals, [c.Pi for c in rows]), ([found.objective], [direct.ObjVal])):
            for one, other in zip(mine, theirs, strict=True):
                self.assertAlmostEqual(one, other, delta=1e-8 * max(1, abs(other)))


if __name__ == "__main__":
    unittest.main()
