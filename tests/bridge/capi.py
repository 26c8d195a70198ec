"""The bridge's C functions for Python, made from the list of functions, with helpers that take Python values."""

import ctypes
import os
import re
from ctypes import POINTER, byref, c_char, c_char_p, c_double, c_int, c_size_t, c_uint, c_void_p

CALLBACK = ctypes.CFUNCTYPE(c_int, c_void_p, c_void_p, c_int, c_void_p)
LOG_CALLBACK = ctypes.CFUNCTYPE(c_int, c_char_p, c_void_p)

_TYPES = {
    "void": None, "int": c_int, "double": c_double, "char": c_char, "unsigned int": c_uint, "size_t": c_size_t,
    "int*": POINTER(c_int), "double*": POINTER(c_double), "char*": c_char_p, "char**": POINTER(c_char_p),
    "GRBenv*": c_void_p, "GRBenv**": POINTER(c_void_p), "GRBmodel*": c_void_p, "GRBmodel**": POINTER(c_void_p),
    "void*": c_void_p,
}


def _ctype(text, named):
    """The ctypes type of 'const double* vals' (named) or 'char*' (not named)."""
    text = text.replace("const ", "").strip()
    if named:
        text = text.rsplit(" ", 1)[0]
    return _TYPES[text.strip()]


def _parameters(text):
    text = re.sub(r"int \(\*cb\)\(GRBmodel.*?\)", "CALLBACK cb", text)
    text = re.sub(r"int \(\*cb\)\(char.*?\)", "LOG_CALLBACK cb", text)
    callbacks = {"CALLBACK cb": CALLBACK, "LOG_CALLBACK cb": LOG_CALLBACK}
    parts = [part.strip() for part in text.split(",") if part.strip()]
    return [callbacks[part] if part in callbacks else _ctype(part, True) for part in parts]


def listed(path):
    """(result, name, parameters) of each row of the list of functions."""
    with open(path, encoding="utf-8") as file:
        source = "".join(line for line in file if not line.startswith(("//", "#")))
    return re.findall(r"GRB_FN\(([^,]+), (\w+),\s*\(((?:[^()]|\([^()]*\))*)\),\s*\d+\)", re.sub(r"\s+", " ", source))


def load(loader=ctypes.PyDLL):
    """The library as an object with one typed attribute per listed function."""
    library = loader(os.environ["GRBLINK_BRIDGE"])
    for result, name, parameters in listed(os.environ["GRBLINK_FUNCTIONS"]):
        function = getattr(library, name)
        function.restype = _ctype(result, False)
        function.argtypes = _parameters(parameters)
    return library


LIB = load()


def doubles(values):
    return None if values is None else (c_double * len(values))(*values)


def ints(values):
    return None if values is None else (c_int * len(values))(*values)


def chars(values):
    return None if values is None else "".join(values).encode()


def names(values):
    return None if values is None else (c_char_p * len(values))(*[None if v is None else v.encode() for v in values])


class Error(Exception):
    """A call that returned non-zero."""

    def __init__(self, code, text):
        super().__init__(f"{code}: {text}")
        self.code = code
        self.text = text


class Env:
    """A handle of an environment; started unless told otherwise."""

    def __init__(self, start=True, handle=None):
        self.handle = c_void_p(handle)
        if handle is None:
            code = LIB.GRBemptyenvinternal(byref(self.handle), 13, 0, 2)
            if code:
                raise Error(code, "no environment")
            self("GRBsetintparam", b"LogToConsole", 0)
            if start:
                self("GRBstartenv")

    def message(self):
        return LIB.GRBgeterrormsg(self.handle).decode()

    def __call__(self, function, *args):
        code = getattr(LIB, function)(self.handle, *args)
        if code:
            raise Error(code, self.message())

    def free(self):
        LIB.GRBfreeenv(self.handle)

    def get(self, name):
        kind = LIB.GRBgetparamtype(self.handle, name.encode())
        if kind == 3:
            buffer = ctypes.create_string_buffer(512)
            self("GRBgetstrparam", name.encode(), ctypes.cast(buffer, c_char_p))
            return buffer.value.decode()
        value = c_int() if kind == 1 else c_double()
        self("GRBgetintparam" if kind == 1 else "GRBgetdblparam", name.encode(), byref(value))
        return value.value

    def set(self, name, value):
        suffix = {int: "int", float: "dbl", str: "str"}[type(value)]
        self(f"GRBset{suffix}param", name.encode(), value.encode() if suffix == "str" else value)


class Model:
    """A handle of a model. `get` and `set` choose the C function by the attribute's type and reach."""

    def __init__(self, env, name="", handle=None):
        self.handle = c_void_p(handle)
        if handle is None:
            env("GRBnewmodel", byref(self.handle), name.encode(), 0, None, None, None, None, None)
        self.env = Env(handle=LIB.GRBgetenv(self.handle))

    @staticmethod
    def read(env, path):
        handle = c_void_p()
        env("GRBreadmodel", path.encode(), byref(handle))
        return Model(env, handle=handle.value)

    def __call__(self, function, *args):
        code = getattr(LIB, function)(self.handle, *args)
        if code:
            raise Error(code, self.env.message())

    def free(self):
        self("GRBfreemodel")

    def addvars(self, count, obj=None, lb=None, ub=None, vtype=None, named=None):
        self("GRBaddvars", count, 0, None, None, None, doubles(obj), doubles(lb), doubles(ub), chars(vtype), names(named))

    def addconstr(self, ind, val, sense, rhs, name=""):
        self("GRBaddconstr", len(ind), ints(ind), doubles(val), sense.encode(), rhs, name.encode())

    def addqconstr(self, lin, quad, sense, rhs, name=""):
        (lind, lval), (row, col, val) = lin, quad
        self("GRBaddqconstr", len(lind), ints(lind), doubles(lval), len(row), ints(row), ints(col), doubles(val),
             sense.encode(), rhs, name.encode())

    def addsos(self, kind, ind, weight):
        self("GRBaddsos", 1, len(ind), ints([kind]), ints([0]), ints(ind), doubles(weight))

    def update(self):
        self("GRBupdatemodel")

    def optimize(self):
        self("GRBoptimize")

    def scalar(self, name, kind):
        value = {"int": c_int, "dbl": c_double, "str": c_char_p}[kind]()
        self(f"GRBget{kind}attr", name.encode(), byref(value))
        return value.value.decode() if kind == "str" else value.value

    def ints(self, name):
        return self.scalar(name, "int")

    def dbl(self, name):
        return self.scalar(name, "dbl")

    def array(self, name, kind, first, count):
        values = ({"int": c_int, "dbl": c_double, "char": c_char}[kind] * count)()
        self(f"GRBget{kind}attrarray", name.encode(), first, count,
             ctypes.cast(values, c_char_p) if kind == "char" else values)
        return values.raw.decode() if kind == "char" else list(values)

    def element(self, name, kind, index):
        value = {"int": c_int, "dbl": c_double, "char": c_char, "str": c_char_p}[kind]()
        pointer = ctypes.cast(byref(value), c_char_p) if kind == "char" else byref(value)
        self(f"GRBget{kind}attrelement", name.encode(), index, pointer)
        return value.value.decode() if kind in ("char", "str") else value.value

    def setelement(self, name, kind, index, value):
        self(f"GRBset{kind}attrelement", name.encode(), index, value.encode() if kind == "str" else value)
