"""The same model twice: behind the bridge and in gurobipy, so that answers and failures can be compared."""

import math
import unittest

import gurobipy

from capi import Env, Error, Model

ENV = Env()
REFERENCE = gurobipy.Env(params={"LogToConsole": 0})


class Twin:
    """`c` is the model behind the bridge, `py` gurobipy's; `x` are gurobipy's variables."""

    def __init__(self, name=""):
        self.c = Model(ENV, name)
        self.py = gurobipy.Model(name, env=REFERENCE)

    def close(self):
        self.c.free()
        self.py.dispose()

    @property
    def x(self):
        return self.py.getVars()

    def expr(self, ind, val):
        return gurobipy.LinExpr(val, [self.x[i] for i in ind])

    def vars(self, count, obj=None, lb=None, ub=None, vtype=None, named=None):
        given = {"obj": obj, "lb": lb, "ub": ub, "vtype": vtype, "name": named}
        self.c.addvars(count, obj, lb, ub, vtype, named)
        self.py.addVars(count, **{k: list(v) for k, v in given.items() if v is not None})
        self.update()

    def row(self, ind, val, sense, rhs, name=""):
        self.c.addconstr(ind, val, sense, rhs, name)
        self.py.addLConstr(self.expr(ind, val), sense, rhs, name)

    def update(self):
        self.c.update()
        self.py.update()

    def param(self, name, value):
        self.c.env.set(name, value)
        self.py.setParam(name, value)

    def both(self, function, method):
        """Calls the C function and gurobipy's method, neither with arguments."""
        self.c(function)
        getattr(self.py, method)()


class TwinCase(unittest.TestCase):
    def twin(self, build=lambda _twin: None, name=""):
        t = Twin(name)
        self.addCleanup(t.close)
        build(t)
        t.update()
        return t


def failure(call, *args):
    """(code, text) of a call through the bridge, or None when it succeeds."""
    try:
        call(*args)
    except Error as error:
        return error.code, error.text
    return None


def reference_failure(call, *args, **named):
    """(errno, text) of gurobipy's refusal, or None. Failures without a number of the library's have 0 there."""
    try:
        call(*args, **named)
    except gurobipy.GurobiError as error:
        return error.errno, error.message
    except AttributeError as error:
        return 0, str(error)
    return None


def number(value):
    """A number of gurobipy's as C has it."""
    return math.copysign(1e100, value) if isinstance(value, float) and math.isinf(value) else value
