// Numbers and letters that the Gurobi C interface gives a meaning, version 13.0.
#pragma once

#include <cstddef>

namespace grb {

/// The version that environments are made for.
inline constexpr int kVersionMajor = 13;
inline constexpr int kVersionMinor = 0;
inline constexpr int kVersionTechnical = 2;

/// How Gurobi writes an infinite and an undefined value.
inline constexpr double kInfinity = 1e100;
inline constexpr double kUndefined = 1e101;

/// A variable's bound of at least this size is infinite to Gurobi. Right-hand sides are kept as numbers.
inline constexpr double kBoundInfinity = 1e20;

/// The largest integer parameter value.
inline constexpr int kMaxInt = 2000000000;

/// Longest name of a variable, a row or a model, in bytes without the ending zero.
inline constexpr std::size_t kMaxNameLength = 255;

/// Size of the buffer that string parameters are read into, in bytes with the ending zero.
inline constexpr std::size_t kStringParamSize = 512;

/// Values of the attribute "Status".
namespace status {
inline constexpr int kLoaded = 1;
inline constexpr int kOptimal = 2;
inline constexpr int kInfeasible = 3;
inline constexpr int kInfOrUnbd = 4;
inline constexpr int kUnbounded = 5;
inline constexpr int kCutoff = 6;
inline constexpr int kIterationLimit = 7;
inline constexpr int kNodeLimit = 8;
inline constexpr int kTimeLimit = 9;
inline constexpr int kSolutionLimit = 10;
inline constexpr int kInterrupted = 11;
inline constexpr int kNumeric = 12;
inline constexpr int kSuboptimal = 13;
inline constexpr int kInProgress = 14;
inline constexpr int kUserObjLimit = 15;
inline constexpr int kWorkLimit = 16;
inline constexpr int kMemLimit = 17;
inline constexpr int kLocallyOptimal = 18;
inline constexpr int kLocallyInfeasible = 19;
}  // namespace status

/// Return values other than 0.
namespace error {
inline constexpr int kOutOfMemory = 10001;
inline constexpr int kNullArgument = 10002;
inline constexpr int kInvalidArgument = 10003;
inline constexpr int kUnknownAttribute = 10004;
inline constexpr int kDataNotAvailable = 10005;
inline constexpr int kIndexOutOfRange = 10006;
inline constexpr int kUnknownParameter = 10007;
inline constexpr int kValueOutOfRange = 10008;
inline constexpr int kNoLicense = 10009;
inline constexpr int kSizeLimitExceeded = 10010;
inline constexpr int kCallback = 10011;
inline constexpr int kFileRead = 10012;
inline constexpr int kFileWrite = 10013;
inline constexpr int kNumeric = 10014;
inline constexpr int kIisNotInfeasible = 10015;
inline constexpr int kNotForMip = 10016;
inline constexpr int kOptimizationInProgress = 10017;
inline constexpr int kDuplicates = 10018;
inline constexpr int kNodeFile = 10019;
inline constexpr int kQNotPsd = 10020;
inline constexpr int kQcpEqualityConstraint = 10021;
inline constexpr int kNetwork = 10022;
inline constexpr int kJobRejected = 10023;
inline constexpr int kNotSupported = 10024;
inline constexpr int kExceed2bNonzeros = 10025;
inline constexpr int kInvalidPiecewiseObj = 10026;
inline constexpr int kUpdateModeChange = 10027;
inline constexpr int kCloud = 10028;
inline constexpr int kModelModification = 10029;
inline constexpr int kCsWorker = 10030;
inline constexpr int kTuneModelTypes = 10031;
inline constexpr int kSecurity = 10032;
inline constexpr int kGpu = 10033;
inline constexpr int kOverflow = 10034;
}  // namespace error

/// Variable types.
namespace vartype {
inline constexpr char kContinuous = 'C';
inline constexpr char kBinary = 'B';
inline constexpr char kInteger = 'I';
inline constexpr char kSemiContinuous = 'S';
inline constexpr char kSemiInteger = 'N';
}  // namespace vartype

/// Senses of rows.
namespace sense {
inline constexpr char kLessEqual = '<';
inline constexpr char kGreaterEqual = '>';
inline constexpr char kEqual = '=';
}  // namespace sense

/// Values of the attribute "ModelSense".
namespace objsense {
inline constexpr int kMinimize = 1;
inline constexpr int kMaximize = -1;
}  // namespace objsense

namespace sos {
inline constexpr int kType1 = 1;
inline constexpr int kType2 = 2;
}  // namespace sos

/// Values of the attributes "VBasis" and "CBasis".
namespace basis {
inline constexpr int kBasic = 0;
inline constexpr int kNonbasicLower = -1;
inline constexpr int kNonbasicUpper = -2;
inline constexpr int kSuperbasic = -3;
}  // namespace basis

/// Values of the attribute "GenConstrType".
namespace genconstr {
inline constexpr int kMax = 0;
inline constexpr int kMin = 1;
inline constexpr int kAbs = 2;
inline constexpr int kAnd = 3;
inline constexpr int kOr = 4;
inline constexpr int kNorm = 5;
inline constexpr int kNl = 6;
inline constexpr int kIndicator = 7;
inline constexpr int kPwl = 8;
inline constexpr int kPoly = 9;
inline constexpr int kExp = 10;
inline constexpr int kExpA = 11;
inline constexpr int kLog = 12;
inline constexpr int kLogA = 13;
inline constexpr int kPow = 14;
inline constexpr int kSin = 15;
inline constexpr int kCos = 16;
inline constexpr int kTan = 17;
inline constexpr int kLogistic = 18;
}  // namespace genconstr

/// Node kinds of GRBaddgenconstrNL. The nodes stand in depth-first pre-order.
namespace opcode {
inline constexpr int kConstant = 0;
inline constexpr int kVariable = 1;
inline constexpr int kPlus = 2;
inline constexpr int kMinus = 3;
inline constexpr int kMultiply = 4;
inline constexpr int kDivide = 5;
inline constexpr int kUminus = 6;
inline constexpr int kSquare = 7;
inline constexpr int kSqrt = 8;
inline constexpr int kSin = 9;
inline constexpr int kCos = 10;
inline constexpr int kTan = 11;
inline constexpr int kPow = 12;
inline constexpr int kExp = 13;
inline constexpr int kLog = 14;
inline constexpr int kLog2 = 15;
inline constexpr int kLog10 = 16;
inline constexpr int kLogistic = 17;
inline constexpr int kTanh = 18;
inline constexpr int kSignPow = 19;
}  // namespace opcode

/// Objectives of GRBfeasrelax.
namespace relaxobj {
inline constexpr int kLinear = 0;
inline constexpr int kQuadratic = 1;
inline constexpr int kCardinality = 2;
}  // namespace relaxobj

/// Results of GRBgetparamtype.
namespace paramtype {
inline constexpr int kUnknown = -1;
inline constexpr int kInt = 1;
inline constexpr int kDouble = 2;
inline constexpr int kString = 3;
}  // namespace paramtype

}  // namespace grb
