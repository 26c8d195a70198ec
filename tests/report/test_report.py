"""The page of --report in a real browser: what it shows, that it needs nothing else, and that nothing runs over its edges.
Pictures of all pages stand in the folder that the environment variable PICTURES names."""

import os
import pathlib
import signal
import subprocess
import sys
import time
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "app"))

import cli
from browser import Browser
from test_gurobi import market_split, mps

PICTURES = pathlib.Path(os.environ["PICTURES"])
MOST_BYTES = 300_000

# 200 bytes each: what HTML and people could stumble over.
NAMES = [(text.encode() * 200)[:200].decode(errors="ignore") for text in
         ("<b>&amp;\"'", "</table><script>alert(1)</script>", "größe_температура_", "x" * 200, "価格")]
TURNED = "\u202eabc"  # would be shown from right to left
BROKEN = b"\xff\xfe<\xc3" + b"n" * 196  # not UTF-8

INFEASIBLE = mps("x obj 1 low 1|y low 1 high 1", "G low|L high", "RHS low 8|RHS high 2", "UP BND x 3")

# The elements that reach beyond the window, but for those in a box that scrolls.
OUTSIDE = """[...document.querySelectorAll('body *')].filter(e => !e.parentElement.closest('.wide')
  && !e.closest('figure') && e.getBoundingClientRect().right > innerWidth + 0.5).map(e => e.outerHTML.slice(0, 80))"""
# Labels of the chart that leave the paper or lie upon each other.
LABELS = """(() => { const b = [...document.querySelectorAll('svg text')].map(e => [e.textContent, e.getBoundingClientRect()]);
  const svg = document.querySelector('svg'); if (!svg) return []; const p = svg.getBoundingClientRect(); const bad = [];
  b.forEach(([t, r], i) => { if (r.left < p.left || r.right > p.right || r.top < p.top || r.bottom > p.bottom) bad.push(t);
    b.slice(i + 1).forEach(([u, s]) => { if (r.left < s.right && s.left < r.right && r.top < s.bottom && s.top < r.bottom)
      bad.push(t + ' on ' + u); }); }); return bad; })()"""
COUNTS = """['path.incumbent', 'path.bound', 'path.gap'].map(s => document.querySelectorAll('svg g ' + s).length)"""


class Report(cli.FolderCase):
    @classmethod
    def setUpClass(cls):
        cls.browser = cls.enterClassContext(Browser())
        PICTURES.mkdir(parents=True, exist_ok=True)

    def text(self, selector):
        return self.browser.value(f"[...document.querySelectorAll('{selector}')].map(e => e.textContent)")

    def look(self, page, name, charts=0):
        """Opens a page in a wide and a narrow window, and checks what must hold for all."""
        page = self.folder / page
        self.assertLess(page.stat().st_size, MOST_BYTES)
        for width in (380, 1200):
            with self.subTest(page=name, width=width):
                self.browser.open(page, width)
                self.assertEqual([url for url in self.browser.requests() if not url.startswith("data:")],
                                 [page.resolve().as_uri()])
                self.assertEqual(self.browser.complaints(), [])
                self.assertEqual(self.browser.value("document.documentElement.scrollWidth"), width)
                self.assertEqual(self.browser.value(OUTSIDE), [])
                self.assertEqual(self.browser.value(LABELS), [])
                self.assertEqual(self.browser.value(COUNTS), [charts] * 3)
                self.browser.screenshot(PICTURES / f"{name}-{width}.png")
        self.assertEqual(self.text("script"), [])

    def solve(self, run, *words):
        done = run(*words, "--report", "page.html", "outlev=0")
        self.assertEqual((done.returncode, done.stderr), (0, ""))

    def test_lp(self):
        self.solve(self.run_program, "small.mps", "--ranges", "mipgap=0.5", "MIPGap=0.2", "WorkerPassword=sesame")
        self.look("page.html", "lp")
        self.assertEqual(self.text("h1") + self.text(".outcome"), ["small.mps", "optimal solution"])
        shown = self.text("tbody tr")
        self.assertIn("MIPGap0.2command line", shown)
        self.assertIn("WorkerPassword***command line", shown)
        self.assertNotIn("sesame", self.read("page.html"))
        self.assertTrue(any(row.startswith("x31") for row in shown), shown)  # value 3, reduced cost 1
        self.assertIn("without a search", self.text("section p")[0])

    def test_mip_and_interrupt(self):
        self.write("split.mps", market_split())
        self.solve(self.run_program, "split.mps", "timelimit=3", "--json", "j")
        self.look("page.html", "mip", charts=1)
        self.assertEqual(self.text(".outcome"), ["time limit, feasible solution"])
        process = subprocess.Popen([cli.PROGRAM, "split.mps", "--report", "stopped.html", "--quiet"], cwd=self.folder)
        time.sleep(2.5)
        process.send_signal(signal.SIGINT)
        self.assertEqual(process.wait(timeout=60), 0)
        self.look("stopped.html", "interrupted", charts=1)
        self.assertEqual(self.text(".outcome"), ["interrupted, feasible solution"])

    def test_infeasible_with_its_conflict(self):
        self.write("no.mps", INFEASIBLE)
        self.solve(self.run_program, "no.mps", "iis=1")
        self.look("page.html", "infeasible")
        self.assertEqual(self.text(".outcome"), ["infeasible problem"])
        members = {row for row in self.text("tbody tr") if " of the " in row}
        self.assertEqual(members, {"lowlower side of the row", "highupper side of the row",
                                   "xupper bound of the variable"})

    def test_names_of_200_bytes(self):
        columns = "".join(f" {name} obj 1 {name} 1\n" for name in (*NAMES, TURNED)).encode() + b" " + BROKEN + b" obj 1\n"
        rows = "".join(f" G {name}\n" for name in (*NAMES, TURNED)).encode()
        head, rest = mps().encode().split(b"COLUMNS\n")
        (self.folder / "names.mps").write_bytes(head + rows + b"COLUMNS\n" + columns + rest)
        self.solve(self.run_program, "names.mps", "--ranges", "--quiet")
        self.look("page.html", "names")
        cells = self.text("td:first-child")
        for name in NAMES:
            self.assertEqual(cells.count(name), 2, name)
        self.assertIn(BROKEN.decode(errors="replace"), cells)
        self.assertEqual(cells.count(TURNED.replace("\u202e", "\ufffd")), 2)

    def test_paths_of_one_and_of_100000_points(self):
        for points, name in (("1", "one"), ("100000", "many")):
            self.solve(self.run_fake, "small.mps", f"progress={points}", "point=1", "objective=11")
            self.look("page.html", name, charts=1)
            last = dict(zip(self.text(".search td:first-child"), self.text(".search td:last-child")))
            self.assertEqual((last["incumbent"], last["new incumbents"]), (points, points))
            # The last step of the picture ends where the axis ends.
            line = self.browser.value("document.querySelector('svg g path.incumbent').getAttribute('d')")
            self.assertEqual(line.rpartition("H")[2], "838.0")

    def test_nothing_found(self):
        self.solve(self.run_fake, "small.mps", "status=2")
        self.look("page.html", "nothing")
        self.assertEqual(self.text(".outcome"), ["infeasible problem"])
        self.assertEqual(self.text("h2"), ["Search", "Model", "Settings"])
