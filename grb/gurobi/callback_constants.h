// The codes of Gurobi's callbacks: where a callback comes from, and what GRBcbget can be asked there.
#pragma once

namespace grb {

/// Callback origins. Bit w of the mask of GRBsetcallbackfuncadv selects origin w; polling comes in any case.
namespace where {
inline constexpr int kPolling = 0;
inline constexpr int kPresolve = 1;
inline constexpr int kSimplex = 2;
inline constexpr int kMip = 3;
inline constexpr int kMipSol = 4;
inline constexpr int kMipNode = 5;
inline constexpr int kMessage = 6;
inline constexpr int kBarrier = 7;
inline constexpr int kMultiObj = 8;
inline constexpr int kIis = 9;
inline constexpr int kPdhg = 10;
inline constexpr int kNlBar = 11;
}  // namespace where

/// What to ask GRBcbget for. One double each, unless a line says otherwise.
namespace what {
// Everywhere but in polling.
inline constexpr int kRuntime = 6002;
inline constexpr int kWork = 6003;
inline constexpr int kMemUsed = 6004;
inline constexpr int kMaxMemUsed = 6005;
// where::kPresolve: int
inline constexpr int kPreColDel = 1000;
inline constexpr int kPreRowDel = 1001;
inline constexpr int kPreSenChg = 1002;
inline constexpr int kPreBndChg = 1003;
inline constexpr int kPreCoeChg = 1004;
// where::kSimplex
inline constexpr int kSpxItrCnt = 2000;
inline constexpr int kSpxObjVal = 2001;
inline constexpr int kSpxPrimInf = 2002;
inline constexpr int kSpxDualInf = 2003;
inline constexpr int kSpxIsPert = 2004;  // int
// where::kMip
inline constexpr int kMipObjBst = 3000;
inline constexpr int kMipObjBnd = 3001;
inline constexpr int kMipNodCnt = 3002;
inline constexpr int kMipSolCnt = 3003;  // int
inline constexpr int kMipCutCnt = 3004;  // int
inline constexpr int kMipNodLft = 3005;
inline constexpr int kMipItrCnt = 3006;
inline constexpr int kMipOpenScenarios = 3007;  // int
inline constexpr int kMipPhase = 3008;          // int
// where::kMipSol
inline constexpr int kMipSolSol = 4001;  // one double per variable
inline constexpr int kMipSolObj = 4002;
inline constexpr int kMipSolObjBst = 4003;
inline constexpr int kMipSolObjBnd = 4004;
inline constexpr int kMipSolNodCnt = 4005;
inline constexpr int kMipSolSolCnt = 4006;         // int
inline constexpr int kMipSolOpenScenarios = 4007;  // int
inline constexpr int kMipSolPhase = 4008;          // int
// where::kMipNode
inline constexpr int kMipNodeStatus = 5001;  // int
inline constexpr int kMipNodeRel = 5002;     // one double per variable, only when the node's status is optimal
inline constexpr int kMipNodeObjBst = 5003;
inline constexpr int kMipNodeObjBnd = 5004;
inline constexpr int kMipNodeNodCnt = 5005;
inline constexpr int kMipNodeSolCnt = 5006;         // int
inline constexpr int kMipNodeBrVar = 5007;          // int
inline constexpr int kMipNodeOpenScenarios = 5008;  // int
inline constexpr int kMipNodePhase = 5009;          // int
// where::kMessage: char*, owned by the library
inline constexpr int kMsgString = 6001;
// where::kBarrier
inline constexpr int kBarrierItrCnt = 7001;  // int
inline constexpr int kBarrierPrimObj = 7002;
inline constexpr int kBarrierDualObj = 7003;
inline constexpr int kBarrierPrimInf = 7004;
inline constexpr int kBarrierDualInf = 7005;
inline constexpr int kBarrierCompl = 7006;
// where::kMultiObj
inline constexpr int kMultiObjObjCnt = 8001;  // int
inline constexpr int kMultiObjSolCnt = 8002;  // int
inline constexpr int kMultiObjSol = 8003;     // one double per variable
inline constexpr int kMultiObjItrCnt = 8004;
inline constexpr int kMultiObjObjBst = 8005;
inline constexpr int kMultiObjObjBnd = 8006;
inline constexpr int kMultiObjStatus = 8007;  // int
inline constexpr int kMultiObjMipGap = 8008;
inline constexpr int kMultiObjNodCnt = 8009;
inline constexpr int kMultiObjNodLft = 8010;
inline constexpr int kMultiObjRuntime = 8011;
inline constexpr int kMultiObjWork = 8012;
// where::kIis: int
inline constexpr int kIisConstrMin = 9001;
inline constexpr int kIisConstrMax = 9002;
inline constexpr int kIisConstrGuess = 9003;
inline constexpr int kIisBoundMin = 9004;
inline constexpr int kIisBoundMax = 9005;
inline constexpr int kIisBoundGuess = 9006;
}  // namespace what

}  // namespace grb
