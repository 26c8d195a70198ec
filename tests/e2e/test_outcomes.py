"""What is known and why the solve stopped, for models that end in every way, and for odd models that are no error."""

import time
import unittest

from harness import BINARY, INF, INTEGER, make, market_split


def chain(size=40):
    """An LP whose simplex takes a step per variable: x0 <= 1, x[j] <= 2 x[j-1] + 1, all to be large."""
    columns = [(None, 0, INF)] * size
    rows = [(None, -INF, {0: 1}, 1)] + [(None, -INF, {j: 1, j - 1: -2}, 1) for j in range(1, size)]
    return make("max", columns, rows, [1.0] * size)


# No tree is needed when presolve or heuristics close the gap, so both are off.
TREE = {"presolve": 0, "heuristics": 0, "cuts": 0, "threads": 1}


class Outcomes(unittest.TestCase):
    def assert_outcome(self, found, status, termination, has_point):
        self.assertEqual((found.status, found.termination), (status, termination))
        self.assertEqual(found.solutions > 0, has_point)
        self.assertEqual(found.values is not None, has_point)
        self.assertEqual(found.objective is not None, has_point)

    def test_without_a_solution_there_are_no_values(self):
        two = [("x", 0, INF), ("y", 0, INF)]
        for name, model, status in [
            ("infeasible", make("min", two, [(None, 3, {0: 1, 1: 1}, INF), (None, -INF, {0: 2, 1: 2}, 5)], [1, 1]),
             "infeasible"),
            ("infeasible for integers", make("min", [("x", 0, 9, INTEGER)], [(None, 1, {0: 2}, 1)], [1]), "infeasible"),
            ("unbounded", make("max", two, [(None, -INF, {0: 1, 1: -1}, 1)], [1, 1]), "unbounded"),
            ("bounds that cross", make("min", [("x", 2, 1)], [], [1]), "infeasible"),
            ("sides that cross", make("min", [("x", 0, 9)], [("r", 2, {0: 1}, 1)], [1]), "infeasible"),
            ("a binary that cannot be", make("min", [("b", 2, 9, BINARY)], [], [1]), "infeasible"),
        ]:
            with self.subTest(name), model:
                found = model.solve(dualreductions=0)
                self.assert_outcome(found, status, "finished", False)
                self.assertIsNone(found.duals)
                self.assertIsNone(found.slacks)

    def test_unbounded_or_infeasible_is_not_decided_unless_asked_for(self):
        with make("max", [("x", 0, INF), ("y", 0, INF)], [(None, -INF, {0: 1, 1: -1}, 1)], [1, 1]) as model:
            self.assertIn(model.solve().status, ("infeasible_or_unbounded", "unbounded"))
        whole = [("x", 0, INF, INTEGER), ("y", 0, INF, INTEGER)]
        apart = [(None, 2, {0: 1, 1: -1}, INF), (None, 2, {0: -1, 1: 1}, INF)]
        with make("min", whole, apart, [-1, -1]) as model:
            found = model.solve()
            self.assertEqual(found.status, "infeasible_or_unbounded")
            self.assertIn("dualreductions=0", found.notes[0])
            self.assertEqual(model.solve(dualreductions=0).status, "infeasible")

    def test_a_cutoff_does_not_make_a_model_infeasible(self):
        """Solvers call a search empty that has passed over all points beyond the cutoff."""
        for iis in (0, 1):
            rows = [(None, -INF, dict(enumerate(terms)), side) for terms, side in (((5, 1, 4, 2), 9), ((1, 2, 1, 3), 5))]
            with make("max", [(None, 0, 1, BINARY)] * 4, rows, [2, 4, 5, 1]) as model:
                found = model.solve(cutoff=1e6, iis=iis)
                self.assert_outcome(found, "unknown", "cutoff", False)
                self.assertIsNone(found.bound)
                self.assertIsNone(model.json()["iis"])
                self.assertEqual(any("with the cutoff" in note for note in found.notes), bool(iis))

    def test_limits_stop_and_keep_the_best_point(self):
        with market_split() as model:
            found = model.solve(solutionlimit=1)
            self.assert_outcome(found, "unknown", "solution_limit", True)
            self.assertLessEqual(found.bound, found.objective)
            self.assertLess(model.violation(), 1e-5)
        with market_split() as model:
            found = model.solve(nodelimit=1, **TREE)
            self.assertEqual((found.status, found.termination), ("unknown", "node_limit"))
        with market_split() as model:
            begin = time.monotonic()
            found = model.solve(timelimit=0.5)
            self.assertLess(time.monotonic() - begin, 10)
            self.assert_outcome(found, "unknown", "time_limit", True)
            self.assertIsNone(found.duals)
            self.assertIsNone(found.column_basis)
            self.assertGreater(found.gap, 0)
        with chain() as model:
            found = model.solve(iterationlimit=3, presolve=0, method=0)
            self.assertEqual((found.status, found.termination), ("unknown", "iteration_limit"))
            self.assertEqual(found.iterations, 3)
            solved = model.solve(iterationlimit=1e9)
            self.assert_outcome(solved, "optimal", "finished", True)
            self.assertEqual(solved.values[-1], 2.0 ** 40 - 1)

    def test_odd_models_have_the_trivial_results(self):
        longest = "n" * 300
        for name, model, objective, values, activities in [
            ("no objective", make(None, [("x", 0, 3)], [("r", 2, {0: 1}, INF)], []), 0, None, None),
            ("no rows", make("max", [("x", 0, 3)], [], [2]), 6, [3], []),
            ("no variables", make("min", [], [("r", -1, {}, 1)], [], 5), 5, [], [0]),
            ("nothing at all", make(None, [], [], []), 0, [], []),
            ("no row that binds", make("min", [("x", 1, 3)], [("r", -INF, {0: 1}, INF)], [1]), 1, [1], [1]),
            ("an empty row that holds", make("min", [("x", 1, 3)], [("r", -1, {}, 1)], [1]), 1, [1], [0]),
            ("equal names", make("min", [("x", 1, 3), ("x", 2, 3)], [("r", 0, {0: 1}, INF), ("r", 0, {1: 1}, INF)],
                                 [1, 1]), 3, [1, 2], [1, 2]),
            ("a name of 300 bytes", make("min", [(longest, 1, 3)], [("two words", 0, {0: 1}, INF)], [1]), 1, [1], [1]),
        ]:
            with self.subTest(name), model:
                found = model.solve()
                self.assert_outcome(found, "optimal", "finished", True)
                self.assertEqual(found.objective, objective)
                if values is not None:
                    self.assertEqual((found.values, found.activities), (values, activities))
                notes = " ".join(found.notes)
                if name == "equal names":
                    self.assertIn('1 column name is given twice, the first is "x"', notes)
                elif name == "a name of 300 bytes":
                    self.assertIn("1 variable name is longer than 255 bytes", notes)
                    self.assertIn("1 row name is longer than 255 bytes or holds blanks", notes)
                    self.assertEqual((model.names(0), model.names(1)), ([longest], ["two words"]))
                else:
                    self.assertEqual(notes, "")
