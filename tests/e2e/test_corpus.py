"""The model corpus: every model has the answer of its manifest or is refused with a clean error where the manifest says
so, and on plain linear models all results are gurobipy's own. Prints how many columns each model has and how many the
solver gets, so that growth by rewriting is seen.

The corpus is a folder of its own (GRBLINK_MODELS, otherwise ../shared/models beside the project). Without it this says
so and checks the models of the examples only; where CI is true its absence is a failure.
"""

import csv
import pathlib
import re
import tempfile
import unittest

import gurobipy

from harness import CORPUS, ROOT, KavoError, Model, has_corpus

FOLDERS = ("lp", "mip", "nl")
# Where the manifest is mistaken: constraint c_acosh says acosh((ONE + e^2) / (2 e)) = 0 and c_log that ONE is 1, which
# makes the left side 1; there is no point.
WITHOUT_A_POINT = ("py_small14_ampl.nl", "py_small14_pyomo.nl")
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


def is_unproven(row):
    """Whether Gurobi itself ends without a proof."""
    return row["gurobipy_check"].split(" ")[0] in ("suboptimal", "time")


class Own(unittest.TestCase):
    def test_the_models_of_the_examples(self):
        for path, objective in OWN.items():
            with self.subTest(path), Model(ROOT / path) as model:
                self.assertAlmostEqual(model.solve().objective, objective, delta=1e-9)


class Corpus(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.models = list(manifests()) if has_corpus() else []

    def test_models_have_the_known_answers(self):
        held, sizes = 0, []
        for folder, row in self.models:
            with self.subTest(row["file"]):
                if row["expected_status"] == "error":
                    self.assert_refused(folder / row["file"])
                else:
                    sizes.append(self.assert_answer(folder / row["file"], row))
                held += 1
        for name, columns, sent in sizes:
            if columns != sent:
                print(f"{name}: {columns} columns, {sent} sent")
        self.assertTrue(held > 180 or not self.models, held)

    def assert_refused(self, path):
        with self.assertRaises(KavoError) as raised, Model(path) as model:
            model.solve(timelimit=10)
        self.assertRegex(str(raised.exception), r"\A[^\n]{20,400}\Z")

    def assert_answer(self, path, row):
        """Name, columns of the model, columns that the solver got."""
        with Model(path) as model:
            log = []
            model.log(log.append)
            found = model.solve(timelimit=10, threads=2)
            self.assert_outcome(model, row, found)
            sent = re.search(rb"(\d+) columns", b"".join(log))
            return row["file"], model.counts()[0], int(sent[1]) if sent else 0

    def assert_outcome(self, model, row, found):
        expected = "infeasible" if row["file"] in WITHOUT_A_POINT else row["expected_status"]
        if expected != "optimal":
            self.assertIn(found.status, (expected, "locally_" + expected, "infeasible_or_unbounded"))
            return
        if not is_unproven(row):
            self.assertIn(found.status, ("optimal", "locally_optimal"))
        if row["expected_objective"]:
            wanted, tolerance = float(row["expected_objective"]), float(row["tolerance"] or 1e-6)
            self.assertAlmostEqual(found.objective, wanted, delta=tolerance * max(1, abs(wanted)) + 1e-9)
        self.assertLess(model.violation(), 1e-4)
        self.assertEqual((len(found.values), len(found.activities)), model.counts())
        if row["class"] == "mip":
            self.assertIsNone(found.duals)

    def test_what_is_written_has_the_same_optimum(self):
        """Each model as Gurobi writes it, in .lp and from that in .mps, read back."""
        with tempfile.TemporaryDirectory() as folder:
            lp, mps = str(pathlib.Path(folder, "model.lp")), str(pathlib.Path(folder, "model.mps"))
            for path, row in self.models:
                if row["expected_status"] != "optimal" or is_unproven(row) or row["file"] in WITHOUT_A_POINT:
                    continue
                with self.subTest(row["file"]):
                    found = [self.objective(path / row["file"], lp), self.objective(lp, mps), self.objective(mps, "")]
                    tolerance = 1e-4 * max(1, abs(found[0]))
                    self.assertLess(max(found) - min(found), tolerance, found)

    def objective(self, path, written):
        with Model(path) as model:
            return model.solve(timelimit=10, writeprob=written).objective if written else model.solve(timelimit=10).objective

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
