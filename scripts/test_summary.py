"""Closes a test run: reads ctest's JUnit file, names what did not pass and prints "N passed, M failed".

A test that ctest could not start, disabled or skipped did not pass. Exits 1 unless at least one test ran and all passed.
"""

import sys
import xml.etree.ElementTree as ElementTree


def main(path):
    try:
        cases = ElementTree.parse(path).getroot().findall("testcase")
    except (OSError, ElementTree.ParseError) as error:
        sys.exit(f"no test result: {error}")
    failed = [case for case in cases if case.get("status") != "run"]
    for case in failed:
        print(f"{case.get('status')}: {case.get('name')}")
    print(f"{len(cases) - len(failed)} passed, {len(failed)} failed")
    return 1 if failed or not cases else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
