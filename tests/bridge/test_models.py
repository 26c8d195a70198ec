"""Models built through the bridge, compared as files and by their optimum with the same ones built in gurobipy."""

import os
import tempfile
from ctypes import byref, c_void_p

from gurobipy import Column, LinExpr, QuadExpr

from capi import Env, Model, doubles, ints, names
from twin import TwinCase, failure, reference_failure

NL_TREE = ([4, 3, 1, 0, 13, 1], [-1, -1, 0, 5, -1, 1], [-1, 0, 1, 1, 0, 4])  # (x0 - 5) * exp(x1)


def quadratic(x, lin, quad):
    expression = QuadExpr(LinExpr(lin[1], [x[i] for i in lin[0]]))
    expression.addTerms(quad[2], [x[i] for i in quad[0]], [x[i] for i in quad[1]])
    return expression


def columns(t):
    t.row([0], [1.0], "<", 4.0, "a")
    t.row([1], [1.0], ">", 1.0, "b")
    entries = [0, 1], [2.0, 3.0]
    t.c("GRBaddvar", 2, ints(entries[0]), doubles(entries[1]), 5.0, -1.0, 8.0, b"I", b"one")
    t.c("GRBaddvars", 2, 3, ints([0, 1]), ints([0, 0, 1]), doubles([7.0, 8.0, 9.0]), None, None, None, None,
        names(["p", None]))
    t.c.update()
    t.py.update()
    rows = t.py.getConstrs()
    t.py.addVar(-1.0, 8.0, 5.0, "I", "one", Column([2.0, 3.0], rows))
    t.py.addVar(0.0, 1e100, 0.0, "C", "p", Column([7.0], [rows[0]]))
    t.py.addVar(0.0, 1e100, 0.0, "C", "", Column([8.0, 9.0], rows))


def coefficients(t):
    t.row([0, 1, 1], [1.0, 2.0, 3.0], "L", 4.0)
    t.c("GRBXchgcoeffs", 3, ints([0, 0, 0]), ints([0, 2, 1]), doubles([9.0, -1.0, 0.0]))
    t.py.update()
    row, x = t.py.getConstrs()[0], t.x
    for var, value in ((0, 9.0), (2, -1.0), (1, 0.0)):
        t.py.chgCoeff(row, x[var], value)


def objective(t):
    t.c("GRBsetdblattrarray", b"Obj", 0, 3, doubles([1.0, 2.0, 3.0]))
    t.c("GRBaddqpterms", 2, ints([0, 1]), ints([0, 2]), doubles([2.0, -1.0]))
    t.c("GRBsetdblattr", b"ObjCon", 4.5)
    t.c("GRBaddqpterms", 2, ints([0, 2]), ints([0, 1]), doubles([3.0, 1.5]))
    t.py.setObjective(quadratic(t.x, ([0, 1, 2], [1.0, 2.0, 3.0]), ([0, 1], [0, 2], [5.0, 0.5])) + 4.5)


def quadratic_rows(t):
    for lin, quad, sense, name in ((([0], [1.0]), ([0, 1], [0, 1], [1.0, 2.0]), "<", "q"),
                                   (([], []), ([1], [2], [1.0]), "G", ""), (([2], [1.0]), ([], [], []), "=", "none")):
        t.c.addqconstr(lin, quad, sense, 3.0, name)
        t.py.addQConstr(quadratic(t.x, lin, quad), sense, 3.0, name)


def sets(t):
    t.c("GRBaddsos", 2, 5, ints([1, 2]), ints([0, 2]), ints([0, 1, 0, 1, 2]), doubles([1.0, 2.0, 5.0, 6.0, 7.0]))
    t.c("GRBaddsos", 1, 3, ints([2]), ints([0]), ints([2, 1, 0]), None)
    for kind, members, weights in ((1, [0, 1], [1.0, 2.0]), (2, [0, 1, 2], [5.0, 6.0, 7.0]), (2, [2, 1, 0], None)):
        t.py.addSOS(kind, [t.x[i] for i in members], weights)


def general(t):
    """Every kind of general constraint that C has a call for."""
    x = t.x
    three = 2, ints([1, 2])
    for name, constant in (("Max", -1e100), ("Min", 2.5)):
        t.c(f"GRBaddgenconstr{name}", b"n" + name.encode(), 0, *three, constant)
        getattr(t.py, f"addGenConstr{name}")(x[0], [x[1], x[2]], constant, "n" + name)
    t.c("GRBaddgenconstrAbs", b"abs", 0, 1)
    t.py.addGenConstrAbs(x[0], x[1], "abs")
    for name in ("And", "Or"):
        t.c(f"GRBaddgenconstr{name}", None, 3, 2, ints([4, 5]))
        getattr(t.py, f"addGenConstr{name}")(x[3], [x[4], x[5]], "")
    for which in (0.0, 1.0, 2.0, 1e100):
        t.c("GRBaddgenconstrNorm", b"norm", 0, *three, which)
        t.py.addGenConstrNorm(x[0], [x[1], x[2]], which, "norm")
    for sense, sign in ("<<", "G>", "E="):
        t.c("GRBaddgenconstrIndicator", b"ind", 3, 1, 2, ints([0, 1]), doubles([1.0, -2.0]), sense.encode(), 4.0)
        t.py.addGenConstrIndicator(x[3], 1, LinExpr([1.0, -2.0], [x[0], x[1]]), sign, 4.0, "ind")
    t.c("GRBaddgenconstrPoly", b"poly", 0, 1, 3, doubles([1.0, -2.0, 0.5]), b"FuncPieces=-1 FuncPieceError=0.001")
    t.py.addGenConstrPoly(x[0], x[1], [1.0, -2.0, 0.5], "poly", "FuncPieces=-1 FuncPieceError=0.001")
    for name in ("ExpA", "LogA", "Pow"):
        t.c(f"GRBaddgenconstr{name}", b"f", 0, 1, 2.5, None)
        getattr(t.py, f"addGenConstr{name}")(x[0], x[1], 2.5, "f", "")
    for name in ("Exp", "Log", "Sin", "Cos", "Tan", "Logistic"):
        t.c(f"GRBaddgenconstr{name}", b"g", 1, 2, b"FuncNonlinear=0")
        getattr(t.py, f"addGenConstr{name}")(x[1], x[2], "g", "FuncNonlinear=0")
    opcode, data, parent = NL_TREE
    t.c("GRBaddgenconstrNL", b"nl", 2, 6, ints(opcode), doubles(data), ints(parent))
    t.py.addGenConstrNLAdv(x[2], opcode, [-1.0, -1.0, x[0], 5.0, -1.0, x[1]], parent, "nl")


def six(t):
    t.vars(6, obj=[1.0, 1.0, 1.0, 0.0, 0.0, 0.0], lb=[-3.0, 0.5, 0.25, 0.0, 0.0, 0.0], ub=[9.0, 8.0, 1e100, 1, 1, 1],
           vtype="CCSBBB", named=["x", "", "z", "b0", "b1", "b2"])


class Models(TwinCase):
    def six(self, build=lambda _twin: None):
        t = self.twin(six, "twin")
        build(t)
        return t

    def assertSameFiles(self, t):
        with tempfile.TemporaryDirectory() as folder:
            for extension in ("lp", "mps"):
                ours, theirs = (os.path.join(folder, f"{side}.{extension}") for side in ("c", "py"))
                t.c("GRBwrite", ours.encode())
                t.py.write(theirs)
                with open(ours, encoding="utf-8") as a, open(theirs, encoding="utf-8") as b:
                    written = a.read()
                    self.assertEqual(written, b.read())
        return written

    def test_the_same_model_is_written(self):
        for build in (columns, coefficients, objective, quadratic_rows, sets, general):
            with self.subTest(build.__name__):
                t = self.six(build)
                self.assertSameFiles(t)
                for count in ("NumVars", "NumConstrs", "NumQConstrs", "NumSOS", "NumGenConstrs", "NumQNZs", "NumQCNZs", "IsMIP"):
                    self.assertEqual(t.c.ints(count), t.py.getAttr(count), count)

    def test_quadratic_terms_keep_what_is_pending(self):
        t = self.six()
        t.c("GRBaddvar", 0, None, None, 6.0, 0.0, 1.0, b"C", b"late")
        t.c.setelement("Obj", "dbl", 0, 7.0)
        t.c("GRBsetintattr", b"ModelSense", -1)
        t.c("GRBaddqpterms", 1, ints([6]), ints([6]), doubles([-2.0]))
        t.c.update()
        self.assertEqual(t.c.array("Obj", "dbl", 0, 7), [7.0, 1.0, 1.0, 0.0, 0.0, 0.0, 6.0])
        self.assertEqual((t.c.ints("ModelSense"), t.c.ints("NumQNZs")), (-1, 1))

    def test_models_are_read_and_written(self):
        t = self.six(general)
        with tempfile.TemporaryDirectory() as folder:
            path = os.path.join(folder, "größe.mps")
            t.c("GRBwrite", path.encode())
            again = type(t.c).read(t.c.env, path)
            self.assertEqual(again.ints("NumGenConstrs"), t.c.ints("NumGenConstrs"))
            self.assertEqual(again.array("GenConstrType", "int", 0, 4), [0, 1, 2, 3])
            self.assertEqual(again.element("VarName", "str", 3), "b0")
            again.setelement("UB", "dbl", 0, 2.0)
            again.addconstr([0, 5], [1.0, 1.0], "<", 1.0, "more")
            again.update()
            self.assertEqual(again.element("UB", "dbl", 0), 2.0)
            again.free()
            unknown = os.path.join(folder, "a.xyz")
            with open(unknown, "w", encoding="utf-8") as file:
                file.write("nothing")
            for call, code, part in ((lambda: type(t.c).read(t.c.env, folder + "/no.lp"), 10003, "Unable to open file"),
                                     (lambda: type(t.c).read(t.c.env, unknown), 10012, "Unknown file type"),
                                     (lambda: t.c("GRBwrite", unknown.encode()), 10013, "Unknown file type"),
                                     (lambda: t.c("GRBwrite", b"/nowhere/a.lp"), 10013, "Unable to write"),
                                     (lambda: t.c("GRBwrite", (folder + "/a.sol").encode()), 10005, "")):
                found = failure(call)
                self.assertEqual(found[0], code, found)
                self.assertIn(part, found[1])

    def test_new_models_bring_their_variables(self):
        def new(types):
            env("GRBnewmodel", byref(handle), None, 2, doubles([-1.0, 2.0]), doubles([-1e100, -5.0]), doubles([3.0, 1e100]),
                types, names(["first", ""]))

        env, handle = Env(), c_void_p()
        self.addCleanup(env.free)
        self.assertEqual(failure(new, b"IQ"), (10003, "Invalid variable type 'Q'"))
        self.assertIsNone(handle.value)
        new(b"IC")
        model = Model(env, handle=handle.value)
        self.addCleanup(model.free)
        self.assertEqual([model.element("VarName", "str", i) for i in range(2)], ["first", "C1"])
        self.assertEqual((model.array("LB", "dbl", 0, 2), model.array("UB", "dbl", 0, 2)), ([-1e100, -5.0], [3.0, 1e100]))
        self.assertEqual((model.array("VType", "char", 0, 2), model.array("Obj", "dbl", 0, 2)), ("IC", [-1.0, 2.0]))
        model("GRBaddvar", 0, None, None, 0.0, 0.0, 1.0, b"C", "größe".encode("latin-1"))
        model.update()
        self.assertEqual(model.element("VarName", "str", 2), "größe", "bytes that are not UTF-8 become readable names")

    def test_refused_elements(self):
        """Codes and texts are the library's; what the call would have added is not there."""
        nan = float("nan")

        def nl(t, opcode, data, parent):
            return t.c, "GRBaddgenconstrNL", b"", 0, len(opcode), ints(opcode), doubles(data), ints(parent)

        table = (
            (lambda t: (t.c, "GRBaddvar", 0, None, None, 0.0, 0.0, 1.0, b"Q", b""), lambda t: t.py.addVar(vtype="Q")),
            (lambda t: (t.c, "GRBaddvar", 0, None, None, 0.0, 0.0, 1.0, b"C", b"n" * 300), lambda t: t.py.addVar(name="n" * 300)),
            (lambda t: (t.c, "GRBaddconstr", 1, ints([0]), doubles([nan]), b"<", 1.0, b""), lambda t: t.expr([0], [nan])),
            (lambda t: (t.c, "GRBaddsos", 1, 2, ints([1]), ints([0]), ints([0, 0]), doubles([1.0, 2.0])),
             lambda t: t.py.addSOS(1, [t.x[0], t.x[0]], [1.0, 2.0])),
            (lambda t: (t.c, "GRBaddgenconstrIndicator", b"", 3, 2, 1, ints([0]), doubles([1.0]), b"<", 1.0),
             lambda t: t.py.addGenConstrIndicator(t.x[3], 2, t.expr([0], [1.0]), "<", 1.0, "")),
            (lambda t: (t.c, "GRBaddgenconstrNorm", b"", 0, 1, ints([1]), 3.0),
             lambda t: t.py.addGenConstrNorm(t.x[0], [t.x[1]], 3.0, "")),
            (lambda t: (t.c, "GRBaddgenconstrExpA", b"", 0, 1, -1.0, b""), lambda t: t.py.addGenConstrExpA(t.x[0], t.x[1], -1.0, "", "")),
            (lambda t: (t.c, "GRBaddgenconstrExp", b"", 0, 1, b"Foo=1"),
             lambda t: t.py.addGenConstrExp(t.x[0], t.x[1], "", "Foo=1")),
            (lambda t: nl(t, [20], [0.0], [-1]), lambda t: t.py.addGenConstrNLAdv(t.x[0], [20], [0.0], [-1], "")),
            (lambda t: nl(t, [], [], []), lambda t: t.py.addGenConstrNLAdv(t.x[0], [], [], [], "")),
            (lambda t: nl(t, [3, 0], [-1.0, 1.0], [-1, 0]), lambda t: t.py.addGenConstrNLAdv(t.x[0], [3, 0], [-1.0, 1.0], [-1, 0], "")),
            (lambda t: nl(t, [13, 0], [-1.0, nan], [-1, 0]), lambda t: t.py.addGenConstrNLAdv(t.x[0], [13, 0], [-1.0, nan], [-1, 0], "")),
            (lambda t: nl(t, [13, 0], [-1.0, 1.0], [-1, 7]), lambda t: t.py.addGenConstrNLAdv(t.x[0], [13, 0], [-1.0, 1.0], [-1, 7], "")),
            (lambda t: nl(t, [19, 0, 1], [-1.0, 1.0, 1.0], [-1, 0, 0]),
             lambda t: t.py.addGenConstrNLAdv(t.x[0], [19, 0, 1], [-1.0, 1.0, t.x[1]], [-1, 0, 0], "")),
        )
        t = self.six()
        for ours, theirs in table:
            call, *args = ours(t)
            with self.subTest(args[0]):
                found, expected = failure(call, *args), reference_failure(theirs, t)
                self.assertIsNotNone(expected)
                self.assertEqual(found, expected)
        for args in (("GRBaddconstr", 1, ints([6]), doubles([1.0]), b"<", 1.0, b""), ("GRBaddgenconstrAbs", b"", 0, -1),
                     ("GRBXchgcoeffs", 1, ints([0]), ints([0]), doubles([1.0])), nl(t, [1], [6.0], [-1])[1:],
                     ("GRBaddvar", 1, ints([0]), doubles([1.0]), 0.0, 0.0, 1.0, b"C", b"")):
            self.assertEqual(failure(t.c, *args)[0], 10006, args[0])
        for args in (("GRBaddconstr", 0, None, None, b"Q", 1.0, b""),
                     ("GRBaddqconstr", 0, None, None, 0, None, None, None, b"Q", 1.0, b""),
                     ("GRBaddgenconstrIndicator", b"", 3, 1, 0, None, None, b"Q", 1.0)):
            self.assertEqual(failure(t.c, *args), (10003, "Invalid constraint sense: 'Q'"), args[0])
        t.update()
        self.assertSameFiles(t)
        self.assertEqual([t.c.ints(n) for n in ("NumVars", "NumConstrs", "NumSOS", "NumGenConstrs")], [6, 0, 0, 0])
