"""What goes wrong between the link and Gurobi: one error that says what to do, no results, and a way to go on."""

import os
import unittest

from harness import INF, KavoError, environment, make


def wide(columns):
    return make("min", [(None, 1, INF)] * columns, [], [1] * columns)


class Failures(unittest.TestCase):
    def assert_fails(self, work, *parts):
        with self.assertRaises(KavoError) as raised:
            work()
        for part in parts:
            self.assertIn(part.lower(), str(raised.exception).lower())
        return str(raised.exception)

    def test_a_model_beyond_the_size_limit(self):
        with wide(2001) as model:
            text = self.assert_fails(model.solve, "size-limited license; visit https://", "[GRBoptimize, code 10010]")
            self.assertEqual(len(text.splitlines()), 1)
            self.assert_fails(model.results, "has not been solved")
        with wide(2000) as model:
            self.assertEqual(model.solve().objective, 2000)

    def test_without_gurobi(self):
        for choice, part in [
            ("/nonexistent/libgurobi130.so", "cannot open shared object file"),
            (os.environ["KAVO"], "not a Gurobi library"),
            (__file__, "invalid ELF header"),
        ]:
            with self.subTest(choice), environment(GRBLINK_GUROBI=choice), make("min", [("x", 1, 2)], [], [1]) as model:
                self.assert_fails(model.solve, choice, part, "pip install gurobipy", "GUROBI_HOME")
                os.environ.pop("GRBLINK_GUROBI")
                self.assertEqual(model.solve().objective, 1)  # the same model, once Gurobi can be found

    def test_without_a_licence(self):
        with make("min", [("x", 1, 2)], [], [1]) as model:
            with environment(GRB_LICENSE_FILE="/nonexistent/gurobi.lic"):
                self.assert_fails(model.solve, "/nonexistent/gurobi.lic", "[GRBstartenv, code 10009]")
            self.assertEqual(model.solve().objective, 1)  # a start that failed may be tried again

    def test_settings_are_checked_before_a_licence_is_taken(self):
        for name, value, part in [
            ("timelmit", "5", "test: unknown option 'timelmit'"),
            ("timelimit", "soon", "test: timelimit=soon: the value must be a number from 0 to infinity"),
            ("threads", "5000", "test: threads=5000: the value must be a whole number from -1 to 1024"),
            ("threads", "1.5", "the value must be a whole number"),
        ]:
            with self.subTest(name=name, value=value), environment(GRB_LICENSE_FILE="/nonexistent/gurobi.lic"):
                with make("min", [("x", 1, 2)], [], [1]) as model:
                    self.assert_fails(lambda model=model: model.solve(**{name: value}), part)

    def test_no_link(self):
        with make("min", [("x", 1, 2)], [], [1]) as model:
            for path in ("/nonexistent.so", os.environ["KAVO"]):
                self.assert_fails(lambda path=path: model.call("kavo_open_link", path.encode()), path)
            self.assert_fails(lambda: model.call("kavo_solve"), "no link is open")
            model.call("kavo_open_link", os.environ["GRBLINK_LIBRARY"].encode())


if __name__ == "__main__":
    unittest.main()
