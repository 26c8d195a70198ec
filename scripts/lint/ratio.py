"""Tests in proportion to code, in lines that are neither blank nor comment."""

import lizard

import tree

LOW, HIGH = 0.20, 0.40
FROM_CODE_LINES = 3000  # a young tree has no proportion yet


def count(chosen):
    return sum(lizard.analyze_file(str(tree.ROOT / path)).nloc for path in chosen)


def check():
    found = tree.sources((*tree.SOURCE_SUFFIXES, ".py"))
    code = count(path for path in found if tree.folder(path) in tree.CODE_FOLDERS)
    tests = count(path for path in found if tree.folder(path) == "tests")
    share = tests / code if code else 0.0
    print(f"code {code} lines, tests {tests} lines, tests/code {share:.2f}")
    if code > FROM_CODE_LINES and not LOW <= share <= HIGH:
        return [f"tests/code is {share:.2f}, wanted {LOW:.2f} to {HIGH:.2f}"]
    return []
