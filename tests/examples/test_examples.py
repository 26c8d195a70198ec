"""Runs the examples as their readers do and compares what they print with the answers worked out by hand.

The diet: with Oats at its limit of 4 the demands for protein and calcium bind,
    4 Milk + 8 Beans = 28 - 12,  6 Milk + 2 Beans = 18 - 4,  so Milk = 2, Beans = 1, and energy is 16 + 4 + 3 = 23.
The duals price Milk and Beans: 4p + 6c = 0.48, 8p + 2c = 0.56, so p = 0.06, c = 0.04; Oats are 0.15 - 3p - c = -0.07
from that, so that more of them would save money. Cost: 0.15 * 4 + 0.48 * 2 + 0.56 = 2.12 = 28p + 18c - 0.07 * 4.

The can: at the least surface of a volume V the height is twice the radius, V = 2 pi r^3, and the surface is 6 pi r^2.

The knapsack: of 2*2*2*2*2*4 choices the only one of value 15 or more that weighs 9 or less is tent and stove.
"""

import fractions
import itertools
import json
import math
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLES = ROOT / "examples"
TOLERANCE = 1e-6

OBJECTIVE = 2.12
CAN_RADIUS = (330 / (2 * math.pi)) ** (1 / 3)
COLUMNS = {"Oats": {"value": 4, "reduced_cost": -0.07, "basis": "upper"},
           "Milk": {"value": 2, "reduced_cost": 0, "basis": "basic"},
           "Beans": {"value": 1, "reduced_cost": 0, "basis": "basic"}}
ROWS = {"energy": {"activity": 23, "dual": 0, "slack": 3, "basis": "basic"},
        "protein": {"activity": 28, "dual": 0.06, "slack": 0, "basis": "lower"},
        "calcium": {"activity": 18, "dual": 0.04, "slack": 0, "basis": "lower"}}


def run(*words, folder=ROOT, trace=None):
    environment = {key: value for key, value in os.environ.items() if key != "grblink_options"}
    if trace:
        environment["GRBLINK_TRACE"] = str(trace)
    return subprocess.run([str(word) for word in words], cwd=folder, env=environment, stdin=subprocess.DEVNULL,
                          capture_output=True, text=True, timeout=60, check=False)


def facts_of(words):
    """{"value": 4.0, "basis": "upper"} of the words "value 4 basis upper"."""
    return {name: text if name == "basis" else float(text) for name, text in zip(words[::2], words[1::2])}


def parse(text, kind):
    """{name: facts} of the lines that begin with the kind."""
    lines = [line.split() for line in text.splitlines()]
    return {words[1]: facts_of(words[2:]) for words in lines if words[0] == kind}


def determinant(a, b, c):
    return (a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0]) + a[2] * (b[0] * c[1] - b[1] * c[0]))


def least_cost(protein, calcium):
    """What the diet costs with these demands: the least cost at a corner, in whole numbers and fractions. None when
    there is none, so no food will do."""
    # a x >= b: portions that are not negative, at most 4 of Oats, energy from 18 to 26, protein, calcium
    sides = [((1, 0, 0), 0), ((0, 1, 0), 0), ((0, 0, 1), 0), ((-1, 0, 0), -4), ((4, 2, 3), 18), ((-4, -2, -3), -26),
             ((3, 4, 8), protein), ((1, 6, 2), calcium)]
    costs = []
    for three in itertools.combinations(sides, 3):
        rows = [a for a, _ in three]
        size = determinant(*rows)
        if size == 0:
            continue
        point = []
        for column in range(3):  # Cramer's rule
            replaced = [[b if k == column else a[k] for k in range(3)] for a, b in three]
            point.append(fractions.Fraction(determinant(*replaced), size))
        if all(sum(x * y for x, y in zip(a, point)) >= b for a, b in sides):
            costs.append((15 * point[0] + 48 * point[1] + 56 * point[2]) / 100)
    return float(min(costs)) if costs else None


class Case(unittest.TestCase):
    def assert_facts(self, found, expected):
        """Compares {name: facts}; every fact found is one that is expected."""
        self.assertEqual(found.keys(), expected.keys())
        for name, facts in found.items():
            self.assertTrue(facts)
            for fact, value in facts.items():
                with self.subTest(element=name, fact=fact):
                    if isinstance(value, str):
                        self.assertEqual(value, expected[name][fact])
                    else:
                        self.assertAlmostEqual(value, expected[name][fact], delta=TOLERANCE)

    def assert_printed(self, done, head, facts_per_element):
        """The program went well and printed the outcome and the elements, with so many facts each."""
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        line = next(line for line in done.stdout.splitlines() if line.startswith("optimal"))
        words, objective = line.rsplit(" ", 1)
        self.assertEqual(words, head)
        self.assertAlmostEqual(float(objective), OBJECTIVE, delta=TOLERANCE)
        columns, rows = parse(done.stdout, "column"), parse(done.stdout, "row")
        self.assertEqual(({len(facts) for facts in columns.values()}, {len(facts) for facts in rows.values()}),
                         facts_per_element)
        self.assert_facts(columns, COLUMNS)
        self.assert_facts(rows, ROWS)


class Programs(Case):
    """The same model, built by calls in C and in Python, and by Pyomo."""

    CALLS = {"C": [os.environ["SOLVE_C"]],
             "Python": [sys.executable, "-B", EXAMPLES / "solve.py", os.environ["KAVO"]]}

    def test_calls(self):
        for language, command in self.CALLS.items():
            with self.subTest(language=language):
                done = run(*command)
                self.assertTrue(done.stdout.startswith("solver Gurobi 13."), done)
                self.assert_printed(done, "optimal finished objective", ({3}, {4}))

    def test_an_error_is_told_and_ends_the_program(self):
        for language, command in self.CALLS.items():
            with self.subTest(language=language):
                done = run(*command, "/no/such/link.so")
                self.assertEqual((done.returncode, done.stdout), (1, ""))
                self.assertIn("cannot load the link: /no/such/link.so", done.stderr)

    def test_a_model_that_is_not_linear(self):
        done = run(os.environ["CAN_C"])
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        self.assertTrue(done.stdout.startswith("optimal finished objective "), done.stdout)
        objective = float(done.stdout.splitlines()[0].split()[-1])
        columns = parse(done.stdout, "column")
        radius, height = (columns[name]["value"] for name in ("radius", "height"))
        self.assertAlmostEqual(objective, 6 * math.pi * CAN_RADIUS**2, delta=0.03)  # a gap of 1e-4 counts as optimal
        self.assertAlmostEqual(objective, 2 * math.pi * radius * (radius + height), delta=1e-2)
        self.assertGreater(math.pi * radius**2 * height, 330 - 1e-2)  # six digits are printed
        self.assertAlmostEqual(radius, CAN_RADIUS, delta=0.1)

    def test_a_hundred_days(self):
        with tempfile.TemporaryDirectory() as folder:
            trace = pathlib.Path(folder) / "trace"
            done = run(os.environ["DAYS_C"], trace=trace)
            calls = trace.read_text()
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        lines = done.stdout.splitlines()
        self.assertRegex(lines.pop(), r"^100 solves in [\d.]+ seconds with \d+ simplex iterations$")
        self.assertEqual(len(lines), 100)
        infeasible = 0
        for day, line in enumerate(lines):
            with self.subTest(line=line):
                expected = least_cost(20 + 5 * (day % 10), 12 + 4 * (day // 10))
                infeasible += expected is None
                if expected is None:
                    self.assertRegex(line, rf"^day {day} infeasible(_or_unbounded)?$")
                else:
                    self.assertRegex(line, rf"^day {day} optimal cost ")
                    self.assertAlmostEqual(float(line.split()[-1]), expected, delta=1e-5)
        self.assertTrue(0 < infeasible < 50, infeasible)
        self.assertEqual((calls.count("GRBoptimize("), calls.count("GRBaddvars(")), (100, 1))

    def test_pyomo(self):
        done = run(sys.executable, "-B", EXAMPLES / "pyomo_diet.py", os.environ["GRBLINK"])
        self.assert_printed(done, "optimal objective", ({2}, {2}))


class Files(Case):
    """The same model from files, and a mixed-integer one."""

    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def solve(self, model):
        """The JSON of a run on a copy of the model, with the files beside it."""
        for path in EXAMPLES.glob(pathlib.Path(model).stem + ".*"):
            (self.folder / path.name).write_bytes(path.read_bytes())
        done = run(os.environ["GRBLINK"], "--json", "all.json", model, folder=self.folder)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        return json.loads((self.folder / "all.json").read_text())

    def elements(self, part, rename):
        facts = [name for name in part if name != "name"]
        return {rename(name): {fact: part[fact][i] for fact in facts} for i, name in enumerate(part["name"])}

    def test_diet(self):
        for model, rename in [("diet.mps", str), ("diet.nl", lambda name: name.removeprefix("portions[").rstrip("]"))]:
            with self.subTest(model=model):
                found = self.solve(model)
                self.assertEqual((found["status"], found["termination"]), ("optimal", "finished"))
                self.assertAlmostEqual(found["objective"], OBJECTIVE, delta=TOLERANCE)
                self.assert_facts(self.elements(found["variables"], rename), COLUMNS)
                self.assert_facts(self.elements(found["rows"], str), ROWS)

    def test_knapsack(self):
        found = self.solve("knapsack.mps")
        self.assertEqual(found["status"], "optimal")
        self.assertAlmostEqual(found["objective"], 15, delta=TOLERANCE)
        values = dict(zip(found["variables"]["name"], found["variables"]["value"]))
        self.assertEqual({name for name, value in values.items() if round(value, 6) == 1}, {"tent", "stove"})
        self.assertAlmostEqual(sum(map(abs, values.values())), 2, delta=TOLERANCE)
        self.assertIsNone(found["rows"]["dual"])

    def test_diet_nl_is_what_pyomo_writes(self):
        done = run(sys.executable, "-B", EXAMPLES / "pyomo_diet.py", "--write", "diet.nl", folder=self.folder)
        self.assertEqual((done.returncode, done.stderr), (0, ""))
        for name in ("diet.nl", "diet.row", "diet.col"):
            self.assertEqual((self.folder / name).read_text(), (EXAMPLES / name).read_text())
