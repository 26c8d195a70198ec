"""What a modeling tool of the AMPL protocol sees, with the fake link in Gurobi's place."""

import os
import subprocess

import cli

COUNTS = "Options\n3\n1\n1\n0\n2\n0\n2\n{}\n"


class Protocol(cli.FolderCase):
    def test_solves_in_silence(self):
        os.makedirs(self.folder / "dir.v1")
        self.write("dir.v1/model", "")  # not the model
        self.write("dir.v1/model.nl", cli.SMALL_NL)
        for stub, sol in (("small.nl", "small.sol"), ("small", "small.sol"), ("dir.v1/model", "dir.v1/model.sol"),
                          (self.folder / "dir.v1" / "model.nl", "dir.v1/model.sol")):
            with self.subTest(stub=stub):
                run = self.run_fake(stub, "-AMPL", "point=1", "objective=11", "log=Log line", "wantsol=0", "iterations=1")
                self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))
                head, rest = self.read(sol).split("\n\n", 1)
                self.assertRegex(head, r"\Agrblink [\d.]+: optimal solution; objective 11\n1 iteration\Z")
                self.assertEqual(rest, COUNTS.format(2) + "0\n0\nobjno 0 0\n")
                os.remove(self.folder / sol)

    def test_one_argument_is_one_assignment(self):
        for word, text in (("log=a b", "a b"), ("log='a b'", "a b"), ('log="a\'b"', "a'b"), ("log= = 1", "= 1"), ("LOG", None)):
            with self.subTest(word=word):
                run = self.run_fake("small", "-AMPL", word, "outlev=1")
                self.assertEqual(run.returncode, 0)
                if text is not None:
                    self.assertEqual(run.stdout, text)
                else:
                    self.assertIn("error: command line: expected name=value", self.read("small.sol"))

    def test_failure_is_told_in_the_sol(self):
        self.write("half.nl", cli.SMALL_NL[:-20])
        for words, part in [
            (["small", "-AMPL", "nosuch=1"], "unknown option nosuch"),
            (["small", "-AMPL", "outlev=x"], "outlev=x: the value must be a whole number"),
            (["small", "-AMPL", "objno=3"], "objective 3"),
            (["small", "-AMPL", "-bogus"], "-bogus"),
            (["small", "-AMPL", "--json"], "--json"),
            (["small", "-AMPL", "fail=no licence"], "no licence"),
            (["half", "-AMPL"], "half.nl"),
        ]:
            with self.subTest(words=words):
                run = self.run_fake(*words)
                self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))
                message, rest = self.read(words[0] + ".sol").split("\n\n", 1)
                self.assertRegex(message, r"\Agrblink [\d.]+: error: .*" + part)
                self.assertEqual(rest, COUNTS.format(0) + "objno 0 500\n")

    def test_exit_code_tells_when_no_sol_can_be_written(self):
        self.write("bad.nl", "nonsense")
        for stub in ("nosuch", "bad", "bad.nl"):
            run = self.run_fake(stub, "-AMPL")
            self.assertEqual(run.returncode, 1)
            self.assert_one_line(run.stderr, "grblink: ")
        os.mkdir(self.folder / "small.sol")
        run = self.run_fake("small", "-AMPL", "point=1")
        self.assertEqual(run.returncode, 1)
        self.assert_one_line(run.stderr, "small.sol", "Is a directory")
        self.assertEqual(self.files(), {"small.mps", "small.nl", "bad.nl", "small.sol"})

    def test_lost_output_does_not_hide_the_answer(self):
        script = f'"{cli.PROGRAM}" --link "{cli.FAKE_LINK}" small -AMPL outlev=1 log=x point=1 >&-'
        run = subprocess.run(script, shell=True, cwd=self.folder, stderr=subprocess.PIPE, text=True, timeout=60, check=False)
        self.assertEqual(run.returncode, 0)
        self.assert_one_line(run.stderr, "standard output")
        self.assertIn("objno 0 0", self.read("small.sol"))
        run = self.run_fake("small", "-AMPL", "point=1", "lose=F is gone")
        self.assertEqual((run.returncode, run.stderr), (0, "grblink: F is gone\n"))
        self.assertRegex(self.read("small.sol"), r"\nnote: F is gone\n(.|\n)*\nobjno 0 0\n")

    def test_switches_before_the_stub(self):
        run = self.run_fake("-e", "-s", "-oout.sol", "--", "small", "wantsol=0", "point=1")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertIn("objno 0 0", self.read("out.sol"))
