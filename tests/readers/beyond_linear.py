"""What models have beyond linear objectives and rows, as Gurobi tells it and as our reader does, in one form:
trees are tuples ("operator", operand, ...) over column numbers ("x", 3) and floats; quadratic terms are {(i, j): value}
with i <= j."""

import random

import gurobipy as gp
from gurobipy import GRB, nlfunc

UNARY = {
    GRB.GENCONSTR_ABS: "abs", GRB.GENCONSTR_EXP: "exp", GRB.GENCONSTR_LOG: "log", GRB.GENCONSTR_SIN: "sin",
    GRB.GENCONSTR_COS: "cos", GRB.GENCONSTR_TAN: "tan", GRB.GENCONSTR_LOGISTIC: "sigmoid",
}  # fmt: skip
NODES = {
    GRB.OPCODE_MINUS: "minus", GRB.OPCODE_DIVIDE: "divide", GRB.OPCODE_UMINUS: "negate", GRB.OPCODE_SQUARE: "square",
    GRB.OPCODE_SQRT: "sqrt", GRB.OPCODE_SIN: "sin", GRB.OPCODE_COS: "cos", GRB.OPCODE_TAN: "tan",
    GRB.OPCODE_EXP: "exp", GRB.OPCODE_LOG: "log", GRB.OPCODE_LOG2: "log2", GRB.OPCODE_LOG10: "log10",
    GRB.OPCODE_LOGISTIC: "sigmoid", GRB.OPCODE_TANH: "tanh", GRB.OPCODE_SIGNPOW: "signed power",
}  # fmt: skip


def tree_of_nodes(codes, data, parents, column):
    """The tree of a nonlinear constraint as Gurobi lists it."""
    children = [[] for _ in codes]
    for node, parent in enumerate(parents):
        if parent >= 0:
            children[parent].append(node)

    def build(node):
        if codes[node] == GRB.OPCODE_VARIABLE:
            return column(data[node])
        if codes[node] == GRB.OPCODE_CONSTANT:
            return data[node]
        operands = [build(child) for child in children[node]]
        if codes[node] == GRB.OPCODE_PLUS:
            return ("plus" if len(operands) == 2 else "sum", *operands) if len(operands) > 1 else operands[0]
        if codes[node] == GRB.OPCODE_MULTIPLY:
            product = operands[0]
            for operand in operands[1:]:
                product = ("times", product, operand)
            return product
        if codes[node] == GRB.OPCODE_POW:
            kind = next((f" with constant {what}" for k, what in ((1, "exponent"), (0, "base"))
                         if isinstance(operands[k], float)), "")  # fmt: skip
            return ("power" + kind, *operands)
        return (NODES[codes[node]], *operands)

    return build(0)


def function_of(model, constraint, column):
    """Result and tree of a general constraint that is no indicator."""
    kind = constraint.GenConstrType
    get = {
        GRB.GENCONSTR_MAX: model.getGenConstrMax, GRB.GENCONSTR_MIN: model.getGenConstrMin,
        GRB.GENCONSTR_ABS: model.getGenConstrAbs, GRB.GENCONSTR_AND: model.getGenConstrAnd,
        GRB.GENCONSTR_OR: model.getGenConstrOr, GRB.GENCONSTR_NORM: model.getGenConstrNorm,
        GRB.GENCONSTR_PWL: model.getGenConstrPWL, GRB.GENCONSTR_POLY: model.getGenConstrPoly,
        GRB.GENCONSTR_EXP: model.getGenConstrExp, GRB.GENCONSTR_EXPA: model.getGenConstrExpA,
        GRB.GENCONSTR_LOG: model.getGenConstrLog, GRB.GENCONSTR_LOGA: model.getGenConstrLogA,
        GRB.GENCONSTR_POW: model.getGenConstrPow, GRB.GENCONSTR_SIN: model.getGenConstrSin,
        GRB.GENCONSTR_COS: model.getGenConstrCos, GRB.GENCONSTR_TAN: model.getGenConstrTan,
        GRB.GENCONSTR_LOGISTIC: model.getGenConstrLogistic, GRB.GENCONSTR_NL: model.getGenConstrNLAdv,
    }[kind](constraint)  # fmt: skip
    if kind == GRB.GENCONSTR_NL:
        return column(get[0]), tree_of_nodes(*get[1:], column)
    if kind in (GRB.GENCONSTR_MAX, GRB.GENCONSTR_MIN):
        constants = [get[2]] if abs(get[2]) < 1e20 else []
        return column(get[0]), ("max" if kind == GRB.GENCONSTR_MAX else "min", *map(column, get[1]), *constants)
    if kind in (GRB.GENCONSTR_AND, GRB.GENCONSTR_OR):
        return column(get[0]), ("forall" if kind == GRB.GENCONSTR_AND else "exists", *map(column, get[1]))
    if kind == GRB.GENCONSTR_NORM:
        if get[2] == 0:
            return column(get[0]), ("count", *(("!=", column(v), 0.0) for v in get[1]))
        return column(get[0]), ({1: "norm1", 2: "norm2"}.get(get[2], "infinity norm"), *map(column, get[1]))
    if kind == GRB.GENCONSTR_ABS:
        return column(get[0]), ("abs", column(get[1]))
    operand, result = column(get[0]), column(get[1])
    if kind in UNARY:
        return result, (UNARY[kind], operand)
    return result, {
        GRB.GENCONSTR_PWL: lambda: pieces(zip(get[2], get[3], strict=True), operand),
        GRB.GENCONSTR_POLY: lambda: ("polynomial", *get[2], operand),
        GRB.GENCONSTR_EXPA: lambda: ("power with constant base", get[2], operand),
        GRB.GENCONSTR_LOGA: lambda: ("logarithm to a base", operand, get[2]),
        GRB.GENCONSTR_POW: lambda: ("power with constant exponent", operand, get[2]),
    }[kind]()


def pieces(points, operand):
    return ("piecewise-linear by points", *(number for point in points for number in point), operand)


def quadratic_terms(expression, position):
    terms = {}
    for k in range(expression.size()):
        pair = tuple(sorted((position[expression.getVar1(k).index], position[expression.getVar2(k).index])))
        terms[pair] = terms.get(pair, 0) + expression.getCoeff(k)
    return {pair: value for pair, value in terms.items() if value != 0}


def linear_terms(expression, position):
    return {position[expression.getVar(k).index]: expression.getCoeff(k) for k in range(expression.size())}


def sides(sense, value, infinite):
    return (-infinite if sense == "<" else value, infinite if sense == ">" else value)


def gurobi_rows(model, position, infinite):
    """Name -> sides, terms, quadratic terms, expression and switch of every row that is not linear."""

    def column(variable):
        return ("x", position[variable.index])

    rows = {}
    for constraint in model.getQConstrs():
        expression = model.getQCRow(constraint)
        rows[constraint.QCName] = {
            "sides": sides(constraint.QCSense, constraint.QCRHS, infinite),
            "terms": linear_terms(expression.getLinExpr(), position),
            "quadratic": quadratic_terms(expression, position), "tree": None, "switch": None,
        }  # fmt: skip
    for constraint in model.getGenConstrs():
        row = {"quadratic": {}, "tree": None, "switch": None}
        if constraint.GenConstrType == GRB.GENCONSTR_INDICATOR:
            switch, value, expression, sense, side = model.getGenConstrIndicator(constraint)
            row |= {"sides": sides(sense, side, infinite), "terms": linear_terms(expression, position),
                    "switch": (position[switch.index], value)}  # fmt: skip
        else:
            result, tree = function_of(model, constraint, column)
            row |= {"sides": (0.0, 0.0), "terms": {result[1]: 1.0}, "tree": ("negate", tree)}
        rows[constraint.GenConstrName] = row
    return rows


def gurobi_objectives(model, columns, position):
    objectives = []
    for number in range(model.NumObj):
        with_pieces = model.NumPWLObjVars > 0
        if model.NumObj > 1:
            model.Params.ObjNumber = number
        expression = None if with_pieces else model.getObjective(*([number] if model.NumObj > 1 else []))
        quadratic = isinstance(expression, gp.QuadExpr)
        linear = {k: v.Obj for k, v in enumerate(columns) if v.Obj != 0}
        trees = [pieces(model.getPWLObj(v), ("x", k)) for k, v in enumerate(columns) if model.getPWLObj(v)]
        objectives.append({
            "linear": linear_terms(expression, position) if model.NumObj > 1 else linear,
            "constant": model.ObjNCon if model.NumObj > 1 else model.ObjCon,
            "quadratic": quadratic_terms(expression, position) if quadratic else {},
            "tree": None if not trees else trees[0] if len(trees) == 1 else ("plus" if len(trees) == 2 else "sum", *trees),
            "rank": (model.ObjNPriority, model.ObjNWeight, model.ObjNAbsTol, model.ObjNRelTol)
            if model.NumObj > 1 else None,
        })  # fmt: skip
    return objectives


def gurobi_sets(model, position):
    sets = []
    for each in model.getSOSs():
        kind, members, weights = model.getSOS(each)
        ordered = sorted(zip(weights, (position[v.index] for v in members), strict=True))
        sets.append((kind, [c for _, c in ordered], [w for w, _ in ordered]))
    return sets


def our_trees(model):
    trees = []
    for nodes in model["expressions"]:
        stack = []
        for what, value in nodes:
            if what in ("number", "column"):
                stack.append(float(value) if what == "number" else ("x", value))
            else:
                operands = stack[len(stack) - value :]
                del stack[len(stack) - value :]
                stack.append((what, *operands))
        (tree,) = stack
        trees.append(tree)
    return trees


def our_quadratic(model, number):
    if number < 0:
        return {}
    q = model["quadratics"]
    part = slice(q["start"][number], q["start"][number + 1])
    pairs = list(zip(q["first"][part], q["second"][part], strict=True))
    assert all(a <= b for a, b in pairs) and len(set(pairs)) == len(pairs)
    return dict(zip(pairs, q["value"][part], strict=True))


def our_rows(model, linear):
    """The same as gurobi_rows from the dump of our model. linear: names, sides and terms of all its rows."""
    trees, rows = our_trees(model), {}

    def at(key, i):
        return model[key][i] if model[key] else -1

    for i, (name, lower, upper, terms) in enumerate(linear):
        tree, quadratic, switch = at("rowExpression", i), at("rowQuadratic", i), at("indicator", i)
        if max(tree, quadratic, switch) >= 0:
            rows[name] = {
                "sides": (lower, upper), "terms": terms, "quadratic": our_quadratic(model, quadratic),
                "tree": trees[tree] if tree >= 0 else None,
                "switch": (switch, model["indicatorValue"][i]) if switch >= 0 else None,
            }  # fmt: skip
    return rows


def our_objectives(model):
    trees = our_trees(model)
    ranks = {s["name"]: s["value"] for s in model["suffixes"] if s["name"].startswith("obj")}
    return [
        {
            "linear": dict(zip(o["column"], o["value"], strict=True)), "constant": o["constant"],
            "quadratic": our_quadratic(model, o["quadratic"]),
            "tree": trees[o["expression"]] if o["expression"] >= 0 else None,
            "rank": tuple(ranks[f"obj{n}"][i] for n in ("priority", "weight", "abstol", "reltol")) if ranks else None,
        } for i, o in enumerate(model["objectives"])
    ]  # fmt: skip


def our_sets(model):
    parts = [slice(a, b) for a, b in zip(model["setStart"][:-1], model["setStart"][1:], strict=True)]
    return [(k, model["setColumn"][p], model["setWeight"][p]) for k, p in zip(model["setType"], parts, strict=True)]


class RandomModel:
    """Adds random elements of every kind to a model."""

    def __init__(self, model, chance):
        self.model, self.chance = model, chance
        self.x = [model.addVar(lb=chance.choice([0, -5, -GRB.INFINITY]), ub=9, name=f"x{i}") for i in range(7)]
        self.b = [model.addVar(vtype="B", name=f"b{i}") for i in range(4)]

    def number(self):
        return self.chance.choice([1.0, 2.0, -1.0, round(self.chance.gauss(0, 9), 3), self.chance.random() + 1])

    def some(self, variables, least=1):
        return self.chance.sample(variables, self.chance.randint(least, len(variables)))

    def linear(self):
        return gp.quicksum(self.number() * v for v in self.some(self.x + self.b))

    def quadratic(self):
        return gp.quicksum(self.number() * a * b for a, b in zip(self.some(self.x, 4), self.some(self.x, 4)))

    def points(self):
        xs = sorted(round(self.chance.uniform(-9, 9), 2) for _ in range(self.chance.randint(2, 6)))
        xs = [xs[0] - 1, *xs, xs[-1] + 1] + ([xs[-1] + 1, xs[-1] + 3] if self.chance.random() < 0.4 else [])
        return xs, [self.number() for _ in xs]

    def tree(self, depth):
        kind = self.chance.randint(0, 9 if depth else 1)
        if kind == 0:
            return self.chance.choice(self.x) * 1.0 if depth == 0 else self.tree(0) * self.number()
        if kind == 1:
            return nlfunc.sin(self.chance.choice(self.x))
        left = self.tree(depth - 1)
        if kind < 6:
            function = self.chance.choice([nlfunc.cos, nlfunc.tan, nlfunc.exp, nlfunc.log, nlfunc.log2, nlfunc.log10,
                                           nlfunc.sqrt, nlfunc.square, nlfunc.tanh, nlfunc.logistic])  # fmt: skip
            return function(left)
        right = self.tree(depth - 1)
        return self.chance.choice([
            lambda: left + right, lambda: left - right, lambda: left * right, lambda: left / right, lambda: -left,
            lambda: left ** 2.5, lambda: nlfunc.signpow(left, 3.0), lambda: left + right + self.number(),
        ])()  # fmt: skip

    def add_general(self, name):
        m, (y, x) = self.model, self.chance.sample(self.x, 2)
        operands, constant = self.some(self.x), self.chance.choice([None, self.number()])
        base = self.chance.random() * 4 + 1.5
        self.chance.choice([
            lambda: m.addGenConstrMax(y, operands, constant, name), lambda: m.addGenConstrMin(y, operands, constant, name),
            lambda: m.addGenConstrAbs(y, x, name), lambda: m.addGenConstrAnd(self.b[0], self.some(self.b[1:]), name),
            lambda: m.addGenConstrOr(self.b[0], self.some(self.b[1:]), name),
            lambda: m.addGenConstrNorm(y, operands, self.chance.choice([0, 1, 2, GRB.INFINITY]), name),
            lambda: m.addGenConstrPWL(x, y, *self.points(), name),
            lambda: m.addGenConstrPoly(x, y, [self.number(), 0.0, self.number(), self.chance.choice([0.0, 4.0])], name),
            lambda: m.addGenConstrExp(x, y, name), lambda: m.addGenConstrExpA(x, y, base, name),
            lambda: m.addGenConstrLog(x, y, name), lambda: m.addGenConstrLogA(x, y, base, name),
            lambda: m.addGenConstrPow(x, y, base, name), lambda: m.addGenConstrSin(x, y, name),
            lambda: m.addGenConstrCos(x, y, name), lambda: m.addGenConstrLogistic(x, y, name),
            lambda: m.addGenConstrTan(x, y, name, "FuncPieces=-1 FuncPieceError=0.01"),
            lambda: m.addGenConstrIndicator(self.chance.choice(self.b), self.chance.randint(0, 1), self.linear(),
                                            self.chance.choice("<>="), self.number(), name),
            lambda: m.addGenConstrNL(y, self.tree(self.chance.randint(1, 4)), name),
        ])()  # fmt: skip

    def set_objective(self):
        kind = self.chance.randint(0, 3)
        if kind == 0:
            self.model.setObjective(self.quadratic() + self.linear() + self.number())
        elif kind == 1:
            self.model.setObjective(self.linear())
            for v in self.some(self.x):
                self.model.setPWLObj(v, *self.points())
        elif kind == 2:
            for number in range(self.chance.randint(2, 4)):
                self.model.setObjectiveN(self.linear() + self.number(), number, self.chance.randint(0, 3), self.number(),
                                         self.chance.random(), self.chance.random() / 9, f"goal{number}")  # fmt: skip
        self.model.ModelSense = self.chance.choice([1, -1])


def random_models(env, folder, ending):
    chance = random.Random(11)
    for number in range(60):
        with gp.Model(f"beyond{number}", env) as m:
            make = RandomModel(m, chance)
            make.set_objective()
            for i in range(chance.randint(0, 4)):
                m.addConstr(make.linear() <= make.number(), f"linear{i}")
                m.addQConstr(make.quadratic() + make.linear(), chance.choice("<>="), make.number(), f"quadratic{i}")
            for _ in range(chance.randint(0, 3)):
                members = make.some(make.x, 2)
                m.addSOS(chance.choice([1, 2]), members, chance.sample(range(-9, 99), len(members)))
            for i in range(chance.randint(0, 12)):
                make.add_general(f"general{i}")
            path = folder / f"beyond{number}{ending}"
            m.write(str(path))
            yield path
