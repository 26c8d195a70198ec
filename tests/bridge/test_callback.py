"""Callbacks: what they may ask, against what gurobipy's own callbacks are told in the same solve; and the log."""

import ctypes
import random
from ctypes import byref, c_char_p, c_double, c_int

import gurobipy

from capi import CALLBACK, LIB, LOG_CALLBACK
from test_attributes import objectives
from twin import TwinCase, failure, number

EVERYWHERE = {where: [] for where in range(12)}
CODES = EVERYWHERE | {
    1: range(1000, 1005), 2: range(2000, 2005), 3: range(3000, 3009), 4: range(4001, 4009), 5: range(5001, 5010),
    7: range(7001, 7007), 8: [*range(8001, 8011)], 10: range(10001, 10007), 11: range(11001, 11006)}
INTS = {*range(1000, 1005), 2004, 3003, 3004, 3007, 3008, 4006, 4007, 4008, 5001, 5006, 5007, 5008, 5009, 7001, 8001, 8002,
        8007, 11001}
ARRAYS = {4001, 5002, 8003}


def knapsack(t, seed=1):
    """A maximisation with enough branching to reach every place of a MIP."""
    rnd = random.Random(seed)
    n = 25
    t.vars(n, obj=[float(-rnd.randint(20, 90)) for _ in range(n)], vtype="B" * n)
    for _ in range(4):
        t.row(list(range(n)), [float(rnd.randint(10, 80)) for _ in range(n)], "<", 450.0)
    t.param("Presolve", 0)
    t.param("Cuts", 0)


def continuous(method):
    """A transport problem; the method decides which callbacks come."""
    def build(t):
        rnd = random.Random(3)
        t.vars(100, obj=[float(rnd.randint(1, 30)) for _ in range(100)])
        for i in range(10):
            t.row([10 * i + j for j in range(10)], [1.0] * 10, "<", 20.0)
            t.row([10 * j + i for j in range(10)], [1.0] * 10, ">", 12.0 + i % 3)
        t.param("Method", method)
        t.param("Presolve", 0)
        t.param("Crossover", 0)
    return build


def on_one_thread(build):
    def both(t):
        t.param("Threads", 1)
        build(t)
    return both


class Callbacks(TwinCase):
    @staticmethod
    def ask(cbdata, where, what, count):
        """What GRBcbget answers, or its code."""
        value = (c_double * count)() if what in ARRAYS else c_int() if what in INTS else c_double()
        code = LIB.GRBcbget(cbdata, where, what, ctypes.cast(byref(value), ctypes.c_void_p))
        if code:
            return f"error {code}"
        return list(value) if what in ARRAYS else value.value

    def bridge_story(self, t, wheres):
        story = []

        @CALLBACK
        def listen(_model, cbdata, where, _user):
            count = t.c.ints("NumVars")
            story.append((where, [self.ask(cbdata, where, what, count) for what in CODES[where]]))
            return 0

        t.c("GRBsetcallbackfuncadv", listen, None, wheres)
        t.c.optimize()
        t.c("GRBsetcallbackfuncadv", CALLBACK(), None, 0)
        return story

    @staticmethod
    def gurobipy_story(t, wheres):
        story = []

        def value(model, what):
            try:
                if what in (4001, 8003):
                    return model.cbGetSolution(model.getVars())
                return model.cbGetNodeRel(model.getVars()) if what == 5002 else model.cbGet(what)
            except gurobipy.GurobiError as error:
                return f"error {error.errno}"

        def listen(model, where):
            story.append((where, [number(v) if isinstance(v, float) else v
                                  for v in (value(model, what) for what in CODES[where])]))

        t.py.optimize(listen, wheres=[w for w in range(12) if wheres >> w & 1])
        return story

    def test_the_same_is_told_as_to_gurobipy(self):
        seen = set()
        # Where 6, messages, carry times; polling comes at its own pace.
        for name, build, wheres in (("mip", knapsack, 0b111110), ("objectives", objectives, 0b100110100),
                                    ("barrier", continuous(2), 0b10000010), ("simplex", continuous(1), 0b110),
                                    ("first order", continuous(6), 1 << 10)):
            with self.subTest(name):
                t = self.twin(on_one_thread(build))
                ours = [entry for entry in self.bridge_story(t, wheres) if entry[0]]
                theirs = [entry for entry in self.gurobipy_story(t, wheres) if entry[0]]
                self.assertGreater(len(ours), 0)
                self.assertEqual(ours, theirs)
                seen |= {where for where, _ in ours}
        self.assertEqual(seen, {1, 2, 3, 4, 5, 7, 8, 10})

    def test_wrong_questions(self):
        t = self.twin(on_one_thread(knapsack))
        answers = []
        kept = []

        @CALLBACK
        def listen(_model, cbdata, where, _user):
            if where == 4 and not kept:
                kept.append(cbdata)
                value = c_double(7.0)
                for data, place, what in ((cbdata, 5, 5003), (cbdata, 4, 5003), (cbdata, 4, 1), (None, 4, 4002), (99, 4, 4002)):
                    answers.append((LIB.GRBcbget(data, place, what, byref(value)), value.value))
                answers.append(failure(t.c.addvars, 1)[0])
                answers.append(failure(t.c, "GRBoptimize")[0])
                answers.append(LIB.GRBisattravailable(t.c.handle, b"X"))
            return 0

        t.c("GRBsetcallbackfuncadv", listen, None, 1 << 4)
        t.c.optimize()
        self.assertEqual(answers, [(10011, 7.0)] * 5 + [10017, 10017, 0])
        value = c_double()
        self.assertEqual(LIB.GRBcbget(kept[0], 4, 4002, byref(value)), 10011, "cbdata is over with its callback")
        self.assertEqual(t.c.ints("Status"), 2)
        self.assertEqual(failure(t.c, "GRBsetcallbackfuncadv", CALLBACK(lambda *_: 0), None, 0),
                         (10003, "Invalid callback 'where' flags"))

    def test_a_refusal_and_a_stop(self):
        for stop in (False, True):
            with self.subTest(stop=stop):
                t = self.twin(on_one_thread(knapsack))
                calls = []

                @CALLBACK
                def end(_model, _cbdata, where, _user):
                    calls.append(where)
                    if stop and where == 4:
                        LIB.GRBterminate(t.c.handle)
                    return 0 if stop else int(where == 4)

                t.c("GRBsetcallbackfuncadv", end, None, 1 << 4)
                found = failure(t.c.optimize)
                self.assertEqual(found and found[0], None if stop else 10011)
                self.assertEqual(t.c.ints("Status"), 11)
                self.assertEqual(calls.count(4), 1)
                t.c("GRBsetcallbackfuncadv", CALLBACK(), None, 0)
                t.c.optimize()
                self.assertEqual(t.c.ints("Status"), 2, "nothing of the stop is left over")

    def test_messages_and_log_lines_are_the_same(self):
        t = self.twin(on_one_thread(knapsack))
        lines, messages = [], []

        @LOG_CALLBACK
        def log(line, _data):
            lines.append(line.decode())
            return 0

        @CALLBACK
        def listen(_model, cbdata, where, _user):
            if where == 6:
                text = c_char_p()
                self.assertEqual(LIB.GRBcbget(cbdata, 6, 6001, ctypes.cast(byref(text), ctypes.c_void_p)), 0)
                messages.append(text.value.decode())
            return 0

        t.c("GRBsetlogcallbackfunc", log, None)
        t.c.env.set("TimeLimit", 50.0)
        self.assertEqual(lines, ["Set parameter TimeLimit to value 50\n"])
        lines.clear()
        t.c("GRBsetcallbackfuncadv", listen, None, 1 << 6)
        t.c.optimize()
        self.assertGreater(len(lines), 20)
        self.assertEqual(lines, messages)
        other = self.twin()
        lines.clear()
        other.c.optimize()
        self.assertEqual(lines, [], "another model's lines do not come here")
        t.c.env.set("OutputFlag", 0)
        lines.clear()
        t.c.optimize()
        t.c("GRBsetlogcallbackfunc", LOG_CALLBACK(), None)
        t.c.env.set("OutputFlag", 1)
        t.c.optimize()
        self.assertEqual(lines, [])
