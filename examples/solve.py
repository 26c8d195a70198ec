"""Builds a small model by calls from Python, solves it, and prints everything about the result. Needs no package for the
calls; the Python that runs it must have gurobipy unless a Gurobi library is installed.

    python examples/solve.py build/release/lib/libkavo.so

A day's food at the least cost: portions of three foods, three demands. A second word may follow: the path of another link
library than the one beside libkavo.so.
"""

import ctypes
import sys
from ctypes import POINTER, byref, c_char_p, c_double, c_int, c_size_t, c_void_p

NO_RESULT = 5
MINIMIZE = 0
COLUMN, ROW = 0, 1
PRIMAL, REDUCED_COST, ACTIVITY, DUAL, SLACK = range(5)
BASIS_WORDS = {1: "lower", 2: "upper", 3: "basic", 4: "superbasic"}


class Outcome(ctypes.Structure):
    """kavo_outcome"""
    _fields_ = [("status", c_int), ("status_text", c_char_p), ("termination", c_char_p), ("sol_code", c_int),
                ("message", c_char_p), ("objective", c_double), ("bound", c_double), ("gap", c_double),
                ("iterations", c_double), ("nodes", c_double), ("seconds", c_double), ("solutions", c_double),
                ("relaxation", c_double), ("condition", c_double), ("exact_condition", c_double)]


class KavoError(Exception):
    pass


class Kavo:
    """Calls of kavo/kavo.h on one model, raising KavoError where C gets a status."""

    def __init__(self, library):
        self.library = ctypes.CDLL(library)
        self.library.kavo_last_error.restype = c_char_p
        # Sizes are wider than the int that ctypes passes unless told otherwise.
        self.library.kavo_add_columns.argtypes = [c_void_p, c_size_t] + [c_void_p] * 4
        self.library.kavo_add_rows.argtypes = [c_void_p, c_size_t] + [c_void_p] * 6
        self.library.kavo_add_objective.argtypes = [c_void_p, c_int, c_double, c_size_t] + [c_void_p] * 2 + [c_char_p]
        self.library.kavo_name.argtypes = [c_void_p, c_int, c_size_t, c_void_p]
        self.model = c_void_p()
        self.check(self.library.kavo_create(byref(self.model)))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.library.kavo_free(byref(self.model))

    def check(self, status):
        if status != 0:
            raise KavoError(self.library.kavo_last_error().decode())

    def call(self, function, *arguments):
        self.check(getattr(self.library, function)(self.model, *arguments))

    def text(self, function, *arguments):
        found = c_char_p()
        self.call(function, *arguments, byref(found))
        return found.value.decode()

    def array(self, function, which, kind):
        """A list of the values, or None when the solve has not given them."""
        first, count = POINTER(kind)(), c_size_t()
        status = getattr(self.library, function)(self.model, which, byref(first), byref(count))
        if status == NO_RESULT:
            return None
        self.check(status)
        return first[:count.value]

    def values(self, quantity):
        return self.array("kavo_result", quantity, c_double)

    def basis(self, kind):
        found = self.array("kavo_result_basis", kind, c_int)
        return found and [BASIS_WORDS[status] for status in found]

    def outcome(self):
        outcome = Outcome()
        self.call("kavo_get_outcome", byref(outcome))
        return outcome


def doubles(*values):
    return (c_double * len(values))(*values)


def texts(*values):
    return (c_char_p * len(values))(*(value.encode() for value in values))


def build(kavo):
    kavo.call("kavo_set_name", b"diet")
    kavo.call("kavo_add_columns", 3, None, doubles(4, 1e20, 1e20), None, texts("Oats", "Milk", "Beans"))
    start = (c_size_t * 4)(0, 3, 6, 9)  # row i has the terms start[i] .. start[i+1]-1
    column = (c_int * 9)(0, 1, 2, 0, 1, 2, 0, 1, 2)
    value = doubles(4, 2, 3, 3, 4, 8, 1, 6, 2)
    kavo.call("kavo_add_rows", 3, doubles(18, 28, 18), doubles(26, 1e20, 1e20), start, column, value,
              texts("energy", "protein", "calcium"))
    kavo.call("kavo_add_objective", MINIMIZE, 0, 3, (c_int * 3)(0, 1, 2), doubles(0.15, 0.48, 0.56), b"cost")


def print_elements(kavo, word, kind, quantities):
    """A line per element with all that the solve has given."""
    known = {name: kavo.values(quantity) for name, quantity in quantities.items()}
    basis = kavo.basis(kind)
    first = next(iter(known.values()))
    for i in range(len(first or [])):
        line = f"{word} {kavo.text('kavo_name', kind, i)}"
        line += "".join(f" {name} {values[i]:.6g}" for name, values in known.items() if values is not None)
        print(line + (f" basis {basis[i]}" if basis else ""))


def main(library, link=None):
    with Kavo(library) as kavo:
        build(kavo)
        kavo.call("kavo_set_option", b"timelimit", b"60", b"solve.py", 0)
        kavo.call("kavo_open_link", link and link.encode())
        print("solver", kavo.text("kavo_solver_text"))
        kavo.call("kavo_solve")  # fine also when the model is infeasible or a limit is reached
        outcome = kavo.outcome()
        print(outcome.status_text.decode(), outcome.termination.decode(), f"objective {outcome.objective:.6g}")
        print_elements(kavo, "column", COLUMN, {"value": PRIMAL, "reduced_cost": REDUCED_COST})
        print_elements(kavo, "row", ROW, {"activity": ACTIVITY, "dual": DUAL, "slack": SLACK})


if __name__ == "__main__":
    try:
        main(*sys.argv[1:])
    except KavoError as error:
        sys.exit(f"solve.py: {error}")
