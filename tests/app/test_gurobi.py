"""The command line on real Gurobi: interrupts, and Gurobi's own failures."""

import json
import random
import signal
import subprocess
import time

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
    def interrupt(self, number):
        """Sends a signal while the search runs; the rest of what is printed."""
        process = subprocess.Popen([cli.PROGRAM, "split.mps", "timelimit=100", "--json", "result.json",
                                    "miptrace=trace.csv", "dumpbcsol=point"], cwd=self.folder, stdout=subprocess.PIPE,
                                   text=True, env=self.environment())
        for line in process.stdout:
            if "Incumbent" in line:  # the head of the search's table
                break
        time.sleep(0.5)
        begin = time.monotonic()
        process.send_signal(number)
        rest, _ = process.communicate(timeout=60)
        self.assertEqual(process.returncode, 0)
        self.assertLess(time.monotonic() - begin, 20)
        return rest

    def test_interrupt_keeps_the_best_point(self):
        self.write("split.mps", market_split())
        for number in (signal.SIGINT, signal.SIGTERM):
            rest = self.interrupt(number)
            self.assertIn(": interrupted, feasible solution; objective ", rest)
            found = json.loads(self.read("result.json"))
            self.assertEqual((found["status"], found["termination"]), ("unknown", "interrupted_by_signal"))
            self.assertLessEqual(found["bound"], found["objective"])
            self.assertIn("x49 ", self.read("split.sol"))
            self.assertRegex(self.read("trace.csv"), r",end\n\Z")
            dumped = sorted(self.folder.glob("point*.sol"), key=lambda path: int(path.stem.removeprefix("point")))
            best = float(dumped[-1].read_text().splitlines()[0].split()[-1])
            self.assertAlmostEqual(best, found["objective"], 6)
            for path in dumped:
                path.unlink()

    def test_a_file_that_is_lost_leaves_the_answer(self):
        full = "cannot write /dev/full: "
        self.write("whole.mps", cli.SMALL_MPS.replace(" x profit", " M 'MARKER' 'INTORG'\n x profit", 1))
        for words, part in [
            (["rngrestart=/dev/full"], "rngrestart: " + full + "No space left"),
            (["writeparams=/dev/full"], "writeparams: " + full),
            (["--trace", "/dev/full"], "trace of calls ends early: " + full + "No space left"),
            (["miptrace=/dev/full"], "the trace ends early: " + full + "No space left"),
            (["ResultFile=lost.bas"], "ResultFile: Gurobi has not written lost.bas"),
        ]:
            with self.subTest(words=words):
                model = "whole" if "bas" in words[0] else "small"
                run = self.run_program(f"{model}.mps", *words, "--json", "j", "--quiet")
                self.assertEqual((run.returncode, run.stdout), (1, ""))
                self.assert_one_line(run.stderr, part)
                self.assertIn("x 3", self.read(f"{model}.sol"))
                self.assertEqual(json.loads(self.read("j"))["objective"], 11)
                run = self.run_program(f"{model}.mps", "-AMPL", *words)
                self.assertEqual((run.returncode, run.stdout), (0, ""))
                self.assert_one_line(run.stderr, part)
                self.assertRegex(self.read(f"{model}.sol"), rf"\nnote: .*{part}(.|\n)*\nobjno 0 0\n")
                for name in (f"{model}.sol", "j"):
                    (self.folder / name).unlink(missing_ok=True)

    def test_files_of_gurobi_are_checked_before_and_after_the_solve(self):
        self.write("a.prm", "SolFiles=no/such\n")
        self.write("here.sol", "earlier")
        for words, code, part in [
            (["ResultFile=no/p.sol"], 1, "ResultFile: cannot write no/p.sol: No such file"),
            (["ResultFile=p.xyz"], 1, "ResultFile: Gurobi writes no file p.xyz"),
            (["readparams=a.prm"], 1, "SolFiles: cannot write no/such"),
            (["ResultFile=here.sol"], 0, ""),
            (["ResultFile=new.SOL.gz"], 0, ""),
            (["ResultFile=/dev/null"], 1, "writes no file"),
            (["ResultFile=new.ilp"], 0, ""),
        ]:
            with self.subTest(words=words):
                run = self.run_program("small.mps", *words, "--quiet")
                self.assertEqual(run.returncode, code)
                self.assertEqual(run.stdout + run.stderr, "" if not part else run.stderr)
                self.assertIn(part, run.stderr)
        self.assertIn("x 3", self.read("here.sol"))
        self.assertIn("new.SOL.gz", self.files())

    def test_a_parameter_file_in_log_and_report(self):
        self.write("a.prm", "LogToConsole 0\nNope 3\nTimeLimit 77\n")
        run = self.run_program("small.mps", "readparams=a.prm", "timelimit=5", "--report", "r.html")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertIn("a.prm, line 2: Gurobi has no parameter 'Nope'; the line has no effect.", run.stdout)
        self.assertRegex(self.read("r.html"), "<td>TimeLimit</td><td>77</td><td>a.prm, line 3</td>")

    def test_failures_of_gurobi_are_one_line(self):
        self.write("big.mps", mps("|".join(f"x{i} obj 1" for i in range(2500))))
        for words, env, part in [
            (["big.mps"], {}, "10010"),
            (["small.mps"], {"GRBLINK_GUROBI": "/nosuch.so"}, "/nosuch.so"),
            (["small.mps", "timelimit=soon"], {}, "soon"),
            (["small.mps", "rngread=nosuch"], {}, "rngread: nosuch cannot be read: No such file"),
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
