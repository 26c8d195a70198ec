"""No output destroys what the run reads, or another output: whatever names it, and however its path is spelled."""

import os
import subprocess

import cli

FILES = {"o.opt": "outlev 0\n", "list": "# the best first\n  d/start1.sol \n", "fixed.opt": "ResultFile r.sol\n",
         "a.prm": "MIPGap 0.01\nresultfile=small.mps # mine\n", "b.prm": "SolFiles d/x\n", "small.row": "r\n", "small.col": "c\n",
         "p.opt": "MipTrace = deep/../small.mps\n", "ranges": "x", "m1.mps": cli.SMALL_MPS, "[a].lp.gz": "x", "gurobi.o99": "MIPGap 1\n"}


class Overwriting(cli.FolderCase):
    def setUp(self):
        super().setUp()
        for name, text in FILES.items():
            self.write(name, text)
        for folder in ("d", "deep"):
            os.mkdir(self.folder / folder)
        self.write("d/start1.sol", "x 1\n")
        os.link(self.folder / "small.mps", self.folder / "hard.mps")
        os.symlink("small.mps", self.folder / "soft.mps")
        os.symlink("d", self.folder / "e")

    def state(self):
        return {path: path.read_bytes() for path in self.folder.rglob("*") if path.is_file()}

    def test_refused(self):
        model = "small.mps would overwrite the model"
        for words, parts in [
            (["miptrace=small.mps"], ["miptrace: " + model]),
            (["MipTrace=./small.mps"], [f"miptrace: ./{model}"]),
            (["rngrestart=deep/../small.mps"], ["rngrestart: ", model]),
            (["writeprob=hard.mps"], ["writeprob: hard.mps would overwrite the model"]),
            (["writeparams=soft.mps"], ["writeparams: soft.mps would overwrite the model"]),
            (["ResultFile=small.mps"], ["ResultFile: " + model]),
            (["logfile=small.mps"], ["logfile: " + model]),
            (["readparams=a.prm", "resultfile=other.sol"], ["ResultFile: " + model]),
            (["--options", "p.opt"], ["miptrace: ", model]),
            (["miptrace=o.opt", "--options", "o.opt"], ["miptrace: o.opt would overwrite an option file"]),
            (["miptrace=list", "multimipstart=list"], ["would overwrite the list of multimipstart"]),
            (["dumpbcsol=e/start", "multimipstart=list"], ["dumpbcsol: d/start1.sol would overwrite a start"]),
            (["poolstub=d/start", "multimipstart=list"], ["poolstub: d/start1.sol would overwrite a start"]),
            (["rngrestart=ranges", "rngread=./ranges"], ["rngrestart: ranges would overwrite the file of rngread"]),
            (["miptrace=fixed.opt", "fixoptfile=fixed.opt"], ["would overwrite the file of fixoptfile"]),
            (["writeparams=b.prm", "readparams=b.prm"], ["would overwrite the file of readparams"]),
            (["writeprob=m1.mps", "tuning='o.mps', 'm1.mps'"], ["would overwrite a model of tuning"]),
            (["writeprob=m1.mps", "tuning=m1"], ["m1.mps would overwrite a model of tuning"]),
            (["writeprob=m1.mps", "tuning=o m?.mps"], ["m1.mps would overwrite a model of tuning"]),
            (["writeprob=[a].lp.gz", "tuning=[a]"], ["[a].lp.gz would overwrite a model of tuning"]),
            (["tuning=m1.mps", "--options", "gurobi.o99"], ["tuning: gurobi.o99 would overwrite an option file"]),
            (["miptrace=F", "--report", "F"], ["F is named for two outputs: miptrace and --report"]),
            (["miptrace=F", "--json", "./F"], ["./F is named for two outputs: miptrace and --json"]),
            (["miptrace=d/F", "--log", "e/F"], ["e/F is named for two outputs: miptrace and --log"]),
            (["miptrace=F", "--trace", "F"], ["named for two outputs: miptrace and --trace"]),
            (["writeprob=small.sol"], ["small.sol is named for two outputs: writeprob and the solution file"]),
            (["ResultFile=r.sol", "rngrestart=r.sol"], ["two outputs: rngrestart and ResultFile"]),
            (["fixoptfile=fixed.opt", "miptrace=r.sol"], ["two outputs: miptrace and ResultFile"]),
            (["ResultFile=r.sol", "fixoptfile=fixed.opt"], ["two outputs: ResultFile and ResultFile of fixoptfile"]),
            (["dumpbcsol=small", "-osmall7.sol"], ["small7.sol is named for two outputs: the solution file and dumpbcsol"]),
            (["dumpbcsol=p", "poolstub=./p"], ["p1.sol is named for two outputs: dumpbcsol and poolstub"]),
            (["dumpbcsol=p1", "poolstub=p"], ["p11.sol is named for two outputs"]),
            (["SolFiles=d/x", "miptrace=d/x_0.sol"], ["two outputs: miptrace and SolFiles"]),
            (["readparams=b.prm", "miptrace=d/x_12.sol"], ["two outputs: miptrace and SolFiles"]),
        ]:
            with self.subTest(words=words):
                before = self.state()
                run = self.run_fake("small.mps", *words)
                self.assertEqual((run.returncode, run.stdout), (1, ""))
                self.assert_one_line(run.stderr, "grblink: ", *parts)
                self.assertEqual(self.state(), before)

    def test_refused_for_other_models_and_callers(self):
        for words, listed, part in [
            (["m1.mps", "dumpbcsol=m"], "", "m1.sol is named for two outputs: the solution file and dumpbcsol"),
            (["small", "writeprob=small.row"], "", "small.row would overwrite the names of the rows"),
            (["small.nl", "miptrace=small.col"], "", "small.col would overwrite the names of the columns"),
            (["small", "rngrestart=./small.nl"], "", "./small.nl would overwrite the model"),
            (["small.mps"], "miptrace=small.mps", "miptrace: small.mps would overwrite the model"),
            (["-osmall.nl", "small", "-AMPL"], "", "the solution file: small.nl would overwrite the model"),
            (["small.mps", "--describe-options", "hard.mps"], "", "--describe-options: hard.mps would overwrite the model"),
            (["small", "--describe-options", "small.col"], "", "would overwrite the names of the columns"),
            (["--options", "o.opt", "--describe-options", "o.opt"], "", "o.opt would overwrite an option file"),
            (["-oo.opt", "--options", "o.opt", "small", "-AMPL"], "", "o.opt would overwrite an option file"),
        ]:
            with self.subTest(words=words):
                before = self.state()
                run = self.run_fake(*words, env={"grblink_options": listed})
                self.assertEqual((run.returncode, run.stdout), (1, ""))
                self.assert_one_line(run.stderr, "grblink: ", part)
                self.assertEqual(self.state(), before)
        run = self.run_fake("small", "-AMPL", "miptrace=small.nl")
        self.assertEqual((run.returncode, run.stderr, self.read("small.nl")), (0, "", cli.SMALL_NL))
        self.assertIn("miptrace: small.nl would overwrite the model", self.read("small.sol"))

    def test_not_refused(self):
        """The fake link knows none of these settings and says so, which is after the check."""
        for words in (["miptrace=small.mps", "miptrace=t"], ["miptrace=small.mps", "miptrace=?", "miptrace="],
                      ["miptrace=/dev/null", "--report", "/dev/null", "--options", "/dev/null"],
                      ["dumpbcsol=small", "miptrace=small01.sol"], ["dumpbcsol=q", "poolstub=p"],
                      ["dumpbcsol=p0", "poolstub=p"], ["dumpbcsol=small", "--json", "small1.json"],
                      ["readparams=b.prm", "SolFiles=y", "miptrace=y_1.sol"], ["miptrace=small.row"],
                      ["dumpbcsol=m", "writeprob=m.mps"]):
            with self.subTest(words=words):
                run = self.run_fake("small.mps", *words)
                self.assertEqual(run.returncode, 1)
                self.assert_one_line(run.stderr, "unknown option")

    def test_from_a_folder_that_is_gone(self):
        script = f'cd deep && rmdir ../deep && "{cli.PROGRAM}" --link "{cli.FAKE_LINK}" ../small.mps point=1 poolstub=../p'
        run = subprocess.run(script, shell=True, cwd=self.folder, capture_output=True, text=True, timeout=60, check=False)
        self.assertEqual((run.returncode, run.stderr), (0, ""))
        self.assertIn("x 0", self.read("small.sol"))

    def test_a_pipe_is_left_for_the_link(self):
        for name in ("multimipstart", "readparams", "fixoptfile"):
            ours, theirs = os.pipe()
            with os.fdopen(ours), os.fdopen(theirs, "w") as pipe:
                pipe.write("a line\n")
                pipe.flush()
                self.run_fake("small.mps", f"{name}=/dev/fd/{ours}", pass_fds=[ours])
                os.set_blocking(ours, False)
                self.assertEqual(os.read(ours, 100), b"a line\n", name)
