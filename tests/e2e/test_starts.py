"""What a solve starts from: points of earlier solves from files and by calls, bases, preferences of a relaxation."""

import glob
import os
import random
import tempfile
import unittest
from ctypes import c_double

from harness import (BINARY, CONTINUOUS, CORPUS, INF, INTEGER, ROW, KavoError, Model, environment, example, has_corpus,
                     ints, make, market_split)

NAN = float("nan")


def knapsack():
    rng = random.Random(5)
    weights = [rng.randrange(20, 90) for _ in range(12)]
    columns = [(f"x{j}", 0, 1, BINARY) for j in range(12)] + [("y", 0, 9.5, CONTINUOUS)]
    row = dict(enumerate(weights)) | {12: 3}
    return make("max", columns, [("capacity", 10, row, 300), ("rest", -INF, {12: 2, 0: 1}, 7)],
                [w + rng.randrange(-5, 6) for w in weights] + [1])


class Folder(unittest.TestCase):
    def setUp(self):
        self.folder = self.enterContext(tempfile.TemporaryDirectory())

    def path(self, name):
        return os.path.join(self.folder, name)

    def write(self, name, *lines):
        with open(self.path(name), "w", encoding="utf-8") as file:
            file.write("".join(line + "\n" for line in lines))
        return self.path(name)


class SearchStarts(Folder):
    def test_a_search_begins_with_the_incumbents_of_an_earlier_one(self):
        with market_split(4, 20) as model:
            first = model.solve(dumpbcsol=self.path("point"), nodelimit=200, threads=1)
        files = sorted(glob.glob(self.path("point*.sol")), key=lambda f: int(f[len(self.path("point")):-4]))
        self.assertGreater(len(files), 1)
        self.write("list", "# incumbents, the last first", *[os.path.basename(f) for f in reversed(files)])
        with environment(GRBLINK_TRACE=self.path("trace")), market_split(4, 20) as model:
            again, log = model.logged_solve(multimipstart=self.path("list"), nodelimit=0, threads=1)
        self.assertLessEqual(again.objective, first.objective)
        self.assertEqual(log.count("Copy 28 variables into MIP Start."), len(files))
        loaded = [line for line in log if "MIP start" in line]
        self.assertTrue(any(f"objective {first.objective:g}" in line for line in loaded), loaded)
        with open(self.path("trace"), encoding="utf-8") as trace:
            calls = [line for line in trace if '"StartNumber"' in line or '"Start"' in line]
        self.assertIn('"StartNumber", -1)', calls[0])
        self.assertIn('"StartNumber", 0)', calls[-1])
        self.assertEqual(len(calls), len(files) + 2)
        self.assertTrue(all("GRBsetdblattr" in call for call in calls[1:-1]))

    def test_starts_of_the_host_come_in_their_order_with_what_rules_add(self):
        with knapsack() as model:
            best = model.solve().values
        with environment(GRBLINK_TRACE=self.path("trace")), knapsack() as model:
            model.call("kavo_set_start", example.doubles(*best), None)
            model.call("kavo_add_mip_start", example.doubles(*[NAN] * 12, 2.0))
            model.call("kavo_add_mip_start", example.doubles(0.5, 1, 0.9999999, *[NAN] * 10))
            found, log = model.logged_solve(mipstart=1)
        copied = [line for line in log if line.startswith(("Copy", "Skipped"))]
        self.assertEqual(copied, ["Copy 14 variables into MIP Start.", "Copy 1 variables into MIP Start.",
                                  "Copy 2 variables into MIP Start.",
                                  "Skipped 1 integer variables for MIP Start due to infeasibility."])
        self.assertTrue(any(line.startswith(("User MIP start", "Loaded user MIP start")) for line in log), log)
        self.assertEqual(found.notes, [])

    def test_a_start_is_whole_although_expressions_need_variables_of_their_own(self):
        model = make("min", [("x", -5, 5, CONTINUOUS), ("y", -5, 5, INTEGER), ("b", 0, 1, BINARY)],
                     [("r", 1, {0: 1}, 4), ("s", -2, {0: 1, 1: 1}, 3)], [1, 1, -1])
        with model:
            model.give_expressions(ROW, {0: ("abs", ("minus", "x0", "x1")), 1: ("max", "x0", "x1")})
            model.call("kavo_set_start", example.doubles(0, -2, 1), None)
            found, log = model.logged_solve(mipstart=1)
        self.assertEqual(found.objective, -4)
        self.assertIn("Loaded user MIP start with objective -3", log)

    def test_starts_that_are_not_used_are_told(self):
        point = self.write("point.sol", "# a comment", "x0 1", "nobody 2", "none 3")
        self.write("list", "", "# with a comment", "  point.sol  ")
        lists = {"multimipstart": self.path("list")}
        unknown = f"{point}: 2 of its names are no variable of the model"
        off = f"the starts that {self.path('list')} lists are not used, as mipstart is 0"
        withheld = f"the starts that {self.path('list')} lists are withheld, as the basis ratio is 1"
        given = "the start point is not used: mipstart=1 hands start points to the search"
        for options, start, ratio, notes in (
                ({}, True, 0, [given]), (lists, False, 0, [unknown]),
                (lists | {"mipstart": 0}, False, 0, [unknown, off]),
                (lists, False, 1, [unknown, withheld]), ({"mipstart": 1}, True, 0, [])):
            with self.subTest(options=options, ratio=ratio), knapsack() as model:
                if start:
                    model.call("kavo_set_start", example.doubles(1, *[NAN] * 12), None)
                model.call("kavo_set_basis_ratio", c_double(ratio))
                found, log = model.logged_solve(**options)
                self.assertEqual(found.notes, notes)
                self.assertEqual("Copy 1 variables into MIP Start." in log, notes in ([unknown], []))
        with make("min", [("x0", 0, 1)], [], [1]) as model:
            self.assertEqual(model.solve(**lists).notes,
                             [unknown, "starts of a search are not used: nothing in the model is discrete"])

    def test_what_is_computed_from_a_value_that_is_passed_over_is_passed_over(self):
        for tree, values, copied in ((None, (1, 2.5), 1), (None, (1, 1.999999), 3), (("abs", "x1"), (1, -1.5), 1),
                                     (("abs", "x1"), (1, -1), 4)):
            with self.subTest(tree=tree, values=values), make(
                    "max", [("x", -3, 3, INTEGER), ("y", -3, 3, INTEGER)], [("r", 1, {0: 1, 1: 0 if tree else 1}, 4)],
                    [1, -1]) as model:
                if tree:
                    model.give_expressions(ROW, {0: tree})
                model.call("kavo_set_start", example.doubles(*values), None)
                _, log = model.logged_solve(mipstart=1)
                self.assertIn(f"Copy {copied} variables into MIP Start.", log)
                self.assertFalse(any("did not produce" in line for line in log), log)

    def test_files_that_are_wrong_are_refused_by_file_and_line(self):
        cases = {"nan": "x0 nan", "text": "x0 one", "half": "x0"}
        for name, line in cases.items():
            self.write(name, "x1 1", line)
            self.write("list", "", name)
            with self.subTest(name), knapsack() as model, self.assertRaises(KavoError) as raised:
                model.solve(multimipstart=self.path("list"))
            for part in (self.path("list") + ", line 2: ", self.path(name), "line 2"):
                self.assertIn(part, str(raised.exception))
        self.write("list", "nothing.sol")
        self.write("empty", "# nothing")
        for file, text in (("list", "nothing.sol"), ("empty", "names no file"), ("missing", "cannot be read")):
            with self.subTest(file), knapsack() as model, self.assertRaisesRegex(KavoError, text):
                model.solve(multimipstart=self.path(file))


def statuses(words):
    numbers = {word: number for number, word in example.BASIS_WORDS.items()}
    return ints([numbers[word] for word in words])


class Bases(unittest.TestCase):
    # max 3x + 2y with a row with two sides and one without any
    COLUMNS, COSTS = [("x", 0, 3), ("y", 0, INF)], [3, 2]
    ROWS = [("both", 1, {0: 1, 1: 1}, 4), ("none", -INF, {0: 1}, INF), ("most", -INF, {0: 1, 1: 3}, 8)]

    def notes_of(self, point=None, duals=None, basis=False, kind=CONTINUOUS, **options):
        """The notes of a solve, and of one after a change of a side."""
        columns = [(*column, kind) for column in self.COLUMNS]
        with make("max", columns, self.ROWS, self.COSTS) as model:
            if point or duals:
                model.call("kavo_set_start", *(values and example.doubles(*values) for values in (point, duals)))
            if basis:
                model.call("kavo_set_basis", ints([2, 3]), ints([2, 3, 3]))
            first = model.solve(**options).notes
            model.change_sides(2, None, 9)
            self.assertEqual(model.solve(**options).notes, first)
        return first

    def test_starts_that_the_setting_leaves_out_are_told_in_every_solve(self):
        missing = "the start point is not used: {} of 5 variables and rows have no value or dual value in it"
        discrete = "the start basis is not used: something in the model is discrete"
        search = "the start point is not used: mipstart=1 hands start points to the search"
        point, duals = [3, 1], [2, 0, 0]
        for given, notes in (
                ({"point": point}, []), ({"point": point, "usebasis": 2}, []), ({"point": point, "usebasis": 0}, []),
                ({"point": point, "usebasis": 3}, [missing.format(3)]),
                ({"point": [3, NAN], "duals": duals, "usebasis": 1}, [missing.format(1)]),
                ({"duals": duals}, [missing.format(2)]),
                ({"point": point, "duals": duals}, ["the start point is not used: usebasis=3 hands it to the solver"]),
                ({"point": point, "duals": duals, "usebasis": 3}, []),
                ({"point": point, "duals": duals, "basis": True}, []),
                ({"basis": True}, ["the start basis is not used: usebasis=2 hands it to the solver"]),
                ({"basis": True, "usebasis": 2, "kind": INTEGER}, [discrete]),
                ({"basis": True, "point": point, "kind": INTEGER}, [discrete, search]),
                ({"point": point, "kind": INTEGER, "varhint": 1}, []),
                ({"basis": True, "usebasis": 0, "kind": INTEGER}, [])):
            with self.subTest(given):
                self.assertEqual(self.notes_of(**given), notes)

    def solve(self, columns, rows, **options):
        with make("max", self.COLUMNS, self.ROWS, self.COSTS) as model:
            model.call("kavo_set_basis", ints(columns), ints(rows))
            found, log = model.logged_solve(threads=1, **options)
        self.assertEqual(found.objective, 11)
        return found.iterations, found.notes, any("Registering advanced basis." in line for line in log)

    def test_bases_are_used_or_it_is_told_why_not(self):
        lower, upper, basic = 1, 2, 3
        optimal = ([upper, basic], [upper, basic, basic])
        self.assertEqual(self.solve(*optimal, usebasis=2), (0, [], True))
        for columns, rows, options, note in (
                ([upper, basic], [upper, basic, 0], {"usebasis": 2},
                 "the start basis is not used: 1 of 5 variables and rows have no status in it"),
                ([upper, lower], [upper, basic, basic], {"usebasis": 1},
                 "the start basis is not used: 1 of its elements are basic and 2 must be"),
                ([basic, basic], [basic, basic, upper], {"usebasis": 2},
                 "the start basis is used in part: 3 of its elements are basic and 2 must be; the last 1 variables of "
                 "them start at their lower bounds")):
            with self.subTest(note):
                _, notes, registered = self.solve(columns, rows, **options)
                self.assertEqual((notes, registered), ([note], "in part" in note))
        self.assertEqual(self.solve(*optimal, usebasis=0)[1], [])

    def test_rows_that_are_given_as_expressions_take_part_in_a_basis(self):
        def model():
            made = make("max", [("x", 0, 5), ("y", -5, 5), ("z", 0, 9)],
                        [("r", 1, {0: 1}, 4), ("s", -2, {0: 1, 1: 1}, 3), ("t", -INF, {2: 1}, 7)], [1, 1, 2])
            made.give_expressions(ROW, {0: ("plus", "x0", "x1"), 2: ("times", "x2", 3)})
            return made

        with model() as cold:
            first = cold.solve(threads=1)
        with model() as warm:
            warm.call("kavo_set_basis", statuses(first.column_basis), statuses(first.row_basis))
            again = warm.solve(threads=1, usebasis=2)
        self.assertEqual((again.iterations, again.objective, again.notes), (0, first.objective, []))
        self.assertGreater(first.iterations, 0)

    CORPUS_NAMES = ("25fv47.mps.gz", "adlittle.mps", "bandm.mps", "boeing2.mps", "brandy.mps", "capri.mps", "e226.mps",
                    "scfxm1.mps", "scrs8.mps", "share2b.mps", "shell.mps", "stocfor1.mps")

    def test_models_of_the_corpus_need_fewer_iterations_from_their_own_basis_or_point(self):
        print(f"\n{'model':13} {'cold':>6} {'basis':>6} {'point':>6}  simplex iterations")
        for name in self.CORPUS_NAMES if has_corpus() else ():
            path = CORPUS / "lp" / name
            with self.subTest(name):
                with Model(path) as model:
                    cold = model.solve(threads=1)
                with Model(path) as model:
                    model.call("kavo_set_basis", statuses(cold.column_basis), statuses(cold.row_basis))
                    basis = model.solve(threads=1, usebasis=2)
                with Model(path) as model:
                    model.call("kavo_set_start", example.doubles(*cold.values), example.doubles(*cold.duals))
                    point = model.solve(threads=1, usebasis=3)
                print(f"{name:13} {cold.iterations:6.0f} {basis.iterations:6.0f} {point.iterations:6.0f}")
                for warm in (basis, point):
                    self.assertEqual(warm.notes, cold.notes)
                    self.assertAlmostEqual(warm.objective, cold.objective, delta=1e-8 * abs(cold.objective))
                    self.assertLess(warm.iterations, cold.iterations)


class Preferences(unittest.TestCase):
    """A point that must reach 8 with x + y and stay below 3 with x + 2y; x within [1, 2] by a row with two sides."""

    def relax(self, *suffixes, **options):
        model = make("min", [("x", 0, 10), ("y", 0, 5)],
                     [("low", 8, {0: 1, 1: 1}, INF), ("high", -INF, {0: 1, 1: 2}, 3), ("both", 1, {0: 1}, 2)], [1, 1])
        with model:
            for suffix in suffixes:
                model.suffix(*suffix)
            return model.solve(feasopt=1, threads=1, **options)

    def test_penalties_and_preferences(self):
        columns, rows = 0, 1
        fixed = (columns, "lbpen", [-3, -2]), (columns, "ubpen", [0, -1])
        for suffixes, relaxation in (
                ([], 5.5), ([(rows, "rhspen", [1, 10, 0.1])], 5.1), ([(rows, "rhspen", [1, 10, -1])], 5.5),
                ([*fixed, (rows, "rhspen", [1, 0.1, -1])], 1.9),
                ([(rows, "feaspref", [1, 10, 0]), *fixed], 1.9)):
            with self.subTest(suffixes):
                found = self.relax(*suffixes)
                self.assertEqual((found.sol_code, found.status), (100, "unknown"))
                self.assertAlmostEqual(found.relaxation, relaxation, delta=1e-6)

    def test_what_contradicts_itself_is_refused_and_what_is_given_twice_is_told(self):
        with self.assertRaisesRegex(KavoError, "variable x has lbpen 3 and ubpen 4"):
            self.relax((0, "lbpen", [3, None]), (0, "ubpen", [4, None]))
        with self.assertRaisesRegex(KavoError, "variable y has no lbpen and ubpen 4"):
            self.relax((0, "ubpen", [None, 4]))
        twice = self.relax((1, "feaspref", [1, None, None]), (1, "rhspen", [5, 1, 1]))
        self.assertIn("where both are given feaspref counts, not the penalty (rows: 1)", twice.notes)
