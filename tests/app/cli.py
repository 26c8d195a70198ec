"""Runs the command line in a folder of its own."""

import os
import pathlib
import subprocess
import tempfile
import unittest

PROGRAM = os.environ["GRBLINK"]
FAKE_LINK = os.environ["FAKE_LINK"]

# max 3x + 2y, c1: x + y <= 4, c2: x + 3y <= 6, 0 <= x <= 3: x = 3, y = 1, objective 11, duals 2, 0, reduced cost of x 1
SMALL_MPS = """NAME small
OBJSENSE MAX
ROWS
 N profit
 L c1
 L c2
COLUMNS
 x profit 3 c1 1
 x c2 1
 y profit 2 c1 1
 y c2 3
RHS
 RHS c1 4 c2 6
BOUNDS
 UP BND x 3
ENDATA
"""

# The same with y in front.
SMALL_NL = """g3 1 1 0
 2 2 1 0 0
 0 0
 0 0
 0 0 0
 0 0 0 1
 0 0 0 0 0
 4 2
 0 0
 0 0 0 0 0
C0
n0
C1
n0
O0 1
n0
r
1 4
1 6
b
2 0
0 0 3
k1
2
J0 2
0 1
1 1
J1 2
0 3
1 1
G0 2
0 2
1 3
"""


class FolderCase(unittest.TestCase):
    """A test with a folder that holds small.mps and small.nl."""

    def setUp(self):
        self.folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.write("small.mps", SMALL_MPS)
        self.write("small.nl", SMALL_NL)

    def write(self, name, text):
        path = self.folder / name
        path.write_text(text)
        return path

    def read(self, name):
        return (self.folder / name).read_text()

    def files(self):
        return {path.name for path in self.folder.iterdir()}

    def environment(self, **more):
        kept = {key: value for key, value in os.environ.items() if key != "grblink_options"}
        return kept | more

    def run_program(self, *words, env=None, **more):
        """Runs without a shell; words are the arguments."""
        streams = {"stdin": subprocess.DEVNULL, "stdout": subprocess.PIPE, "stderr": subprocess.PIPE}
        return subprocess.run([PROGRAM, *map(str, words)], cwd=self.folder, env=self.environment(**(env or {})),
                              text=True, timeout=120, check=False, **(streams | more))

    def run_fake(self, *words, **more):
        return self.run_program("--link", FAKE_LINK, *words, **more)

    def assert_one_line(self, text, *parts):
        self.assertEqual(len(text.splitlines()), 1, text)
        for part in parts:
            self.assertIn(part, text)
