"""Compares the .mps reader with Gurobi's own."""

import pathlib
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "readers"))
import second_opinion

BASE = "NAME t\n{head}ROWS\n N obj\n L l\n G g\n E e\n{rows}COLUMNS\n{columns}RHS\n{rhs}{ranges}{bounds}ENDATA\n"
COLUMNS = " x obj 1 l 2\n x g 3\n y e 4\n M 'MARKER' 'INTORG'\n i obj 5 l 6\n j g 1\n M 'MARKER' 'INTEND'\n"

# Where the format leaves room, Gurobi's reading is ours.
SETTLED = (
    [{"bounds": "BOUNDS\n" + lines + "\n"} for lines in (
        " UP b x 5", " UP b x 0", " UP b x -5", " UP b i -5", " LO b x 0\n UP b x -5", " UP b x -5\n LO b x -7",
        " MI b x", " MI b i", " PL b i", " FR b i", " LO b i 0", " LO b i -3", " UP b i 7", " UP b i 0.5", " FX b i 3",
        " FR b x 3", " BV b x", " BV b x 1", " BV b i", " FX b x 0\n BV b x", " LI b x 2", " UI b x 7", " UI b x -7",
        " SC b x 7", " SC b x 0", " SC b x 1e30", " SC b i 7", " SI b x 7", " LO b x 2\n SC b x 7",
        " LI b x 2\n SI b x 7", " UI b x 5\n SC b x 5", " UP b x 1e20", " UP b x 1e19", " LO b x -1e20", " UP b x inf",
        " UP b x 4\n UP b2 x 5", " up b x 5", " FR x x", " UP b x 4\n MI b x", " UP b x 9e19\n LO b x -1e30",
        " UP b x Infinity\n LO b x -inf", " LO b i 1\n BV b i", " UP b x 5\n FR b y\n UP b x 5",
    )]
    + [{"rhs": lines + "\n"} for lines in (
        " R l 4 g 5", " R obj 4", " R obj -4 e 1", " R l 1e30", " R g -1e30", " R l 4\n R2 l 5", " R e -0",
        " R l 4\n R l 4",
    )]
    + [{"rhs": " R l 4 g 5\n R e 6\n", "ranges": "RANGES\n" + lines + "\n"} for lines in (
        " A l 3", " A l -3", " A g 3", " A g -3", " A g 0", " A e 3", " A e -3", " A e 0", " A obj 3", " A l 3\n A2 l 4",
        " A l 3\n A l 3", " A e -1e20", " A l inf",
    )]
    + [{"head": f"OBJSENSE{between}{word}\n"} for between in (" ", "\n    ") for word in (
        "MAX", "MAXIMIZE", "max", "Maximise", "MIN", "MINIMIZE", "Minimize", "minimise",
    )]
    + [{"rows": " N obj2\n", "columns": COLUMNS + " z obj2 1 l 2\n", "rhs": " R obj2 7\n"},
       {"columns": COLUMNS + " z l 0 obj 0\n w e .5E+1\n v e +1.\n"},
       {"rows": "LAZYCONS\n L c9\nLAZYCONS 3\n G c8\nUSERCUTS\n E c7\n"},
       {"rows": " L *\n", "columns": COLUMNS + " *c * 3\n 'q' * 1\n"},
       {"rows": " N  o2\n"}, {"head": "OBJSENSE MAX\n", "rows": " N  o2\n", "bounds": "QUADOBJ\n x x 2\n"}]
    + [{"bounds": lines + "\n"} for lines in (
        "QUADOBJ\n x x 2\n x y 3\n y x 5\n x x 1", "QUADOBJ\n x x 2 y 3", "QMATRIX\n x x 2\n x y 3\n y x 3",
        "QSECTION obj\n x x 2\n y x 3", "QSECTION\n x x 2\n y x 3\n x y 1", "QSECTION l\n x x 2\n x y 3\n y x 4",
        "QCMATRIX e\n x x 2\n x y 1.5\n y x 1.5", "PWLOBJ\n x 0 1\n x 2 2", "PWLOBJ\n y 0 1\n y 2 2\n y 2 3\n y 4 5",
        "QUADOBJ\n x x 2 y 3\n y x -3", "QMATRIX\n x x 2 y 3\n y x 3", "QSECTION\n y x 3", "QSECTION obj\n y x 3",
        "PWLOBJ\n x 0 1\n x 2 2\n y 0 0\n y 1 1\n y 2 5", "SOS\n S2 5\n y 2\n x 1", "SETS\n s1 sets s 5\n x -1\n y 1e30",
        "SOS\n S1 s\n    x 1\n    y 2", "SOS\n S2 SOS s 5\n    i 3\n    x 1\n    y 2", "SETS\n s1 s\n    x -1\n    y -2",
        "INDICATORS\n IF l i 0\n IF g j 1.0", "GENCONS\n MAX g1\n    x\n    4\n    y", "GENCONS\n NORM 2 g1\n    x\n    x",
        "GENCONS\n POLY g1\n    Options 0 .01 .001 -1 -1\n    x  y\n    5  2\n    2  1",
        "GENCONS\n NL g1\n    x\n    PLUS  -1  -1\n    VARIABLE  y  0", "GENCONS\n NL g1\n    x\n    CONSTANT  4  -1",
        "GENCONS\n NL g1\n    x\n    MULTIPLY 3 -1\n    VARIABLE  y  0\n    CONSTANT 2 0\n    VARIABLE x 0",
    )]
)  # fmt: skip

PARTS = {"head": "", "rows": "", "columns": COLUMNS, "rhs": "", "ranges": "", "bounds": ""}

second_opinion.run(
    ".mps", [BASE.format(**PARTS | parts) for parts in SETTLED], lambda env, folder: second_opinion.corpus_files("*.mps*")
)
