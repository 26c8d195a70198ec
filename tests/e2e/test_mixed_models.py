"""Small random models of mixed kinds have the optimum of the same model built with gurobipy."""

import random
import unittest

import gurobipy
from gurobipy import GRB

from harness import BINARY, CONTINUOUS, INF, INTEGER, OBJECTIVE, ROW, Model

KINDS = {CONTINUOUS: GRB.CONTINUOUS, BINARY: GRB.BINARY, INTEGER: GRB.INTEGER}
SIZE = 8  # columns 0..3 real, 4 and 5 whole, 6 and 7 binary


class Twin:
    """The same random model, in kavo and in gurobipy."""

    def __init__(self, seed, env):
        self.rng = random.Random(seed)
        self.mine = Model()
        self.direct = gurobipy.Model(env=env)
        kinds = [CONTINUOUS] * 4 + [INTEGER] * 2 + [BINARY] * 2
        bounds = [(-5, 5)] * 4 + [(-3, 4)] * 2 + [(0, 1)] * 2
        self.mine.add_columns([(None, *b, kind) for b, kind in zip(bounds, kinds)])
        self.x = [self.direct.addVar(*b, vtype=KINDS[kind]) for b, kind in zip(bounds, kinds)]
        self.rows = 0

    def coefficients(self, count):
        return {j: self.rng.randint(-4, 4) or 1 for j in self.rng.sample(range(SIZE), count)}

    def add_row(self, terms, lower, upper):
        self.mine.add_rows([(None, lower, {j: float(a) for j, a in terms.items()}, upper)])
        self.rows += 1
        return self.rows - 1

    def linear(self, terms):
        return gurobipy.quicksum(a * self.x[j] for j, a in terms.items())

    def add_linear(self):
        terms, side = self.coefficients(4), self.rng.randint(2, 9)
        self.add_row(terms, -INF, side)
        self.direct.addConstr(self.linear(terms) <= side)

    def add_range(self):
        terms, side = self.coefficients(3), self.rng.randint(2, 9)
        self.add_row(terms, -side, side)
        self.direct.addRange(self.linear(terms), -side, side)

    def quadratic(self, terms):
        return gurobipy.quicksum(a * self.x[i] * self.x[j] for (i, j), a in terms.items())

    def add_quadratic(self):
        squares = {(j, j): float(self.rng.randint(1, 3)) for j in self.rng.sample(range(5), 3)}
        products = {(1, 4): float(self.rng.randint(-2, 2))}
        terms, linear, side = squares | products, self.coefficients(2), self.rng.randint(8, 30)
        self.mine.give_quadratic_terms(ROW, self.add_row(linear, -INF, side), terms)
        self.direct.addConstr(self.quadratic(terms) + self.linear(linear) <= side)

    def add_set(self):
        kind, members = self.rng.choice((1, 2)), self.rng.sample(range(6), 4)
        self.mine.add_set(kind, members)
        self.direct.addSOS(kind, [self.x[j] for j in members], [1, 2, 3, 4])

    def add_indicator(self):
        terms, side, column, on = self.coefficients(3), self.rng.randint(-4, 4), self.rng.choice((6, 7)), self.rng.randint(0, 1)
        self.mine.switch(self.add_row(terms, -INF, side), column, on)
        self.direct.addGenConstrIndicator(self.x[column], bool(on), self.linear(terms) <= side)

    def result(self):
        """A column of its own for the value of a general constraint, in both models."""
        self.mine.add_columns([(None, -100, 100, CONTINUOUS)])
        self.x.append(self.direct.addVar(-100, 100))
        return len(self.x) - 1

    def add_general(self):
        y, kind = self.result(), self.rng.choice(("max", "min", "abs", "norm2", "exp", "and"))
        a, b = self.rng.sample(range(4), 2)
        tree = {"max": ("max", f"x{a}", f"x{b}", 1.5), "min": ("min", f"x{a}", f"x{b}", -1.0), "abs": ("abs", f"x{a}"),
                "norm2": ("norm2", f"x{a}", f"x{b}"), "exp": ("exp", f"x{a}"), "and": ("and", "x6", "x7")}[kind]
        self.mine.give_expressions(ROW, {self.add_row({y: -1}, 0, 0): tree})
        xs, result = [self.x[a], self.x[b]], self.x[y]
        both = self.direct.addVar(vtype=GRB.BINARY)
        {"max": lambda: self.direct.addGenConstrMax(result, xs, 1.5),
         "min": lambda: self.direct.addGenConstrMin(result, xs, -1.0),
         "abs": lambda: self.direct.addGenConstrAbs(result, xs[0]),
         "norm2": lambda: self.direct.addGenConstrNorm(result, xs, 2.0),
         "exp": lambda: self.direct.addGenConstrExp(xs[0], result, options="FuncNonlinear=1"),
         "and": lambda: (self.direct.addGenConstrAnd(both, self.x[6:8]), self.direct.addConstr(result == both))}[kind]()
        return y

    def add_objective(self, results):
        sense = self.rng.choice(("min", "max"))
        costs = [self.rng.randint(-5, 5) for _ in range(SIZE)]
        weights = [self.rng.choice((-1, 1)) for _ in results]
        self.mine.add_objective(sense, [float(c) for c in costs] + [float(w) for w in weights], 2.5)
        goal = self.linear(dict(enumerate(costs))) + gurobipy.quicksum(w * self.x[y] for w, y in zip(weights, results)) + 2.5
        if self.rng.random() < 0.5:
            sign = 1.0 if sense == "min" else -1.0
            terms = {(0, 0): sign, (0, 1): sign * 0.5, (1, 1): sign}
            self.mine.give_quadratic_terms(OBJECTIVE, 0, terms)
            goal += self.quadratic(terms)
        self.direct.setObjective(goal, GRB.MINIMIZE if sense == "min" else GRB.MAXIMIZE)


class MixedModels(unittest.TestCase):
    def test_same_optimum(self):
        words = {GRB.OPTIMAL: "optimal", GRB.INFEASIBLE: "infeasible"}
        seen = set()
        with gurobipy.Env(params={"OutputFlag": 0, "TimeLimit": 20, "MIPGap": 1e-7, "DualReductions": 0}) as env:
            for seed in range(40):
                with self.subTest(seed):
                    twin = Twin(seed, env)
                    for add in (twin.add_linear, twin.add_range, twin.add_quadratic, twin.add_set, twin.add_indicator):
                        for _ in range(twin.rng.randint(0, 2)):
                            add()
                    twin.add_objective([twin.add_general() for _ in range(twin.rng.randint(0, 2))])
                    with twin.mine:
                        found = twin.mine.solve(timelimit=20, mipgap=1e-7, dualreductions=0)
                        twin.direct.optimize()
                        self.assertEqual(found.status, words[twin.direct.Status])
                        seen.add(found.status)
                        if found.status == "optimal":
                            wanted = twin.direct.ObjVal
                            self.assertAlmostEqual(found.objective, wanted, delta=1e-4 * max(1, abs(wanted)))
                            self.assertLess(twin.mine.violation(), 1e-4)
        self.assertIn("optimal", seen)
