"""Holds the documents to what the programs do: every message that docs/limits.md shows is provoked and found there word by
word, and every function of the C header has its line in docs/c-api.md."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]

MPS = """NAME model
ROWS
 N cost
{rows} L c1
COLUMNS
{columns} x cost 1 c1 1
 y cost 1 c1 2
RHS
 r c1 4
{end}ENDATA
"""

# Two variables, one row c1, one objective; the parts that the cases fill in make it more than linear.
NL = """g3 1 1 0
 2 1 1 0 0 {logical}
 {nonlinear}
 0 0
 {variables}
 0 {functions} 0 1
 0 0 0 0 0
 2 2
 0 0
 0 0 0 0 0
{head}C0
{row}
O0 0
{objective}
r
{side}
b
2 0
2 0
k1
1
J0 2
0 1
1 1
G0 2
0 1
1 1
"""


def mps(rows="", columns="", end=""):
    return {"model.mps": MPS.format(rows=rows, columns=columns, end=end)}


def nl(names="c1\ncost\n", **parts):
    linear = {"logical": 0, "nonlinear": "0 0", "variables": "0 0 0", "functions": 0, "head": "", "row": "n0",
              "objective": "n0", "side": "2 1"}
    return {"model.nl": NL.format(**linear | parts), "model.row": names}


def lp(text):
    return {"model.lp": text}


SECTIONS = ("SOS1", "SOS2", "CSECTION", "PWLNAM", "PWLCON", "BRANCH", "SCENARIOS")


def row(tree, **parts):
    """A model whose row c1 has this expression besides its linear terms."""
    return nl(row=tree, nonlinear="1 0", variables="1 0 0", **parts)


# Files that are refused; the model is the first one.
REFUSED = [
    row("f0 1\nv0", head="F0 0 1 f\n", functions=1),
    row("o56\nv0\nn3"),
    row("o61\n2\nh1:a\no65\nv0\nh1:a\nh1:b"),
    row("o57\nv0\nv0"),
    row("o3\nv0\nn0"),
    row("o5\nn0\nn0"),
    row("o5\nn-2\nv0"),
    nl(side="5 1 1", nonlinear="0 0 1 0 0 0"),
    {"model.txt": "Minimize\n x\nEnd\n"},
    mps(end="CSECTION\n"),
    mps(end="CONES\n"),
    mps(columns=" m 'MARKER' 'SOSORG'\n"),
    mps(end="BOUNDS\n XX b x 1\n"),
    mps(end="GENCONS\n POLY g\n x y\n 101 3\n"),
    mps(end="GENCONS\n AND g\n x\n y\n"),
    mps(end="INDICATORS\n IF c1 x 1\n"),
    mps(end="SOS\n S1 s\n x 1\n y 1\n"),
    mps(columns="".join(f" v{i} c1 1\n" for i in range(1999))),
]

# Models that are solved, with a note.
NOTED = [
    mps(end="RANGES\n r c1 8\nBOUNDS\n UP b y -1\n"),
    mps(rows=" N other\n", columns=" x other 1\n"),
    {"model.mps": "NAME m\nROWS\n L c1\nCOLUMNS\n x c1 1\nENDATA\n"},
    mps(end=" s c1 3\n"),
    mps(end="SOS\n S1 s\n x 1\n"),
    mps(columns=f" {'n' * 256} c1 1\n"),
    lp("min x + 3\nst\n x >= 1\nend"),
    lp("min 2x\nst\n 2x >= 1\nend"),
    lp("min [ x ^2 ]\nst\n x >= 1\nend"),
    lp("min x\nst\n x >= 1\nbounds z <= 4\nend"),
    lp("min x\nst\n x >= 1\n"),
    nl(head="S0 1 hintpri\n0 1\nS0 1 direction\n1 1\n"),
    nl(head="S0 1 sosno\n0 1\nS0 0 ref\n"),
]


class Limits(unittest.TestCase):
    PAGE = (ROOT / "docs" / "limits.md").read_text()

    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))

    def run_on(self, files, *words):
        for name, text in files.items():
            (self.folder / name).write_text(text)
        environment = {key: value for key, value in os.environ.items() if key != "grblink_options"}
        return subprocess.run([os.environ["GRBLINK"], next(iter(files)), "outlev=0", *words], cwd=self.folder,
                              env=environment, stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60,
                              check=False)

    def refusal(self, files, *words):
        """The message without what depends on the place in the source."""
        done = self.run_on(files, *words)
        self.assertEqual((done.returncode, done.stdout, done.stderr.count("\n")), (1, "", 1), done)
        return re.sub(r" \([\w/]+:\d+\)$", "", done.stderr.removeprefix("grblink: ").rstrip("\n"))

    def test_every_refusal(self):
        told = set()
        for case, files in enumerate(REFUSED):
            with self.subTest(case=case):
                message = self.refusal(files)
                told.add(message)
                self.assertIn(f"`{message}`", self.PAGE)
        two = nl()["model.nl"].replace(" 2 1 1 0 0", " 2 1 2 0 0").replace("O0 0\nn0", "O0 0\nn0\nO1 0\nn0")
        told.add(self.refusal({"model.nl": two}, "objno=3"))
        tables = self.PAGE.split("Read otherwise")[0] + self.PAGE.split("## The evaluation licence")[1]
        shown = {cell for line in tables.splitlines() if line.startswith("| ")
                 for cell in re.findall(r"`([^`]{20,})`", line.rsplit(" | ", 1)[1])}
        self.assertEqual(shown, told)  # and the page shows no message that nobody sees

    def test_every_section(self):
        for section in SECTIONS:
            with self.subTest(section=section):
                self.assertIn(f"`{section}`", self.PAGE)
                self.assertRegex(self.refusal(mps(end=section + "\n")), rf"section {section} is not taken yet$")

    def test_every_note(self):
        for files in NOTED:
            with self.subTest(files=files):
                done = self.run_on(files)
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                notes = re.findall(r"^note: (.*)$", done.stdout, re.MULTILINE)
                self.assertEqual(len(notes), 1, done.stdout)
                self.assertIn(f"`{notes[0]}`", self.PAGE)


class Interface(unittest.TestCase):
    def test_every_function_has_its_line(self):
        header = (ROOT / "kavo" / "kavo.h").read_text()
        page = (ROOT / "docs" / "c-api.md").read_text()
        functions = set(re.findall(r"^KAVO_API [^(]*?(kavo_\w+)\(", header, re.MULTILINE))
        self.assertGreater(len(functions), 25)
        self.assertEqual(set(re.findall(r"^\| `(kavo_\w+)\(", page, re.MULTILINE)), functions)
