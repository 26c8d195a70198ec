"""Random expressions as kavo's postfix arrays, and their values by Python's own functions."""

import math

# kavo_operator, by the words used here
NUMBER, VARIABLE = 80, 82
UNARY = {
    "floor": 13, "ceil": 14, "abs": 15, "negate": 16, "not": 34, "tanh": 37, "tan": 38, "sqrt": 39, "sinh": 40,
    "sin": 41, "log10": 42, "log": 43, "exp": 44, "cosh": 45, "cos": 46, "atanh": 47, "atan": 49, "asinh": 50,
    "asin": 51, "acosh": 52, "acos": 53, "square": 77, "log2": 85, "sigmoid": 86,
}
BINARY = {
    "plus": 0, "minus": 1, "times": 2, "divide": 3, "mod": 4, "less": 6, "or": 20, "and": 21, "<": 22, "<=": 23,
    "=": 24, ">=": 28, ">": 29, "!=": 30, "div": 55, "round": 57, "<==>": 73, "atan2": 48, "power": 5,
}
TERNARY = {"if": 35, "==>": 72}
MANY = {"min": 11, "max": 12, "sum": 54, "count": 59, "numberof": 60, "forall": 70, "exists": 71, "alldiff": 74,
        "norm1": 89, "norm2": 90, "norminf": 91}
CODES = UNARY | BINARY | TERNARY | MANY


def postfix(tree, nodes):
    """Appends the nodes (operator, index, value) of a tree: a number, "x3", or (word, operand, ...)."""
    if isinstance(tree, str):
        nodes.append((VARIABLE, int(tree[1:]), 0.0))
    elif isinstance(tree, tuple):
        for operand in tree[1:]:
            postfix(operand, nodes)
        nodes.append((CODES[tree[0]], len(tree) - 1 if tree[0] in MANY else 0, 0.0))
    else:
        nodes.append((NUMBER, 0, float(tree)))
    return nodes


def value(tree, point):
    """Raises ValueError or OverflowError outside a function's domain."""
    if isinstance(tree, str):
        return point[int(tree[1:])]
    if not isinstance(tree, tuple):
        return tree
    word, *operands = tree
    args = [value(operand, point) for operand in operands]
    if word in FUNCTIONS:
        return FUNCTIONS[word](*args)
    return getattr(math, word)(*args)


def _divide(x, y):
    if y == 0:
        raise ValueError("division by zero")
    return x / y


FUNCTIONS = {
    "abs": abs, "negate": lambda x: -x, "not": lambda x: float(x == 0), "square": lambda x: x * x,
    "sigmoid": lambda x: 1 / (1 + math.exp(-x)), "plus": lambda x, y: x + y, "minus": lambda x, y: x - y,
    "times": lambda x, y: x * y, "divide": _divide, "mod": lambda x, y: x - y * math.trunc(_divide(x, y)),
    "less": lambda x, y: max(x - y, 0.0), "or": lambda x, y: float(x != 0 or y != 0),
    "and": lambda x, y: float(x != 0 and y != 0), "<": lambda x, y: float(x < y), "<=": lambda x, y: float(x <= y),
    "=": lambda x, y: float(x == y), ">=": lambda x, y: float(x >= y), ">": lambda x, y: float(x > y),
    "!=": lambda x, y: float(x != y), "div": lambda x, y: float(math.trunc(_divide(x, y))),
    "<==>": lambda x, y: float((x != 0) == (y != 0)), "power": lambda x, y: x**y,
    "if": lambda c, x, y: x if c != 0 else y, "==>": lambda c, x, y: float(x != 0 if c != 0 else y != 0),
    "min": min, "max": max, "sum": lambda *x: math.fsum(x), "count": lambda *x: float(sum(v != 0 for v in x)),
    "numberof": lambda v, *x: float(sum(v == w for w in x)), "forall": lambda *x: float(all(v != 0 for v in x)),
    "exists": lambda *x: float(any(v != 0 for v in x)), "alldiff": lambda *x: float(len(set(x)) == len(x)),
    "norm1": lambda *x: math.fsum(map(abs, x)), "norm2": lambda *x: math.hypot(*x),
    "norminf": lambda *x: max(map(abs, x)), "floor": lambda x: float(math.floor(x)),
    "round": lambda x, _: math.copysign(math.floor(abs(x) + 0.5), x),
    "ceil": lambda x: float(math.ceil(x)),
}
