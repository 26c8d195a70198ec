"""./run lint: runs the checks named on the command line, or all of them, and fails when one of them found a problem."""

import sys
import time

import includes
import layout
import ratio
import sizes
import tidy
import words

# A check takes nothing, may print what it measured, and returns its problems as lines of text. The slow one comes last.
CHECKS = {
    "format": layout.check,
    "includes": includes.check,
    "sizes": sizes.check,
    "ratio": ratio.check,
    "words": words.check,
    "tidy": tidy.check,
}


def main(names):
    unknown = [name for name in names if name not in CHECKS]
    if unknown:
        sys.exit(f"no check {unknown[0]}; there are: {' '.join(CHECKS)}")
    failed = []
    for name in names or CHECKS:
        begin = time.monotonic()
        problems = CHECKS[name]()
        for problem in problems:
            print(problem)
        print(f"lint {name}: {len(problems)} problems ({time.monotonic() - begin:.1f} s)", flush=True)
        if problems:
            failed.append(name)
    if failed:
        sys.exit(f"lint failed: {' '.join(failed)}")


if __name__ == "__main__":
    main(sys.argv[1:])
