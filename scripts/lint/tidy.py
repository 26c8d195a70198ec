"""clang-tidy over the C++ of build/release's compile commands; a file is looked at again only when something it sees changed."""

import concurrent.futures
import functools
import hashlib
import json
import os
import re
import subprocess
import sys
from pathlib import Path

import includes
import tree

TOOL = Path(sys.executable).with_name("clang-tidy")
BUILD = tree.ROOT / "build/release"
CLEAN = tree.ROOT / "build/lint-clean.json"  # source path -> key of the last look that found nothing
HEADERS = f"^{re.escape(str(tree.ROOT))}/({'|'.join(tree.CODE_FOLDERS)}|tests|bench|fuzz)/"


@functools.cache
def digest(path):
    return hashlib.sha256((tree.ROOT / path).read_bytes()).hexdigest()


def seen_by(path):
    """The file and every project file that it includes, directly or not."""
    seen, open_ends = set(), [path]
    while open_ends:
        current = open_ends.pop()
        if current not in seen:
            seen.add(current)
            open_ends += [name for name in includes.of(current)[0] if (tree.ROOT / name).is_file()]
    return sorted(seen)


def key(path, command, common):
    return hashlib.sha256("\n".join([common, command, *map(digest, seen_by(path))]).encode()).hexdigest()


def look(path):
    run = subprocess.run([TOOL, "-p", BUILD, "--quiet", "--warnings-as-errors=*", f"--header-filter={HEADERS}", path],
                         cwd=tree.ROOT, capture_output=True, text=True)
    found = re.findall(r"^.+:\d+:\d+: (?:error|warning): .+$", run.stdout, re.MULTILINE)
    if run.returncode and not found:
        return path, [f"{path}: {(run.stdout + run.stderr).strip()}"]
    return path, [line.removeprefix(f"{tree.ROOT}/") for line in found]


def commands():
    """Project path -> compile command."""
    entries = json.loads((BUILD / "compile_commands.json").read_text())
    inside = {os.path.relpath(entry["file"], tree.ROOT): entry["command"] for entry in entries}
    known = set(tree.sources((".cpp",)))
    return {path: command for path, command in inside.items() if path in known}


def check():
    version = subprocess.run([TOOL, "--version"], capture_output=True, text=True, check=True).stdout
    common = version + tree.read(".clang-tidy")
    keys = {path: key(path, command, common) for path, command in commands().items()}
    clean = json.loads(CLEAN.read_text()) if CLEAN.exists() else {}
    changed = [path for path in keys if clean.get(path) != keys[path]]
    print(f"{len(keys)} files, {len(changed)} of them to look at", flush=True)
    problems = []
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for path, found in pool.map(look, changed):
            problems += found
            if not found:
                clean[path] = keys[path]
    CLEAN.write_text(json.dumps({path: value for path, value in clean.items() if path in keys}))
    return sorted(set(problems))
