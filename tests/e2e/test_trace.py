"""The trace of a whole solve on real Gurobi: which calls are made, how often, and in which order."""

import collections
import os
import re
import tempfile
import unittest

from harness import INF, environment, make

LINE = re.compile(r"(\d+) (GRB\w+)\((.*)\)( = .*)? \[\d+ us\]")
# What only looks something up may stand anywhere.
LOOK_UPS = {"GRBgetenv", "GRBgeterrormsg", "GRBisattravailable", "GRBgetparamtype", "GRBgetintparaminfo",
            "GRBgetdblparaminfo", "GRBversion"}


def traced(model, **options):
    """The calls of a solve and of the closing of the link: (function, arguments)."""
    with tempfile.TemporaryDirectory() as folder:
        path = os.path.join(folder, "trace")
        with environment(GRBLINK_TRACE=path), model:
            assert model.solve(**options).status == "optimal"
        with open(path, encoding="utf-8") as file:
            lines = [LINE.fullmatch(line.rstrip("\n")) for line in file]
    numbers = [int(line[1]) for line in lines]
    assert numbers == list(range(numbers[0], numbers[0] + len(numbers)))
    return [(line[2], line[3]) for line in lines]


class Trace(unittest.TestCase):
    def test_the_calls_of_an_lp(self):
        columns = [(f"x{j}", 0, 10 + j) for j in range(5)]
        rows = [(f"r{i}", -INF, {j: 1 + i + j for j in range(5)}, 40) for i in range(4)]
        calls = traced(make("max", columns, rows, [1, 2, 3, 4, 5]), timelimit=60, Threads=1)
        names = [name for name, _ in calls if name not in LOOK_UPS]
        solve = names.index("GRBoptimize")
        self.assertEqual(
            names[:solve + 1],
            ["GRBemptyenvinternal", "GRBsetintparam", "GRBstartenv", "GRBnewmodel", "GRBsetdblparam", "GRBsetintparam",
             "GRBupdatemodel", "GRBgetintattr", "GRBaddvars"] + ["GRBsetstrattrelement"] * 5
            + ["GRBupdatemodel", "GRBgetintattr"] + ["GRBaddconstr"] * 4
            + ["GRBupdatemodel", "GRBgetintattr", "GRBsetintattr", "GRBsetdblattrarray", "GRBsetdblattr",
               "GRBupdatemodel", "GRBgetintparam", "GRBsetlogcallbackfunc"]
            + ["GRBgetintattr"] * 3  # IsMIP, NumQNZs, NumQCNZs
            + ["GRBoptimize"])
        self.assertEqual(names[-2:], ["GRBfreemodel", "GRBfreeenv"])
        after = collections.Counter(names[solve + 1:-2])
        self.assertTrue(all(name.startswith("GRBget") for name in after), after)
        bulk = {name: count for name, count in after.items() if name.endswith(("array", "list"))}
        # X, RC, Slack and Pi; VBasis and CBasis; Sense.
        self.assertEqual(bulk, {"GRBgetdblattrarray": 4, "GRBgetintattrarray": 2, "GRBgetcharattrarray": 1})

    def test_a_mip_reads_no_duals(self):
        model = make("max", [("x", 0, 9.5, 2), ("y", 0, 3, 1)], [("r", -INF, {0: 2, 1: 3}, 9)], [2, 3])
        calls = traced(model)
        added = [arguments for name, arguments in calls if name == "GRBaddvars"]
        self.assertEqual(len(added), 1)
        read = [arguments.split('"')[1] for name, arguments in calls if name == "GRBgetdblattrarray"]
        self.assertEqual(read, ["X", "Slack"])


if __name__ == "__main__":
    unittest.main()
