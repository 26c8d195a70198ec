"""gurobi_read.py FILE TIMES: the least processor time that Gurobi's own reader takes, in seconds."""

import sys
import time

import gurobipy as gp


def read(path, env):
    begin = time.process_time()
    with gp.read(path, env):
        return time.process_time() - begin


with gp.Env(params={"OutputFlag": 0}) as environment:
    print(min(read(sys.argv[1], environment) for _ in range(int(sys.argv[2]))))
