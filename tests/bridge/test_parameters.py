"""Parameters through the bridge against gurobipy's own."""

import ctypes
import math
import os
import tempfile
import unittest
from ctypes import byref, c_char_p, c_double, c_int

import gurobipy

from capi import LIB, Env, Model
from twin import failure, number


class Parameters(unittest.TestCase):
    def setUp(self):
        self.env = Env()
        self.reference = gurobipy.Env(params={"LogToConsole": 0})
        self.addCleanup(self.env.free)
        self.addCleanup(self.reference.dispose)

    def info(self, name, kind):
        """(value, minimum, maximum, default), or (value, default) of a string."""
        if kind == 3:
            buffers = [ctypes.create_string_buffer(512) for _ in range(2)]
            self.env("GRBgetstrparaminfo", name, *[ctypes.cast(b, c_char_p) for b in buffers])
            return tuple(b.value.decode() for b in buffers)
        numbers = [(c_int if kind == 1 else c_double)() for _ in range(4)]
        self.env("GRBgetintparaminfo" if kind == 1 else "GRBgetdblparaminfo", name, *[byref(n) for n in numbers])
        return tuple(n.value for n in numbers)

    def test_every_parameter_is_described_as_by_gurobipy(self):
        model = gurobipy.Model("", env=self.reference)
        count = LIB.GRBgetnumparams(self.env.handle)
        self.assertEqual(count, 208)
        seen = {int: 0, float: 0, str: 0}
        for i in range(count):
            name = c_char_p()
            self.env("GRBgetparamname", i, byref(name))
            with self.subTest(name.value):
                _, kind, value, low, high, default = model.getParamInfo(name.value.decode())
                code = {int: 1, float: 2, str: 3}[kind]
                seen[kind] += 1
                self.assertEqual(LIB.GRBgetparamtype(self.env.handle, name), code)
                expected = (value, default) if kind is str else (value, low, high, default)
                self.assertEqual(self.info(name, code), tuple(number(v) for v in expected))
                self.assertEqual(self.env.get(name.value.decode()), number(value))
        self.assertEqual(list(seen.values()), [128, 52, 28])

    def test_names_have_an_order_and_an_end(self):
        name = c_char_p()
        for index, expected in ((0, b"Cutoff"), (1, b"IterationLimit"), (207, b"OutputFlag"), (-1, None)):
            self.env("GRBgetparamname", index, byref(name))
            self.assertEqual(name.value, expected)
        self.assertEqual(failure(self.env, "GRBgetparamname", 208, byref(name)),
                         (10003, "Invalid argument value for required parameter"))
        for unknown in (b"Nope", b"Th*", b"", None):
            self.assertEqual(LIB.GRBgetparamtype(self.env.handle, unknown), -1)

    def test_what_is_set_is_read_back(self):
        for name, value, read in (("Threads", 2, 2), ("timelimit", 5.5, 5.5), ("MIPGap", 0.125, 0.125),
                                  ("TimeLimit", 1e100, 1e100), ("TimeLimit", 2e100, 1e100), ("NodeLimit", math.inf, 1e100),
                                  ("LogFile", "", ""), ("ResultFile", "höhe.sol", "höhe.sol"),
                                  ("ResultFile", "x" * 600, "x" * 511)):
            with self.subTest(name=name, value=value):
                self.env.set(name, value)
                self.assertEqual(self.env.get(name), read)
        self.env.set("TimeLimit", 7.0)
        self.env.set("TimeLimit", math.nan)
        self.assertEqual(self.env.get("TimeLimit"), 7.0)
        self.env("GRBsetstrparam", b"ResultFile", None)
        self.assertEqual(self.env.get("ResultFile"), "x" * 511)

    def test_failures(self):
        value = c_int()
        for args, code, text in (
                (("GRBsetintparam", b"Nope", 1), 10007, "Unknown parameter: Nope"),
                (("GRBsetintparam", b"T*", 1), 10007, "Unknown parameter: T*"),
                (("GRBsetintparam", b"?hreads", 1), 10007, "Unknown parameter: ?hreads"),
                (("GRBsetintparam", b"TimeLimit", 1), 10007, "Wrong type for parameter: TimeLimit"),
                (("GRBsetdblparam", b"Threads", 2.5), 10007, "Wrong type for parameter: Threads"),
                (("GRBsetstrparam", b"Threads", b"default"), 10007, "Wrong type for parameter: Threads"),
                (("GRBgetintparam", b"LogFile", byref(value)), 10007, "Wrong type for parameter: LogFile"),
                (("GRBgetdblparaminfo", b"Threads", None, None, None, None), 10007, "Wrong type for parameter: Threads"),
                (("GRBsetintparam", b"Threads", 5000), 10008,
                 "Unable to set parameter Threads to value 5000 (maximum is 1024)"),
                (("GRBsetdblparam", b"TimeLimit", -1.0), 10008,
                 "Unable to set parameter TimeLimit to value -1 (minimum is 0)"),
                (("GRBreadparams", b"/nowhere/a.prm"), 10003, "Unable to read parameter file /nowhere/a.prm"),
                (("GRBwriteparams", b"/nowhere/a.prm"), 10003, "Unable to write to parameter file /nowhere/a.prm")):
            with self.subTest(args=args[:2]):
                self.assertEqual(failure(self.env, *args), (code, text))
        self.env("GRBgetintparaminfo", b"Threads", None, None, None, None)
        self.assertEqual(self.env.message(), "", "a call that succeeds empties the message")

    def test_a_model_has_its_own_copy(self):
        self.env.set("TimeLimit", 11.0)
        model = Model(self.env)
        self.env.set("TimeLimit", 12.0)
        model.env.set("MIPGap", 0.25)
        self.assertEqual((self.env.get("TimeLimit"), model.env.get("TimeLimit")), (12.0, 11.0))
        self.assertEqual((self.env.get("MIPGap"), model.env.get("MIPGap")), (1e-4, 0.25))
        heir = Model(model.env)
        model.free()
        self.assertEqual((heir.env.get("TimeLimit"), heir.env.get("MIPGap")), (11.0, 0.25))
        heir.optimize()
        heir.free()

    def test_files_of_any_name(self):
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "settings.größe")
            for name, value in (("TimeLimit", 0.123456789), ("Threads", 3), ("MIPGap", 1e100)):
                self.env.set(name, value)
                self.reference.setParam(name, value)
            self.env("GRBwriteparams", path.encode())
            self.reference.writeParams(os.path.join(folder, "expected.prm"))
            with open(path, encoding="utf-8") as ours, open(os.path.join(folder, "expected.prm"), encoding="utf-8") as theirs:
                written = ours.read()
                self.assertEqual(written, theirs.read())
            self.assertIn("TimeLimit  0.123456789", written)
            other = Env(start=False)
            other("GRBreadparams", path.encode())
            self.assertEqual((other.get("TimeLimit"), other.get("Threads")), (0.123456789, 3))
            other.free()
