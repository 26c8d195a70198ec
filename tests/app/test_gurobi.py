"""The command line on real Gurobi: answers worked out by hand, odd models, and Gurobi's own failures."""

import json
import random
import signal
import subprocess
import time
import unittest

import cli

MPS = "NAME t\nROWS\n N obj\n{rows}COLUMNS\n{columns}RHS\n{rhs}BOUNDS\n{bounds}ENDATA\n"


def mps(columns="", rows="", rhs="", bounds=""):
    lines = {"columns": columns, "rows": rows, "rhs": rhs, "bounds": bounds}
    return MPS.format(**{key: "".join(f" {line}\n" for line in text.split("|") if line) for key, text in lines.items()})


def market_split(size=50, rows=6):
    """Binary equations with slacks that are paid for: points are easy to find, a proof takes very long."""
    rng = random.Random(7)
    weights = [[rng.randrange(100) for _ in range(size)] for _ in range(rows)]
    names = [f"x{j}" for j in range(size)]
    columns = [" M1 'MARKER' 'INTORG'"]
    columns += [f" {name} " + " ".join(f"r{i} {weights[i][j]}" for i in (k, k + 1)) for j, name in enumerate(names)
                for k in range(0, rows, 2)]
    columns += [" M2 'MARKER' 'INTEND'"]
    columns += [f" {side}{i} obj 1 r{i} {sign}" for i in range(rows) for side, sign in (("p", 1), ("m", -1))]
    text = "NAME split\nROWS\n N obj\n" + "".join(f" E r{i}\n" for i in range(rows)) + "COLUMNS\n" + "\n".join(columns)
    text += "\nRHS\n" + "".join(f" RHS r{i} {sum(weights[i]) // 2}\n" for i in range(rows))
    return text + "BOUNDS\n" + "".join(f" UP BND {name} 1\n" for name in names) + "ENDATA\n"


class Gurobi(cli.FolderCase):
    def solve(self, model, *words, **more):
        run = self.run_program(model, "--json", "result.json", *words, **more)
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        return run, json.loads(self.read("result.json"))

    def test_both_formats_give_the_answer_worked_out_by_hand(self):
        for model in ("small.mps", "small.nl"):
            run, found = self.solve(model)
            self.assertRegex(run.stdout, r"Optimal objective +1\.1")  # Gurobi's log
            self.assertEqual((found["status"], found["termination"], found["objective"]), ("optimal", "finished", 11))
            columns = found["variables"]
            byName = dict(zip(columns["name"], zip(columns["value"], columns["reduced_cost"], columns["basis"])))
            x, y = ("x", "y") if model == "small.mps" else ("_svar[2]", "_svar[1]")
            self.assertEqual(byName, {x: (3, 1, "upper"), y: (1, 0, "basic")})
            rows = found["rows"]
            self.assertEqual((rows["activity"], rows["dual"], rows["slack"]), ([4, 6], [2, 0], [0, 0]))
        self.assertEqual(self.read("small.sol").split("objno 0 0\n")[0].splitlines()[-4:], ["2", "0", "1", "3"])

    def test_trace_and_log_files(self):
        self.solve("small.mps", "--trace", "calls", "--log", "log", "--quiet")
        for name in ("GRBaddvars", "GRBaddconstr", "GRBoptimize"):
            self.assertIn(name, self.read("calls"))
        self.assertIn("Optimize a model with 2 rows, 2 columns", self.read("log"))

    def test_odd_models_are_not_errors(self):
        for name, text, status, shown in [
            ("crossed bounds", mps("x obj 1", bounds="LO BND x 2|UP BND x 1"), "infeasible", "x has lower bound 2 above upper bound 1"),
            ("no objective", mps("x r 1", "G r", "RHS r 2").replace(" N obj\n", ""), "optimal", None),
            ("no rows", mps("x obj 1", bounds="LO BND x 2"), "optimal", "objective 2\n"),
            ("no columns", mps(), "optimal", "0 variables"),
            ("a row that cannot hold", mps("x r 0", "G r", "RHS r 2"), "infeasible", None),
            ("long name", mps(f"{'n' * 300} obj 1", bounds=f"LO BND {'n' * 300} 2"), "optimal", "objective 2\n"),
        ]:
            with self.subTest(name=name):
                self.write("odd.mps", text)
                run, found = self.solve("odd.mps", "outlev=0")
                self.assertIn(found["status"], (status, status + "_or_unbounded"))
                self.assertIn(shown or "", run.stdout)
        self.assertEqual(found["variables"]["name"], ["n" * 300])
        self.assertEqual(self.read("odd.sol"), f"# Objective value = 2\n{'n' * 300} 2\n")

    def test_equal_names_are_noted(self):
        self.write("small.col", "same\nsame\n")
        run, found = self.solve("small.nl", "outlev=0")
        self.assertIn('"same"', run.stdout)
        self.assertEqual((found["objective"], found["variables"]["name"]), (11, ["same", "same"]))

    def interrupt(self, number, after, pause):
        """Sends a signal some time after a line with this word was logged; the rest of what is printed."""
        process = subprocess.Popen([cli.PROGRAM, "split.mps", "timelimit=100", "--json", "result.json",
                                    "miptrace=trace.csv", "dumpbcsol=point"], cwd=self.folder, stdout=subprocess.PIPE,
                                   text=True, env=self.environment())
        for line in process.stdout:
            if after in line:
                break
        time.sleep(pause)
        begin = time.monotonic()
        process.send_signal(number)
        rest, _ = process.communicate(timeout=60)
        self.assertEqual(process.returncode, 0)
        self.assertLess(time.monotonic() - begin, 20)
        return rest

    def test_interrupt_keeps_the_best_point(self):
        self.write("split.mps", market_split())
        for number in (signal.SIGINT, signal.SIGTERM):
            rest = self.interrupt(number, "Incumbent", 0.5)  # the head of the search's table: it runs
            self.assertIn(": interrupted, feasible solution; objective ", rest)
            found = json.loads(self.read("result.json"))
            self.assertEqual((found["status"], found["termination"]), ("unknown", "interrupted_by_signal"))
            self.assertLessEqual(found["bound"], found["objective"])
            self.assertIn("x49 ", self.read("split.sol"))
            self.assertRegex(self.read("trace.csv"), r",end\n\Z")
            dumped = sorted((path for path in self.folder.glob("point*.sol")), key=lambda path: path.stat().st_mtime_ns)
            best = float(dumped[-1].read_text().splitlines()[0].split()[-1])
            self.assertAlmostEqual(best, found["objective"], 6)

    def test_interrupt_before_the_search_is_not_forgotten(self):
        self.write("split.mps", market_split())
        self.assertIn(": interrupted, ", self.interrupt(signal.SIGINT, "Gurobi", 0))
        self.assertEqual(json.loads(self.read("result.json"))["termination"], "interrupted_by_signal")
        self.assertTrue(self.read("trace.csv").endswith(",end\n"))

    def test_limit_gives_both_answers(self):
        self.write("split.mps", market_split())
        _, found = self.solve("split.mps", "solutionlimit=1", "--quiet")
        self.assertEqual((found["status"], found["termination"]), ("unknown", "solution_limit"))
        self.assertEqual(len(found["variables"]["value"]), 62)

    def test_failures_of_gurobi_are_one_line(self):
        self.write("big.mps", mps("|".join(f"x{i} obj 1 r{i} 1" for i in range(2500)), "|".join(f"G r{i}" for i in range(2500)),
                                  "|".join(f"RHS r{i} 1" for i in range(2500))))
        for words, env, part in [
            (["big.mps"], {}, "10010"),
            (["small.mps"], {"GRBLINK_GUROBI": "/nosuch.so"}, "/nosuch.so"),
            (["small.mps", "timelimit=-1"], {}, "TimeLimit=-1"),
            (["small.mps", "timelimit=soon"], {}, "soon"),
            (["small.mps", "nosuch=1"], {}, "nosuch"),
        ]:
            with self.subTest(words=words):
                run = self.run_program(*words, "outlev=0", env=env)
                self.assertEqual((run.returncode, run.stdout), (1, ""))
                self.assert_one_line(run.stderr, part)
                self.assertNotIn("small.sol", self.files())
        run = self.run_program("small", "-AMPL", env={"GRBLINK_GUROBI": "/nosuch.so"})
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))
        self.assertRegex(self.read("small.sol"), r"error: .*/nosuch\.so(.|\n)*\nobjno 0 500\n\Z")
        run = self.run_program("--version", env={"GRBLINK_GUROBI": "/nosuch.so"})
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertIn("/nosuch.so", run.stdout)


if __name__ == "__main__":
    unittest.main()
