"""What follows a solve: conflicts, relaxations, fixed models, tuning; and the limits of a solve."""

from ctypes import byref, c_double, c_void_p

from capi import doubles, ints
from twin import ENV, TwinCase, failure, reference_failure

TOO_LARGE = "Model too large for size-limited license; visit https://gurobi.com/unrestricted for more information"


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


class Procedures(TwinCase):
    def test_conflicts(self):
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
