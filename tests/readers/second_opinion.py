"""Compares a reader with Gurobi's own on the same files: those that Gurobi wrote, texts whose reading was settled after
Gurobi's, and those of the corpus, $GRBLINK_MODELS/lp and mip.

    SCRIPT DUMP written | corpus        DUMP prints the model that our reader makes of a file
"""

import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile

import beyond_linear as beyond
import gurobipy as gp
from gurobipy import GRB

INFINITE = 1e100
TYPES = "CBISN"


def clamp(value):
    """A bound or side as ours: infinite from 1e20 on."""
    return INFINITE if value >= 1e20 else -INFINITE if value <= -1e20 else value


def is_mps(path):
    return path.name.removesuffix(".gz").endswith(".mps")


def read_with_gurobi(path, env):
    """The model as Gurobi reads it. Gurobi turns a row of an .mps file with two sides into an equation with a variable
    MPS_Rg<row> between 0 and the width; that is taken back."""
    with gp.read(str(path), env) as model:
        columns = [v for v in model.getVars() if not (is_mps(path) and v.VarName.startswith("MPS_Rg"))]
        position = {v.index: k for k, v in enumerate(columns)}
        result = {
            "name": model.ModelName,
            "sense": 1 if model.ModelSense < 0 else 0,
            "objectives": beyond.gurobi_objectives(model, columns, position),
            "sets": beyond.gurobi_sets(model, position),
            "nonlinear": beyond.gurobi_rows(model, position, INFINITE),
            "columns": [(v.VarName, v.VType, clamp(v.LB), clamp(v.UB)) for v in columns],
            "rows": [],
            "lazy": {},
        }
        for constraint in model.getConstrs():
            row, terms, width = model.getRow(constraint), {}, 0
            lower = -INFINITE if constraint.Sense == "<" else constraint.RHS
            upper = INFINITE if constraint.Sense == ">" else constraint.RHS
            for k in range(row.size()):
                variable, value = row.getVar(k), row.getCoeff(k)
                if variable.index in position:
                    terms[position[variable.index]] = value
                elif value > 0:
                    lower = upper - variable.UB
                else:
                    upper = lower + variable.UB
            result["rows"].append((constraint.ConstrName, clamp(lower), clamp(upper), terms))
            if constraint.Lazy:
                result["lazy"][constraint.ConstrName] = constraint.Lazy
        return result


def names_of_rows(model):
    """Rows without a name have the one that Gurobi gives them: the number among those of the kind."""
    names, counts = model["rowNames"] or [""] * len(model["rowLower"]), {}
    for i, name in enumerate(names):
        kinds = (("GC", "rowExpression"), ("GC", "indicator"), ("qc", "rowQuadratic"))
        kind = next((kind for kind, key in kinds if model[key] and model[key][i] >= 0), "R")
        counts[kind] = counts.get(kind, -1) + 1
        names[i] = name or f"{kind}{counts[kind]}"
    return names


def name_after_objective(model):
    """What Gurobi takes for the name of the model in an .lp file."""
    return model["objectives"][0]["name"] if len(model["objectives"]) == 1 else ""


def read_with_ours(dump, path):
    run = subprocess.run([dump, str(path)], capture_output=True, text=True, errors="replace", check=False)
    if run.returncode:
        return run.stderr.strip()
    model = json.loads(run.stdout)
    start, names = model["start"], names_of_rows(model)
    rows = [
        (name, lower, upper, dict(zip(model["column"][a:b], model["value"][a:b])))
        for name, lower, upper, a, b in zip(
            names, model["rowLower"], model["rowUpper"], start[:-1], start[1:], strict=True
        )
    ]
    nonlinear = beyond.our_rows(model, rows)
    return {
        "name": model["name"] if is_mps(path) else name_after_objective(model),
        "sense": max((o["sense"] for o in model["objectives"]), default=0),
        "objectives": beyond.our_objectives(model),
        "sets": beyond.our_sets(model),
        "nonlinear": nonlinear,
        "columns": [
            (name, TYPES[kind], lower, upper)
            for name, kind, lower, upper in zip(
                model["columnNames"], model["columnType"], model["columnLower"], model["columnUpper"], strict=True
            )
        ],
        "rows": [row for row in rows if row[0] not in nonlinear],
        "lazy": {names[i]: v for s in model["suffixes"] if s["name"] == "lazy" for i, v in zip(s["index"], s["value"])},
    }


def same(ours, gurobi):
    """Equal, numbers within one unit of the last place: a side may be the sum of two numbers of the file."""
    if isinstance(gurobi, float):
        return abs(ours - gurobi) <= 4e-16 * max(abs(ours), abs(gurobi))
    if isinstance(gurobi, dict):
        return ours.keys() == gurobi.keys() and all(same(ours[k], gurobi[k]) for k in gurobi)
    if isinstance(gurobi, (list, tuple)):
        return len(ours) == len(gurobi) and all(map(same, ours, gurobi))
    return ours == gurobi


def differences(ours, gurobi):
    if isinstance(ours, str):
        return [f"refused: {ours}"]
    found = []
    for key, expected in gurobi.items():
        if key == "name":  # Gurobi takes the first word, we take the title
            if ours["name"].split()[:1] != expected.split()[:1]:
                found.append(f"name: ours {ours['name']}, Gurobi {expected}")
        elif not same(ours[key], expected):
            detail = f"ours {ours[key]}, Gurobi {expected}"[:600]
            if isinstance(expected, list):
                pairs = [f"ours {a}, Gurobi {b}" for a, b in zip(ours[key], expected) if not same(a, b)]
                detail = f"{len(ours[key])} and {len(expected)} of them; " + "; ".join(pairs[:3])
            found.append(f"{key}: {detail}")
    return found


def corpus_files(pattern):
    folder = pathlib.Path(os.environ.get("GRBLINK_MODELS", "../shared/models"))
    files = sorted(f for kind in ("lp", "mip") for f in (folder / kind).glob(pattern))
    if not files:
        sys.exit(f"there are no {pattern} in {folder}/lp and mip; set GRBLINK_MODELS to the folder of the corpus")
    return files


def hand_made(env, folder, ending):
    """Linear models of every feature that Gurobi writes."""
    inf = GRB.INFINITY
    with gp.Model("all kinds", env) as m:
        x = m.addVar(name="x")
        columns = [
            m.addVar(lb=-5, ub=-2, vtype="I", name="y[1,2]"),
            m.addVar(lb=-inf, ub=-2, name="z#%&"),
            m.addVar(lb=-inf, name="free'"),
            m.addVar(lb=2, ub=7, vtype="S", name="semi"),
            m.addVar(vtype="S", name="semi_infinite"),
            m.addVar(ub=7, vtype="N", name="semi_integer"),
            m.addVar(lb=2, ub=9, vtype="N", name="semi_integer_from_2"),
            m.addVar(vtype="B", name="binary"),
            m.addVar(vtype="B", ub=0, name="binary_at_0"),
            m.addVar(vtype="B", lb=1, name="binary_at_1"),
            m.addVar(vtype="I", name="integer"),
            m.addVar(vtype="I", ub=1, name="integer_to_1"),
            m.addVar(vtype="I", lb=-inf, name="integer_free"),
            m.addVar(vtype="I", lb=-inf, ub=4, name="integer_below"),
            m.addVar(vtype="I", lb=1, name="integer_from_1"),
            m.addVar(lb=3, ub=3, name="fixed"),
            m.addVar(lb=-7, ub=0, name="to_0"),
            m.addVar(lb=-inf, ub=0, name="below_0"),
            m.addVar(ub=1e19, name="large"),
            m.addVar(name="é*$"),
            m.addVar(name="a_name_of_many_letters_" * 10),
        ]
        m.setObjective(2.5 * x - gp.quicksum(columns[:8]) + 7, GRB.MAXIMIZE)
        m.addConstr(x + gp.quicksum(columns) <= 4.25, name="le")
        m.addConstr(x - columns[0] >= -1e-7, name="ge")
        m.addConstr(gp.quicksum(columns[5:]) == 1 / 3, name="eq")
        m.addConstr(x <= 1e30, name="no_side")
        m.addConstr(0 * x >= -1, name="empty")
        m.addRange(x + columns[2], -2, 5, name="range")
        m.addConstr(x - columns[1] >= 1, name="lazy").Lazy = 2
        m.addConstr(x - columns[3] >= 1, name="cut").Lazy = -1
        for name in (f"all{ending}", f"all{ending}.gz"):
            m.write(str(folder / name))
            yield folder / name
    with gp.Model(env=env) as m:  # blanks in names: Gurobi makes names of its own
        m.addConstr(m.addVar(name="a b") + m.addVar(name="c") >= 1, name="r 1")
        m.write(str(folder / f"blanks{ending}"))
        yield folder / f"blanks{ending}"


def large_model(env, folder, ending):
    """More entries than the reader keeps together."""
    chance = random.Random(7)
    with gp.Model("large", env) as m:
        variables = [m.addVar(round(chance.uniform(-9, 0), 3), chance.choice([GRB.INFINITY, chance.random()]),
                              chance.gauss(0, 1), chance.choice("CI"), f"v{j}") for j in range(1000)]  # fmt: skip
        for i in range(300):
            left = gp.quicksum(chance.choice([-1, 1, chance.gauss(0, 100)]) * v for v in chance.sample(variables, 120))
            m.addLConstr(left, chance.choice("<>="), chance.choice([0, chance.gauss(0, 1e6)]), f"c{i}")
        m.ModelSense, m.ObjCon = -1, chance.gauss(0, 10)
        m.write(str(folder / f"large{ending}"))
        yield folder / f"large{ending}"


def texts_as_files(texts, folder, ending):
    for number, text in enumerate(texts):
        path = folder / f"settled{number}{ending}"
        path.write_text(text, encoding="utf-8")
        yield path


def compare(dump, path, env):
    try:
        expected = read_with_gurobi(path, env)
    except gp.GurobiError as error:
        return [f"Gurobi refuses it: {error}"]
    return differences(read_with_ours(dump, path), expected)


def run(ending, settled, corpus):
    """settled: texts; corpus: called with environment and folder, gives paths."""
    dump, models = sys.argv[1:]
    compared, failed = 0, 0
    with gp.Env(params={"OutputFlag": 0}) as env, tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        written = [make(env, folder, ending) for make in (hand_made, large_model, beyond.random_models)]
        written.append(texts_as_files(settled, folder, ending))
        for path in corpus(env, folder) if models == "corpus" else (file for maker in written for file in maker):
            found = compare(dump, path, env)
            compared += not found
            for text in found:
                failed += 1
                source = path.read_text(errors="replace")[:1500] if path.name.startswith("settled") else ""
                print(f"{path.name}: {text}\n{source}")
    print(f"{compared} files read as Gurobi reads them, {failed} differences")
    sys.exit(failed > 0 or compared < 20)
