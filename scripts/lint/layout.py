"""Formatting as .clang-format wants it."""

import re
import subprocess
import sys
from pathlib import Path

import tree

TOOL = Path(sys.executable).with_name("clang-format")


def check():
    found = tree.sources()
    if not found:
        return []
    run = subprocess.run([TOOL, "--dry-run", "--Werror", *found], cwd=tree.ROOT, capture_output=True, text=True)
    # One line per file is enough: the cure is the same for all its lines.
    wrong = sorted(set(re.findall(r"^(.+?):\d+:\d+: error:", run.stderr, re.MULTILINE)))
    if run.returncode and not wrong:
        return [run.stderr]
    return [f"{path}: not formatted (build/venv/bin/clang-format -i {path})" for path in wrong]
