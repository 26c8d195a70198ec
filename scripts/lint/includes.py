"""Which folder may include what: the arrows of docs/architecture.md, over the include lines."""

import functools
import re

import tree

# Own files, by folder: prefixes of project paths. A folder includes itself as well.
OWN = {
    "tav": (),
    "grb": ("tav/",),
    "brel": ("tav/", "kavo/link.h"),
    "exports": ("brel/", "grb/"),
    "kavo": (),
    "app": ("kavo/kavo.h",),
    "bridge": ("grb/gurobi/functions.def", "grb/gurobi/types.h", "grb/gurobi/constants.h",
               "grb/gurobi/callback_constants.h"),
}

# Libraries, by folder, besides the standard library, POSIX and fmt.
LIBRARIES = {
    "tav": ("yaml.h",),
    "brel": ("muParser.h",),
    "kavo": ("nlohmann/", "zlib.h"),
    "app": ("CLI/",),
    "bridge": ("Python.h", "pybind11/"),
}
EVERYWHERE = ("fmt/",)
POSIX = {"dlfcn.h", "fcntl.h", "fnmatch.h", "link.h", "poll.h", "pthread.h", "semaphore.h", "unistd.h"}
# For C headers, and where <signal.h> and the like declare more than their C++ twins.
C_STANDARD = {f"{name}.h" for name in (
    "errno", "limits", "locale", "math", "signal", "stdarg", "stdbool", "stddef", "stdint", "stdio", "stdlib", "string",
    "time")}

INCLUDE = re.compile(r'^\s*#\s*include\s*(?:"([^"]+)"|<([^>]+)>)', re.MULTILINE)


def resolve(path, name):
    """The project path that a quoted include means: beside the including file, or else from the root."""
    beside = f"{path.rpartition('/')[0]}/{name}"
    return beside if (tree.ROOT / beside).is_file() else name


@functools.cache
def of(path):
    """(project paths in quotes, library names in angles) that a file includes."""
    own, other = [], []
    for quoted, angled in INCLUDE.findall(tree.read(path)):
        if quoted:
            own.append(resolve(path, quoted))
        else:
            other.append(angled)
    return own, other


def is_standard(name):
    return ("/" not in name and "." not in name) or name.startswith("sys/") or name in POSIX | C_STANDARD


def check():
    problems = []
    for path in tree.sources((*tree.SOURCE_SUFFIXES, ".def")):
        own, other = of(path)
        problems += [f"{path}: there is no {name}; include paths start at the root"
                     for name in own if not (tree.ROOT / name).is_file()]
        folder = tree.folder(path)
        if folder not in OWN:
            continue
        may_own = (folder + "/", *OWN[folder])
        may_other = (*EVERYWHERE, *LIBRARIES.get(folder, ()))
        problems += [f"{path}: {folder} must not include {name}" for name in own if not name.startswith(may_own)]
        problems += [f"{path}: {folder} must not include <{name}>"
                     for name in other if not is_standard(name) and not name.startswith(may_other)]
    return problems
