#include "tests/gurobi/rules.h"

#include <algorithm>
#include <array>

#include "grb/gurobi/constants.h"
#include "tav/idx/lib/range.h"

namespace grb {
namespace {

using M = GurobiModel;
using enum Update;
constexpr Checked kYes = Checked::kYes;
constexpr Checked kNo = Checked::kNo;

constexpr std::array kInts{0, 1, 2};
constexpr std::array kPair{0, 2};
constexpr std::array kOther{1, 2};
constexpr std::array kDoubles{1.5, -2.0, 1e100};
constexpr std::array kTwo{3.0, 4.0};
const tav::idx::List kAll(tav::idx::lib::Range(0, 3));

}  // namespace

Fn Rule::function() const {
  const std::string name = call.substr(0, call.find('('));
  return static_cast<Fn>(std::find(kFnNames.begin(), kFnNames.end(), name) - kFnNames.begin());
}

std::vector<Rule> buildingRules() {
  return {
      {R"(GRBaddvar(m1, 2, [0, 2], [3, 4], 5, -1, 1e+100, 'I', "v"))", kYes, kMarks,
       [](M& m) { m.addVar(kPair, kTwo, 5, -1, kInfinity, 'I', "v"); }},
      {R"(GRBaddvars(m1, 3, 0, null, null, null, null, [1.5, -2, 1e+100], null, ['C', 'I', 'B'], ["a", "b", null]))",
       kYes, kMarks,
       [](M& m) {
         m.addVars(3, {}, kDoubles, {}, std::array{'C', 'I', 'B'}, std::array<const char*, 3>{"a", "b", nullptr});
       }},
      {"GRBaddconstr(m1, 2, [0, 2], [3, 4], '=', 7, null)", kYes, kMarks,
       [](M& m) { m.addConstr(kPair, kTwo, '=', 7, nullptr); }},
      {R"(GRBaddqconstr(m1, 3, [0, 1, 2], [1.5, -2, 1e+100], 2, [0, 2], [1, 2], [3, 4], '>', 8, "q"))", kYes, kMarks,
       [](M& m) { m.addQConstr(kInts, kDoubles, kPair, kOther, kTwo, '>', 8, "q"); }},
      {"GRBaddqpterms(m1, 2, [0, 2], [1, 2], [3, 4])", kYes, kMarks, [](M& m) { m.addQpTerms(kPair, kOther, kTwo); }},
      {"GRBaddsos(m1, 1, 3, [2], [0], [0, 1, 2], [1.5, -2, 1e+100])", kYes, kMarks,
       [](M& m) { m.addSos(std::array{2}, std::array{0}, kInts, kDoubles); }},
      {"GRBaddsos(m1, 1, 2, [1], [0], [0, 2], null)", kYes, kMarks,
       [](M& m) { m.addSos(std::array{1}, std::array{0}, kPair, {}); }},
      {"GRBXchgcoeffs(m1, 2, [0, 2], [1, 2], [3, 4])", kYes, kNone, [](M& m) { m.xchgCoeffs(kPair, kOther, kTwo); }},
  };
}

std::vector<Rule> generalConstraintsRules() {
  return {
      {R"(GRBaddgenconstrMax(m1, "g", 1, 2, [0, 2], -1e+100))", kYes, kMarks,
       [](M& m) { m.addGenConstrMax("g", 1, kPair, -kInfinity); }},
      {R"(GRBaddgenconstrMin(m1, "g", 1, 2, [0, 2], 3.5))", kYes, kMarks,
       [](M& m) { m.addGenConstrMin("g", 1, kPair, 3.5); }},
      {"GRBaddgenconstrAbs(m1, null, 1, 2)", kYes, kMarks, [](M& m) { m.addGenConstrAbs(nullptr, 1, 2); }},
      {R"(GRBaddgenconstrAnd(m1, "g", 1, 2, [0, 2]))", kYes, kMarks, [](M& m) { m.addGenConstrAnd("g", 1, kPair); }},
      {R"(GRBaddgenconstrOr(m1, "g", 1, 2, [0, 2]))", kYes, kMarks, [](M& m) { m.addGenConstrOr("g", 1, kPair); }},
      {R"(GRBaddgenconstrNorm(m1, "g", 1, 2, [0, 2], 2))", kYes, kMarks,
       [](M& m) { m.addGenConstrNorm("g", 1, kPair, 2); }},
      {R"(GRBaddgenconstrNL(m1, "g", 1, 2, [0, 2], [3, 4], [1, 2]))", kYes, kNone,
       [](M& m) { m.addGenConstrNL("g", 1, kPair, kTwo, kOther); }},
      {R"(GRBaddgenconstrIndicator(m1, "g", 2, 1, 2, [0, 2], [3, 4], '<', 9))", kYes, kMarks,
       [](M& m) { m.addGenConstrIndicator("g", 2, 1, kPair, kTwo, '<', 9); }},
      {R"(GRBaddgenconstrPoly(m1, "g", 1, 2, 3, [1.5, -2, 1e+100], "o"))", kYes, kMarks,
       [](M& m) { m.addGenConstrPoly("g", 1, 2, kDoubles, "o"); }},
      {R"(GRBaddgenconstrExp(m1, "g", 1, 2, "o"))", kYes, kMarks, [](M& m) { m.addGenConstrExp("g", 1, 2, "o"); }},
      {R"(GRBaddgenconstrExpA(m1, "g", 1, 2, 3.5, "o"))", kYes, kMarks,
       [](M& m) { m.addGenConstrExpA("g", 1, 2, 3.5, "o"); }},
      {R"(GRBaddgenconstrLog(m1, "g", 1, 2, "o"))", kYes, kMarks, [](M& m) { m.addGenConstrLog("g", 1, 2, "o"); }},
      {R"(GRBaddgenconstrLogA(m1, "g", 1, 2, 3.5, "o"))", kYes, kMarks,
       [](M& m) { m.addGenConstrLogA("g", 1, 2, 3.5, "o"); }},
      {R"(GRBaddgenconstrLogistic(m1, "g", 1, 2, "o"))", kYes, kMarks,
       [](M& m) { m.addGenConstrLogistic("g", 1, 2, "o"); }},
      {R"(GRBaddgenconstrPow(m1, "g", 1, 2, 3.5, null))", kYes, kMarks,
       [](M& m) { m.addGenConstrPow("g", 1, 2, 3.5, nullptr); }},
      {R"(GRBaddgenconstrSin(m1, "g", 1, 2, "o"))", kYes, kMarks, [](M& m) { m.addGenConstrSin("g", 1, 2, "o"); }},
      {R"(GRBaddgenconstrCos(m1, "g", 1, 2, "o"))", kYes, kMarks, [](M& m) { m.addGenConstrCos("g", 1, 2, "o"); }},
      {R"(GRBaddgenconstrTan(m1, "g", 1, 2, "o"))", kYes, kMarks, [](M& m) { m.addGenConstrTan("g", 1, 2, "o"); }},
  };
}

std::vector<Rule> attributesRules() {
  return {
      {R"(GRBgetintattr(m1, "NumVars", *))", kYes, kFirst, [](M& m) { m.getIntAttr("NumVars"); }},
      {R"(GRBgetdblattr(m1, "ObjCon", *))", kYes, kFirst, [](M& m) { m.getDblAttr("ObjCon"); }},
      {R"(GRBgetstrattr(m1, "ModelName", *))", kYes, kFirst, [](M& m) { m.getStrAttr("ModelName"); }},
      {R"(GRBgetintattrelement(m1, "Partition", 1, *))", kYes, kFirst,
       [](M& m) { m.getIntAttrElement("Partition", 1); }},
      {R"(GRBgetdblattrelement(m1, "LB", 1, *))", kYes, kFirst, [](M& m) { m.getDblAttrElement("LB", 1); }},
      {R"(GRBgetcharattrelement(m1, "VType", 1, *))", kYes, kFirst, [](M& m) { m.getCharAttrElement("VType", 1); }},
      {R"(GRBgetstrattrelement(m1, "VarName", 1, *))", kYes, kFirst, [](M& m) { m.getStrAttrElement("VarName", 1); }},
      {R"(GRBsetintattr(m1, "ModelSense", -1))", kYes, kMarks, [](M& m) { m.setIntAttr("ModelSense", -1); }},
      {R"(GRBsetdblattr(m1, "ObjCon", 2.5))", kYes, kMarks, [](M& m) { m.setDblAttr("ObjCon", 2.5); }},
      {R"(GRBsetstrattr(m1, "ModelName", "n"))", kYes, kMarks, [](M& m) { m.setStrAttr("ModelName", "n"); }},
      {R"(GRBsetintattrelement(m1, "Lazy", 1, 2))", kYes, kMarks, [](M& m) { m.setIntAttrElement("Lazy", 1, 2); }},
      {R"(GRBsetdblattrelement(m1, "UB", 1, 2.5))", kYes, kMarks, [](M& m) { m.setDblAttrElement("UB", 1, 2.5); }},
      {R"(GRBsetstrattrelement(m1, "VarName", 1, "x"))", kYes, kMarks,
       [](M& m) { m.setStrAttrElement("VarName", 1, "x"); }},
      {R"(GRBisattravailable(m1, "X"))", kNo, kNone, [](M& m) { m.isAttrAvailable("X"); }},
      {R"(GRBgetintattrarray(m1, "Partition", 0, 3, *))", kNo, kNone,
       [](M& m) {
         std::array<int, 3> v{};
         m.getIntAttrArray("Partition", kAll, v);
       }},
      {R"(GRBgetdblattrarray(m1, "LB", 0, 3, *))", kNo, kNone,
       [](M& m) {
         std::array<double, 3> v{};
         m.getDblAttrArray("LB", kAll, v);
       }},
      {R"(GRBgetcharattrarray(m1, "VType", 0, 3, *))", kNo, kNone,
       [](M& m) {
         std::array<char, 3> v{};
         m.getCharAttrArray("VType", kAll, v);
       }},
      {R"(GRBsetintattrarray(m1, "Partition", 0, 3, [0, 1, 2]))", kNo, kNone,
       [](M& m) { m.setIntAttrArray("Partition", kAll, kInts); }},
      {R"(GRBsetdblattrarray(m1, "LB", 0, 3, [1.5, -2, 1e+100]))", kNo, kNone,
       [](M& m) { m.setDblAttrArray("LB", kAll, kDoubles); }},
  };
}

std::vector<Rule> parametersRules() {
  return {
      {R"(GRBgetintparam(m1.env, "Threads", *))", kYes, kFirst, [](M& m) { m.getIntParam("Threads"); }},
      {R"(GRBgetdblparam(m1.env, "TimeLimit", *))", kYes, kFirst, [](M& m) { m.getDblParam("TimeLimit"); }},
      {R"(GRBgetstrparam(m1.env, "LogFile", *))", kYes, kFirst, [](M& m) { m.getStrParam("LogFile"); }},
      {R"(GRBsetintparam(m1.env, "Threads", 4))", kYes, kMarks, [](M& m) { m.setIntParam("Threads", 4); }},
      {R"(GRBsetdblparam(m1.env, "TimeLimit", 2.5))", kYes, kMarks, [](M& m) { m.setDblParam("TimeLimit", 2.5); }},
      {R"(GRBsetstrparam(m1.env, "LogFile", "f"))", kYes, kMarks, [](M& m) { m.setStrParam("LogFile", "f"); }},
      {R"(GRBgetintparaminfo(m1.env, "Threads", *, *, *, *))", kYes, kNone, [](M& m) { m.getIntParamInfo("Threads"); }},
      {R"(GRBgetdblparaminfo(m1.env, "TimeLimit", *, *, *, *))", kYes, kNone,
       [](M& m) { m.getDblParamInfo("TimeLimit"); }},
      {R"(GRBgetstrparaminfo(m1.env, "LogFile", *, *))", kYes, kNone, [](M& m) { m.getStrParamInfo("LogFile"); }},
      {"GRBgetparamname(m1.env, 0, *)", kYes, kNone, [](M& m) { m.getParamName(0); }},
      {"GRBgetnumparams(m1.env)", kNo, kNone, [](M& m) { m.getNumParams(); }},
      {R"(GRBgetparamtype(m1.env, "Threads"))", kNo, kNone, [](M& m) { m.getParamType("Threads"); }},
      {R"(GRBreadparams(m1.env, "f"))", kYes, kNone, [](M& m) { m.readParams("f"); }},
      {R"(GRBwriteparams(m1.env, "f"))", kYes, kNone, [](M& m) { m.writeParams("f"); }},
      {"GRBisgpusupported(m1.env)", kNo, kNone, [](M& m) { m.isGpuSupported(); }},
  };
}

std::vector<Rule> solvingRules() {
  return {
      {R"(GRBwrite(m1, "f"))", kYes, kNone, [](M& m) { m.write("f"); }},
      {"GRBoptimize(m1)", kYes, kClears, [](M& m) { m.optimize(); }},
      {"GRBcomputeIIS(m1)", kYes, kNone, [](M& m) { m.computeIIS(); }},
      {"GRBfeasrelax(m1, 0, 1, [1.5, -2, 1e+100], null, [3, 4], *)", kYes, kFirst,
       [](M& m) { m.feasRelax(0, 1, kDoubles, {}, kTwo); }},
      {"GRBconverttofixed(m1)", kYes, kMarks, [](M& m) { m.convertToFixed(); }},
      {"GRBgettuneresult(m1, 0)", kYes, kNone, [](M& m) { m.getTuneResult(0); }},
      {"GRBsetcallbackfuncadv(m1, null, null, 48)", kYes, kNone,
       [](M& m) { m.setCallbackFuncAdv(nullptr, nullptr, 48); }},
      {"GRBsetlogcallbackfunc(m1, null, null)", kYes, kNone, [](M& m) { m.setLogCallbackFunc(nullptr, nullptr); }},
      {"GRBterminate(m1)", kNo, kNone, [](M& m) { m.terminate(); }},
  };
}

std::vector<Rule> allRules() {
  std::vector<Rule> all;
  for (const auto& group :
       {buildingRules(), generalConstraintsRules(), attributesRules(), parametersRules(), solvingRules()}) {
    all.insert(all.end(), group.begin(), group.end());
  }
  return all;
}

}  // namespace grb
