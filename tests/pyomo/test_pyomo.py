"""Models that Pyomo solves through the command line, by its older and its newer interface, against gurobipy's answers."""

import os
import unittest
from unittest import mock

import gurobipy
import pyomo.environ as pyo
from pyomo.contrib.solver.solvers.asl_sol_reader import ASLSolFileSolutionLoader
from pyomo.contrib.solver.solvers.ipopt import Ipopt

PROGRAM = os.environ["GRBLINK"]

# Per model: direction, costs, bounds and domain of the variables, rows (lower, coefficients, upper).
INF = float("inf")
MODELS = {
    "transport": (pyo.minimize, [4, 6, 9, 5, 3, 8], [(0, INF), (0, 40), (0, INF), (0, INF), (5, INF), (0, 30)], pyo.Reals,
                  [(-INF, [1, 1, 1, 0, 0, 0], 60), (-INF, [0, 0, 0, 1, 1, 1], 70), (30, [1, 0, 0, 1, 0, 0], INF),
                   (45, [0, 1, 0, 0, 1, 0], INF), (20, [0, 0, 1, 0, 0, 1], INF), (2, [1, -1, 0, 0, 0, 0], 2)]),
    "mix": (pyo.maximize, [5, 4, 3], [(0, 10), (-3, 8), (2, 2)], pyo.Reals,
            [(-INF, [2, 3, 1], 25), (-INF, [4, 1, 2], 31), (1, [3, 4, 2], 38)]),
    "knapsack": (pyo.maximize, [10, 13, 18, 31, 7, 15], [(0, 1)] * 6, pyo.Binary, [(-INF, [2, 3, 4, 5, 1, 4], 10)]),
    "infeasible": (pyo.minimize, [1, 1], [(0, 1), (0, 1)], pyo.Reals, [(3, [1, 1], INF)]),
    "unbounded": (pyo.maximize, [1, 1], [(0, INF), (0, INF)], pyo.Reals, [(-INF, [1, -1], 1)]),
}


def pyomo_model(name):
    sense, costs, bounds, domain, rows = MODELS[name]
    model = pyo.ConcreteModel()
    model.x = pyo.Var(range(len(costs)), domain=domain, bounds=lambda _, j: bounds[j])
    model.cost = pyo.Objective(expr=sum(c * model.x[j] for j, c in enumerate(costs)), sense=sense)
    model.row = pyo.Constraint(range(len(rows)), rule=lambda m, i: pyo.inequality(
        rows[i][0], sum(a * m.x[j] for j, a in enumerate(rows[i][1]) if a), rows[i][2]) if rows[i][0] != rows[i][2]
        else sum(a * m.x[j] for j, a in enumerate(rows[i][1]) if a) == rows[i][0])
    model.dual = pyo.Suffix(direction=pyo.Suffix.IMPORT)
    model.rc = pyo.Suffix(direction=pyo.Suffix.IMPORT)
    return model


def gurobi_answer(name):
    """(objective, values, duals, reduced costs) of an optimal model, None for another; duals are None for a MIP."""
    sense, costs, bounds, domain, rows = MODELS[name]
    with gurobipy.Env(params={"OutputFlag": 0}) as env, gurobipy.Model(env=env) as model:
        kind = gurobipy.GRB.BINARY if domain is pyo.Binary else gurobipy.GRB.CONTINUOUS
        x = [model.addVar(lb=max(lo, -1e100), ub=min(up, 1e100), obj=c, vtype=kind) for c, (lo, up) in zip(costs, bounds)]
        model.ModelSense = -1 if sense is pyo.maximize else 1
        made = []
        for lower, values, upper in rows:
            made.append(model.addRange(gurobipy.LinExpr(values, x), max(lower, -1e100), min(upper, 1e100)))
        model.optimize()
        if model.Status != gurobipy.GRB.OPTIMAL:
            return None
        duals = None if model.IsMIP else ([row.Pi for row in made], [v.RC for v in x])
        return model.ObjVal, [v.X for v in x], duals


class Solver(Ipopt):
    """The newer interface's road to a solver of the AMPL protocol, without what fits one certain solver only."""

    def _get_version(self, exe):
        return (0, 1, 0)

    def _parse_ipopt_output(self, output):
        return {}


class Pyomo(unittest.TestCase):
    def compare(self, name, model, duals, reduced_costs):
        objective, values, expected = gurobi_answer(name)
        self.assertAlmostEqual(pyo.value(model.cost), objective, 7)
        for j, value in enumerate(values):
            self.assertAlmostEqual(model.x[j].value, value, 6)
        if expected is None:
            self.assertFalse(duals)
            return
        for i, dual in enumerate(expected[0]):
            self.assertAlmostEqual(duals[model.row[i]], dual, 6)
        for j, cost in enumerate(expected[1]):
            self.assertAlmostEqual(reduced_costs[model.x[j]], cost, 6)

    def test_older_interface(self):
        condition = pyo.TerminationCondition
        expected = {"infeasible": condition.infeasible, "unbounded": condition.unbounded}
        by_name = pyo.SolverFactory("asl", executable=PROGRAM, options={"solver": "grblink"})  # sets grblink_options too
        by_path = pyo.SolverFactory("asl:" + PROGRAM)
        for solver, labels in ((by_name, False), (by_path, True)):
            self.assertTrue(solver.available())
            self.assertEqual(solver.version()[:2], (0, 1))
            solver.options["threads"] = 1
            solver.options["dualreductions"] = 0  # infeasible or unbounded: which?
            for name in MODELS:
                with self.subTest(model=name, labels=labels):
                    model = pyomo_model(name)
                    results = solver.solve(model, symbolic_solver_labels=labels, load_solutions=name not in expected)
                    self.assertEqual(results.solver.status, "ok" if name not in expected else "warning")
                    self.assertEqual(results.solver.termination_condition, expected.get(name, condition.optimal))
                    if name not in expected:
                        self.compare(name, model, model.dual, model.rc)

    @mock.patch("pyomo.contrib.solver.solvers.ipopt.IpoptSolutionLoader", ASLSolFileSolutionLoader)
    def test_newer_interface(self):
        for name in MODELS:
            with self.subTest(model=name):
                model = pyomo_model(name)
                found = gurobi_answer(name) is not None
                results = Solver(executable=PROGRAM).solve(
                    model, load_solutions=found, raise_exception_on_nonoptimal_result=found, solver_options={"outlev": 1},
                    writer_config={"linear_presolve": False})
                self.assertEqual(results.extra_info.return_code, 0)
                self.assertIn("Gurobi Optimizer", results.solver_log)
                if not found:
                    self.assertIn(results.solution_status.name, ("infeasible", "noSolution"))
                    continue
                self.assertEqual(results.solution_status.name, "optimal")
                self.compare(name, model, model.dual, model.rc)

    def test_wrong_option_is_told(self):
        solver = pyo.SolverFactory("asl:" + PROGRAM)
        solver.options["nosuch"] = 1
        results = solver.solve(pyomo_model("mix"), load_solutions=False)
        self.assertEqual(results.solver.termination_condition, pyo.TerminationCondition.internalSolverError)
        self.assertIn("nosuch", results.solver.message)
