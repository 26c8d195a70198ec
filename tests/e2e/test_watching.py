"""Following a solve: progress, traces, dumped incumbents, stop expressions, and interrupts at odd moments."""

import csv
import ctypes
import math
import pathlib
import random
import shutil
import tempfile
import threading
import time
import unittest
from ctypes import CFUNCTYPE, POINTER, c_double, c_int, c_void_p

from harness import BINARY, INF, OBJECTIVE, KavoError, environment, make, market_split

TICK, NODE, INCUMBENT, END = range(4)


class Progress(ctypes.Structure):
    _fields_ = [("event", c_int)] + [(name, c_double) for name in
                                     ("seconds", "nodes", "incumbent", "bound", "gap", "solutions")]


LISTENER = CFUNCTYPE(c_int, POINTER(Progress), c_void_p)


def watch(model, stop=lambda now: False):
    """The list to which a model's next solves add what they tell of their progress."""
    told = []

    def hear(now, _):
        told.append({name: getattr(now.contents, name) for name, _ in Progress._fields_})
        return int(stop(told[-1]))

    model.listener = LISTENER(hear)
    model.call("kavo_set_progress", model.listener, None)
    return told


def dense_lp(size=1500):
    """Takes the simplex method some seconds."""
    rng = random.Random(5)
    rows = [(None, -INF, {j: rng.random() for j in range(size)}, 1 + rng.random()) for _ in range(size)]
    return make("max", [(None, 0, INF)] * size, rows, [1 + rng.random() * 0.01 for _ in range(size)])


def quadratic_knapsack():
    """Items that are worth less beside each other; and the value of a choice of items."""
    rng = random.Random(3)
    worth, weight = ([rng.randrange(10, 30) for _ in range(30)] for _ in range(2))
    model = make("max", [(None, 0, 1, BINARY)] * 30, [("c", -INF, dict(enumerate(weight)), 250)], worth, 100)
    model.give_quadratic_terms(OBJECTIVE, 0, {(j, j + 1): -j for j in range(1, 29)})

    def value(x):
        return 100 + sum(w * v for w, v in zip(worth, x)) - sum(j * x[j] * x[j + 1] for j in range(29))
    return model, value


class Watching(unittest.TestCase):
    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def trace(self):
        with open(self.folder / "trace.csv", encoding="ascii", newline="") as file:
            return list(csv.DictReader(file))

    def dumped(self):
        """Objective and values of each file, in order."""
        points = []
        while (file := self.folder / f"point{len(points) + 1}.sol").exists():
            head, *lines = file.read_text().splitlines()
            self.assertTrue(head.startswith("# Objective value = "))
            points.append((float(head.split()[-1]), [float(line.split()[1]) for line in lines]))
        return points

    def test_progress_trace_and_dump_tell_the_same_story(self):
        with market_split() as model:
            told = watch(model)
            found = model.solve(threads=1, timelimit=1, miptrace=self.folder / "trace.csv", miptracenode=500,
                                miptracetime=0.2, dumpbcsol=self.folder / "point")
        self.assertEqual([told[-1][name] for name in ("event", "incumbent", "nodes")],
                         [END, found.objective, found.nodes])
        self.assertNotIn(END, [now["event"] for now in told[:-1]])
        better = [now for now in told if now["event"] == INCUMBENT]
        values = [now["incumbent"] for now in better]
        self.assertGreater(len(values), 3)
        self.assertEqual(values, sorted(set(values), reverse=True))
        self.assertEqual([now["solutions"] for now in better], list(range(1, len(better) + 1)))
        for name in ("seconds", "nodes"):
            numbers = [now[name] for now in told if not math.isnan(now[name])]
            self.assertEqual(numbers, sorted(numbers))
        self.assertLessEqual(sum(now["event"] in (TICK, NODE) for now in told), told[-1]["seconds"] * 10 + 1)

        trace = self.trace()
        self.assertEqual([float(row["incumbent"]) for row in trace if row["reason"] == "incumbent"], values)
        self.assertEqual(({row["reason"] for row in trace}, trace[-1]["reason"]),
                         ({"incumbent", "node", "time", "end"}, "end"))
        self.assertEqual(trace[0]["bound"], "", "unknown at the first point")
        dumped = self.dumped()
        self.assertEqual([objective for objective, _ in dumped], values)
        for objective, point in dumped:
            self.assertAlmostEqual(sum(point[50:]), objective, 9)
        self.assertAlmostEqual(max(abs(a - b) for a, b in zip(dumped[-1][1], found.values)), 0, 6)

    def test_incumbents_are_the_users_own_and_better_ones(self):
        model, value = quadratic_knapsack()
        with model:
            told = watch(model)
            found = model.solve(poolsearchmode=2, poolsolutions=30, heuristics=0, dumpbcsol=self.folder / "point")
        dumped = self.dumped()
        for objective, point in dumped:
            self.assertAlmostEqual(value([round(v) for v in point]), objective, 4)
        objectives = [objective for objective, _ in dumped]
        self.assertEqual(objectives, sorted(objectives))
        self.assertAlmostEqual(objectives[-1], found.objective, 6)
        self.assertEqual(sum(now["event"] == INCUMBENT for now in told), len(dumped))
        self.assertAlmostEqual(told[-1]["bound"], found.bound, 9)
        self.assertFalse([now for now in told if now["bound"] < now["incumbent"]], "bounds of further points are no bounds")

    def test_the_end_of_a_trace_is_the_answer_of_several_objectives(self):
        with make("max", [(name, 0, 1, BINARY) for name in "xyz"], [("c", -INF, {0: 1, 1: 1, 2: 1}, 2)], [3, 2, 1]) as model:
            model.add_objective("max", [0.0, 0.0, 1.0])
            model.suffix(OBJECTIVE, "objpriority", [1, 2])
            found = model.solve(multobj=1, miptrace=self.folder / "trace.csv")
        self.assertEqual((found.objective, float(self.trace()[-1]["incumbent"])), (4, 4))

    def test_stop_expressions(self):
        for expression, more, told in [
            ("gap < 1 || time > 0.4 && nodes > 10", {"mipstopexprtimestep": 0.1}, "time 0."),
            ("incumbent < 100", {"mipstopexprtimestep": 0, "mipstopexprnodestep": 0}, "nodes 0"),
            ("!(nodes < 2000)", {"mipstopexprnodestep": 1, "mipstopexprtimestep": 0}, "nodes 20"),
        ]:
            with self.subTest(expression), market_split() as model:
                log = []
                model.log(log.append)
                found = model.solve(threads=1, timelimit=20, mipstopexpr=expression, mipstopexprverbosity=2, **more)
                self.assertEqual((found.status, found.termination), ("unknown", "stop_expression"))
                self.assertIsNotNone(found.objective)
                self.assertIn(f"stopped by the expression {expression} (", found.notes[-1])
                self.assertIn(told, found.notes[-1])
                text = b"".join(log).decode()
                self.assertIn(found.notes[-1] + "\n", text)
                self.assertIn("stop expression: false (", text)
        with dense_lp() as model:  # no search: only time is known
            found = model.solve(threads=1, method=0, mipstopexpr="nodes < 5 || incumbent != 0 || time > 0.3",
                                mipstopexprtimestep=0.1)
            self.assertEqual(found.termination, "stop_expression")

    def test_wrong_expressions_and_files_are_refused_before_the_solve(self):
        for options, message in [
            ({"mipstopexpr": "gap <"}, "test: mipstopexpr: the expression \"gap <\" cannot be used: at character 7: something is missing at the end; it may use time, nodes"),
            ({"mipstopexpr": "time>1 && gapp < 1"}, "at character 11: gapp is not known"),
            ({"mipstopexpr": "time = 5"}, "at character 6: = is not known"),
            ({"mipstopexpr": "(time > 1"}, "a parenthesis is not closed"),
            ({"mipstopexpr": "min() < gap"}, "min is out of place"),
            ({"mipstopexpr": "gap < 1 ? 1 : 0"}, "at character 9: ? is not known"),
            ({"mipstopexpr": '"abc"'}, "a text is no truth value"),
            ({"mipstopexpr": "time > 1,5"}, "it is a list"),
            ({"mipstopexprtimestep": -1}, "mipstopexprtimestep"),
            ({"miptrace": self.folder / "no" / "trace.csv"}, "test: miptrace: cannot write"),
            ({"dumpbcsol": self.folder / "no" / "point"}, "test: dumpbcsol: cannot write"),
        ]:
            with self.subTest(**options), market_split() as model:
                with environment(GRBLINK_TRACE=str(self.folder / "calls")):
                    with self.assertRaises(KavoError) as caught:
                        model.solve(**options)
                self.assertIn(message, str(caught.exception))
                self.assertNotIn("GRBstartenv", (self.folder / "calls").read_text())

    def test_a_disk_that_fails_does_not_end_the_solve(self):
        gone = self.folder / "gone"
        gone.mkdir()

        def remove(now):
            if now["solutions"] == 1:
                shutil.rmtree(gone, ignore_errors=True)
            return False

        with market_split() as model:
            watch(model, remove)
            with self.assertRaisesRegex(KavoError, r"the trace ends early: .*\n.* incumbents could not be dumped|dumped: .*\nthe trace"):
                model.solve(threads=1, timelimit=0.5, miptrace="/dev/full", dumpbcsol=gone / "point")
            found = model.results()
        self.assertEqual(found.termination, "time_limit")
        self.assertIn("the trace ends early: cannot write /dev/full", "\n".join(found.notes))
        self.assertRegex("\n".join(found.notes), r"\d incumbents could not be dumped: cannot write .*point\d+.sol")

    def test_a_model_without_search_has_a_trace_of_times(self):
        with make("max", [("x", 0, 3)], [], [2]) as model:
            found = model.solve(miptrace=self.folder / "trace.csv", dumpbcsol=self.folder / "point")
        self.assertEqual([(row["incumbent"], row["reason"]) for row in self.trace()], [("6", "end")])
        self.assertEqual([note for note in found.notes if "tells of no search" in note], found.notes)
        self.assertEqual(self.dumped(), [])

    def test_stops_are_heeded_at_any_moment(self):
        def host(model):
            return lambda: model.call("kavo_interrupt", 0)

        def onFirstLine(model, stop):
            model.log(lambda text: stop() if b"Gurobi" in text else None)

        def early(model):
            onFirstLine(model, host(model))

        def later(model):
            threading.Timer(0.5, host(model)).start()

        def byProgress(model):
            watch(model, lambda now: now["seconds"] > 0.5)

        for make_model in (market_split, dense_lp):
            for arrange in (early, later, byProgress):
                with self.subTest(f"{make_model.__name__}, {arrange.__name__}"), make_model() as model:
                    arrange(model)
                    begin = time.monotonic()
                    found = model.solve(threads=1, method=0, timelimit=60)
                    self.assertLess(time.monotonic() - begin, 3)
                    self.assertEqual((found.status, found.termination), ("unknown", "interrupted_by_host"))
                    if make_model is market_split and arrange is not early:
                        self.assertLess(model.violation(), 1e-6)

    def test_a_relaxation_has_no_incumbents(self):
        rows = [("a", 6, {0: 1, 1: 1, 2: 1}, INF), ("b", -INF, {j: 1 for j in range(10)}, 2)]
        with make("min", [(None, 0, 1, BINARY)] * 10, rows, [1] * 10) as model:
            told = watch(model)
            found = model.solve(feasopt=1, dumpbcsol=self.folder / "point")
        self.assertIsNotNone(found.values)
        self.assertTrue(math.isnan(told[-1]["incumbent"]) and math.isnan(told[-1]["bound"]))
        self.assertEqual(self.dumped(), [])

    def test_an_infeasible_search_ends_with_its_trace(self):
        columns = [(None, 0, 1, BINARY)] * 30
        rows = [("odd", 31, {j: 2 for j in range(30)}, 31)]
        with make("min", columns, rows, [1] * 30) as model:
            told = watch(model)
            found = model.solve(presolve=0, cuts=0, nodelimit=50, miptrace=self.folder / "trace.csv")
        self.assertIn(found.status, ("infeasible", "unknown"))
        self.assertTrue(math.isnan(told[-1]["incumbent"]))
        self.assertEqual((self.trace()[-1]["reason"], self.trace()[-1]["incumbent"]), ("end", ""))
