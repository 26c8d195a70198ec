"""Signals while a model is read and solved, with a fake solver that runs until it is stopped."""

import os
import signal
import subprocess
import time

import cli


class Signals(cli.FolderCase):
    def start(self, *words):
        return subprocess.Popen([cli.PROGRAM, "--link", cli.FAKE_LINK, *words], cwd=self.folder, stdin=subprocess.DEVNULL,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, env=self.environment())

    def start_waiting(self, *words):
        process = self.start("small", *words, "wait=1", "outlev=1", "log=running\n", "point=1")
        self.assertEqual(process.stdout.readline(), "running\n")
        return process

    def test_first_signal_keeps_the_point(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            process = self.start_waiting("-AMPL")
            process.send_signal(number)
            out, err = process.communicate(timeout=30)
            self.assertEqual((process.returncode, out, err), (0, "", ""))
            self.assertIn(": interrupted, feasible solution\n", self.read("small.sol"))
            self.assertTrue(self.read("small.sol").endswith("\nobjno 0 401\n"))
            os.remove(self.folder / "small.sol")

    def test_second_signal_ends_the_program(self):
        process = self.start_waiting("deaf=1000000")
        process.send_signal(signal.SIGINT)
        time.sleep(0.2)
        self.assertIsNone(process.poll())
        process.send_signal(signal.SIGINT)
        process.communicate(timeout=30)
        self.assertEqual(process.returncode, 130)
        self.assertEqual(self.files(), {"small.mps", "small.nl"})

    def test_signal_before_the_solve(self):
        for words, code, written in ((["-AMPL"], 0, {"pipe.sol"}), ([], 130, set())):
            os.mkfifo(self.folder / "pipe.nl")
            process = self.start("pipe.nl", *words, "point=1")
            with open(self.folder / "pipe.nl", "w", encoding="ascii") as pipe:  # opens when the program reads
                process.send_signal(signal.SIGINT)
                time.sleep(0.2)
                pipe.write(cli.SMALL_NL)
            _, err = process.communicate(timeout=30)
            self.assertEqual(process.returncode, code)
            self.assertEqual(self.files() - {"small.mps", "small.nl", "pipe.nl"}, written)
            if written:
                self.assertTrue(self.read("pipe.sol").endswith("objno 0 471\n"))
                os.remove(self.folder / "pipe.sol")
            else:
                self.assert_one_line(err, "interrupted before the solve")
            os.remove(self.folder / "pipe.nl")
