"""Suffixes of a .sol file as both readers of Pyomo take them; the fake link says what the file holds."""

import ctypes
import os
import tempfile
import unittest

import pyomo.environ  # noqa: F401 - makes the reader known
from pyomo.contrib.solver.solvers.asl_sol_reader import parse_asl_sol_file
from pyomo.opt import ReaderFactory

INF = float("inf")

# 3 variables, 1 row, 1 objective.
MODEL = ("g3 1 1 0\n 3 1 1 0 0\n 0 0\n 0 0\n 0 0 0\n 0 0 0 1\n 0 0 0 0 0\n 3 3\n 0 0\n 0 0 0 0 0\n"
         "C0\nn0\nO0 0\nn0\nr\n1 4\nb\n0 0 1\n0 0 2\n2 0\nk2\n1\n2\nJ0 3\n0 1\n1 1\n2 1\nG0 3\n0 1\n1 1\n2 1\n")

GIVEN = {
    "objective": "8", "bound": "8", "condition": "1e6",
    "give": "values 0 1 2 3;values 1 1 nan -2;values 3 7;values 5 1 nan inf;values 7 7 7 -inf;values 11 -inf;"
            "values 12 5;pool 8 1 2 3;pool 7 0 0 0;marks 0 1 0 4;marks 1 2;minimal 1;basis 0 1 3 2;basis 1 3",
}
VARIABLES = {"sstatus": {0: 3, 1: 1, 2: 4}, "rc": {0: 1, 2: -2}, "sensobjlo": {0: 1, 2: INF},
             "senslblo": {0: 7, 1: 7, 2: -INF}, "iis": {0: 1, 2: 4}}
ROWS = {"sstatus": {0: 1}, "sensrhslo": {0: -INF}, "sensrhshi": {0: 5}, "iis": {0: 3}}
PROBLEM = {"bestbound": 8, "absmipgap": 0, "kappa": 1e6, "nsol": 2, "npool": 2}


class Suffixes(unittest.TestCase):
    def setUp(self):
        folder = self.enterContext(tempfile.TemporaryDirectory())
        self.path = os.path.join(folder, "m.sol")
        with open(os.path.join(folder, "m.nl"), "w", encoding="ascii") as file:
            file.write(MODEL)
        kavo = ctypes.CDLL(os.environ["KAVO"])
        kavo.kavo_last_error.restype = ctypes.c_char_p
        model = ctypes.c_void_p()

        def check(status):
            self.assertEqual(status, 0, kavo.kavo_last_error())

        check(kavo.kavo_create(ctypes.byref(model)))
        self.addCleanup(kavo.kavo_free, ctypes.byref(model))
        check(kavo.kavo_read(model, os.path.join(folder, "m.nl").encode()))
        for name, value in GIVEN.items():
            check(kavo.kavo_set_option(model, name.encode(), value.encode(), None, 0))
        check(kavo.kavo_open_link(model, os.environ["FAKE_LINK"].encode()))
        check(kavo.kavo_solve(model))
        check(kavo.kavo_write_sol(model, self.path.encode(), b"solved", -1))

    def test_newer_reader(self):
        with open(self.path, encoding="ascii") as file:
            found = parse_asl_sol_file(file)
        self.assertEqual((found.primals, found.duals), ([1, 2, 3], [7]))
        self.assertEqual(found.var_suffixes, VARIABLES)
        self.assertEqual(found.con_suffixes, ROWS)
        self.assertEqual(found.problem_suffixes, PROBLEM)
        self.assertEqual([row[:2] for row in found.suffix_table[0, "iis"]],
                         [[i, word] for i, word in enumerate("non low fix upp mem pmem plow pupp".split())])

    def test_older_reader(self):
        solution = ReaderFactory("sol")(self.path, suffixes=[".*"]).solution(0)
        for name, values in VARIABLES.items():
            self.assertEqual({int(v[1:]): entry[name] for v, entry in solution.variable.items() if name in entry},
                             values, name)
        self.assertEqual({name: solution.constraint["c0"][name.capitalize()] for name in ROWS},
                         {name: values[0] for name, values in ROWS.items()})
        self.assertEqual({name: solution.problem[name] for name in PROBLEM}, PROBLEM)
