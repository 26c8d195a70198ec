* A day's food at the least cost: portions of three foods, three demands.
* Answer: Oats 4, Milk 2, Beans 1; cost 2.12.
NAME diet
ROWS
 N cost
 G energy
 G protein
 G calcium
COLUMNS
 Oats cost 0.15 energy 4
 Oats protein 3 calcium 1
 Milk cost 0.48 energy 2
 Milk protein 4 calcium 6
 Beans cost 0.56 energy 3
 Beans protein 8 calcium 2
RHS
 demand energy 18 protein 28
 demand calcium 18
RANGES
* energy from 18 to 18 + 8
 limit energy 8
BOUNDS
 UP most Oats 4
ENDATA
