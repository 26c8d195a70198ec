#pragma once

namespace grb {

// Domain types of blocks in Gurobi's terms. Any other number throws the support error "Domain type not supported.".

// 0 continuous 'C', 1 integer 'I', 2 semicontinuous 'S', 3 semi-integer 'N'.
char varTypeToGurobi(unsigned char type);
// 0 greater or equal 'G', 1 less or equal 'L', 2 equal 'E'.
char constrTypeToGurobi(int type);
// 0 minimise 1, 1 maximise -1.
int objTypeToGurobi(int type);

}  // namespace grb
