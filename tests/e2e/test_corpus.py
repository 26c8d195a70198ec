"""The model corpus: every model has the answer of its manifest or is refused with a clean error where the manifest says
so. Prints how many columns each model has and how many the solver gets, so that growth by rewriting is seen.

The corpus is a folder of its own (GRBLINK_MODELS, otherwise ../shared/models beside the project). Without it this says
so; where CI is true its absence is a failure.
"""

import csv
import re
import unittest

from harness import CORPUS, KavoError, Model, has_corpus

FOLDERS = ("lp", "mip", "nl")
# Where the manifest is mistaken: constraint c_acosh says acosh((ONE + e^2) / (2 e)) = 0 and c_log that ONE is 1, which
# makes the left side 1; there is no point.
WITHOUT_A_POINT = ("py_small14_ampl.nl", "py_small14_pyomo.nl")


def manifests():
    """(folder, row) of every model."""
    for name in FOLDERS:
        with open(CORPUS / name / "manifest.csv", encoding="utf-8", newline="") as file:
            for row in csv.DictReader(file):
                yield CORPUS / name, row


def is_unproven(row):
    """Whether Gurobi itself ends without a proof."""
    return row["gurobipy_check"].split(" ")[0] in ("suboptimal", "time")


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
