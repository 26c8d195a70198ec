"""Sizes of files and functions; what may be larger stands in scripts/size_exceptions.txt with its reason."""

import fnmatch
import statistics

import lizard

import tree

FILE_LINES = 600
FUNCTION_LINES = 60
FUNCTION_LINES_P90 = 30
PARAMETERS = 5
EXCEPTIONS = "scripts/size_exceptions.txt"


class Exceptions:
    """Lines `KIND PATH[:FUNCTION] REASON`; KIND is lines or parameters, PATH and FUNCTION may hold *."""

    def __init__(self):
        self.rows, self.problems, self.used = [], [], set()
        for number, line in enumerate(tree.read(EXCEPTIONS).splitlines(), 1):
            if not line.strip() or line.startswith("#"):
                continue
            kind, pattern, *reason = line.split(None, 2)
            if kind not in ("lines", "parameters") or not reason:
                self.problems.append(f"{EXCEPTIONS}:{number}: expected: lines|parameters path[:function] reason")
            path, _, function = pattern.partition(":")
            self.rows.append((number, kind, path, function or "*"))

    def allow(self, kind, path, function):
        short = function.rsplit("::", 1)[-1]
        for number, row_kind, row_path, row_function in self.rows:
            if kind == row_kind and fnmatch.fnmatch(path, row_path) and fnmatch.fnmatch(short, row_function):
                self.used.add(number)
                return True
        return False

    def unused(self):
        return [f"{EXCEPTIONS}:{number}: nothing needs this exception any more" for number, *_ in self.rows
                if number not in self.used]


def p90(values):
    return sorted(values)[(len(values) * 9 - 1) // 10]


def report(name, file_lines, function_lines):
    if not file_lines or not function_lines:
        return
    print(f"{name}: {len(file_lines)} files, lines p50 {statistics.median(file_lines):.0f} p90 {p90(file_lines)} "
          f"max {max(file_lines)}; {len(function_lines)} functions, lines p50 {statistics.median(function_lines):.0f} "
          f"p90 {p90(function_lines)} max {max(function_lines)}")


def check():
    exceptions = Exceptions()
    problems = exceptions.problems
    lines = {"code": ([], []), "tests, benchmarks": ([], [])}
    for path in tree.sources():
        files, functions = lines["code" if tree.folder(path) in tree.CODE_FOLDERS else "tests, benchmarks"]
        files.append(tree.read(path).count("\n"))
        if files[-1] > FILE_LINES:
            problems.append(f"{path}: {files[-1]} lines, at most {FILE_LINES}")
        for function in lizard.analyze_file(str(tree.ROOT / path)).function_list:
            functions.append(function.length)
            place = f"{path}:{function.start_line}: {function.name}"
            if function.length > FUNCTION_LINES and not exceptions.allow("lines", path, function.name):
                problems.append(f"{place}: {function.length} lines, at most {FUNCTION_LINES}")
            count = len(function.full_parameters)
            if count > PARAMETERS and not exceptions.allow("parameters", path, function.name):
                problems.append(f"{place}: {count} parameters, at most {PARAMETERS}")
    for name, (files, functions) in lines.items():
        report(name, files, functions)
        if functions and p90(functions) > FUNCTION_LINES_P90:
            problems.append(f"{name}: function lines p90 {p90(functions)}, at most {FUNCTION_LINES_P90}")
    return problems + exceptions.unused()
