"""A day's food at the least cost, solved through the AMPL protocol.

    python examples/pyomo_diet.py build/release/bin/grblink     solve with this program
    python examples/pyomo_diet.py --write diet.nl               write the model, with its names beside it
"""

import sys

import pyomo.environ as pyo

FOODS = {
    #         cost  energy  protein  calcium
    "Oats":  (0.15,      4,       3,       1),
    "Milk":  (0.48,      2,       4,       6),
    "Beans": (0.56,      3,       8,       2),
}


def diet():
    model = pyo.ConcreteModel("diet")
    model.portions = pyo.Var(FOODS, domain=pyo.NonNegativeReals)
    model.portions["Oats"].setub(4)
    cost, energy, protein, calcium = (
        sum(facts[i] * model.portions[food] for food, facts in FOODS.items()) for i in range(4))
    model.cost = pyo.Objective(expr=cost)
    model.energy = pyo.Constraint(expr=(18, energy, 26))
    model.protein = pyo.Constraint(expr=protein >= 28)
    model.calcium = pyo.Constraint(expr=calcium >= 18)
    return model


def solve(model, program):
    model.dual = pyo.Suffix(direction=pyo.Suffix.IMPORT)
    model.rc = pyo.Suffix(direction=pyo.Suffix.IMPORT)
    solver = pyo.SolverFactory("asl:grblink", executable=program)
    solver.options["timelimit"] = 60
    results = solver.solve(model)
    print(f"{results.solver.termination_condition} objective {pyo.value(model.cost):.6g}")
    for food in FOODS:
        variable = model.portions[food]
        print(f"column {food} value {variable.value:.6g} reduced_cost {model.rc[variable]:.6g}")
    for row in (model.energy, model.protein, model.calcium):
        print(f"row {row.name} activity {pyo.value(row.body):.6g} dual {model.dual[row]:.6g}")


if __name__ == "__main__":
    if sys.argv[1:2] == ["--write"]:
        diet().write(sys.argv[2], io_options={"symbolic_solver_labels": True})
    else:
        solve(diet(), sys.argv[1])
