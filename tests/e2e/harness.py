"""Models that are solved on real Gurobi in this process: built by calls of kavo, or read from files."""

import contextlib
import json
import math
import os
import pathlib
import random
import sys
import tempfile
import threading
import types
from ctypes import CFUNCTYPE, byref, c_char_p, c_double, c_int, c_longlong, c_size_t, c_ubyte, c_void_p, string_at

ROOT = pathlib.Path(__file__).resolve().parents[2]
CORPUS = pathlib.Path(os.environ.get("GRBLINK_MODELS") or ROOT.parent / "shared" / "models")  # a folder of its own
sys.path.insert(0, str(ROOT / "examples"))
import formulas  # noqa: E402
import solve as example  # noqa: E402  the calls that users find in the example

INF = 1e20  # no bound, no side
CONTINUOUS, BINARY, INTEGER, SEMICONTINUOUS = range(4)
ROW, OBJECTIVE = 1, 2
KavoError = example.KavoError
LOG_WRITER = CFUNCTYPE(None, c_void_p, c_size_t, c_void_p)


def has_corpus():
    """Whether the models of others are there, whose tests are left out otherwise, with a line that says so. They must be
    there on a machine for continuous integration."""
    if CORPUS.is_dir():
        return True
    if os.environ.get("CI") == "true":
        raise AssertionError(f"there is no model corpus in {CORPUS} (set GRBLINK_MODELS)")
    print(f"The model corpus was not run: there is no folder {CORPUS} (set GRBLINK_MODELS).")
    return False


def ints(values):
    return (c_int * len(values))(*values)


class Model(example.Kavo):
    """A model of kavo with the link open once it is solved; to be used in a with statement."""

    def __init__(self, path=None):
        super().__init__(os.environ["KAVO"])
        self.is_open = False
        if path is not None:
            self.call("kavo_read", str(path).encode())

    def add_columns(self, columns):
        """columns: (name or None, lower, upper) or (name, lower, upper, type)."""
        names, lower, upper, *kinds = zip(*columns)
        kinds = (c_ubyte * len(names))(*kinds[0]) if kinds else None
        self.call("kavo_add_columns", len(names), example.doubles(*lower), example.doubles(*upper), kinds,
                  _texts(names))

    def add_rows(self, rows):
        """rows: (name or None, lower, {column: coefficient}, upper)."""
        names, lower, terms, upper = zip(*rows)
        start = [0]
        for row in terms:
            start.append(start[-1] + len(row))
        column = [j for row in terms for j in row]
        value = [a for row in terms for a in row.values()]
        self.call("kavo_add_rows", len(names), example.doubles(*lower), example.doubles(*upper),
                  (c_size_t * len(start))(*start), ints(column), example.doubles(*value), _texts(names))

    def add_objective(self, sense, costs, constant=0.0):
        """sense: "min" or "max"; costs: one per column."""
        self.call("kavo_add_objective", int(sense == "max"), constant, len(costs), ints(range(len(costs))),
                  example.doubles(*costs), None)

    def add_expressions(self, trees):
        """The numbers of new expressions, which are trees (formulas.postfix)."""
        start, nodes = [0], []
        for tree in trees:
            formulas.postfix(tree, nodes)
            start.append(len(nodes))
        op, index, number = zip(*nodes)
        first = c_int()
        self.call("kavo_add_expressions", len(trees), (c_size_t * len(start))(*start), ints(op), ints(index),
                  example.doubles(*number), byref(first))
        return range(first.value, first.value + len(trees))

    def give_expressions(self, kind, by_element):
        """Adds a tree to what each row or objective has of other terms."""
        numbers = self.add_expressions(by_element.values())
        self.call("kavo_set_expressions", kind, len(by_element), ints(by_element), ints(numbers))

    def give_quadratic_terms(self, kind, index, terms):
        """terms: {(column, column): coefficient}."""
        first, second = zip(*terms)
        self.call("kavo_add_quadratic_terms", kind, 1, ints([index]), (c_size_t * 2)(0, len(terms)), ints(first),
                  ints(second), example.doubles(*terms.values()))

    def add_logical(self, trees):
        self.call("kavo_add_logical", len(trees), ints(self.add_expressions(trees)), None)

    def add_set(self, kind, members):
        self.call("kavo_add_sets", 1, (c_ubyte * 1)(kind), (c_size_t * 2)(0, len(members)), ints(members), None, None)

    def switch(self, row, column, value):
        """The row holds where the column has the value."""
        self.call("kavo_set_indicators", 1, ints([row]), ints([column]), (c_ubyte * 1)(value))

    def change_sides(self, row, lower, upper):
        """None: as it is."""
        sides = (side if side is None else example.doubles(side) for side in (lower, upper))
        self.call("kavo_change_sides", 1, ints([row]), *sides)

    def suffix(self, kind, name, values):
        """values: one per element of the kind, None for none."""
        given = {i: value for i, value in enumerate(values) if value is not None}
        self.call("kavo_set_suffix", kind, name.encode(), len(given), ints(given), example.doubles(*given.values()))

    def json(self):
        """The results as the JSON file tells them."""
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "results.json"
            self.call("kavo_write_json", str(path).encode())
            return json.loads(path.read_text(encoding="utf-8"))

    def set(self, **options):
        for name, value in options.items():
            self.call("kavo_set_option", name.encode(), str(value).encode(), b"test", 0)

    def solve(self, **options):
        """Opens the link when need be, solves, and returns the results: attributes, None for what was not given."""
        self.set(**options)
        if not self.is_open:
            self.call("kavo_open_link", None)
            self.is_open = True
        self.call("kavo_solve")
        return self.results()

    def solve_interrupted(self, source, **options):
        """The same, and stops the search once it runs. source: kavo_stop_source."""
        begun = threading.Event()
        self.log(lambda text: begun.set() if b"Incumbent" in text else None)  # the head of the search's table
        stopper = threading.Thread(target=lambda: begun.wait(60) and self.call("kavo_interrupt", source))
        stopper.start()
        found = self.solve(**options)
        stopper.join()
        assert begun.is_set()
        return found

    def logged_solve(self, **options):
        """The results and the lines of the log."""
        pieces = []
        self.log(pieces.append)
        return self.solve(**options), b"".join(pieces).decode().splitlines()

    def results(self):
        outcome = self.outcome()
        found = {name: getattr(outcome, name) for name, _ in outcome._fields_}
        found |= {name: None for name, value in found.items() if isinstance(value, float) and math.isnan(value)}
        found |= {"status": outcome.status_text.decode(), "termination": outcome.termination.decode()}
        for name, quantity in (("values", example.PRIMAL), ("reduced_costs", example.REDUCED_COST),
                               ("activities", example.ACTIVITY), ("duals", example.DUAL), ("slacks", example.SLACK)):
            found[name] = self.values(quantity)
        found |= {"column_basis": self.basis(example.COLUMN), "row_basis": self.basis(example.ROW)}
        return types.SimpleNamespace(**found, notes=self.notes())

    def log(self, write):
        """Calls write(bytes) for every piece of log text from now on."""
        self.writer = LOG_WRITER(lambda text, length, _: write(string_at(text, length)))
        self.call("kavo_set_log", self.writer, None)

    def notes(self):
        notes, line = [], c_char_p()
        while True:
            self.call("kavo_note", c_size_t(len(notes)), byref(line))
            if line.value is None:
                return notes
            notes.append(line.value.decode())

    def counts(self):
        """Numbers of columns and rows."""
        columns, rows = c_size_t(), c_size_t()
        self.call("kavo_counts", byref(columns), byref(rows), None, None)
        return columns.value, rows.value

    def names(self, kind):
        return [self.text("kavo_name", kind, i) for i in range(self.counts()[kind])]

    def violation(self):
        """The largest violation of any kind at the point."""
        largest, value, element = 0.0, c_double(), c_longlong()
        for check in range(5):
            self.call("kavo_violation", check, byref(value), byref(element))
            largest = max(largest, value.value)
        return largest


def _texts(names):
    return (c_char_p * len(names))(*(name if name is None else name.encode() for name in names))


def make(sense, columns, rows, costs, constant=0.0):
    """A model from columns, rows and one objective; sense None: without."""
    model = Model()
    if columns:
        model.add_columns(columns)
    if rows:
        model.add_rows(rows)
    if sense:
        model.add_objective(sense, costs, constant)
    return model


def market_split(rows=6, size=50, can_pay=True):
    """Equations over binaries with paid slacks: a point is found at once, the proof takes very long. Without slacks nobody
    knows soon whether there is a point."""
    rng = random.Random(11)
    weights = [[rng.randrange(100) for _ in range(size)] for _ in range(rows)]
    columns = [(None, 0, 1, BINARY)] * size + [(None, 0, INF if can_pay else 0, CONTINUOUS)] * (2 * rows)
    equations = []
    for i, row in enumerate(weights):
        half = sum(row) // 2
        terms = dict(enumerate(row)) | {size + 2 * i: 1, size + 2 * i + 1: -1}
        equations.append((None, half, terms, half))
    return make("min", columns, equations, [0 if can_pay else 1] * size + [1] * (2 * rows))


@contextlib.contextmanager
def environment(**variables):
    """Environment variables of this process for a while; None takes one away."""
    before = {name: os.environ.get(name) for name in variables}
    _set_all(variables)
    try:
        yield
    finally:
        _set_all(before)


def _set_all(variables):
    for name, value in variables.items():
        if value is None:
            os.environ.pop(name, None)
        else:
            os.environ[name] = value
