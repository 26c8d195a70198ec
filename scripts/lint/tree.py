"""The files of the tree: what git tracks, and what it would track once added."""

import functools
import pathlib
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[2]
SOURCE_SUFFIXES = (".h", ".c", ".cpp")
CODE_FOLDERS = ("tav", "grb", "brel", "exports", "kavo", "bridge", "app")


@functools.cache
def files():
    """Paths relative to ROOT, sorted."""
    listed = subprocess.run(
        ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
        cwd=ROOT, check=True, capture_output=True, text=True).stdout
    return sorted({path for path in listed.split("\0") if path and (ROOT / path).is_file()})


def sources(suffixes=SOURCE_SUFFIXES):
    return [path for path in files() if path.endswith(suffixes)]


def folder(path):
    return path.split("/", 1)[0]


def read(path):
    return (ROOT / path).read_text(encoding="utf-8", errors="replace")
