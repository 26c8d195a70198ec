"""A process that writes 1,5 for one and a half reads, solves and writes the same numbers as any other."""

import locale
import pathlib
import tempfile
import unittest

from harness import Model

# max 0.5 x + 0.25 y, 0.125 x + 1.5 y <= 3.75, x <= 6.5: x = 6.5, y = (3.75 - 0.8125) / 1.5
MPS = """NAME decimals
OBJSENSE MAX
ROWS
 N gain
 L limit
COLUMNS
 x gain 0.5 limit 1.25e-1
 y gain 0.25 limit 1.5
RHS
 RHS limit 3.75
BOUNDS
 UP BND x 6.5
ENDATA
"""
NL = """g3 1 1 0
 2 1 1 0 0
 0 0
 0 0
 0 0 0
 0 0 0 1
 0 0 0 0 0
 2 2
 0 0
 0 0 0 0 0
C0
n0
O0 1
n0.5
r
1 3.75
b
0 0 6.5
2 0
k1
1
J0 2
0 1.25e-1
1 1.5
G0 2
0 0.5
1 .25
"""


class German(unittest.TestCase):
    def written(self, name, content):
        """What comes out of a model file: the numbers, and all files but for the run time."""
        with tempfile.TemporaryDirectory() as folder, Model() as model:
            path = pathlib.Path(folder, name)
            path.write_text(content)
            model.call("kavo_read", str(path).encode())
            found = model.solve(timelimit="60.5", mipgap="1e-3")
            self.assertEqual(found.status, "optimal")
            texts = {}
            for writer in ("sol", "point"):
                target = pathlib.Path(folder, writer)
                words = (b"a message", -1) if writer == "sol" else ()
                model.call(f"kavo_write_{writer}", str(target).encode(), *words)
                texts[writer] = target.read_text()
            model.call("kavo_write_json", str(pathlib.Path(folder, "json")).encode())
            json = pathlib.Path(folder, "json").read_text()
            texts["json"] = [line for line in json.splitlines() if '"seconds"' not in line]
            return found.values, found.objective, found.duals, texts

    def test_all_numbers_are_those_of_the_plain_locale(self):
        for name, content, constant in (("a.mps", MPS, 0), ("a.nl", NL, 0.5)):
            with self.subTest(name):
                plain = self.written(name, content)
                self.addCleanup(locale.setlocale, locale.LC_ALL, "C")
                locale.setlocale(locale.LC_ALL, "de_DE.UTF-8")
                self.assertEqual(locale.localeconv()["decimal_point"], ",")
                german = self.written(name, content)
                locale.setlocale(locale.LC_ALL, "C")
                self.assertEqual(german, plain)
                y = (3.75 - 0.8125) / 1.5
                self.assertAlmostEqual(plain[0][1], y, delta=1e-9)
                self.assertAlmostEqual(plain[1], 3.25 + 0.25 * y + constant, delta=1e-9)
                self.assertIn("6.5", plain[3]["point"] + plain[3]["sol"])

    def test_settings_are_read_with_a_point(self):
        self.addCleanup(locale.setlocale, locale.LC_ALL, "C")
        locale.setlocale(locale.LC_ALL, "de_DE.UTF-8")
        with Model() as model, self.assertRaisesRegex(Exception, "(?i)timelimit=0,5: the value must be a number from 0 to"):
            model.solve(timelimit="0,5")


if __name__ == "__main__":
    unittest.main()
