"""Solving and what follows it: optima, infeasibility, relaxation, fixing, tuning, limits."""

import math
import unittest
from ctypes import byref, c_double, c_void_p

from capi import LIB, Model, doubles, ints
from test_models import NL_TREE
from twin import ENV, Twin, failure, reference_failure

TOO_LARGE = "Model too large for size-limited license; visit https://gurobi.com/unrestricted for more information"


def nothing(_t):
    pass


def infeasible(t):
    t.vars(2, obj=[1.0, 2.0], ub=[4.0, 4.0], named=["x", "y"])
    t.row([0, 1], [1.0, 1.0], ">", 10.0, "much")
    t.row([0], [1.0], "<", 3.0, "spare")


def conflicts(t):
    """One infeasible kind of everything that can be in a conflict."""
    t.vars(3, lb=[0.0, 0.0, 0.0], ub=[1.0, 1.0, 1.0])
    t.row([0, 1], [1.0, 1.0], ">", 2.0)
    t.row([2], [1.0], "<", 5.0)
    t.c.addsos(1, [0, 1], [1.0, 2.0])
    t.py.addSOS(1, t.x[:2], [1.0, 2.0])
    t.c.addqconstr(([], []), ([2], [2], [1.0]), "<", 4.0)
    t.py.addQConstr(t.x[2] * t.x[2], "<", 4.0)


def mip(t):
    t.vars(3, obj=[-5.0, -4.0, -3.0], vtype="IIC", ub=[10.0, 10.0, 9.0])
    t.row([0, 1, 2], [2.0, 3.0, 1.0], "<", 11.5)
    t.row([0, 1, 2], [4.0, 1.0, 2.0], "<", 11.0)
    t.c("GRBaddgenconstrAbs", b"", 2, 1)
    t.py.addGenConstrAbs(t.x[2], t.x[1], "")
    t.param("PoolSearchMode", 2)
    t.param("PoolSolutions", 5)


class Procedures(unittest.TestCase):
    def twin(self, build=nothing):
        t = Twin()
        self.addCleanup(t.close)
        build(t)
        t.update()
        return t

    def test_known_optima(self):
        """Optima that follow by hand."""
        nl = self.twin()
        nl.c.addvars(3, lb=[6.0, 1.0, -100.0], ub=[8.0, 2.0, 100.0], obj=[0.0, 0.0, 1.0])
        nl.c("GRBaddgenconstrNL", b"", 2, 6, *(f(a) for f, a in zip((ints, doubles, ints), NL_TREE)))
        circle = self.twin()
        circle.c.addvars(2, obj=[-1.0, -1.0])
        circle.c.addqconstr(([], []), ([0, 1], [0, 1], [1.0, 1.0]), "<", 2.0)
        parabola = self.twin()
        parabola.c.addvars(1, obj=[-4.0], ub=[9.0])
        parabola.c("GRBaddqpterms", 1, ints([0]), ints([0]), doubles([1.0]))
        pair = self.twin()
        pair.c.addvars(2, obj=[-1.0, -2.0], ub=[3.0, 4.0])
        pair.c.addsos(1, [0, 1], [1.0, 2.0])
        switched = self.twin()
        switched.c.addvars(2, obj=[2.0, -1.0], vtype="BC", ub=[1.0, 9.0])
        switched.c("GRBaddgenconstrIndicator", b"", 0, 0, 1, ints([1]), doubles([1.0]), b"L", 1.5)
        cubic = self.twin()
        cubic.c.addvars(2, obj=[0.0, 1.0], lb=[-3.0, -30.0], ub=[3.0, 1e100])
        cubic.c("GRBaddgenconstrPoly", b"", 0, 1, 4, doubles([1.0, 0.0, 0.0, 0.0]), None)
        for t, value, place in ((nl, math.e, [6.0, 1.0, math.e]), (circle, -2.0, [1.0, 1.0]), (parabola, -4.0, [2.0]),
                                (pair, -8.0, [0.0, 4.0]), (switched, -7.0, [1.0, 9.0]), (cubic, -27.0, [-3.0, -27.0])):
            t.c.optimize()
            self.assertEqual(t.c.ints("Status"), 2)
            self.assertAlmostEqual(t.c.dbl("ObjVal"), value, delta=1e-4)
            for found, expected in zip(t.c.array("X", "dbl", 0, len(place)), place):
                self.assertAlmostEqual(found, expected, delta=1e-3)

    def test_pool(self):
        t = self.twin(mip)
        t.both("GRBoptimize", "optimize")
        count = t.c.ints("SolCount")
        self.assertEqual(count, t.py.SolCount)
        self.assertGreater(count, 2)
        for i in range(count):
            t.param("SolutionNumber", i)
            self.assertEqual(t.c.dbl("PoolNObjVal"), t.py.PoolNObjVal)
            self.assertEqual(t.c.array("Xn", "dbl", 0, 3), t.py.getAttr("Xn", t.x))

    def test_conflicts(self):
        t = self.twin(infeasible)
        t.c("GRBcomputeIIS")
        self.assertEqual((t.c.ints("IISMinimal"), t.c.ints("Status")), (1, 3))
        self.assertEqual((t.c.array("IISConstr", "int", 0, 2), t.c.array("IISUB", "int", 0, 2)), ([1, 0], [1, 1]))
        t = self.twin(conflicts)
        t.both("GRBcomputeIIS", "computeIIS")
        for name, elements in (("IISSOS", t.py.getSOSs()), ("IISQConstr", t.py.getQConstrs()), ("IISConstr", t.py.getConstrs())):
            self.assertEqual(t.c.array(name, "int", 0, len(elements)), t.py.getAttr(name, elements), name)
        self.assertEqual(t.c.array("IISSOS", "int", 0, 1), [1])
        feasible = self.twin(mip)
        self.assertEqual(failure(feasible.c, "GRBcomputeIIS"), (10015, "Cannot compute IIS on a feasible model"))

    def test_relaxations(self):
        for kind in (0, 1, 2):
            for minimal in (0, 1):
                for relaxed in ("lb", "ub", "rhs", "all"):
                    with self.subTest(kind=kind, minimal=minimal, relaxed=relaxed):
                        t = self.twin(infeasible)
                        self.relax(t, kind, minimal, relaxed)
        t = self.twin(infeasible)
        self.assertEqual(failure(t.c, "GRBfeasrelax", 7, 0, None, None, None, None)[0], 10003)

    def relax(self, t, kind, minimal, relaxed):
        bounds, rows = [2.0, 1e100], [3.0, 1.0]
        lb, ub, rhs = (values if relaxed in (name, "all") else None for name, values in
                       (("lb", bounds), ("ub", bounds), ("rhs", rows)))
        value = c_double(99.0)
        t.c("GRBfeasrelax", kind, minimal, doubles(lb), doubles(ub), doubles(rhs), byref(value))
        expected = t.py.feasRelax(kind, bool(minimal), t.x if lb or ub else None, lb, ub,
                                  t.py.getConstrs() if rhs else None, rhs)
        t.py.update()
        self.assertAlmostEqual(value.value, expected, places=6)
        for count, elements, names in (("NumVars", t.py.getVars(), "VarName"), ("NumConstrs", t.py.getConstrs(), "ConstrName")):
            number = t.c.ints(count)
            self.assertEqual(number, len(elements))
            self.assertEqual([t.c.element(names, "str", i) for i in range(number)], t.py.getAttr(names, elements))
        t.both("GRBoptimize", "optimize")
        self.assertEqual(t.c.ints("Status"), t.py.Status)
        if t.py.SolCount:
            self.assertAlmostEqual(t.c.dbl("ObjVal"), t.py.ObjVal, places=6)

    def test_fixing(self):
        t = self.twin(mip)
        self.assertEqual(failure(t.c, "GRBconverttofixed"), (10005, "Unable to retrieve attribute 'X'"))
        t.c.optimize()
        value = t.c.dbl("ObjVal")
        t.c.setelement("LB", "dbl", 2, -1.0)
        self.assertEqual(failure(t.c, "GRBconverttofixed"),
                         (10024, "Error: model has pending changes, not supported for GRBconverttofixed()"))
        t.c.update()
        t.c.optimize()
        t.c("GRBconverttofixed")
        self.assertEqual((t.c.ints("NumGenConstrs"), t.c.ints("IsMIP"), t.c.ints("Status")), (0, 0, 1))
        t.c.optimize()
        self.assertAlmostEqual(t.c.dbl("ObjVal"), value, places=6)
        self.assertEqual(len(t.c.array("Pi", "dbl", 0, 2)), 2)

    def test_tuning(self):
        single, other, different = self.twin(mip), self.twin(mip), self.twin(infeasible)
        for t in (single, other, different):
            t.c.env.set("TuneTimeLimit", 2.0)
            t.c.env.set("TuneTrials", 1)
        ENV.set("TuneTimeLimit", 2.0)
        self.addCleanup(ENV.set, "TuneTimeLimit", 1e100)
        self.assertEqual(failure(single.c.ints, "TuneResultCount")[0], 10005)
        self.assertEqual(failure(single.c, "GRBgettuneresult", 0)[0], 10005)
        single.c("GRBtunemodel")
        count = single.c.ints("TuneResultCount")
        self.assertGreater(count, 0)
        single.c("GRBgettuneresult", 0)
        self.assertEqual(failure(single.c, "GRBgettuneresult", count), (10006, "Index is out of range"))
        handles = (c_void_p * 2)(other.c.handle, different.c.handle)
        self.assertEqual(failure(ENV, "GRBtunemodels", 2, handles), (10031, "Unable to tune models of different type"))
        self.assertEqual(failure(ENV, "GRBtunemodels", 1, (c_void_p * 1)(None))[0], 10002)
        second = self.twin(mip)
        handles[1] = second.c.handle
        ENV("GRBtunemodels", 2, handles)
        for t in (other, second):
            self.assertGreater(t.c.ints("TuneResultCount"), 0)
            t.c("GRBgettuneresult", 0)

    def test_the_limit_of_the_licence(self):
        for count, quadratic, fits in ((2000, False, True), (2001, False, False), (201, True, False)):
            with self.subTest(count=count, quadratic=quadratic):
                t = self.twin()
                t.c.addvars(count, obj=[1.0] * count)
                if quadratic:
                    t.c("GRBaddqpterms", 1, ints([0]), ints([0]), doubles([1.0]))
                self.assertEqual(failure(t.c.optimize), None if fits else (10010, TOO_LARGE))
        t = self.twin()
        t.c.addvars(2001)
        t.c.addconstr([0], [1.0], "<", -1.0)
        self.assertEqual(failure(t.c, "GRBcomputeIIS"), (10010, TOO_LARGE))
        rows = doubles([1.0])
        self.assertEqual(failure(t.c, "GRBfeasrelax", 0, 1, None, None, rows, None), (10010, TOO_LARGE))

    def test_what_only_the_solve_refuses(self):
        t = self.twin()
        t.vars(3, lb=[1.0, 1.0, 0.0], ub=[2.0, 2.0, 9.0])
        t.c("GRBaddgenconstrNL", b"", 2, 3, ints([12, 1, 1]), doubles([-1.0, 0.0, 1.0]), ints([-1, 0, 0]))
        t.py.addGenConstrNLAdv(t.x[2], [12, 1, 1], [-1.0, t.x[0], t.x[1]], [-1, 0, 0], "")
        found = failure(t.c.optimize)
        self.assertEqual(found[0], 10024)
        self.assertEqual(found, reference_failure(t.py.optimize))

    def test_basis_and_starts(self):
        m = Model(ENV)
        self.addCleanup(m.free)
        m.addvars(2, obj=[-1.0, -2.0], ub=[3.0, 1e100])
        m.addconstr([0, 1], [1.0, 1.0], "<", 4.0)
        m.optimize()
        self.assertEqual((m.array("VBasis", "int", 0, 2), m.array("CBasis", "int", 0, 1)), ([-1, 0], [-1]))
        m.update()
        m("GRBsetintattrarray", b"VBasis", 0, 2, ints([0, -1]))
        m("GRBsetintattrlist", b"CBasis", 1, ints([0]), ints([-1]))
        m("GRBsetdblattrarray", b"PStart", 0, 2, doubles([0.0, 4.0]))
        m.optimize()
        self.assertEqual((m.dbl("ObjVal"), LIB.GRBisattravailable(m.handle, b"Pi")), (-8.0, 1))
        m.addvars(1, vtype="I", ub=[9.0], obj=[-1.0])
        m.setelement("Start", "dbl", 2, 9.0)
        m.update()
        self.assertEqual((m.ints("NumStart"), m.element("Start", "dbl", 2)), (1, 9.0))
        m.optimize()
        self.assertEqual(m.dbl("ObjVal"), -17.0)


if __name__ == "__main__":
    unittest.main()
