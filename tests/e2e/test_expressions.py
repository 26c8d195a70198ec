"""Expressions of all operators on real Gurobi: the value that comes back is the one that Python computes."""

import itertools
import math
import random
import unittest

import formulas
from harness import BINARY, CONTINUOUS, INF, INTEGER, OBJECTIVE, ROW, Model

TOLERANCE = 1e-4  # Gurobi holds nonlinear constraints to 1e-6, and what is made of them adds up


def solve_values(trees, point, fixed=True):
    """The values of columns y[i] = trees[i] with x fixed, or within 0.1 of the point and the sum of y minimised."""
    with Model() as model:
        margin = 0 if fixed else 0.1
        model.add_columns([(None, x - margin, x + margin) for x in point] + [(None, -INF, INF) for _ in trees])
        model.add_rows([(None, 0, {len(point) + i: -1.0}, 0) for i in range(len(trees))])
        model.give_expressions(ROW, dict(enumerate(trees)))
        model.add_objective("min", [0.0] * len(point) + [0.0 if fixed else 1.0] * len(trees))
        found = model.solve(timelimit=20)
        return found, found.values and found.values[len(point):], found.values and found.values[:len(point)]


def random_tree(rng, depth, size):
    if depth == 0 or rng.random() < 0.15:
        return f"x{rng.randrange(size)}" if rng.random() < 0.8 else round(rng.uniform(-3, 3), 2)
    word = rng.choice(list(formulas.CODES))
    count = 1 if word in formulas.UNARY else 2 if word in formulas.BINARY else 3
    if word == "round":
        return word, random_tree(rng, depth - 1, size), 0.0
    if word == "power":
        return word, random_tree(rng, depth - 1, size), rng.choice((2.0, 3.0, 0.5, -1.0, 1.5))
    return (word, *(random_tree(rng, depth - 1, size) for _ in range(count)))


def is_steady(tree, point):
    """Whether the value exists, is of moderate size and no jump is near: other points give nearly the same."""
    try:
        here = formulas.value(tree, point)
        near = [formulas.value(tree, [x + s * 2e-3 for x, s in zip(point, signs)])
                for signs in itertools.product((-1, 1), repeat=len(point))]
    except (ValueError, OverflowError, ZeroDivisionError, TypeError):
        return False
    return all(not isinstance(v, complex) and abs(v) < 50 and abs(v - here) < 0.2 for v in (here, *near))


class Operators(unittest.TestCase):
    def test_every_operator(self):
        point = [0.7, -1.3, 2.4]
        operands = {"acosh": ("x2",), "atanh": ("x0",), "asin": ("x0",), "acos": ("x0",), "log": ("x2",),
                    "log10": ("x2",), "log2": ("x2",), "sqrt": ("x2",), "power": ("x2", 1.7), "round": ("x2", 0.0)}
        trees = []
        for word in formulas.CODES:
            count = 1 if word in formulas.UNARY else 2 if word in formulas.BINARY else 3
            trees.append((word, *operands.get(word, ("x0", "x1", "x2")[:count])))
            if word not in operands:
                trees.append((word, *("x1", "x2", "x0")[:count]))
        for tree in trees:
            with self.subTest(tree):
                self.check(tree, point)

    def check(self, tree, point):
        wanted = formulas.value(tree, point)
        found, values, _ = solve_values([tree], point)
        self.assertIn(found.status, ("optimal", "locally_optimal"), tree)
        self.assertAlmostEqual(values[0], wanted, delta=TOLERANCE * max(1, abs(wanted)), msg=str(tree))

    def random_cases(self, seed, size, depth):
        """(tree, point) without end."""
        rng = random.Random(seed)
        while True:
            point = [round(rng.uniform(-3, 3), 3) for _ in range(size)]
            tree = random_tree(rng, depth, size)
            if isinstance(tree, tuple) and is_steady(tree, point):
                yield tree, point

    def test_random_expressions_at_fixed_points(self):
        for tree, point in itertools.islice(self.random_cases(7, 3, 3), 60):
            with self.subTest(tree):
                self.check(tree, point)

    def test_random_expressions_at_the_returned_point(self):
        checked, cases = 0, self.random_cases(11, 2, 2)
        while checked < 25:
            tree, point = next(cases)
            found, values, xs = solve_values([tree], point, fixed=False)
            if found.status not in ("optimal", "locally_optimal"):
                continue
            checked += 1
            with self.subTest(tree):
                if is_steady(tree, xs):
                    wanted = formulas.value(tree, xs)
                    self.assertAlmostEqual(values[0], wanted, delta=1e-3 * max(1, abs(wanted)), msg=f"{tree} at {xs}")
                    self.assertLessEqual(values[0], formulas.value(tree, point) + 1e-3, tree)


class Optima(unittest.TestCase):
    """Least values worked out by hand: columns (lower, upper, kind), the objective, logical constraints."""

    CASES = (
        # a branch that is not taken keeps nothing from values where it is not defined
        ([(-4, 4, CONTINUOUS)], ("if", (">=", "x0", 0), ("sqrt", "x0"), -1), (), -1),
        ([(-5, 5, CONTINUOUS)], ("if", (">=", "x0", 1), ("log", "x0"), ("negate", ("square", "x0"))), (), -25),
        ([(-5, 5, CONTINUOUS)], "x0", (("or", ("<=", "x0", 0), ("<=", ("log", "x0"), 1)),), -5),
        ([(1, 4, CONTINUOUS), (0, 3, INTEGER)], ("minus", "x1", "x0"),
         (("or", ("=", "x1", 0), ("<=", ("divide", "x0", "x1"), 2)),), -4),
        ([(0, 0, INTEGER)], ("if", ("!=", "x0", 0), ("divide", 1, "x0"), 5), (), 5),
        ([(-4, 4, CONTINUOUS), (0, 1, BINARY)],
         ("if", ("and", "x1", (">=", "x0", 1)), ("if", (">=", "x0", 2), ("log", ("minus", "x0", 1)), "x0"), 3), (), 0),
        ([(0, 4, INTEGER)], ("plus", ("if", ("<=", "x0", 2), 7, -3), ("times", 2, "x0")), (), 3),
        # constants to the power of an expression
        ([(0, 2, CONTINUOUS)], ("power", 3, ("plus", "x0", 1)), (), 3),
        ([(0, 2, CONTINUOUS)], ("power", 0.5, ("square", "x0")), (), 0.0625),
        ([(1, 3, CONTINUOUS)], ("power", 1.1, ("minus", "x0", 2)), (), 1 / 1.1),
        # numbers that are 0 or 1 as constraints and conditions
        ([(0, 1, BINARY)] * 2, ("minus", 0, ("sum", "x0", "x1")), (("not", ("times", "x0", "x1")),), -1),
        ([(0, 1, BINARY)] * 2, "x0", (("times", "x0", "x1"),), 1),
        ([(0, 1, BINARY)] * 2, ("sum", "x0", "x1"), (("max", "x0", "x1"),), 1),
        ([(0, 1, BINARY)] * 2, ("sum", "x0", "x1"), (("=", ("abs", ("minus", "x0", "x1")), 1),), 1),
        ([(0, 1, BINARY)] * 2 + [(-1, 9, CONTINUOUS)], ("minus", "x2", ("or", ("times", "x0", "x1"), ("<=", "x2", 0))), (),
         -2),
        ([(0, 1, BINARY)] * 2 + [(-1, 9, CONTINUOUS)], ("minus", 0, "x2"),
         (("and", ("times", "x0", "x1"), ("<=", "x2", 3)),), -3),
        # division by what varies
        ([(1, 20001, INTEGER)], ("div", 20000, "x0"), (), 0),
        ([(-2, 3, INTEGER)], ("div", 3, "x0"), (), -3),
        ([(30001, 30001, INTEGER), (30000, 30000, INTEGER)], ("mod", "x1", "x0"), (), 30000),
        # the sides of a step and of an angle
        ([(2.5, 2.5, CONTINUOUS)], ("times", -1, ("round", "x0", 0)), (), -3),
        ([(0, 0, CONTINUOUS), (-1, -1, CONTINUOUS)], ("atan2", "x0", "x1"), (), math.pi),
    )

    def test_least_values(self):
        for columns, objective, logical, wanted in self.CASES:
            with self.subTest(objective=objective, logical=logical), Model() as model:
                model.add_columns([(None, *column) for column in columns])
                model.add_objective("min", [0.0] * len(columns))
                model.give_expressions(OBJECTIVE, {0: objective})
                if logical:
                    model.add_logical(logical)
                found = model.solve(timelimit=20)
                self.assertEqual(found.status, "optimal")
                self.assertAlmostEqual(found.objective, wanted, delta=1e-3)
                self.assertLess(model.violation(), 1e-5)
