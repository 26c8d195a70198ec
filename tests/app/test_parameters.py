"""The catalogue on real Gurobi: every parameter is set through an option file and read back; help and its page."""

import json
import pathlib
import re

import cli

DOCUMENTS = pathlib.Path(__file__).parents[2] / "docs"

# What Gurobi does only with help from elsewhere: a value that it takes, and what it says then.
WITH_ERRORS = {
    "ConcurrentJobs": (1, "No distributed workers available"),  # there is no cluster
}


def catalogue(yaml):
    """The settings by name, with what is said of each; read as a line-oriented text, which YAML in block style is."""
    settings, group = {}, None
    for line in yaml.splitlines():
        if re.match(r"^\S.*:$", line) and not line.startswith("- "):
            group = line[:-1]
        elif line.startswith("- !"):
            latest = {"group": group, "kind": line[3:]}
        elif found := re.match(r"^  (name|def|lo|up): (.*)$", line):
            latest[found[1]] = found[2]
            settings[latest["name"]] = latest
    return settings


def other_value(setting):
    """Within the bounds and not the default."""
    number = int if "Int32" in setting["kind"] else float
    default, low, high = (number(float(setting[key])) for key in ("def", "lo", "up"))
    candidates = [1000, default * 2, default / 2, default - 1, default + 1, low, high] if number is float else \
                 [default + 1, default - 1]
    return next(value for value in candidates if low <= value <= high and value != default)


def as_told(value):
    """A number as the trace and notes show it."""
    return str(value) if isinstance(value, int) else f"{value:g}"


class Parameters(cli.FolderCase):
    def setUp(self):
        super().setUp()
        run = self.run_program("--describe-options", "all.yaml")
        self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))
        self.settings = catalogue(self.read("all.yaml"))

    def gurobis(self):
        """Names and values that are not the default, in the order of the catalogue."""
        texts = {"NodefileDir": str(self.folder), "SolFiles": "found", "WorkerPassword": "open sesame",
                 "ResultFile": "result.sol"}
        own = {"Link", "Command line", "Rewriting", "Plug-ins"}
        names = [name for name, setting in self.settings.items() if setting["group"] not in own]
        self.assertEqual(len(names), 161)
        return {name: texts[name] if name in texts else other_value(self.settings[name]) for name in names}

    def parameter_calls(self):
        """(function, name, value) of each call that sets a parameter, but for the one that makes the link's own."""
        calls = re.findall(r'^\d+ GRBset(int|dbl|str)param\(env, "(\w+)", (.*)\) = 0 ', self.read("trace"), re.MULTILINE)
        self.assertEqual(calls[0], ("int", "LogToConsole", "0"))
        return calls[1:]

    def call_of(self, name, value):
        kind = {"RangeInfo_Int32": "int", "RangeInfo_Float64": "dbl"}.get(self.settings[name]["kind"], "str")
        text = "***" if name == "WorkerPassword" else f'"{value}"' if kind == "str" else as_told(value)
        return kind, name, text

    def test_what_is_no_option_in_an_option_file_is_skipped_with_a_note(self):
        self.write("run.opt", "* mine\nseed 7\nlogfile log\n\ncsclientlog 1\noutlev 0\n")
        run = self.run_program("small.mps", "--options", "run.opt", "--trace", "trace")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertEqual(self.parameter_calls(), [self.call_of("Seed", 7)])
        self.assertIn("run.opt, line 5: Gurobi has a parameter 'csclientlog' that is not among the options; skipped\n",
                      self.read("log"))

    def test_each_of_the_161_is_set_and_read_back(self):
        values = self.gurobis()
        alone = {name: values.pop(name) for name in WITH_ERRORS}
        names, told, size = list(values), set(), 32
        for begin in range(0, len(names), size):
            chunk = names[begin:begin + size]
            self.write("run.opt", "".join(f"{name} {values[name]}\n" for name in chunk) + " ?\n".join([*chunk, ""]))
            run = self.run_program("small.mps", "--options", "run.opt", "--trace", "trace", "--json", "j", "outlev=0")
            self.assertEqual((run.returncode, run.stderr), (0, ""))
            calls = sorted(chunk, key=lambda name: name != "Record")  # taken only before Gurobi starts
            self.assertEqual(self.parameter_calls(), [self.call_of(name, values[name]) for name in calls])
            notes = dict(note.split("=", 1) for note in json.loads(self.read("j"))["notes"] if "=" in note)
            for name in chunk:
                with self.subTest(name=name):
                    text = self.call_of(name, values[name])[2]
                    shown = '"***"' if name == "WorkerPassword" else text
                    self.assertEqual(notes[name].split(" (default")[0], shown)
                    told.add(name)
        for name, value in alone.items():
            self.assertEqual(value, WITH_ERRORS[name][0])
            run = self.run_program("small.mps", f"{name}={value}", "--trace", "trace", "outlev=0")
            self.assertEqual((run.returncode, run.stdout), (1, ""))
            self.assert_one_line(run.stderr, WITH_ERRORS[name][1])
            self.assertEqual(self.parameter_calls(), [self.call_of(name, value)])
            told.add(name)
        self.assertEqual(len(told), 161)

    def test_the_value_in_force_is_that_of_the_parameter_file(self):
        for text, name, value in [
            ("MIPGap 0.3\nmipgap=.2 # of all\n", "MIPGap", 0.2),
            ("Seed 1e1\n", "Seed", 10),
            ("Cutoff -inf\n", "Cutoff", "-infinity"),
            ("MIPGap 1e999\nNope 1\n", "MIPGap", "infinity"),
            (f"NodefileDir  {self.folder}#x\r\n", "NodefileDir", f'"{self.folder}#x"'),
        ]:
            with self.subTest(text=text):
                self.write("a.prm", text)
                run = self.run_program("small.mps", "readparams=a.prm", f"{name}=7", f"{name}=?", "outlev=0")
                self.assertEqual((run.returncode, run.stderr), (0, ""))
                self.assertIn(f"note: {name}={value} (default ", run.stdout)

    def test_what_gurobi_would_pass_over_in_a_parameter_file_is_an_error(self):
        for line, told in [
            ("TimeLimit abc", "TimeLimit=abc: the value must be a number from 0 to infinity"),
            ("threads 1.5", "threads=1.5: the value must be a whole number from -1 to 1024"),
            ("FeasibilityTol 5", "FeasibilityTol=5: the value must be a number from 1e-09 to 0.01"),
            ("CSPriority 5000", "CSPriority=5000: the value must be a whole number from -100 to 100"),
            ("Record 1", "Record: Gurobi has not taken the value"),
            ("ServerPassword sEcr3t", "ServerPassword: Gurobi has not taken the value"),
            ("NodefileDir sEcr3t places", "NodefileDir: a line has one value"),
            ("LogToConsole 1", "LogToConsole: the log is up to the link"),
        ]:
            with self.subTest(line=line):
                self.write("a.prm", f"Seed 3\n{line}\n")
                run = self.run_program("small.mps", "readparams=a.prm", "--quiet", "--log", "log")
                self.assertEqual((run.returncode, run.stdout), (1, ""))
                self.assert_one_line(run.stderr, f"grblink: a.prm, line 2: {told}")
                run = self.run_program("small", "-AMPL", "readparams=a.prm")
                self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))
                self.assertIn(f"error: a.prm, line 2: {told}", self.read("small.sol"))
                self.assertNotIn("sEcr3t", self.read("log") + self.read("small.sol"))

    def test_help_and_refusals(self):
        run = self.run_program("--help-options", "MipGap")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertTrue(run.stdout.startswith("MIPGap\n    number from 0 to infinity, default 0.0001\n"))
        self.assertIn("\nMIPGapAbs\n", run.stdout)
        self.assertLessEqual(max(map(len, run.stdout.splitlines())), 80)
        for word, parts in [
            ("mipgap=-2", ["MIPGap=-2", "a number from 0 to infinity"]),
            ("mipgpa=0.1", ["unknown option 'mipgpa'; did you mean MIPGap?"]),
            ("lim:time=3", ["did you mean TimeLimit?"]),
            ("csclientlog=1", ["Gurobi has a parameter 'csclientlog' that is not among the options"]),
        ]:
            with self.subTest(word=word):
                run = self.run_program("small.mps", word, "--trace", "trace")
                self.assertEqual((run.returncode, run.stdout), (1, ""))
                self.assert_one_line(run.stderr, "command line: ", *parts)
                self.assertNotIn("GRBstartenv", self.read("trace"))  # no licence was taken
                run = self.run_program("small", word, "-AMPL")
                self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))
                self.assertRegex(self.read("small.sol"), rf"(?s)error: .*{re.escape(parts[0])}.*\nobjno 0 500\n\Z")

    def test_the_page_is_current_and_complete(self):
        page = self.run_program("--option-page").stdout
        self.assertEqual((DOCUMENTS / "options.md").read_text(), page, "renew it by building the target options_page")
        self.assertEqual(re.findall(r"^\| `([^`]+)`", page, re.MULTILINE), list(self.settings))
        named = re.findall(r"^\| \d+ \| `\w+` \| [\d to,]+ \|([^|]*)\|", (DOCUMENTS / "plugins.md").read_text(), re.MULTILINE)
        plugins = [name for cell in named for name in re.findall(r"`(\w+)`", cell)]
        unnamed = [f"plugin-attribute-{number}" for number in (3, 8, 9, 11, 15)]
        self.assertEqual({name for name, setting in self.settings.items() if setting["group"] == "Plug-ins"},
                         {*plugins, *unnamed})
        self.assertEqual(len(self.settings), 6 + 15 + 161 + 1 + 26)
        for name, setting in self.settings.items():
            self.assertTrue(setting["group"], name)
