"""Kinds of hosts: this process's interpreter with and without its lock held, other threads, several models at once."""

import ctypes
import subprocess
import sys
import threading
import unittest
from unittest import mock

import gurobipy

from harness import INF, make

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


if __name__ == "__main__":
    unittest.main()
