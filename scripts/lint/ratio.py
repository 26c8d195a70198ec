"""Tests in proportion to code, in lines that are neither blank nor comment."""

import lizard

import tree

ENOUGH = 0.20      # below this the code is not tested
PLENTY = 0.35      # above this new tests should earn their place
FROM_CODE_LINES = 3000  # a young tree has no proportion yet
TOOLS = ("tests/double", "tests/fake_link")  # stand-ins that tests use; they test nothing


def count(chosen):
    return sum(lizard.analyze_file(str(tree.ROOT / path)).nloc for path in chosen)


def check():
    found = tree.sources((*tree.SOURCE_SUFFIXES, ".py"))
    code = count(path for path in found if tree.folder(path) in tree.CODE_FOLDERS)
    tests = count(path for path in found if tree.folder(path) == "tests" and not str(path).startswith(TOOLS))
    share = tests / code if code else 0.0
    print(f"code {code} lines, tests {tests} lines, tests/code {share:.2f}, wanted {ENOUGH:.2f} to {PLENTY:.2f}")
    if code > FROM_CODE_LINES and share < ENOUGH:
        return [f"tests/code is {share:.2f}, wanted at least {ENOUGH:.2f}"]
    return []
