"""A failing add call drops everything that is queued; the model must go on with the right indices afterwards."""

import unittest

from capi import Model, doubles, ints
from twin import ENV, failure

DROPPING = {
    "variable type": ("GRBaddvar", 0, None, None, 0.0, 0.0, 1.0, b"Q", b""),
    "variable types": ("GRBaddvars", 2, 0, None, None, None, None, None, None, b"CQ", None),
    "long name": ("GRBaddconstr", 1, ints([0]), doubles([1.0]), b"<", 1.0, b"n" * 300),
    "set with a duplicate": ("GRBaddsos", 2, 4, ints([1, 1]), ints([0, 2]), ints([0, 1, 1, 1]), doubles([1.0, 2.0] * 2)),
    "indicator value": ("GRBaddgenconstrIndicator", b"", 1, 2, 1, ints([0]), doubles([1.0]), b"<", 1.0),
    "base": ("GRBaddgenconstrExpA", b"", 0, 1, -1.0, b""),
    "tree": ("GRBaddgenconstrNL", b"", 0, 1, ints([20]), doubles([0.0]), ints([-1])),
}
KEEPING = {
    "norm": ("GRBaddgenconstrNorm", b"", 0, 1, ints([1]), 3.0),
    "options": ("GRBaddgenconstrExp", b"", 0, 1, b"Foo=1"),
    "index": ("GRBaddconstr", 1, ints([99]), doubles([1.0]), b"<", 1.0, b""),
    "coefficient": ("GRBaddconstr", 1, ints([0]), doubles([float("nan")]), b"<", 1.0, b""),
    "sense": ("GRBaddconstr", 1, ints([0]), doubles([1.0]), b"Q", 1.0, b""),
    "attribute": ("GRBsetdblattrelement", b"LB", 0, float("nan")),
}
COUNTS = ("NumVars", "NumConstrs", "NumQConstrs", "NumSOS", "NumGenConstrs")


class Queue(unittest.TestCase):
    def model(self):
        """Two committed variables and a row; two variables and one element of each kind are waiting."""
        m = Model(ENV, "keeps its name")
        self.addCleanup(m.free)
        m.addvars(2, obj=[1.0, 1.0], ub=[8.0, 1.0], vtype="IB")
        m.addconstr([0, 1], [1.0, 1.0], ">", 2.0, "old")
        m.env.set("TimeLimit", 100.0)
        m.update()
        for start in range(2):
            m.env.set("StartNumber", -1)
            m("GRBsetdblattrarray", b"Start", 0, 2, doubles([2.0 + start, 1.0]))
            m.update()
        m.env.set("StartNumber", 1)
        m.setelement("VarHintVal", "dbl", 1, 1.0)
        m.update()
        m.addvars(2, named=["lost", "too"])
        m.addconstr([0, 2], [1.0, 1.0], "=", 3.0, "gone")
        m.addqconstr(([0], [1.0]), ([1], [2], [1.0]), "<", 9.0)
        m.addsos(1, [1, 3], [1.0, 2.0])
        m("GRBaddgenconstrAbs", b"", 2, 3)
        m.setelement("UB", "dbl", 0, 4.0)
        return m

    def test_what_waits_is_dropped_and_later_elements_are_counted_from_there(self):
        for name, call in DROPPING.items():
            with self.subTest(name):
                m = self.model()
                self.assertIsNotNone(failure(m, *call))
                self.assertEqual(failure(m.addconstr, [2], [1.0], "<", 1.0)[0], 10006)
                m.addvars(1, obj=[-1.0], ub=[5.0], named=["new"])
                m.addconstr([0, 2], [1.0, 1.0], "<", 6.0, "next")
                m("GRBaddgenconstrAbs", b"", 2, 0)
                m.optimize()
                self.assertEqual([m.ints(c) for c in COUNTS], [3, 2, 0, 0, 1])
                self.assertEqual([m.element("VarName", "str", i) for i in range(3)], ["C0", "C1", "new"])
                self.assertEqual([m.element("ConstrName", "str", i) for i in range(2)], ["old", "next"])
                self.assertEqual(m.element("UB", "dbl", 0), 8.0)
                # min x + b - |x| over x + b >= 2, x <= 3: 0, with b = 0.
                self.assertAlmostEqual(m.dbl("ObjVal"), 0.0, places=6)
                self.assertEqual((m.scalar("ModelName", "str"), m.env.get("TimeLimit")), ("keeps its name", 100.0))
                self.assertEqual((m.ints("NumStart"), m.env.get("StartNumber")), (2, 1))
                self.assertEqual(m.array("Start", "dbl", 0, 2), [3.0, 1.0])
                self.assertEqual(m.element("VarHintVal", "dbl", 1), 1.0)

    def test_a_refusal_that_never_reached_the_library_leaves_the_queue(self):
        for name, call in KEEPING.items():
            with self.subTest(name):
                m = self.model()
                self.assertIsNotNone(failure(m, *call))
                m.addvars(1, named=["new"])
                m.update()
                self.assertEqual([m.ints(c) for c in COUNTS], [5, 2, 1, 1, 1])
                self.assertEqual([m.element("VarName", "str", i) for i in (2, 4)], ["lost", "new"])
                self.assertEqual(m.element("UB", "dbl", 0), 4.0)

    def test_a_failure_with_nothing_waiting_keeps_the_solution(self):
        m = self.model()
        m.optimize()
        value = m.dbl("ObjVal")
        for name, call in DROPPING.items():
            if name != "set with a duplicate":  # its first set is queued before the second is refused
                self.assertIsNotNone(failure(m, *call))
                self.assertEqual(m.dbl("ObjVal"), value, name)
        self.assertEqual(len(m.array("X", "dbl", 0, 4)), 4)
