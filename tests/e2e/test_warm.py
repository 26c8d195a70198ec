"""LPs of the corpus that are solved again from their own basis, and from their own point."""

import unittest
from ctypes import c_int

from harness import CORPUS, Model, example, has_corpus

NAMES = ["25fv47.mps.gz", "adlittle", "bandm", "boeing2", "brandy", "capri", "e226", "scfxm1", "scrs8", "share2b",
         "shell", "stocfor1"]
STATUS = {word: status for status, word in example.BASIS_WORDS.items()}


def statuses(words):
    return (c_int * len(words))(*[STATUS[word] for word in words])


class Warm(unittest.TestCase):
    def test_a_warm_solve_needs_fewer_iterations(self):
        print(f"\n{'model':10} {'cold':>6} {'basis':>6} {'point':>6}  simplex iterations")
        for name in NAMES if has_corpus() else ():
            path = CORPUS / "lp" / (name if "." in name else name + ".mps")
            with self.subTest(name):
                with Model(path) as model:
                    cold = model.solve(threads=1)
                with Model(path) as model:
                    model.call("kavo_set_basis", statuses(cold.column_basis), statuses(cold.row_basis))
                    basis = model.solve(threads=1, usebasis=2)
                with Model(path) as model:
                    model.call("kavo_set_start", example.doubles(*cold.values), example.doubles(*cold.duals))
                    point = model.solve(threads=1, usebasis=3)
                print(f"{name:10} {cold.iterations:6.0f} {basis.iterations:6.0f} {point.iterations:6.0f}")
                for warm in (basis, point):
                    self.assertEqual(warm.notes, cold.notes)
                    self.assertAlmostEqual(warm.objective, cold.objective, delta=1e-8 * abs(cold.objective))
                    self.assertLess(warm.iterations, cold.iterations)


if __name__ == "__main__":
    unittest.main()
