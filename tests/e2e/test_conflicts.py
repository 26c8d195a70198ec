"""Conflicts of small infeasible models with every kind of element, on the user's own elements: what is marked is
infeasible by itself, as solving it alone shows, and without any of its members it is feasible.
"""

import unittest
from ctypes import c_int, c_ubyte
from types import SimpleNamespace

from harness import BINARY, CONTINUOUS, INF, INTEGER, ROW, SEMICONTINUOUS, Model, example

COLUMN, LOGICAL, SET = 0, 4, 5
LOWER, UPPER, BOTH, MEMBER = 1, 2, 3, 4  # kavo_conflict_mark


def row(lower, upper, terms=None, quadratic=None, tree=None, when=None):
    """when: the binary column and its value at which the row holds."""
    return SimpleNamespace(lower=lower, upper=upper, terms=terms or {}, quadratic=quadratic, tree=tree, when=when)


def case(columns, rows=(), logical=(), sets=(), marks=None, minimal=1, objective=None,
         options=None):
    """marks: of columns, rows, logical constraints and sets, those that are not 0; None: any that contradict themselves."""
    return SimpleNamespace(columns=columns, rows=rows, logical=logical, sets=sets, marks=marks, minimal=minimal,
                           objective=objective, options=options or {})


REAL = (0, 10, CONTINUOUS)
FREE = (-INF, INF, CONTINUOUS)
SWITCH = (0, 1, BINARY)
CASES = {
    "rows and bounds": case(
        [REAL, REAL, REAL], [row(15, INF, {0: 1, 1: 1}), row(-INF, 4, {1: 1}), row(-INF, 9, {2: 1}), row(-INF, INF, {0: 1})],
        marks=({0: UPPER}, {0: LOWER, 1: UPPER}, {}, {}), objective=[1, 1, 1]),
    "the lower side of a range": case(
        [(0, 3, CONTINUOUS), (0, 4, CONTINUOUS)], [row(1, 5, {0: 1}), row(8, 20, {0: 1, 1: 1}), row(-INF, INF, {0: 2})],
        marks=({0: UPPER, 1: UPPER}, {1: LOWER}, {}, {})),
    "the upper side of a range, and an equality": case(
        [(-INF, INF, CONTINUOUS), REAL], [row(1, 5, {0: 1, 1: 1}), row(7, 7, {0: 1})],
        marks=({1: LOWER}, {0: UPPER, 1: BOTH}, {}, {})),
    "whole and binary columns": case(
        [(0, 5, INTEGER), (-3, 9, BINARY)], [row(3, 3, {0: 2}), row(2, INF, {0: 1, 1: 4})], marks=({}, {0: BOTH}, {}, {})),
    "bounds of binary columns, of which those of the type are none": case(
        [(-3, 9, BINARY), (0, 4, CONTINUOUS), (0, 0, BINARY)], [row(7, INF, {0: 2, 1: 1, 2: 5})],
        marks=({1: UPPER, 2: UPPER}, {0: LOWER}, {}, {}), minimal=0),
    "binary columns of which one side counts": case(
        [SWITCH, REAL], [row(7, INF, {0: 2, 1: 1}), row(-INF, 3, {1: 1})],
        marks=({}, {0: LOWER, 1: UPPER}, {}, {})),
    "binary columns of which one row alone asks too much": case(
        [SWITCH, SWITCH], [row(2, INF, {1: 4}), row(4, INF, {0: -1, 1: -3})], minimal=0,
        options={"dualreductions": 0}),
    "semi-continuous": case(
        [(2, 5, SEMICONTINUOUS)], [row(1, 1.5, {0: 1})], marks=({0: LOWER}, {0: BOTH}, {}, {})),
    "a quadratic row": case(
        [FREE, FREE, REAL], [row(-INF, 1, {}, {(0, 0): 1, (1, 1): 1}), row(3, INF, {0: 1, 1: 1}), row(-INF, 5, {2: 1})],
        marks=({}, {0: UPPER, 1: LOWER}, {}, {})),
    "a quadratic range": case(
        [FREE, FREE], [row(0, 1, {}, {(0, 0): 1, (1, 1): 1}), row(3, INF, {0: 1, 1: 1})], marks=({}, {0: UPPER, 1: LOWER}, {}, {})),
    "a linear row that is written as an expression": case(
        [(0, 5, CONTINUOUS), REAL], [row(9, 40, {0: 1}, tree=("plus", "x0", 2)), row(1, 3, {0: 2}, tree=("sum", "x1", "x0", 1))],
        marks=({1: LOWER}, {0: LOWER, 1: UPPER}, {}, {})),
    "a switched row": case(
        [SWITCH, REAL], [row(1, INF, {0: 1}), row(-INF, 2, {1: 1}, when=(0, 1)), row(3, INF, {1: 1})],
        marks=({}, {0: LOWER, 1: UPPER, 2: LOWER}, {}, {}), minimal=0),
    "a nonlinear row": case(
        [(1, 3, CONTINUOUS)], [row(-INF, 1, tree=("exp", "x0"))], marks=({0: LOWER}, {0: UPPER}, {}, {})),
    "a nonlinear range": case(
        [(3, 5, CONTINUOUS)], [row(1, 2, tree=("exp", "x0"))], marks=({0: LOWER}, {0: UPPER}, {}, {})),
    "an absolute value": case(
        [(-5, 6, CONTINUOUS), REAL], [row(7, INF, tree=("abs", "x0"))], marks=({0: BOTH}, {0: LOWER}, {}, {})),
    "an absolute value of what is positive": case(
        [(1, 6, CONTINUOUS)], [row(7, INF, tree=("abs", "x0"))], marks=({0: BOTH}, {0: LOWER}, {}, {})),
    "a function that two rows share": case(
        [(-5, 5, CONTINUOUS)], [row(-INF, 100, tree=("abs", "x0")), row(7, INF, tree=("abs", "x0"))],
        marks=({0: BOTH}, {1: LOWER}, {}, {})),
    "a function whose result is a column": case(
        [(0, 5, CONTINUOUS), (0, 6, CONTINUOUS), (7, INF, CONTINUOUS)], [row(0, 0, {2: 1}, tree=("negate", ("max", "x0", "x1")))],
        marks=({0: UPPER, 1: UPPER, 2: LOWER}, {0: BOTH}, {}, {})),
    "a result that stands for a function elsewhere": case(
        [FREE, (-INF, 5, CONTINUOUS)], [row(0, 0, {1: 1}, tree=("negate", ("abs", "x0"))), row(7, INF, tree=("abs", "x0"))],
        marks=({1: UPPER}, {0: BOTH, 1: LOWER}, {}, {}), minimal=0),
    "a domain": case(
        [(2, 3, CONTINUOUS), (0, 1, CONTINUOUS)], [row(-INF, 3, {1: 1}, tree=("asin", "x0"))],
        marks=({0: LOWER}, {0: MEMBER}, {}, {})),
    "an or": case(
        [(0, 3, CONTINUOUS), (0, 4, CONTINUOUS)], logical=[("or", (">=", "x0", 5), (">=", "x1", 5)), ("<=", "x0", "x1")],
        marks=({0: UPPER, 1: UPPER}, {}, {0: MEMBER}, {}), minimal=0),
    "an implication": case(
        [SWITCH, REAL], [row(1, INF, {0: 1}), row(4, 4, {1: 1})], logical=[("==>", "x0", ("<=", "x1", 3), 1)],
        marks=({}, {0: LOWER, 1: BOTH}, {0: MEMBER}, {}), minimal=0),
    "what two logical constraints say": case(
        [REAL], logical=[("<=", "x0", 3), ("<=", "x0", 8), (">=", "x0", 5)], marks=({}, {}, {0: MEMBER, 2: MEMBER}, {})),
    "one condition that holds and does not": case(
        [(0, 4, CONTINUOUS)] * 2, logical=[("or", ("<=", "x0", 1), ("<=", "x1", 1)),
                                           ("not", ("or", ("<=", "x0", 1), ("<=", "x1", 1)))],
        marks=({}, {}, {0: MEMBER, 1: MEMBER}, {}), minimal=0),
    "a binary that is and is not": case(
        [SWITCH], logical=["x0", ("not", "x0")], marks=({}, {}, {0: MEMBER, 1: MEMBER}, {}), minimal=0),
    "an equivalence whose truth is a column": case(
        [SWITCH, (6, 9, CONTINUOUS)], [row(1, INF, {0: 1})], logical=[("<==>", "x0", ("<=", "x1", 5))],
        marks=({1: LOWER}, {0: LOWER}, {0: MEMBER}, {}), minimal=0),
    "all different": case(
        [(0, 1, INTEGER)] * 3, logical=[("alldiff", "x0", "x1", "x2")],
        marks=({0: BOTH, 1: BOTH, 2: BOTH}, {}, {0: MEMBER}, {}), minimal=0),
    "an ordered set": case(
        [(1, 5, CONTINUOUS), (2, 5, CONTINUOUS), REAL], sets=[(1, (0, 1)), (2, (0, 1, 2))],
        marks=({0: LOWER, 1: LOWER}, {}, {}, {0: MEMBER})),
    "an if": case(
        [(0, 3, CONTINUOUS)], [row(20, INF, tree=("if", ("<=", "x0", 2), ("plus", "x0", 1), ("times", 2, "x0")))],
        marks=({0: UPPER}, {0: LOWER}, {}, {}), minimal=0),
}


def build(spec, keep=lambda kind, index, side: True):
    """The model of a case with those of its sides, bounds and members only that are to be kept."""
    model = Model()
    columns = []
    for j, (lower, upper, kind) in enumerate(spec.columns):
        isLower, isUpper = keep(COLUMN, j, LOWER), keep(COLUMN, j, UPPER)
        none = (0, 1) if kind == BINARY else (0, INF) if kind == SEMICONTINUOUS else (-INF, INF)
        columns.append((None, lower if isLower else none[0], upper if isUpper else none[1], kind))
    model.add_columns(columns)
    for i, one in enumerate(spec.rows):
        lower = one.lower if keep(ROW, i, LOWER) else -INF
        upper = one.upper if keep(ROW, i, UPPER) else INF
        model.add_rows([(None, lower, {j: float(a) for j, a in one.terms.items()}, upper)])
        if (lower, upper) == (-INF, INF):
            continue  # gone, with its functions
        if one.quadratic:
            model.give_quadratic_terms(ROW, i, one.quadratic)
        if one.tree is not None:
            model.give_expressions(ROW, {i: one.tree})
        if one.when:
            model.switch(i, *one.when)
    trees = [tree for k, tree in enumerate(spec.logical) if keep(LOGICAL, k, MEMBER)]
    if trees:
        model.add_logical(trees)
    for s, one in enumerate(spec.sets):
        if keep(SET, s, MEMBER):
            model.add_set(*one)
    if spec.objective:
        model.add_objective("min", [float(cost) for cost in spec.objective])
    return model


def conflict(model):
    """The marks that are not 0, by kind, and whether they are said to be minimal."""
    marks = tuple({i: mark for i, mark in enumerate(model.array("kavo_conflict", kind, c_ubyte)) if mark}
                  for kind in (COLUMN, ROW, LOGICAL, SET))
    minimal = c_int()
    model.call("kavo_conflict_is_minimal", example.byref(minimal))
    return marks, minimal.value


class Conflicts(unittest.TestCase):
    def test_what_is_marked_contradicts_itself_and_needs_every_member(self):
        for name, spec in CASES.items():
            with self.subTest(name), build(spec) as model:
                self.assertEqual(model.solve(iis=1, timelimit=30, **spec.options).status, "infeasible")
                marks, minimal = conflict(model)
                if spec.marks:
                    self.assertEqual((marks, minimal), (spec.marks, spec.minimal))
                members = self.members(marks)
                self.assertTrue(self.is_infeasible(spec, members), marks)
                for member in members:
                    # an equality is one member, whose sides are not told apart
                    left = [other for other in members if other[:2] != member[:2] or member[0] == COLUMN]
                    left = [other for other in left if other != member]
                    if minimal or spec.marks:
                        self.assertFalse(self.is_infeasible(spec, left), (marks, member))

    @staticmethod
    def members(marks):
        """(kind, index, side): the bounds and sides one by one, what is in it as a whole by all of them."""
        members = []
        for kind, of_kind in zip((COLUMN, ROW, LOGICAL, SET), marks):
            for index, mark in of_kind.items():
                sides = [MEMBER] if kind in (LOGICAL, SET) else [s for s in (LOWER, UPPER) if mark == MEMBER or mark & s]
                members += [(kind, index, side) for side in sides]
        return members

    @staticmethod
    def is_infeasible(spec, members):
        alone = SimpleNamespace(**vars(spec) | {"objective": None})
        with build(alone, lambda kind, index, side: (kind, index, side) in members) as model:
            found = model.solve(timelimit=30)
            return {"infeasible": True, "optimal": False, "locally_optimal": False}[found.status]
