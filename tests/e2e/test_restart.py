"""Results with their ranges that go to a file and come back without a solve."""

import math
import os
import tempfile
import unittest

from harness import BINARY, CONTINUOUS, INF, KavoError, environment, example, make

COLUMNS = [("x one", 0, 3, CONTINUOUS), (None, 0, INF, CONTINUOUS), ("z", -2, 9, CONTINUOUS)]
ROWS = [("both", 1, {0: 1, 1: 1, 2: 0.1}, 4), ("none", -INF, {0: 1}, INF), ("most", -INF, {0: 1, 1: 3}, 8.3)]
COSTS = [3, 2, 1 / 3]
QUANTITIES = range(13)


def everything(model):
    """All results, with NaN as a word so that they can be compared."""
    found = [model.array("kavo_result", quantity, example.c_double) for quantity in QUANTITIES]
    values = [values and ["nan" if math.isnan(v) else v for v in values] for values in found]
    return values, model.basis(example.COLUMN), model.basis(example.ROW)


class Restart(unittest.TestCase):
    def setUp(self):
        folder = self.enterContext(tempfile.TemporaryDirectory())
        self.file = os.path.join(folder, "day.ranges")

    def model(self, columns=COLUMNS, rows=ROWS, costs=COSTS):
        return make("max", columns, rows, costs)

    def write(self, columns=COLUMNS):
        with self.model(columns) as model:
            return model.solve(rngrestart=self.file), everything(model)

    def refusal(self, model):
        with model, self.assertRaises(KavoError) as raised:
            model.solve(rngread=self.file)
        return str(raised.exception)

    def test_what_is_read_back_is_what_was_written(self):
        for kind, name in ((CONTINUOUS, "z"), (BINARY, "z"), (CONTINUOUS, " z\\n\n\r\\\u00e9\x01\n")):
            columns = [*COLUMNS[:2], (name, -2, 9, kind)]
            solved, results = self.write(columns)
            trace = self.file + ".trace"
            with self.subTest(kind=kind, name=name), environment(GRBLINK_TRACE=trace), self.model(columns) as model:
                read = model.solve(rngread=self.file, solvefixed=1, iis=1)
                self.assertEqual(everything(model), results)
                for fact in ("status", "termination", "objective", "bound", "gap", "iterations", "nodes", "sol_code"):
                    self.assertEqual(getattr(read, fact), getattr(solved, fact), fact)
                self.assertEqual(read.notes[-2:], [f"the results were read from {self.file}; nothing was solved",
                                                   "rngread leaves these options without effect: solvefixed, iis"])
                with open(trace, encoding="utf-8") as file:
                    self.assertNotIn("GRBstartenv", file.read())
            self.assertEqual(results[0][5] is not None, kind == CONTINUOUS, "ranges are there for a continuous model")

    def test_another_model_is_refused(self):
        self.write()
        renamed = COLUMNS[:2] + [("y", *COLUMNS[2][1:])]
        for model in (self.model(costs=[3, 2, 1 / 3 + 1e-15]), self.model(columns=renamed),
                      self.model(rows=ROWS[:2], costs=COSTS)):
            message = self.refusal(model)
            self.assertIn(f"{self.file}, line 2: the file holds the results of another model", message)

    def test_a_damaged_file_is_refused_with_the_line(self):
        self.write()
        with open(self.file, encoding="utf-8") as file:
            lines = file.read().splitlines(keepends=True)
        self.assertEqual(len(lines), 12, lines)
        damaged = {1: "something else\n", 3: lines[2].replace("outcome: 0", "outcome: no"),
                   4: "variables: weight name\n", 5: "x" + lines[4], 6: lines[5].replace("_svar[2]", "_svar[3]"),
                   7: None, 10: lines[9][:-9]}
        for number, line in damaged.items():
            with self.subTest(number), open(self.file, "w", encoding="utf-8") as file:
                file.write("".join(lines[:number - 1] + ([line] + lines[number:] if line else [])))
            self.assertIn(f"{self.file}, line {number}: ", self.refusal(self.model()))
        with open(self.file, "w", encoding="utf-8") as file:  # a number that is still one
            file.write("".join(lines).replace("\n3 ", "\n4 ", 1))
        self.assertIn("the file was altered", self.refusal(self.model()))
        os.remove(self.file)
        self.assertIn(f"rngread: {self.file} cannot be read", self.refusal(self.model()))
        os.mkdir(self.file)
        self.assertIn(f"rngread: {self.file} is a folder", self.refusal(self.model()))

    def test_a_file_that_cannot_be_written_is_told_before_the_solve(self):
        with self.model() as model, self.assertRaisesRegex(KavoError, "rngrestart: .*nowhere"):
            model.solve(rngrestart=os.path.join(os.path.dirname(self.file), "nowhere", "file"))
