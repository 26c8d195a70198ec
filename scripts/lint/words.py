"""Words that do not belong in the tree: notes of things undone, tests that do not run, places outside the project."""

import re

import tree

# Written in pieces, so that this file does not find itself.
FORBIDDEN = [re.compile(pattern) for pattern in (
    r"\b(?:TO" r"DO|FIX" r"ME|XX" r"X)\b",
    r"GTEST" r"_SKIP|\bDISABLED" r"_",
    r"(?<![\w./~-])/(?:wo" r"rk|fa" r"rm|ro" r"ot)/",
    r"\bspec" r"\.md\b",
    r"(?i)\bspecif" r"ication\b.{0,40}\bparts?\b",
    r"\bParts? \d+\.\d",
)]


def check():
    problems = []
    for path in tree.files():
        for number, line in enumerate(tree.read(path).splitlines(), 1):
            problems += [f"{path}:{number}: {match.group()!r} does not belong here"
                         for match in (pattern.search(line) for pattern in FORBIDDEN) if match]
    return problems
