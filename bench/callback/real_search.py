"""How often Gurobi calls back at nodes and incumbents while it searches: prints the nanoseconds between two calls, per
model. One thread, five seconds each; the callback itself does nothing."""

import random

import gurobipy
from gurobipy import GRB


def market_split(model, rng):
    """6 equations over 50 binaries, with slacks that are paid for: small nodes, very many."""
    x = model.addVars(50, vtype=GRB.BINARY)
    for _ in range(6):
        weights = [rng.randrange(100) for _ in range(50)]
        more, less = model.addVar(obj=1), model.addVar(obj=1)
        model.addConstr(gurobipy.quicksum(w * x[j] for j, w in enumerate(weights)) + more - less == sum(weights) // 2)


def covering(model, rng):
    """400 rows over 800 columns: nodes that cost some simplex iterations."""
    x = [model.addVar(vtype=GRB.BINARY, obj=rng.randrange(50, 100)) for _ in range(800)]
    for _ in range(400):
        model.addConstr(gurobipy.quicksum(rng.sample(x, 20)) >= 2)


with gurobipy.Env(params={"OutputFlag": 0}) as env:
    for build in (market_split, covering):
        with gurobipy.Model(env=env) as model:
            build(model, random.Random(11))
            model.Params.Threads, model.Params.TimeLimit = 1, 5
            calls = 0

            def count(_model, _where):
                global calls
                calls += 1

            model.optimize(count, wheres=[GRB.Callback.MIPSOL, GRB.Callback.MIPNODE])
            print(build.__name__, calls, model.Runtime / calls * 1e9)
