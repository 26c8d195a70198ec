"""What a terminal shows of a solve with --progress: a line that is renewed in place, and nothing of it at the end."""

import fcntl
import os
import pty
import select
import signal
import struct
import subprocess
import termios
import time

import cli
from test_gurobi import market_split

STATUS = r"^(?:stopping  )?(?:\d+\.\d s|\d+:\d\d)?(?:  )?(?:\d+ nodes)?(?:  )?(?:incumbent \S+)?(?:  )?(?:bound \S+)?(?:  )?(?:gap \S+%)?$"


class Terminal(cli.FolderCase):
    def watch(self, *words, columns=80, kind="xterm", interrupts=()):
        """What a program writes to a terminal so wide: exit code, the states of its line, and the text in the end. It is
        interrupted so many seconds after its start, but not before its line is there."""
        ours, theirs = pty.openpty()
        fcntl.ioctl(theirs, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
        process = subprocess.Popen([cli.PROGRAM, *words], cwd=self.folder, stdin=subprocess.DEVNULL, stdout=theirs,
                                   stderr=subprocess.PIPE, env=self.environment(TERM=kind))
        os.close(theirs)
        begin, written, interrupts = time.monotonic(), b"", list(interrupts)
        while True:
            if interrupts and b"incumbent" in written and time.monotonic() > begin + interrupts[0]:
                process.send_signal(signal.SIGINT)
                interrupts.pop(0)
            try:
                if select.select([ours], [], [], 0.05)[0]:
                    written += os.read(ours, 1 << 16)
            except OSError:  # the end of the last writer
                break
        os.close(ours)
        self.error = process.communicate(timeout=60)[1].decode()
        self.ahead = written.decode().replace("\r\n", "\n").split("\r\x1b[K")[0]
        *renewed, rest = written.decode().replace("\r\n", "\n").split("\r\x1b[K")
        return process.returncode, renewed[1:], rest if renewed else written.decode().replace("\r\n", "\n")

    def check_line(self, states, columns):
        self.assertGreater(len(states), 0)
        for state in states:
            self.assertRegex(state, STATUS)
            self.assertLess(len(state), columns)
        self.assertTrue(columns < 20 or any("incumbent" in state for state in states), states)

    def test_a_search_in_one_line(self):
        self.write("split.mps", market_split())
        for columns, words, interrupts in ((80, ["timelimit=2"], ()), (30, [], (1.5,)), (12, ["timelimit=1"], ())):
            with self.subTest(columns=columns):
                code, states, text = self.watch("split.mps", "--progress", "--log", "log", *words, columns=columns,
                                                interrupts=interrupts)
                self.assertEqual((code, self.error), (0, ""))
                self.check_line(states, columns)
                self.assertRegex(text, r"\Agrblink [\d.]+: (time limit|interrupted), feasible solution; objective ")
                self.assertNotIn("Optimize a model", text)
                self.assertIn("Optimize a model", self.read("log"))
                if columns == 80:
                    self.assertRegex(states[-1], r"^\d\.\d s  \d+ nodes  incumbent \d+  bound \d+  gap \d+\.\d\d%$")
                    self.assertLess(len(states), 2 * 10 + 3)

    def test_statistics_ahead_of_the_line(self):
        fake = ["--link", cli.FAKE_LINK, "small.mps", "--progress", "progress=3"]
        for words, ahead in ((["--statistics", "log=text\n"], "text\n"), (["statistics=1", "log=a"], "a\n"),
                             (["statistics=1", "statistics=0", "log=text\n"], ""), (["log=text\n"], ""),
                             (["--statistics", "outlev=0", "log=text\n"], "")):
            with self.subTest(words=words):
                code, states, text = self.watch(*fake, *words)
                self.assertEqual((code, self.ahead, len(states)), (0, ahead, 1))
                self.assertTrue(text.startswith("grblink "), text)
        self.write("split.mps", market_split())
        code, states, text = self.watch("split.mps", "--progress", "--statistics", "timelimit=1")
        self.assertEqual(code, 0)
        self.check_line(states, 80)
        self.assertIn("\nModel statistics\n  variables ", self.ahead)
        for line in ("Optimize a model", "Explored"):
            self.assertNotIn(line, self.ahead + text)

    def test_where_there_is_no_line(self):
        fake = ["--link", cli.FAKE_LINK, "small.mps", "--progress", "progress=3", "log=text\n"]
        code, states, text = self.watch(*fake, "fail=lost")
        self.assertEqual((code, text, len(states)), (1, "", 1))
        self.check_line(states, 80)
        self.assert_one_line(self.error, "grblink: lost")
        code, states, text = self.watch(*fake, "wait=1", "deaf=1000000", interrupts=(0.3, 0.6))
        self.assertEqual((code, text, len(states)), (130, "", 1))
        for more, kind, shown in (([], "dumb", "text\ngrblink "), (["--quiet"], "xterm", ""),
                                  (["outlev=0"], "dumb", "grblink ")):
            code, states, text = self.watch(*fake, *more, kind=kind)
            self.assertEqual((code, states, text[:len("text\ngrblink ")][:len(shown)]), (0, [], shown))
        self.assertRegex(self.run_program(*fake).stdout, r"\Atext\ngrblink ")
