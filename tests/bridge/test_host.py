"""The bridge inside Python programs: both ctypes loaders, threads, and the program's own use of gurobipy and logging."""

import ctypes
import os
import random
import subprocess
import sys
import threading
import time
import unittest

import capi
from twin import ENV

FRESH = """
import ctypes, logging, sys
loader, preimport = sys.argv[1:]
if preimport == "yes":
    import gurobipy
    logging.getLogger("gurobipy").setLevel(logging.DEBUG)
import capi
capi.LIB = capi.load(getattr(ctypes, loader))
model = capi.Model(capi.Env())
model.addvars(2, obj=[-1.0, -1.0], ub=[1.0, 2.0])
model.optimize()
logger = logging.getLogger("gurobipy")
print(model.dbl("ObjVal"), logger.level, logger.propagate, "gurobipy" in sys.modules)
"""


def hard(model):
    """Far longer than any test waits."""
    rnd = random.Random(7)
    model.addvars(40, vtype="B" * 40)
    for _ in range(5):
        weights = [float(rnd.randint(1, 99)) for _ in range(40)]
        model.addconstr(list(range(40)), weights, "=", float(sum(weights) // 2))


class Host(unittest.TestCase):
    def test_only_the_listed_functions_are_exported(self):
        """Any other name could capture calls inside gurobipy."""
        shown = subprocess.run(["nm", "-D", "--defined-only", os.environ["GRBLINK_BRIDGE"]], capture_output=True, text=True,
                               check=True).stdout
        listed = capi.listed(os.environ["GRBLINK_FUNCTIONS"])
        self.assertGreater(len(listed), 80)
        self.assertEqual(sorted(line.split()[2] for line in shown.splitlines()), sorted(name for _, name, _ in listed))

    def test_fresh_programs(self):
        for loader in ("PyDLL", "CDLL"):
            for preimport, logging in (("yes", "10 True"), ("no", "20 False")):
                with self.subTest(loader=loader, preimport=preimport):
                    run = subprocess.run([sys.executable, "-B", "-c", FRESH, loader, preimport], capture_output=True,
                                         text=True, cwd=os.path.dirname(__file__), timeout=60, check=False)
                    self.assertEqual((run.stdout, run.returncode), (f"-3.0 {logging} True\n", 0), run.stderr)

    def test_threads_solve_side_by_side_and_are_stopped(self):
        self.addCleanup(setattr, capi, "LIB", capi.LIB)
        for loader in (ctypes.PyDLL, ctypes.CDLL):
            with self.subTest(loader.__name__):
                capi.LIB = capi.load(loader)
                long = capi.Model(ENV)
                hard(long)
                solver = threading.Thread(target=long.optimize)
                solver.start()
                time.sleep(0.2)
                short = capi.Model(ENV)
                short.addvars(2, obj=[-1.0, -1.0], vtype="II", ub=[3.0, 4.0])
                short.optimize()
                self.assertEqual(short.dbl("ObjVal"), -7.0)
                self.assertTrue(solver.is_alive(), "the long model is too easy for this test")
                capi.LIB.GRBterminate(long.handle)
                solver.join(10)
                self.assertFalse(solver.is_alive())
                self.assertEqual(long.ints("Status"), 11)
                short.free()
                long.free()
