"""Compares the .lp reader with Gurobi's own."""

import pathlib
import sys

import gurobipy as gp

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent / "readers"))
import second_opinion


def corpus(env, folder):
    """The .lp files, and what Gurobi writes of the others."""
    yield from second_opinion.corpus_files("*.lp")
    for source in second_opinion.corpus_files("*.mps*"):
        path = folder / f"{source.name}.lp"
        with gp.read(str(source), env) as model:
            model.write(str(path))
        yield path


# Names may hold nearly anything: blanks alone, ':' and '^' stand between words.
NAMES = ("2x", "3e", "2e+", "1e1e1", ".x", "x..y", "x,y", "x;y", 'x"y', "x#y", "$x", "x(1,2)", "(x)", "x[1]", "{x}", "x/y",
         "x=y", "x<y", "x*y", "x+3y", "3y+2", "é", "free", "e5", "e", "E12", "x|y", "constant", "to")  # fmt: skip

OBJECTIVES = (
    "min x", "MINIMIZE obj: x", "Minimum obj :x", "max\nobj : x", "maximum\n  x +\n 2\n y", "Maximize\n", "min", "min obj:",
    "min 0 x", "min 2 x + 3 x - 5 x", "min .5 x + 5. y - 2.5e+3 z + 1E-2 w", "min x + -y - -2 z", "min + x - y",
    "min 2e1 e1 + 1e5 e5", "min x \\ y\n + y\\ z", "min 1a: x", "min x + st", "min x + bin", "min x + y + 3 Constant",
    "min [ x ^2 ] / 2", "min x + [ 2 x^2 + 4 x * y - 6 y ^ 2 ] /2 + y", "min x - [ x * y + y * x ]/2", "max [ - x^2 ]/2",
    "min x + [\n x\n ^\n 2\n ]\n /\n 2", "min [ x ^2 ] + y", "min x + 2 y + Constant",
)  # fmt: skip

ROWS = (
    "c: x >= 1", "c:\nx\n>=\n1", "c :x <= - 1", "c: x < +1", "c: x > -1", "c: x == 1e3", "x >= 1\n y <= 2\n d: y = 3",
    "c: x >= 1\n-x >= -3\n + y >= 2", "c: 0 x >= 2", "c: x - x >= 2", "c: x + x >= 2", "c: >= 2", "c: x <= 1e30",
    "c: x >= -infinity", "c: x <= inf", "c: x >= 1\\ d: y >= 2", "c: y + gen >= 1", "end: x >= 1", "2: x >= 1",
    "c: x + [ x ^2 + 2 x * y ] <= 2", "c: [ x^2 ] - y = 2", "c: - [ x ^2 ] / 2 >= 2", "c: [ x ^2 ] + [ y ^2 ] + x <= 2",
    "c: [ -2 x ^2 - -3 y ^2 ] <= 2", "c: x >= 1\n c: y >= 1", "c: x >= 2\nlazy constraints\n d: y >= 3",
    "c: x >= 1\nLazy Constraints 2\n d: y >= 3\n y <= 9\nlazy constraints 3 e: x >= 3\nlazy constraints\n x = 3",
    "c: x >= 1\nuser cuts\n d: y >= 3\nlazy constraints\n e: y >= 3", "user cuts\n d: x >= 1",
    "c: b = 1 -> x + y >= 2\n b == 0 -> x <= 1\n -x >= -3\nbinary\n b", "c: b = 1.0 -> 2 x - x >= 1\nbin\n b",
)  # fmt: skip

BOUNDS = (
    "x <= 4", "x < 4", "x >= 2", "x = 3", "x == 3", "x <= -4", "x >= -4\n x <= -5", "-5 <= x <= 4", "0 <= x <= -4", "4 >= x",
    "2 <= x", "4 = x", "x free", "x FREE\n y Free", "x >= -inf", "-Infinity <= x <= INFINITY", "x <= +inf", "x <= 1e20",
    "x <= 1e19", "x >= -1e30", "zz <= 4", "x <= 4\n x <= 5", "x free\n x <= 3", "4 < x < 5", "+4 >= x", "free free", "x > 2",
    "x <= 3 \\ y\n\n y <= 4", "x >= 1e-400",
)  # fmt: skip

TYPES = (
    *(f"{word}\n x y" for word in ("general", "Generals", "GEN", "integer", "integers", "binary", "binaries", "Bin",
                                   "semi-continuous", "SEMI", "semis")),
    "gen x\ny", "gen\n x x", "gen\nzz", "gen\n", "gen\nx\nbin\nx", "bounds\n x <= 7\nbin\nx", "bounds\n x <= 0\nbin\nx",
    "bounds\n x free\nbin\nx", "bounds\n 1 <= x <= 7\nbin\nx", "bounds\n 2 <= x <= 7\nsemi\nx", "bounds\n x free\nsemi\nx",
    "gen\nx\nsemi\nx", "bin\nx\nsemi\nx", "bounds\n -9 <= x <= -7\nsemi\n x", "bound\n x <= 5\ngen\n y\nbin\n x\ngen\n z",
)  # fmt: skip

BEYOND = (
    *(f"SOS\n {text}" for text in ("s: S1 :: x:1 y:2", "s:S2::x : 1.5 y:-2", "S1 :: y:2 x:1", "s: S1 :: zz:1\n y:2",
                                   "s: S1 :: x:1 y:2\n t: S2 :: x:2 y:3 S1 :: x:1e30 z:1")),
    "pwlobj\n x: ( 0 , 1 ) ( 1 , 2 ) (2, 4)", "PWLObj\n x: (0,1)\n (1,2) y:(-1, -1) (0, 1) (0, 2) (1, 1e9)",
    *(f"general constraints\n {text}" for text in (
        "g: x = MAX ( y , z , 3 )", "x = MIN ( y , -1e5 , z )", "g: x == MAX ( y , y )", "g:\n x\n =\n MAX\n (\n 3\n )",
        "g: x = MAX ( y ) h: y = ABS ( x )", "g: zz = NORM ( 2 ) ( x[1] , y )", "g: x = NORM ( inf ) ( y , z )",
        "g: x = NORM ( 0 ) ( y , z )\n NORM: x = NORM ( 1 ) ( y )", "g: x = PWL ( y ) : (0, 1) (1, 3) (1, 4) ( 2 , 1 )",
        "g: x = POLY ( 3 y ^ 4 + 7 y ^1 - 3 )", "g: x = POLY ( - y^2 + -2 y )", "g: x = exp(y)",
        "g: x = EXPA ( 2.5 ^ y )", "g: x = LOG ( y )\n h: z = log_2.5(y)", "g: x = POW ( y^2.5 )", "g: x = POW ( y ^ -1 )",
        "g: ( FuncPieces=4 FuncPieceError=0.01 ) x = SIN ( y )", "(FuncPieces = 4) x = COS(y)\n x = TAN ( y )",
        "g: x = LOGISTIC ( y(1) )", "g: x = NL : ( VARIABLE , y , -1 )", "g: x = NL : ( CONSTANT , 3 , -1 ) h: x = SIN ( y )",
        "x = NL : ( PLUS , -1 , -1 ) ( SQRT , -1 , 0 ) ( VARIABLE , y , 1 ) ( CONSTANT , 2 , 0 ) ( UMINUS , 7 , 0 )"
        " ( VARIABLE , z , 4 )",
        "g: x = NL : ( POW , -1 , -1 ) ( CONSTANT , 2 , 0 ) ( MULTIPLY , -1 , 0 ) ( VARIABLE , y , 2 )\n ( VARIABLE , z , 2 )",
    )),
    "gencons\n x = ABS ( y )", "General Constraint\n x = ABS ( y )", "bin\n x y z\ngeneral constraints\n x = AND ( y , z )\n"
    " g: x = OR ( y )",
)  # fmt: skip

# Numbers that must be names make names of all numbers that stand like a variable.
NUMBERS = tuple(f"min 2 3 + 4 x + 5\nst\n c: {row}\n d: 3 + x >= 1\n{rest}\nend\n" for row, rest in (
    ("3 <= 2", "bounds\n 3 <= 5"), ("3 - 2 4 >= -2", "bounds\n 4 >= -5\n 6 >= x"), ("3 >= 1", "bounds\n -5 <= 3 <= 7"),
    ("3 = 4", "bounds\n 3 free\ngen\n 3"), ("[ 3 * 3 + 3 3 ^2 - 2 3 * x ] + x >= 2", ""), ("3 = 1 -> x >= 2", "bin\n 3"),
    ("3 >= 1\n 4 4 >= 2", "bounds\n 4 >= 3\nsos\n s: S1 :: 3:1 x:2"), ("010106 >= 1", "bounds\n 010106 <= 3"),
    ("3 >= 1", "general constraints\n 3 = MAX ( 3 , x , 7 )\n x = POLY ( 3 3 ^ 2 + 3 ^ 1 + 4 )\n x = EXPA ( 2 ^ 3 )"),
))  # fmt: skip

WHOLE = (
    "min a", "min a\nst\nend", "min a\nbounds\n a <= 3\nend\nfoo bar", "min a\r\nst\r\nc: a >= 1\r\nend\r\n",
    "min\ta\nst\nc:\ta\t>=\t1\nend\n", "min a\n\n \\ c\nst a >= 1\n END", "min a st\na >= 1\nbounds a <= 3\nend",
    "min a\nst\n a >= 1\n", "min a + 3 Constant\nst\n c: a >= 1\nbounds\n Constant = 1\nend",
    "max 2 Constant + 4 Constant + [ a ^2 ] / 2\nbounds\n Constant = 1\nend",
    "min a + 3 Constant\nst\n c: a + Constant >= 1\nbounds\n Constant = 1\nend", "min a - 3 Constant\nbounds\n Constant = 2\nend",
    "min __pwl(a) + b\nst\n c: a + b >= 1\npwlobj\n a: (0, 1) (1, 2)\nend", "min a + b\npwlobj\n a: (0, 1) (1, 2)\nend",
    "min multi-objectives\n o: Priority=2 Weight=1.5 AbsTol=0 RelTol=0\n a + 2 b\n p: Priority=1 Weight=-1 AbsTol=0.1 RelTol=.5"
    "\n 3 a\n + 4 Constant0\n q: Priority=0 Weight=1 AbsTol=0 RelTol=0\n\nst\n a + b >= 1\nbounds\n Constant0 = 1\nend",
)  # fmt: skip

SETTLED = (
    *(f"max {name} - 3 y\nst\n c: 2 {name} + -y >= 1\nbounds\n {name} <= 5\ngen\n {name}\nend\n" for name in NAMES),
    *(f"{objective}\nst\n d: x + y >= 1\nend\n" for objective in OBJECTIVES),
    *(f"min x + y\nst\n {rows}\nend\n" for rows in ROWS),
    *(f"min x + y\nst\n d: x + y >= 1\nbounds\n {bounds}\nend\n" for bounds in BOUNDS),
    *(f"min x + y\nst\n d: x + y >= 1\n{types}\nend\n" for types in (*TYPES, *BEYOND)),
    *NUMBERS,
    *WHOLE,
)

second_opinion.run(".lp", SETTLED, corpus)
