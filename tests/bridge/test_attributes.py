"""Every attribute that gurobipy knows, read through the bridge on solved and unsolved models of many kinds."""

from ctypes import byref, c_double

import gurobipy
from gurobipy import GRB

from capi import LIB, doubles, ints
from twin import TwinCase, failure, number

KINDS = {1: "int", 2: "dbl", 3: "str", 0: "char"}
NEVER_EQUAL = {"Runtime", "Work", "MemUsed", "MaxMemUsed", "ObjPassNRuntime", "ObjPassNWork"}  # differ between solves


def lp(t):
    t.vars(3, obj=[1.0, 2.0, -1.0], ub=[4.0, 5.0, 6.0], named=["a", "b", "c"])
    t.row([0, 1, 2], [1.0, 1.0, 1.0], "=", 7.0, "balance")
    t.row([0, 2], [1.0, -1.0], ">", -4.0)


def mip(t):
    t.vars(4, obj=[5.0, 4.0, 3.0, 1.0], vtype="IBNC", lb=[0.0, 0.0, 1.0, 0.0], ub=[9.0, 1.0, 4.0, 3.5])
    t.row([0, 1, 2, 3], [2.0, 3.0, 1.0, 1.0], ">", 5.5)
    t.c.addsos(2, [0, 1, 3], [1.0, 2.0, 3.0])
    t.py.addSOS(2, [t.x[i] for i in (0, 1, 3)], [1.0, 2.0, 3.0])
    t.c("GRBaddgenconstrMax", b"top", 3, 2, ints([0, 1]), 1.5)
    t.py.addGenConstrMax(t.x[3], [t.x[0], t.x[1]], 1.5, "top")


def qcp(t):
    t.param("QCPDual", 1)
    t.vars(2, obj=[-1.0, -1.0])
    t.c.addqconstr(([], []), ([0, 1], [0, 1], [1.0, 1.0]), "<", 2.0, "disc")
    t.py.addQConstr(t.x[0] * t.x[0] + t.x[1] * t.x[1], "<", 2.0, "disc")


def objectives(t):
    t.vars(2, vtype="II", ub=[5.0, 5.0])
    t.row([0, 1], [1.0, 1.0], "<", 7.0)
    t.c("GRBsetintattr", b"NumObj", 2)
    t.py.NumObj = 2
    for i, obj in enumerate(([-1.0, -2.0], [-1.0, 0.0])):
        t.param("ObjNumber", i)
        t.c("GRBsetdblattrarray", b"ObjN", 0, 2, doubles(obj))
        t.c("GRBsetintattr", b"ObjNPriority", 5 - i)
        t.c("GRBsetdblattr", b"ObjNWeight", 2.0)
        t.py.setAttr("ObjN", t.x, obj)
        t.py.ObjNPriority = 5 - i
        t.py.ObjNWeight = 2.0


def infeasible(t):
    t.vars(2, vtype="BB")
    t.row([0, 1], [1.0, 1.0], ">", 3.0, "much")
    t.row([0], [1.0], "<", 1.0, "spare")


def unsolved(t):
    lp(t)


class Attributes(TwinCase):
    def solved(self, build):
        t = self.twin(build)
        if build is not unsolved:
            t.both("GRBoptimize", "optimize")
        if build is infeasible:
            t.both("GRBcomputeIIS", "computeIIS")
        return t

    @staticmethod
    def elements(t, kind):
        return [None, t.py.getVars, t.py.getConstrs, t.py.getSOSs, t.py.getQConstrs, t.py.getGenConstrs][kind]()

    def expected(self, t, name, kind):
        """gurobipy's values, or a tuple of the C code for its refusal and gurobipy's text."""
        t.py.getAttr("NumVars")  # empties the text of the failure before
        try:
            if kind == 0:
                return number(t.py.getAttr(name))
            return [number(v) for v in t.py.getAttr(name, self.elements(t, kind))]
        except gurobipy.GurobiError as error:
            return error.errno, error.message
        except AttributeError as error:
            outside = any(word in str(error) for word in ("multi-objective", "multi-scenario", "ObjNumber"))
            return 10008 if outside else 10005, str(error)

    def read(self, t, name, kind, ctype, count):
        if kind == 0:
            return t.c.scalar(name, ctype)
        if ctype == "str":
            return [t.c.element(name, ctype, i) for i in range(count)]
        return list(t.c.array(name, ctype, 0, count))

    def check(self, t, name):
        ctype, kind, _ = gurobipy._attrutil._getattrinfo(t.py, name)
        ctype = KINDS[ctype]
        count = len(self.elements(t, kind)) if kind else 1
        expected = self.expected(t, name, kind)
        refused = isinstance(expected, tuple)
        found = []
        error = failure(lambda: found.append(self.read(t, name, kind, ctype, count)))
        self.assertEqual(error, expected if refused else None)
        if not refused and name not in NEVER_EQUAL:
            self.assertEqual(found[0], expected)
        if count:
            self.assertEqual(LIB.GRBisattravailable(t.c.handle, name.encode()), 0 if refused else 1)
        return not refused

    def test_every_attribute_of_every_model(self):
        for build in (unsolved, lp, mip, qcp, objectives, infeasible):
            t = self.solved(build)
            readable = 0
            names = [n for n in dir(GRB.Attr) if not n.startswith(("_", "Batch"))]
            for name in names:
                with self.subTest(model=build.__name__, attribute=name):
                    readable += self.check(t, name)
            self.assertGreater(readable, 60)

    def test_lists_ranges_and_writes(self):
        t = self.solved(unsolved)
        values = (c_double * 3)()
        t.c("GRBsetdblattrlist", b"ub", 2, ints([2, 0]), doubles([7.0, 1e100]))
        t.c("GRBsetintattrarray", b"BranchPriority", 1, 2, ints([3, 4]))
        t.c.setelement("VarName", "str", 1, "naïve")
        t.c("GRBsetstrattr", b"ModelName", b"renamed")
        t.c("GRBsetdblattrarray", b"LB", 0, 0, None)
        self.assertEqual(t.c.element("UB", "dbl", 2), 6.0, "writes are queued")
        t.c.update()
        t.c("GRBgetdblattrlist", b"UB", 3, ints([2, 1, 0]), values)
        self.assertEqual(list(values), [7.0, 5.0, 1e100])
        self.assertEqual(t.c.array("BranchPriority", "int", 0, 3), [0, 3, 4])
        self.assertEqual(t.c.array("VType", "char", 1, 2), "CC")
        self.assertEqual((t.c.element("VarName", "str", 1), t.c.scalar("ModelName", "str")), ("naïve", "renamed"))
        self.assertEqual(t.c.array("Start", "dbl", 0, 1), [1e101], "an undefined value is not an infinity")

    def test_failures(self):
        t = self.solved(unsolved)
        out = c_double()
        nan = float("nan")
        for args, code, text in (
                (("GRBgetdblattr", b"Nope", byref(out)), 10004, "Unknown attribute 'Nope'"),
                (("GRBgetdblattr", None, byref(out)), 10002, None),
                (("GRBgetdblattr", b"Status", byref(out)), 10003, "Wrong type for attribute 'Status'"),
                (("GRBgetdblattr", b"X", byref(out)), 10003, None),
                (("GRBgetdblattrelement", b"ObjVal", 0, byref(out)), 10003, None),
                (("GRBgetdblattrelement", b"LB", 3, byref(out)), 10006, None),
                (("GRBgetdblattrarray", b"LB", 1, 3, byref(out)), 10006, None),
                (("GRBgetdblattrarray", b"LB", -1, 1, byref(out)), 10006, None),
                (("GRBgetdblattrlist", b"LB", 1, ints([-1]), byref(out)), 10006, None),
                (("GRBgetdblattrelement", b"X", 0, byref(out)), 10005, "Unable to retrieve attribute 'X'"),
                (("GRBgetdblattr", b"ObjVal", byref(out)), 10005, "Unable to retrieve attribute 'ObjVal'"),
                (("GRBgetdblattr", b"ObjNVal", byref(out)), 10005, "No solution available"),
                (("GRBgetdblattr", b"ObjNWeight", byref(out)), 10008, "It isn't a multi-objective model"),
                (("GRBsetdblattrelement", b"X", 0, 1.0), 10003, None),
                (("GRBsetintattr", b"NumVars", 1), 10003, None),
                (("GRBsetdblattrarray", b"LB", 0, 2, doubles([nan, 1.0])), 10003,
                 "Element 0 of a double array is Nan.")):
            with self.subTest(args=args[:2]):
                found = failure(t.c, *args)
                self.assertEqual(found[0], code, found)
                self.assertTrue(text is None or found[1] == text, found)
        t.c.addvars(1)
        self.assertEqual(failure(t.c, "GRBgetdblattrelement", b"LB", 3, byref(out)),
                         (10006, "Index 3 out of range for attribute 'LB'"), "pending elements cannot be read")
        t.c.setelement("UB", "dbl", 3, 9.0)
        t.c.update()
        self.assertEqual(t.c.element("UB", "dbl", 3), 9.0, "but written")
