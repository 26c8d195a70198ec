"""Compares the .lp reader with Gurobi's own."""

import pathlib
import sys

import gurobipy as gp

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "readers"))
import second_opinion


def corpus(env, folder):
    """The .lp files, and what Gurobi writes of the others."""
    yield from second_opinion.corpus_files("*.lp")
    for source in second_opinion.corpus_files("*.mps*"):
        path = folder / f"{source.name}.lp"
        with gp.read(str(source), env) as model:
            model.write(str(path))
        yield path


SETTLED = []

second_opinion.run(".lp", SETTLED, corpus)
