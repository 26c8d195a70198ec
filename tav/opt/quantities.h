#pragma once

// The numbers under which per-element quantities are asked for and handed over: one numbering for the blocks on the way
// in and for the results on the way out.
namespace tav::opt {

struct VariableQuantity {
  static constexpr int type = 0;   // VariableType, int
  static constexpr int lower = 1;  // double
  static constexpr int upper = 2;  // double
  static constexpr int priority = 3;
  static constexpr int name = 4;    // const char*
  static constexpr int starts = 5;  // value set k is start k
  static constexpr int level = 7;
  static constexpr int reducedCost = 8;
  static constexpr int basis = 9;  // BasisStatus, int
  static constexpr int lowerRangeLow = 10;
  static constexpr int lowerRangeHigh = 11;
  static constexpr int upperRangeLow = 12;
  static constexpr int upperRangeHigh = 13;
};

struct RowQuantity {
  static constexpr int type = 0;      // RowType, int
  static constexpr int function = 1;  // Symbol
  static constexpr int lower = 2;
  static constexpr int upper = 3;
  static constexpr int name = 4;  // const char*
  static constexpr int slack = 5;
  static constexpr int marginal = 6;
  static constexpr int basis = 7;  // BasisStatus, int
  static constexpr int sideRangeLow = 8;
  static constexpr int sideRangeHigh = 9;
  // Of an ordered set (SosType), whose function's variables are its members. Symbol: a vector with a value per member,
  // or one constant for all of them.
  static constexpr int weights = 10;
};

// What a block of linked rows says of each link, in a group of its own (tag::kConstraintLink).
struct LinkQuantity {
  static constexpr int type = 0;      // LinkType, int
  static constexpr int variable = 1;  // Symbol: a variable
};

struct ObjectiveQuantity {
  static constexpr int sense = 0;     // ObjectiveSense, int
  static constexpr int function = 1;  // Symbol
  static constexpr int value = 5;
  static constexpr int bound = 6;
  static constexpr int coefficientRangeLow = 7;
  static constexpr int coefficientRangeHigh = 8;
};

struct FunctionQuantity {
  static constexpr int constant = 2;
  // Of objectives: a value per variable; value set k is objective k.
  static constexpr int coefficients = 3;
};

// Numbers of the standard model attributes.
struct ModelAttribute {
  static constexpr int name = 0;
  static constexpr int status = 2;
  static constexpr int iterationLimit = 3;
  static constexpr int iterations = 4;
  static constexpr int nodeLimit = 5;
  static constexpr int nodes = 6;
  static constexpr int timeLimit = 7;
  static constexpr int runTime = 8;
  static constexpr int threads = 9;
  static constexpr int relativeGap = 11;
  static constexpr int absoluteGap = 12;
  static constexpr int cutoff = 13;
  static constexpr int count = 15;
};

}  // namespace tav::opt
