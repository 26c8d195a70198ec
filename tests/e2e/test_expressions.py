"""Expressions of all operators on real Gurobi: the value that comes back is the one that Python computes."""

import itertools
import math
import random
import unittest
from ctypes import byref, c_double, c_int, c_size_t

import formulas
from harness import INF, Model

TOLERANCE = 1e-4  # Gurobi holds nonlinear constraints to 1e-6, and what is made of them adds up
TRUTHS = ("not", "or", "and", "<", "<=", "=", ">=", ">", "!=", "<==>", "==>", "forall", "exists", "alldiff")


def add_expressions(model, trees):
    start, nodes = [0], []
    for tree in trees:
        formulas.postfix(tree, nodes)
        start.append(len(nodes))
    op, index, number = zip(*nodes)
    first = c_int()
    model.call("kavo_add_expressions", len(trees), (c_size_t * len(start))(*start), (c_int * len(op))(*op),
               (c_int * len(index))(*index), (c_double * len(number))(*number), byref(first))
    return [first.value + i for i in range(len(trees))]


def solve_values(trees, point, fixed=True):
    """The values of columns y[i] = trees[i] with x fixed, or within 0.1 of the point and the sum of y minimised."""
    with Model() as model:
        margin = 0 if fixed else 0.1
        model.add_columns([(None, x - margin, x + margin) for x in point] + [(None, -INF, INF) for _ in trees])
        model.add_rows([(None, 0, {len(point) + i: -1.0}, 0) for i in range(len(trees))])
        numbers = add_expressions(model, trees)
        rows = (c_int * len(trees))(*range(len(trees)))
        model.call("kavo_set_expressions", 1, len(trees), rows, (c_int * len(trees))(*numbers))
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

    def test_random_expressions_at_fixed_points(self):
        rng = random.Random(7)
        checked = 0
        while checked < 60:
            point = [round(rng.uniform(-3, 3), 3) for _ in range(3)]
            tree = random_tree(rng, 3, 3)
            if not isinstance(tree, tuple) or not is_steady(tree, point):
                continue
            checked += 1
            with self.subTest(tree):
                self.check(tree, point)

    def test_random_expressions_at_the_returned_point(self):
        rng = random.Random(11)
        checked = 0
        while checked < 25:
            point = [round(rng.uniform(-3, 3), 3) for _ in range(2)]
            tree = random_tree(rng, 2, 2)
            if not isinstance(tree, tuple) or not is_steady(tree, point):
                continue
            found, values, xs = solve_values([tree], point, fixed=False)
            if found.status not in ("optimal", "locally_optimal"):
                continue
            checked += 1
            with self.subTest(tree):
                if is_steady(tree, xs):
                    wanted = formulas.value(tree, xs)
                    self.assertAlmostEqual(values[0], wanted, delta=1e-3 * max(1, abs(wanted)), msg=f"{tree} at {xs}")
                    self.assertLessEqual(values[0], formulas.value(tree, point) + 1e-3, tree)

REAL, WHOLE, TRUTH = 0, 2, 1


class Optima(unittest.TestCase):
    """Least values worked out by hand: columns (lower, upper, kind), the objective, logical constraints."""

    CASES = (
        # a branch that is not taken keeps nothing from values where it is not defined
        ([(-4, 4, REAL)], ("if", (">=", "x0", 0), ("sqrt", "x0"), -1), (), -1),
        ([(-5, 5, REAL)], ("if", (">=", "x0", 1), ("log", "x0"), ("negate", ("square", "x0"))), (), -25),
        ([(-5, 5, REAL)], "x0", (("or", ("<=", "x0", 0), ("<=", ("log", "x0"), 1)),), -5),
        ([(1, 4, REAL), (0, 3, WHOLE)], ("minus", "x1", "x0"),
         (("or", ("=", "x1", 0), ("<=", ("divide", "x0", "x1"), 2)),), -4),
        ([(0, 0, WHOLE)], ("if", ("!=", "x0", 0), ("divide", 1, "x0"), 5), (), 5),
        ([(-4, 4, REAL), (0, 1, TRUTH)],
         ("if", ("and", "x1", (">=", "x0", 1)), ("if", (">=", "x0", 2), ("log", ("minus", "x0", 1)), "x0"), 3), (), 0),
        # constants to the power of an expression
        ([(0, 2, REAL)], ("power", 3, ("plus", "x0", 1)), (), 3),
        ([(0, 2, REAL)], ("power", 0.5, ("square", "x0")), (), 0.0625),
        ([(1, 3, REAL)], ("power", 1.1, ("minus", "x0", 2)), (), 1 / 1.1),
        # numbers that are 0 or 1 as constraints and conditions
        ([(0, 1, TRUTH)] * 2, ("minus", 0, ("sum", "x0", "x1")), (("not", ("times", "x0", "x1")),), -1),
        ([(0, 1, TRUTH)] * 2, "x0", (("times", "x0", "x1"),), 1),
        ([(0, 1, TRUTH)] * 2, ("sum", "x0", "x1"), (("max", "x0", "x1"),), 1),
        ([(0, 1, TRUTH)] * 2, ("sum", "x0", "x1"), (("=", ("abs", ("minus", "x0", "x1")), 1),), 1),
        ([(0, 1, TRUTH)] * 2 + [(-1, 9, REAL)], ("minus", "x2", ("or", ("times", "x0", "x1"), ("<=", "x2", 0))), (), -2),
        ([(0, 1, TRUTH)] * 2 + [(-1, 9, REAL)], ("minus", 0, "x2"), (("and", ("times", "x0", "x1"), ("<=", "x2", 3)),), -3),
        # division by what varies
        ([(1, 20001, WHOLE)], ("div", 20000, "x0"), (), 0),
        ([(-2, 3, WHOLE)], ("div", 3, "x0"), (), -3),
        ([(30001, 30001, WHOLE), (30000, 30000, WHOLE)], ("mod", "x1", "x0"), (), 30000),
        # the sides of a step and of an angle
        ([(2.5, 2.5, REAL)], ("times", -1, ("round", "x0", 0)), (), -3),
        ([(0, 0, REAL), (-1, -1, REAL)], ("atan2", "x0", "x1"), (), math.pi),
    )

    def test_least_values(self):
        for columns, objective, logical, wanted in self.CASES:
            with self.subTest(objective=objective, logical=logical), Model() as model:
                model.add_columns([(None, *column) for column in columns])
                numbers = add_expressions(model, [objective, *logical])
                model.add_objective("min", [0.0] * len(columns))
                model.call("kavo_set_expressions", 2, 1, (c_int * 1)(0), (c_int * 1)(numbers[0]))
                if logical:
                    model.call("kavo_add_logical", len(logical), (c_int * len(logical))(*numbers[1:]), None)
                found = model.solve(timelimit=20)
                self.assertEqual(found.status, "optimal")
                self.assertAlmostEqual(found.objective, wanted, delta=1e-3)
                self.assertLess(model.violation(), 1e-5)


if __name__ == "__main__":
    unittest.main()
