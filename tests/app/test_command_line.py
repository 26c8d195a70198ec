"""Options, words, outputs and exit codes, with the fake link in Gurobi's place."""

import os
import re
import subprocess
import xml.etree.ElementTree

import cli


class Information(cli.FolderCase):
    def test_answers_without_a_model(self):
        for words, code, expected in [
            ([], 2, r"^usage: grblink \[options\] stub \[-AMPL\]"),
            (["-?"], 0, r"^usage: grblink"),
            (["-v"], 0, r"^grblink \d+\.\d+\.\d+ \(Linux x86_64\), "),
            (["-!"], 0, r"\n 402  time limit, feasible solution\n"),
            (["--help"], 0, r"\n  --json FILE "),
            (["-h"], 0, r"wantsol"),
            (["--version", "--link", cli.FAKE_LINK], 0, r"\nthe fake solver\n"),
            (["--version", "--link", "/nosuch.so"], 0, r"\nno solver: .*/nosuch\.so"),
        ]:
            with self.subTest(words=words):
                run = self.run_program(*words)
                self.assertEqual(run.returncode, code)
                self.assertRegex(run.stdout, expected)
                self.assertEqual(run.stderr, "")

    def test_every_option_of_the_help_is_documented(self):
        page = (cli.pathlib.Path(__file__).parents[2] / "docs" / "command-line.md").read_text()
        options = re.findall(r"^  (-\S+)", self.run_program("--help").stdout, re.MULTILINE)
        self.assertGreater(len(options), 10)
        for option in options:
            self.assertIn(f"`{option}", page)

    def test_every_result_code_is_documented(self):
        page = (cli.pathlib.Path(__file__).parents[2] / "docs" / "results.md").read_text()
        rows = self.run_program("-!").stdout.splitlines()[1:]
        self.assertIn(" 402  stopped early, feasible relaxation", rows)
        for row in rows:
            code, message = row.split(None, 1)
            self.assertRegex(page, rf"\| ([\d, ]*, )?{code}(, [\d, ]*)? \|.*{re.escape(message)}")


class Solving(cli.FolderCase):
    def test_summary_and_point_file(self):
        run = self.run_fake("small.mps", "point=1", "objective=11", "bound=12", "gap=0.09", "nodes=1", "iterations=7",
                            "violation=0.5", "note=look here")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertRegex(run.stdout, r"\Agrblink [\d.]+: optimal solution; objective 11\n"
                                     r"2 rows, 2 variables, 4 nonzeros\n7 iterations\n1 branching node\n"
                                     r"best bound 12, relative gap 0\.09\n[\d.]+ seconds, the fake solver\n"
                                     r"warning: largest row violation 0\.5 at row c1 \(tolerance 1e-06\)\nnote: look here\n\Z")
        self.assertEqual(self.read("small.sol"), "# Objective value = 11\nx 0\ny 0\n")
        run = self.run_fake("small.mps", "status=2")
        self.assertIn('note: there is no solution to write; "small.sol" is from an earlier run\n', run.stdout)

    def test_zero_has_no_sign(self):
        run = self.run_fake("small.nl", "point=1", "objective=-0.0", "bound=-0.0", "gap=1", "--report", "page.html", "poolstub=p",
                            "give=objectives -0.0 -0.0;pool -0.0 3 1;fixed 0 1 -0.0")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertIn("; objective 0\n", run.stdout)
        for text in (run.stdout, self.read("small.sol"), self.read("p1.sol"), self.read("page.html")):
            self.assertNotRegex(text, r"(?<![\w.])-0(?![\w.])")
        self.assertEqual(self.run_fake("small.mps", "point=1", "objective=-0.0", "--quiet").returncode, 0)
        self.assertTrue(self.read("small.sol").startswith("# Objective value = 0\n"), self.read("small.sol"))

    def test_ending_in_capitals(self):
        self.write("BIG.MPS", cli.SMALL_MPS)
        self.write("BIG.NL", cli.SMALL_NL)
        for model, begin in (("BIG.MPS", "# Objective value = 11\n"), ("BIG.NL", "grblink ")):
            run = self.run_fake(model, "point=1", "objective=11")
            self.assertEqual((run.returncode, run.stderr), (0, ""))
            self.assertTrue(self.read("BIG.sol").startswith(begin), model)

    def test_outputs_by_options_and_words(self):
        log, text, summary = "log=Log line\n", "Log line\n", "grblink 0"
        for words, shown, written in [
            ([log], [text, summary], {"small.sol"}),
            ([log, "outlev=0"], [summary], {"small.sol"}),
            ([log, "--no-sol"], [text, summary], set()),
            ([log, "--quiet"], [], {"small.sol"}),
            ([log, "--quiet", "outlev=1"], [], {"small.sol"}),
            ([log, "--quiet", "--log", "l", "--json", "j"], [], {"small.sol", "l", "j"}),
            ([log, "logfile=l", "outlev=0", "-s"], [summary], {"small.sol", "l"}),
            (["bratio=1", "tell=1"], ["withheld\n", summary], {"small.sol"}),
            (["bratio=0.5", "tell=1"], ["starts:\n", summary], {"small.sol"}),
            (["wantsol=0"], [summary], set()),
            (["wantsol=0", "-s"], [summary], {"small.sol"}),
            (["wantsol=8"], [], set()),
            (["WantSol=11"], ["variable  value\nx  0\ny  0\n"], {"small.sol"}),
            (["wantsol=14", "give=values 3 1.5 2.5"], ["variable  value\n", "row  dual\nc1  1.5\nc2  2.5\n"], set()),
            (["--no-sol", "-oother.sol"], [summary], set()),
            (["-oother.sol"], [summary], {"other.sol"}),
            (["point=0", "status=2"], [summary, ": infeasible problem\n"], set()),
        ]:
            with self.subTest(words=words):
                for name in self.files() - {"small.mps", "small.nl"}:
                    os.remove(self.folder / name)
                run = self.run_fake("small.mps", "point=1", *words)
                self.assertEqual((run.returncode, run.stderr), (0, ""))
                self.assertEqual(self.files() - {"small.mps", "small.nl"}, written)
                for part in shown:
                    self.assertIn(part, run.stdout)
                for part in {text, summary, "variable  value"} - set(shown):
                    if not any(part in other for other in shown):
                        self.assertNotIn(part, run.stdout)
                if "l" in written:
                    self.assertEqual(self.read("l"), text)

    def test_tables_of_ranges(self):
        given = "values 0 3 1;values 5 2 0;values 6 1e100 3;values 11 3.5 -1e100;values 12 6 1e100"
        run = self.run_fake("small.mps", "--ranges", "wantsol=8", f"give={given}")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        rows = [line.split() for line in run.stdout.splitlines() if line]
        self.assertEqual(rows[1:3], [["x", "3", "2", "infinity", "-", "-", "-", "-"], ["y", "1", "0", "3", "-", "-", "-", "-"]])
        self.assertEqual(rows[4:], [["c1", "-", "3.5", "6"], ["c2", "-", "-infinity", "infinity"]])

    def test_points_of_the_pool_in_files(self):
        words = ("poolstub=p", "point=1", "objective=11", "give=pool 11 3 1;pool 9.5 3 0.25")
        for model, begins in (("small.mps", ("# Objective value = 11\nx 3\ny 1\n", "# Objective value = 9.5\n")),
                              ("small.nl", ("grblink ", "grblink "))):
            run = self.run_fake(model, *words)
            self.assertEqual((run.returncode, run.stderr), (0, ""))
            self.assertIn("2 points in the solution pool\n", run.stdout)
            for number, begin in enumerate(begins, 1):
                self.assertTrue(self.read(f"p{number}.sol").startswith(begin), self.read(f"p{number}.sol"))
        self.assertIn("point 2 of 2 in the solution pool; objective 9.5\n", self.read("p2.sol"))
        run = self.run_fake("small.mps", *words[:3], "give=pool 11 3 1")
        self.assertIn('note: the pool has 1 points; "p2.sol" is from an earlier run\n', run.stdout)

    def test_extras_in_the_summary_and_the_sol(self):
        run = self.run_fake("small.nl", "status=2", "condition=40", "exact=41",
                            "give=marks 0 1 0;marks 1 0 4;minimal 1;fixed 0 1 7;objectives 11 12")
        for line in ("condition number about 40", "exact condition number 41",
                     "conflict: 1 variable, 1 row; all of them are needed for it",
                     "fixed model: optimal solution; objective 7"):
            self.assertIn(line + "\n", run.stdout)
            self.assertIn(line + "\n", self.read("small.sol"))

    def test_report_is_one_well_formed_page(self):
        self.write("odd.mps", cli.SMALL_MPS.replace("c1", "<&'\"c"))
        run = self.run_fake("odd.mps", "--report", "page.html", "point=1", "progress=1000", "note=<i>", "fail=lost")
        self.assertEqual((run.returncode, run.stdout), (1, ""))
        self.assertNotIn("page.html", self.files())
        run = self.run_fake("odd.mps", "--report", "page.html", "point=1", "progress=1000", "note=<i>")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        page = self.read("page.html")
        body = xml.etree.ElementTree.fromstring(page[page.index("<body"):page.index("</html>")])
        texts = [element.text for element in body.iter()]
        for text in ("<&'\"c", "<i>", "optimal solution", "1000"):
            self.assertIn(text, texts)
        self.assertEqual([element.tag for element in body.iter() if element.tag in ("script", "img", "link")], [])
        self.assertLess(len(page), 100_000)

    def test_words_of_the_environment_come_first(self):
        listed = "log 'from here' objective=1\n outlev = 1 note=\"a 'b'\""
        run = self.run_fake("small.mps", "objective=2", "log=", env={"grblink_options": listed})
        self.assertEqual(run.returncode, 0, run.stderr)
        self.assertIn("objective 2\n", run.stdout)
        self.assertIn("note: a 'b'\n", run.stdout)
        self.assertNotIn("from here", run.stdout)

    def test_streams_may_be_closed(self):
        script = f'"{cli.PROGRAM}" --link "{cli.FAKE_LINK}" --quiet small.mps point=1 <&- >&- 2>&-'
        self.assertEqual(subprocess.run(script, shell=True, cwd=self.folder, timeout=60, check=False).returncode, 0)
        self.assertEqual(self.read("small.sol"), "# Objective value = NaN\nx 0\ny 0\n")


class Failing(cli.FolderCase):
    def test_wrong_usage(self):
        for words in (["--nosuch", "small.mps"], ["-z", "small.mps"], ["--json"], ["--quiet"], ["-AMPL"],
                      *([option, "", "small.mps"] for option in ("--json", "--report", "--log", "--trace", "--options", "--link")),
                      ["--json=", "small.mps"], ["--describe-options", ""]):
            with self.subTest(words=words):
                run = self.run_program(*words)
                self.assertEqual((run.returncode, run.stdout), (2, ""))
                self.assert_one_line(run.stderr, "grblink: ", "--help", words[0].rstrip("=") if "" in words else "")

    def test_bad_input_is_one_line_and_keeps_the_earlier_solution(self):
        self.write("empty.mps", "")
        self.write("half.nl", cli.SMALL_NL[:120])
        os.mkdir(self.folder / "folder.mps")
        for words, parts in [
            (["nosuch.mps"], ["nosuch.mps"]),
            (["empty.mps"], ["empty.mps"]),
            (["half.nl"], ["half.nl"]),
            (["folder.mps"], ["folder.mps"]),
            (["small.mps", "nosuch=1"], ["unknown option nosuch", "command line"]),
            (["small.mps", "timelimit"], ["name=value", "timelimit"]),
            (["small.mps", "=1"], ["name=value"]),
            (["small.mps", "outlev=high"], ["outlev", "0 to 100", "high"]),
            (["small.mps", "wantsol=16"], ["wantsol", "0 to 15"]),
            (["small.mps", "objno=-1"], ["objno"]),
            (["small.mps", "bratio=1.5"], ["bratio=1.5", "a number from 0 to 1"]),
            (["small.mps", "poolstub=nosuch/p"], ["nosuch/p1.sol", "No such file"]),
            (["small.mps", "poolstub=p", "--report", "p12.sol"], ["p12.sol is named for two outputs"]),
            (["small.mps", "--report", "nosuch/r"], ["nosuch/r", "No such file"]),
            (["small.mps", "objno=2"], ["objective 2", "has 1"]),
            (["small.mps", "fail=one\n  two"], ["one; two"]),
            (["--json", "nosuch/j", "small.mps"], ["nosuch/j", "No such file"]),
            (["--log", "nosuch/l", "small.mps"], ["nosuch/l", "No such file"]),
            (["--trace", "nosuch/t", "small.mps"], ["nosuch/t", "No such file"]),
            (["-onosuch/s", "small.mps"], ["nosuch/s", "No such file"]),
            (["--json", "folder.mps", "small.mps"], ["folder.mps", "Is a directory"]),
            (["--log", "./small.mps", "small.mps"], ["overwrite the model"]),
            (["--json", "./small.sol", "small.mps"], ["small.sol is named for two outputs"]),
            (["--json", "new", "--log", "new", "small.mps"], ["new is named for two outputs"]),
            (["--link", "nosuch.so", "small.mps"], ["nosuch.so"]),
        ]:
            with self.subTest(words=words):
                self.write("small.sol", "earlier")
                before = self.files()
                run = self.run_fake(*words) if "--link" not in words else self.run_program(*words)
                self.assertEqual((run.returncode, run.stdout), (1, ""))
                self.assert_one_line(run.stderr, "grblink: ", *parts)
                self.assertEqual(self.read("small.sol"), "earlier")
                self.assertEqual(self.read("small.mps"), cli.SMALL_MPS)
                self.assertEqual(self.files(), before)

    def test_bad_list_in_the_environment(self):
        for listed, part in (("timelimit", "no value"), ("a='b", "does not end"), ("=3", "name is missing")):
            run = self.run_fake("small.mps", env={"grblink_options": listed})
            self.assertEqual(run.returncode, 1)
            self.assert_one_line(run.stderr, "grblink_options", part)

    def test_lost_output_is_an_error_but_the_solution_is_written(self):
        for where, reason in ((">&-", "Bad file descriptor"), (">/dev/full", "No space left")):
            script = f'"{cli.PROGRAM}" --link "{cli.FAKE_LINK}" small.mps point=1 log=x {where}'
            run = subprocess.run(script, shell=True, cwd=self.folder, stderr=subprocess.PIPE, text=True, timeout=60, check=False)
            self.assertEqual(run.returncode, 1)
            self.assert_one_line(run.stderr, "standard output", reason)
            self.assertIn("x 0", self.read("small.sol"))
            os.remove(self.folder / "small.sol")
        script = f'ulimit -f 0; "{cli.PROGRAM}" --link "{cli.FAKE_LINK}" small.mps point=1'
        run = subprocess.run(script, shell=True, cwd=self.folder, capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual(run.returncode, 1)
        self.assert_one_line(run.stderr, "small.sol", "File too large")
        self.assertEqual(self.files(), {"small.mps", "small.nl"})
        run = self.run_fake("small.mps", "point=1", "--json", "/dev/full", "--log", "/dev/full", "--report", "/dev/full", "log=x")
        self.assertEqual(run.returncode, 1)
        self.assert_one_line(run.stderr, "/dev/full", "No space left")
        self.assertIn("x 0", self.read("small.sol"))
        os.remove(self.folder / "small.sol")
        run = self.run_fake("small.mps", "point=1", "lose=F is gone", "--json", "j", "--report", "/dev/full")
        self.assertEqual(run.returncode, 1)
        self.assertEqual(run.stderr, "grblink: F is gone\ngrblink: cannot write /dev/full: No space left on device\n")
        self.assertIn("note: F is gone\n", run.stdout)
        self.assertIn("x 0", self.read("small.sol"))
        self.assertIn("F is gone", self.read("j"))
