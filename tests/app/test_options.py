"""Settings by environment, option files and words, and help about them, with the fake link in Gurobi's place."""

import fcntl
import os
import pty
import struct
import termios

import cli

HELP = """status
    whole number from 0 to 6, default 0
    What to answer.

"""


class Giving(cli.FolderCase):
    def test_words_win_over_files_and_files_over_the_environment(self):
        self.write("a.opt", "\ufeff* first\r\npoint 1\r\nobjective = 2\r\n# bound\r\n\r\nnote 'from a'\r\n")
        self.write("b.opt", "OUTLEV 0\nobjective 3\nwantsol = 2\nlogfile b.log\nlog text\n")
        env = {"grblink_options": "objective=1 gap=0.5 bound=1 outlev=1"}
        for words, objective in [
            (["--options", "a.opt", "--options", "b.opt", "small.mps"], 3),
            (["--options", "b.opt", "small.mps", "--options", "a.opt"], 2),
            (["--options=b.opt", "small.mps", "objective=4", "--options", "a.opt"], 4),
        ]:
            with self.subTest(words=words):
                run = self.run_fake(*words, env=env)
                self.assertEqual((run.returncode, run.stderr), (0, ""))
                for part in (f"objective {objective}\n", "relative gap 0.5", "note: from a", "variable  value\nx  0\n"):
                    self.assertIn(part, run.stdout)
                self.assertNotIn("text", run.stdout)
                self.assertEqual(self.read("b.log"), "text")
                self.assertNotIn("small.sol", self.files())

    def test_own_words_are_told_when_asked_for(self):
        self.write("a.opt", "outlev ?\nobjno ?\nlogfile ?")
        run = self.run_fake("small.mps", "--options", "a.opt", "outlev=0", "logfile=l")
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertIn("note: outlev=0 (default 1)\nnote: logfile=\"l\"\nnote: objno=1 (default 1)\n", run.stdout)

    def test_no_message_shows_a_secret(self):
        for words, listed in [
            (["workerpassword=", "sEcr3t"], ""),
            (["workerpassword:sEcr3t"], ""),
            ([], "workerpassword=my sEcr3t"),
        ]:
            with self.subTest(words=words, listed=listed):
                run = self.run_fake("small.mps", *words, env={"grblink_options": listed})
                self.assertEqual((run.returncode, run.stdout), (1, ""))
                self.assert_one_line(run.stderr, "grblink: ", "may be secret")
                self.assertNotIn("sEcr3t", run.stderr)

    def test_what_is_wrong_names_file_and_line(self):
        self.write("bad.opt", "point 1\n\nlog 'a\n")
        self.write("own.opt", "* my options\nwantsol=16")
        self.write("unknown.opt", "point 1\nnosuch 1\n")
        os.mkdir(self.folder / "folder.opt")
        for file, part in [
            ("nosuch.opt", 'cannot read "nosuch.opt": No such file'),
            ("folder.opt", 'cannot read "folder.opt": Is a directory'),
            ("bad.opt", "bad.opt, line 3: the quote of log does not end"),
            ("own.opt", "own.opt, line 2: wantsol=16: the value must be a whole number from 0 to 15"),
            ("unknown.opt", "unknown option nosuch"),
        ]:
            with self.subTest(file=file):
                run = self.run_fake("--options", file, "small.mps")
                self.assertEqual((run.returncode, run.stdout), (1, ""))
                self.assert_one_line(run.stderr, "grblink: ", part)
                run = self.run_fake("small", "-AMPL", "--options", file)
                self.assertEqual((run.returncode, run.stdout, run.stderr), (0, "", ""))
                self.assertIn(part, self.read("small.sol"))
                self.assertTrue(self.read("small.sol").endswith("objno 0 500\n"))


class Help(cli.FolderCase):
    def help(self, *words):
        run = self.run_fake(*words, env={"GRBLINK_GUROBI": "/nosuch.so"})
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        return run.stdout

    def test_groups(self):
        text = self.help("--help-options")
        self.assertRegex(text, r"\n  Answers +2\n  Command line +6\n  all +8\n\Z")

    def test_words_find_names_groups_and_meanings(self):
        for words, shown in [
            (["--help-options", "STATUS"], HELP),
            (["-=status"], HELP),
            (["-=swers"], HELP + "note\n    text, no default\n\n"),
            (["-=answer"], HELP + "note\n    text, no default\n\n"),
            (["-=what to"], HELP),
            (["-=nosuch"], 'no option has "nosuch" in its name, group or meaning\n'),
        ]:
            with self.subTest(words=words):
                self.assertEqual(self.help(*words), shown)
        self.assertTrue(self.help("--help-options", "log").startswith("logfile\n    text, no default\n"))
        self.assertTrue(self.help("-=log").endswith("\n\nAlso mentioned by: outlev\n"))

    def test_everything(self):
        text = self.help("-=")
        for part in ("Answers\n-------\n" + HELP, "\nCommand line\n------------\noutlev\n", "wantsol"):
            self.assertIn(part, text)
        page = self.help("--option-page")
        self.assertIn("\n## Answers\n\n| name | default | range | meaning |\n|---|---|---|---|\n"
                      "| `status` | `0` | whole number, 0 to 6 | What to answer. |\n| `note` |  | text |  |\n", page)

    def test_lines_are_wrapped_to_the_terminal(self):
        self.assertLessEqual(max(map(len, self.help("-=").splitlines())), 80)
        for columns, width in ((60, 60), (20, 40), (300, 120), (0, 80)):
            screen, terminal = pty.openpty()
            fcntl.ioctl(terminal, termios.TIOCSWINSZ, struct.pack("HHHH", 24, columns, 0, 0))
            run = self.run_fake("-=", stdout=terminal)
            self.assertEqual(run.returncode, 0)
            os.close(terminal)
            shown = os.read(screen, 100000).decode().splitlines()
            os.close(screen)
            self.assertLessEqual(max(map(len, shown)), width)
            self.assertGreater(max(map(len, shown)), width - 15 if width < 120 else 80)

    def test_description_is_a_file(self):
        self.assertEqual(self.help("--describe-options", "all.yaml"), "")
        self.assertEqual(self.read("all.yaml"), "fake: 1\n")
        for words, code, part in [
            (["--link", cli.FAKE_LINK, "--describe-options", "nosuch/all.yaml"], 1, "nosuch/all.yaml"),
            (["--describe-options"], 2, "--help"),
            (["--help-options", "--link", "nosuch.so"], 1, "nosuch.so"),
        ]:
            run = self.run_program(*words)
            self.assertEqual((run.returncode, run.stdout), (code, ""))
            self.assert_one_line(run.stderr, part)
