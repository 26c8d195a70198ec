"""Kinds of hosts: the lock of this process's interpreter held or not, other threads, several models at once, a locale that
writes 1,5 for one and a half; and hosts that have no Gurobi, no licence or too small a one."""

import ctypes
import locale
import os
import pathlib
import subprocess
import sys
import tempfile
import threading
import unittest
from unittest import mock

import gurobipy

from harness import INF, ROOT, KavoError, Model, environment, make

COLUMNS, ROWS, COSTS = [("x", 0, 3), ("y", 0, INF)], [("limit", -INF, {0: 1, 1: 1}, 4)], [3, 2]


def objective():
    with make("max", COLUMNS, ROWS, COSTS) as model:
        found = model.solve(threads=1)
        assert found.status == "optimal" and "through gurobipy" in model.text("kavo_solver_text")
        return found.objective


class Hosts(unittest.TestCase):
    def test_the_lock_of_the_interpreter_may_be_held_or_not(self):
        self.assertEqual(objective(), 11)
        with mock.patch("ctypes.CDLL", ctypes.PyDLL):
            self.assertEqual(objective(), 11)

    def test_several_threads_solve_at_once(self):
        found = []
        threads = [threading.Thread(target=lambda: found.append(objective())) for _ in range(4)]
        for thread in threads:
            thread.start()
        for thread in threads:
            thread.join(60)
        self.assertEqual(found, [11] * 4)

    def test_two_models_live_beside_each_other(self):
        floor = [("floor", 2, {0: 1}, INF)]
        with make("max", COLUMNS, ROWS, COSTS) as first, make("min", COLUMNS, floor, COSTS) as second:
            self.assertEqual([model.solve().objective for model in (first, second, first)], [11, 6, 11])

    def test_gurobipy_goes_on_beside_the_link(self):
        with gurobipy.Env(params={"OutputFlag": 0}) as env, gurobipy.Model(env=env) as model:
            x = model.addVar(ub=7, obj=-1)
            self.assertEqual(objective(), 11)
            model.optimize()
            self.assertEqual(x.X, 7)

    def test_a_process_that_imports_nothing_and_frees_nothing_ends_well(self):
        code = "import harness; print(harness.make('max', [('x', 0, 3)], [], [2]).solve().objective)"
        run = subprocess.run([sys.executable, "-B", "-c", code], capture_output=True, text=True, timeout=60,
                             check=False)
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "6.0\n", ""))


class German(unittest.TestCase):
    """Writes 1,5 for one and a half; reads, solves and writes the same numbers as any other host."""

    def written(self, path):
        """What comes out of a model file: the objective, and all files but for the run time."""
        with tempfile.TemporaryDirectory() as folder, Model(path) as model:
            found = model.solve(timelimit="60.5", mipgap="1e-3")
            texts = []
            for writer, words in (("sol", (b"a message", -1)), ("point", ()), ("json", ())):
                target = pathlib.Path(folder, writer)
                model.call(f"kavo_write_{writer}", str(target).encode(), *words)
                texts.append([line for line in target.read_text().splitlines() if '"seconds"' not in line])
            return found.objective, texts

    def test_all_numbers_are_those_of_the_plain_locale(self):
        for name in ("diet.mps", "diet.nl"):
            with self.subTest(name):
                plain = self.written(ROOT / "examples" / name)
                self.addCleanup(locale.setlocale, locale.LC_ALL, "C")
                locale.setlocale(locale.LC_ALL, "de_DE.UTF-8")
                self.assertEqual(locale.localeconv()["decimal_point"], ",")
                german = self.written(ROOT / "examples" / name)
                locale.setlocale(locale.LC_ALL, "C")
                self.assertEqual(german, plain)
                self.assertAlmostEqual(plain[0], 2.12, delta=1e-9)
                self.assertIn("-0.07", "".join(plain[1][0] + plain[1][2]))

    def test_settings_are_read_with_a_point(self):
        self.addCleanup(locale.setlocale, locale.LC_ALL, "C")
        locale.setlocale(locale.LC_ALL, "de_DE.UTF-8")
        with Model() as model, self.assertRaisesRegex(Exception, "(?i)timelimit=0,5: the value must be a number from 0 to"):
            model.solve(timelimit="0,5")


class Failures(unittest.TestCase):
    """One error that says what to do, no results, and a way to go on."""

    def assert_fails(self, work, *parts):
        with self.assertRaises(KavoError) as raised:
            work()
        for part in parts:
            self.assertIn(part.lower(), str(raised.exception).lower())
        return str(raised.exception)

    def test_a_model_beyond_the_size_limit(self):
        with make("min", [(None, 1, INF)] * 2001, [], [1] * 2001) as model:
            text = self.assert_fails(model.solve, "size-limited license; visit https://", "[GRBoptimize, code 10010]")
            self.assertEqual(len(text.splitlines()), 1)
            self.assert_fails(model.results, "has not been solved")
        with make("min", [(None, 1, INF)] * 2000, [], [1] * 2000) as model:
            self.assertEqual(model.solve().objective, 2000)

    def test_without_gurobi(self):
        for choice, part in [
            ("/nonexistent/libgurobi130.so", "cannot open shared object file"),
            (os.environ["KAVO"], "not a Gurobi library"),
            (__file__, "invalid ELF header"),
        ]:
            with self.subTest(choice), environment(GRBLINK_GUROBI=choice), make("min", [("x", 1, 2)], [], [1]) as model:
                self.assert_fails(model.solve, choice, part, "pip install gurobipy", "GUROBI_HOME")
                os.environ.pop("GRBLINK_GUROBI")
                self.assertEqual(model.solve().objective, 1)  # the same model, once Gurobi can be found

    def test_without_a_licence(self):
        with make("min", [("x", 1, 2)], [], [1]) as model:
            with environment(GRB_LICENSE_FILE="/nonexistent/gurobi.lic"):
                self.assert_fails(model.solve, "/nonexistent/gurobi.lic", "[GRBstartenv, code 10009]")
            self.assertEqual(model.solve().objective, 1)  # a start that failed may be tried again
