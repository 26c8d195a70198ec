"""What is asked for beside a plain solve: a fixed model, several objectives, a conflict that is none, tuning."""

import contextlib
import os
import pathlib
import random
import re
import tempfile
import unittest

import gurobipy

from harness import (BINARY, CONTINUOUS, INF, INTEGER, OBJECTIVE, SEMICONTINUOUS, KavoError, Model, environment, make,
                     market_split)


def knapsacks(rows=8, size=30):
    """Several knapsacks over the same binaries: (weights, profits)."""
    rng = random.Random(3)
    weights = [[rng.randrange(5, 60) for _ in range(size)] for _ in range(rows)]
    return weights, [rng.randrange(10, 90) for _ in range(size)]


def mixed():
    """A MIP whose fixed model has a price for the second row: two integers, two continuous variables."""
    columns = [("a", 0, 9, INTEGER), ("b", 0, 9, INTEGER), ("x", 0, INF, 0), ("y", 0, 7.5, 0)]
    rows = [("r1", -INF, {0: 3, 1: 2, 2: 1}, 17.5), ("r2", -INF, {2: 1, 3: 2}, 12), ("r3", 1, {0: 1, 3: -1}, INF)]
    return make("max", columns, rows, [5, 4, 3, 2])


def semicontinuous_in_a_set():
    """Gurobi forgets to fix the semicontinuous member that is 0."""
    model = make("max", [("x", 0, 2, SEMICONTINUOUS), ("y", 0, 1, 0)], [("c", -INF, {0: 1, 1: 1}, 9)], [1, 3])
    model.add_set(1, [0, 1])
    return model


class FixedModel(unittest.TestCase):
    def assert_all_close(self, found, expected):
        self.assertEqual(len(found), len(expected))
        for one, other in zip(found, expected):
            self.assertAlmostEqual(one, other, delta=1e-6)

    def test_it_gives_the_duals_of_gurobipy(self):
        with tempfile.TemporaryDirectory() as folder, mixed() as model:
            problem, kept = os.path.join(folder, "mixed.lp"), os.path.join(folder, "kept.lp")
            searched = model.solve(solvefixed=1, writeprob=problem, resultfile=kept)
            found = model.json()
            self.assertIn("Generals", pathlib.Path(kept).read_text(encoding="ascii"), "is the search's own")
            parameters = os.path.join(folder, "result.prm")
            pathlib.Path(parameters).write_text(f"ResultFile {kept}\n", encoding="utf-8")
            model.call("kavo_clear_options")
            os.remove(kept)
            model.solve(solvefixed=1, readparams=parameters)
            self.assertIn("Generals", pathlib.Path(kept).read_text(encoding="ascii"), "also by a file of parameters")
            direct = gurobipy.read(problem, gurobipy.Env(params={"OutputFlag": 0}))
        direct.optimize()
        direct = direct.fixed()
        direct.optimize()
        self.assertIsNone(searched.duals)
        self.assertIsNone(searched.column_basis)
        fixed = found["fixed"]
        self.assertEqual((fixed["status"], fixed["termination"]), ("optimal", "finished"))
        self.assertAlmostEqual(fixed["objective"], searched.objective, delta=1e-6)
        self.assert_all_close(searched.values, [v.X for v in direct.getVars()])
        self.assert_all_close(fixed["variables"]["value"], searched.values)
        self.assert_all_close(fixed["rows"]["dual"], [c.Pi for c in direct.getConstrs()])
        self.assert_all_close(fixed["variables"]["reduced_cost"], [v.RC for v in direct.getVars()])
        basics = sum(status == "basic" for part in ("variables", "rows") for status in fixed[part]["basis"])
        self.assertEqual(basics, 3)

    def test_it_has_options_of_its_own_and_gives_the_users_back(self):
        with tempfile.TemporaryDirectory() as folder, mixed() as model:
            options, problem = os.path.join(folder, "fixed.opt"), os.path.join(folder, "problem.lp")
            pathlib.Path(options).write_text("* of the second solve\nmethod 2\niterationlimit 77\n", encoding="utf-8")
            trace = os.path.join(folder, "trace")
            with environment(GRBLINK_TRACE=trace):
                model.solve(solvefixed=1, fixoptfile=options, writeprob=problem, method=1)
            calls = re.findall(r"GRB(\w+)\(\w+(?:\.env)?(?:, ([^)]*))?\)", pathlib.Path(trace).read_text(encoding="utf-8"))
            solves = [i for i, (name, _) in enumerate(calls) if name == "optimize"]
            self.assertEqual([name for name, _ in calls].count("write"), 1)  # the problem, not the fixed one
            self.assertEqual([name for name, _ in calls].count("converttofixed"), 1)
            settings = [(i, text) for i, (name, text) in enumerate(calls) if name in ("setintparam", "setdblparam")]
            between = [text for i, text in settings if solves[0] < i < solves[1]]
            after = [text for i, text in settings if i > solves[1]]
            self.assertIn('"Method", 2', between)
            self.assertIn('"IterationLimit", 77', between)
            self.assertIn('"Method", 1', after)
            self.assertTrue(any(text.startswith('"IterationLimit", ') and "77" not in text for text in after))

    def test_what_is_wrong_with_its_options_is_told_with_its_place(self):
        for text, message in [("method 9", "line 1: Method=9: the value must be"), ("nosuch 1", "unknown option"),
                              ("\nwriteprob x.lp", "line 2: writeprob cannot be set"), ("solvefixed 1", "cannot be set"),
                              ("method", "line 1: method has no value"), (None, "cannot read")]:
            with self.subTest(text), tempfile.TemporaryDirectory() as folder, mixed() as model:
                path = pathlib.Path(folder) / "fixed.opt"
                if text is not None:
                    path.write_text(text + "\n", encoding="utf-8")
                with self.assertRaises(KavoError) as caught:
                    model.solve(solvefixed=1, fixoptfile=path)
                self.assertIn(message, str(caught.exception))
                self.assertIn("fixed.opt", str(caught.exception))

    def test_where_there_is_none_a_note_says_why(self):
        never = [("x", 0, 9, INTEGER)], [("r", 1, {0: 2}, 1)]
        for why, model, options in [
            ("no integer variables", make("min", [("x", 0, 1)], [("r", 1, {0: 2}, INF)], [1]), {}),
            ("there is no point", make("min", *never, [1]), {}),
            ("the model was relaxed", make("min", *never, [1]), {"feasopt": 1}),
            ("its objective is 5, and that of the search 3", semicontinuous_in_a_set(), {}),
            ("nothing was solved", make("min", *never, [1]), {"iis": 2}),
        ]:
            with self.subTest(why), model:
                found = model.solve(solvefixed=1, **options)
                self.assertIn(why, " ".join(found.notes))
                self.assertIsNone(model.json()["fixed"])

    def test_an_interrupted_search_keeps_its_point(self):
        with market_split() as model:
            found = model.solve_interrupted(0, solvefixed=1)
            self.assertEqual(found.termination, "interrupted_by_host")
            self.assertIsNotNone(found.values)
            self.assertIn("the search was interrupted", " ".join(found.notes))


class SeveralObjectives(unittest.TestCase):
    def two(self):
        model = make("max", [("x", 0, 10), ("y", 0, 10)], [("c", -INF, {0: 1, 1: 1}, 12)], [1, 0])
        model.add_objective("min", [0, -1], 3)
        return model

    def test_priorities_weights_and_tolerances(self):
        with self.two() as model:
            alone = model.solve()
            self.assertEqual(alone.values[0], 10)
            self.assertIn("2 objectives, of which number 1 is solved", " ".join(alone.notes))
            for suffixes, options, values in [
                ({"objpriority": [1, 5]}, {}, [2, 10]),
                ({"objpriority": [5, 1]}, {}, [10, 2]),
                ({"objpriority": [0, 0], "objweight": [1, 3]}, {}, [2, 10]),
                # A tolerance bounds the reduced costs of what may still move in an LP.
                ({"objpriority": [1, 5]}, {"objnabstol": "0 4", "objnreltol": "0,0"}, [10, 2]),
            ]:
                with self.subTest(suffixes, **options):
                    for name, entries in suffixes.items():
                        model.suffix(2, name, entries)
                    found = model.solve(multobj=1, **options)
                    self.assertEqual(found.values, values)
                    self.assertEqual((found.objective, found.bound, found.duals), (values[0], None, None))
                    told = [one["value"] for one in model.json()["objectives"]]
                    self.assertEqual(told, [values[0], 3 - values[1]])

    def test_what_does_not_go_with_several_objectives_is_refused_before_a_licence_is_taken(self):
        for options, message in [({"objnabstol": "1"}, "1 number is given for 2 objectives"),
                                 ({"objnabstol": "1,2,3"}, "3 numbers are given"),
                                 ({"objnreltol": "1,x"}, "'x' is no tolerance"), ({"objnreltol": "1,-2"}, "0 or more"),
                                 ({"objnabstol": "1,nan"}, "'nan' is no tolerance"),
                                 ({"feasopt": 1, "feasoptmode": 3}, "take the mode 2, or leave multobj out"),
                                 ({"rngrestart": "x"}, "rngrestart is for one objective"),
                                 ({"rngread": "x"}, "rngread is for one objective")]:
            with self.subTest(**options), self.two() as model:
                with self.assertRaises(KavoError) as caught:
                    model.solve(multobj=1, **options)
                self.assertIn(message, str(caught.exception))
        with self.two() as model:
            model.give_quadratic_terms(OBJECTIVE, 1, {(0, 0): 1})
            with self.assertRaisesRegex(KavoError, "objective 2 is quadratic; several objectives"):
                model.solve(multobj=1)


class NoConflict(unittest.TestCase):
    def test_the_answer_of_the_solve_stands_and_a_note_says_why(self):
        many = [(None, 0, INF)] * 301  # so many that no second solve tells unbounded from infeasible
        unbounded = make("max", many, [(None, -INF, {0: 1, 1: -1}, 1)], [1, 1] + [0] * 299)
        feasible = make("max", [("x", 0, INF)], [("c", -INF, {0: 1}, 4)], [1])
        for name, model, options, status, termination in [
            ("unbounded", unbounded, {"iis": 1}, "infeasible_or_unbounded", "finished"),
            ("feasible", feasible, {"iis": 2}, "unknown", "not_run"),
        ]:
            with self.subTest(name), model:
                found = model.solve(**options)
                self.assertEqual((found.status, found.termination), (status, termination))
                self.assertEqual((found.solutions, found.values, found.column_basis), (0, None, None))
                self.assertIn("there is no conflict (IIS): the model is not infeasible", " ".join(found.notes))
                self.assertIsNone(model.json()["iis"])


class Infinity(unittest.TestCase):
    def test_no_point_at_infinity_is_given(self):
        # Gurobi calls this one optimal, with an infinite objective.
        drifting = [(None, 0, INF, INTEGER), (None, -INF, 3, INTEGER), (None, -INF, 8, INTEGER), (None, 0, 8, 4),
                    (None, 0, 9, SEMICONTINUOUS), (None, 0, 9, 4)]
        row = (None, -INF, {5: -2, 0: -1, 2: -3}, 2)
        cases = [("optimal at infinity", make("max", drifting, [row], [3, -4, -2, -1, 1, 0], 3.5),
                  dict(threads=1, seed=1, mipgap=0, mipgapabs=0, method=1, dualreductions=0), None)]
        for kind in (CONTINUOUS, INTEGER):
            for mode, cost in ((1, 4), (3, 1), (5, 8)):
                free = make("max", [("x", 0, INF, kind), ("y", 0, 1, 0)],
                            [("c", 5, {1: 1}, INF), ("d", -INF, {1: 1, 0: -1}, 7)], [1, 1])
                cases.append((f"relaxed, {kind}", free, dict(feasopt=1, feasoptmode=mode), cost))
        for name, model, options, cost in cases:
            with self.subTest(name, **options), model:
                found = model.solve(**options)
                self.assertEqual((found.status, found.sol_code, found.solutions), ("unbounded", 350, 0))
                self.assertEqual((found.objective, found.bound, found.values, found.duals), (None,) * 4)
                self.assertIn("infinite values" if cost is None else "is unbounded", " ".join(found.notes))
                if cost is not None:
                    self.assertAlmostEqual(found.relaxation, cost, delta=1e-6)


class OddRelaxations(unittest.TestCase):
    def test_what_gives_way_and_what_it_costs(self):
        crossed = [("x", 0, 9)], [("c", 5, {0: 1}, 3)]
        firm = [("x", 1, 3, SEMICONTINUOUS), ("y", 0, 1, 0)], [("c", 5, {0: 1, 1: 1}, INF)]
        for name, model, preference, mode, cost, objective, note in [
            ("crossed sides", make("min", *crossed, [1]), None, 1, 2, 3, "whose cost is 2"),
            ("crossed sides, counted", make("min", *crossed, [1]), None, 2, 1, None, "whose cost is 1"),
            ("crossed sides, of half the price", make("min", *crossed, [1]), [2], 1, 1, 3, "whose cost is 1"),
            ("crossed sides that are firm", make("min", *crossed, [1]), [0], 1, None, None, "no feasible relaxation"),
            ("semicontinuous", make("min", *firm, [1, 3]), None, 1, 1, 6, "semi-integer variables do not give way"),
            ("no objective", make(None, [("x", 0, 3)], [("c", 5, {0: 1}, INF)], None), None, 0, 2, 0, "cost is 2"),
        ]:
            with self.subTest(name), model:
                if preference:
                    model.suffix(1, "feaspref", preference)
                found = model.solve(feasopt=1, feasoptmode=mode)
                self.assertEqual(found.relaxation is None, cost is None)
                if cost is not None:
                    self.assertAlmostEqual(found.relaxation, cost, delta=1e-6)
                if objective is not None:
                    self.assertAlmostEqual(found.objective, objective, delta=1e-6)
                self.assertIn(note, " ".join(found.notes))


class Interrupts(unittest.TestCase):
    @staticmethod
    def contradiction():
        """Equations over binaries, of which nobody knows soon whether they contradict each other."""
        return market_split(can_pay=False)

    def interrupted(self, model, **options):
        found = model.solve_interrupted(1, **options)
        self.assertEqual(found.termination, "interrupted_by_signal")
        return found

    def test_a_conflict_that_was_not_found_in_time(self):
        with self.contradiction() as model:
            found = self.interrupted(model, iis=2)
            self.assertEqual((found.status, found.values, model.json()["iis"]), ("unknown", None, None))
            self.assertIn("there is no conflict (IIS): the search for it was stopped", " ".join(found.notes))

    def test_a_relaxation_keeps_its_best_point(self):
        for mode in (0, 1):
            with self.subTest(mode), self.contradiction() as model:
                found = self.interrupted(model, feasopt=1, feasoptmode=mode)
                self.assertEqual(found.status, "unknown")
                self.assertIn("feasible relaxation", found.message.decode())
                self.assertAlmostEqual(found.objective, sum(found.values), delta=1e-4)
                self.assertGreaterEqual(found.relaxation, model.violation() - 1e-4)
                self.assertEqual("was cut short" in " ".join(found.notes), mode == 1)


class Tuning(unittest.TestCase):
    def setUp(self):
        self.enterContext(contextlib.chdir(self.enterContext(tempfile.TemporaryDirectory())))

    def test_results_are_option_files_that_set_what_they_say(self):
        weights, profits = knapsacks()
        with make("max", [(f"x{j}", 0, 1, BINARY) for j in range(len(profits))],
                  [(None, -INF, dict(enumerate(row)), sum(row) // 3) for row in weights], profits) as model:
            model.solve(writeprob="knapsacks.mps", solutionlimit=1)
        with make("min", [("x", 0, 1)], [], [1]) as model:
            found = model.solve(tuning="knapsacks.mps", tunetimelimit=5, tunetrials=1, threads=1, seed=7)
            self.assertEqual(found.termination, "not_run")
        files = sorted(pathlib.Path().glob("gurobi.o*"))
        self.assertEqual(files[-1].name, "gurobi.o99")
        for file in files[-2:]:
            lines = [line.split() for line in file.read_text(encoding="utf-8").splitlines()]
            self.assertFalse({"LogToConsole", "TuneTimeLimit", "Threads", "TimeLimit"} & {name for name, _ in lines})
            trace = pathlib.Path(f"trace.{file.name}")
            with self.subTest(file.name), environment(GRBLINK_TRACE=str(trace)), Model("knapsacks.mps") as model:
                model.call("kavo_read_options", str(file).encode())
                model.solve(solutionlimit=1)
            calls = re.findall(r'GRBset(?:int|dbl|str)param\(\S+, "(\w+)", ([^)]*)\)', trace.read_text(encoding="utf-8"))
            expected = [("LogToConsole", "0"), *map(tuple, lines), ("SolutionLimit", "1")]
            self.assertEqual([(name, float(value)) for name, value in calls],
                             [(name, float(value)) for name, value in expected])

    def test_a_model_file_that_is_not_there_is_an_error(self):
        with make("min", [("x", 0, 1)], [], [1]) as model:
            with self.assertRaisesRegex(KavoError, "nosuch.mps"):
                model.solve(tuning="nosuch.mps")
        self.assertEqual(list(pathlib.Path().glob("gurobi.o*")), [])
