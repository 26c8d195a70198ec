// The rules of all wrapped calls: which Gurobi function with which arguments, whether its code is checked, whether it
// marks, makes or ignores the pending update.
#include <functional>
#include <ostream>

#include "tests/gurobi/started_model.h"

namespace grb {
namespace {

using tav::idx::List;

enum class Checked { kYes, kNo };
enum class Update { kMarks, kFirst, kNone, kClears };

struct Rule {
  Fn function;
  std::string call;
  Checked checked;
  Update update;
  std::function<void(GurobiModel&)> run;
};

void PrintTo(const Rule& rule, std::ostream* out) { *out << fnName(rule.function); }

const std::array kInts{0, 1, 2};
const std::array kPair{0, 2};
const std::array kDoubles{1.5, -2.0, 1e100};
const std::array kTwo{3.0, 4.0};
const List kAll(tav::idx::lib::Range(0, 3));

GurobiCallback noCallback() { return nullptr; }

// Every row of the wrappers' contract but the bulk attributes, which need no code to be told.
const std::vector<Rule>& rules() {
  using M = GurobiModel;
  using enum Update;
  constexpr Checked kYes = Checked::kYes;
  constexpr Checked kNo = Checked::kNo;
  // clang-format off
  static const std::vector<Rule> kRules{
      {Fn::GRBaddvar, "GRBaddvar(m1, 2, [0, 2], [3, 4], 5, -1, 1e+100, 'I', \"v\")", kYes, kMarks, [](M& m) { m.addVar(kPair, kTwo, 5, -1, kInfinity, 'I', "v"); }},
      {Fn::GRBaddvars, "GRBaddvars(m1, 3, 0, null, null, null, null, [1.5, -2, 1e+100], null, ['C', 'I', 'B'], [\"a\", \"b\", null])", kYes, kMarks, [](M& m) { m.addVars(3, {}, kDoubles, {}, std::array{'C', 'I', 'B'}, std::array<const char*, 3>{"a", "b", nullptr}); }},
      {Fn::GRBaddconstr, "GRBaddconstr(m1, 2, [0, 2], [3, 4], '=', 7, null)", kYes, kMarks, [](M& m) { m.addConstr(kPair, kTwo, '=', 7, nullptr); }},
      {Fn::GRBaddqconstr, "GRBaddqconstr(m1, 3, [0, 1, 2], [1.5, -2, 1e+100], 2, [0, 2], [0, 2], [3, 4], '>', 8, \"q\")", kYes, kMarks, [](M& m) { m.addQConstr(kInts, kDoubles, kPair, kPair, kTwo, '>', 8, "q"); }},
      {Fn::GRBaddqpterms, "GRBaddqpterms(m1, 2, [0, 2], [0, 2], [3, 4])", kYes, kMarks, [](M& m) { m.addQpTerms(kPair, kPair, kTwo); }},
      {Fn::GRBaddsos, "GRBaddsos(m1, 1, 3, [2], [0], [0, 1, 2], [1.5, -2, 1e+100])", kYes, kMarks, [](M& m) { m.addSos(std::array{2}, std::array{0}, kInts, kDoubles); }},
      {Fn::GRBaddsos, "GRBaddsos(m1, 1, 2, [1], [0], [0, 2], null)", kYes, kMarks, [](M& m) { m.addSos(std::array{1}, std::array{0}, kPair, {}); }},
      {Fn::GRBXchgcoeffs, "GRBXchgcoeffs(m1, 2, [0, 2], [0, 2], [3, 4])", kYes, kNone, [](M& m) { m.xchgCoeffs(kPair, kPair, kTwo); }},

      {Fn::GRBaddgenconstrMax, "GRBaddgenconstrMax(m1, \"g\", 1, 2, [0, 2], -1e+100)", kYes, kMarks, [](M& m) { m.addGenConstrMax("g", 1, kPair, -kInfinity); }},
      {Fn::GRBaddgenconstrMin, "GRBaddgenconstrMin(m1, \"g\", 1, 2, [0, 2], 3.5)", kYes, kMarks, [](M& m) { m.addGenConstrMin("g", 1, kPair, 3.5); }},
      {Fn::GRBaddgenconstrAbs, "GRBaddgenconstrAbs(m1, null, 1, 2)", kYes, kMarks, [](M& m) { m.addGenConstrAbs(nullptr, 1, 2); }},
      {Fn::GRBaddgenconstrAnd, "GRBaddgenconstrAnd(m1, \"g\", 1, 2, [0, 2])", kYes, kMarks, [](M& m) { m.addGenConstrAnd("g", 1, kPair); }},
      {Fn::GRBaddgenconstrOr, "GRBaddgenconstrOr(m1, \"g\", 1, 2, [0, 2])", kYes, kMarks, [](M& m) { m.addGenConstrOr("g", 1, kPair); }},
      {Fn::GRBaddgenconstrNorm, "GRBaddgenconstrNorm(m1, \"g\", 1, 2, [0, 2], 2)", kYes, kMarks, [](M& m) { m.addGenConstrNorm("g", 1, kPair, 2); }},
      {Fn::GRBaddgenconstrNL, "GRBaddgenconstrNL(m1, \"g\", 1, 2, [0, 2], [3, 4], [0, 2])", kYes, kNone, [](M& m) { m.addGenConstrNL("g", 1, kPair, kTwo, kPair); }},
      {Fn::GRBaddgenconstrIndicator, "GRBaddgenconstrIndicator(m1, \"g\", 2, 1, 2, [0, 2], [3, 4], '<', 9)", kYes, kMarks, [](M& m) { m.addGenConstrIndicator("g", 2, 1, kPair, kTwo, '<', 9); }},
      {Fn::GRBaddgenconstrPoly, "GRBaddgenconstrPoly(m1, \"g\", 1, 2, 3, [1.5, -2, 1e+100], \"o\")", kYes, kMarks, [](M& m) { m.addGenConstrPoly("g", 1, 2, kDoubles, "o"); }},
      {Fn::GRBaddgenconstrExp, "GRBaddgenconstrExp(m1, \"g\", 1, 2, \"o\")", kYes, kMarks, [](M& m) { m.addGenConstrExp("g", 1, 2, "o"); }},
      {Fn::GRBaddgenconstrExpA, "GRBaddgenconstrExpA(m1, \"g\", 1, 2, 3.5, \"o\")", kYes, kMarks, [](M& m) { m.addGenConstrExpA("g", 1, 2, 3.5, "o"); }},
      {Fn::GRBaddgenconstrLog, "GRBaddgenconstrLog(m1, \"g\", 1, 2, \"o\")", kYes, kMarks, [](M& m) { m.addGenConstrLog("g", 1, 2, "o"); }},
      {Fn::GRBaddgenconstrLogA, "GRBaddgenconstrLogA(m1, \"g\", 1, 2, 3.5, \"o\")", kYes, kMarks, [](M& m) { m.addGenConstrLogA("g", 1, 2, 3.5, "o"); }},
      {Fn::GRBaddgenconstrLogistic, "GRBaddgenconstrLogistic(m1, \"g\", 1, 2, \"o\")", kYes, kMarks, [](M& m) { m.addGenConstrLogistic("g", 1, 2, "o"); }},
      {Fn::GRBaddgenconstrPow, "GRBaddgenconstrPow(m1, \"g\", 1, 2, 3.5, null)", kYes, kMarks, [](M& m) { m.addGenConstrPow("g", 1, 2, 3.5, nullptr); }},
      {Fn::GRBaddgenconstrSin, "GRBaddgenconstrSin(m1, \"g\", 1, 2, \"o\")", kYes, kMarks, [](M& m) { m.addGenConstrSin("g", 1, 2, "o"); }},
      {Fn::GRBaddgenconstrCos, "GRBaddgenconstrCos(m1, \"g\", 1, 2, \"o\")", kYes, kMarks, [](M& m) { m.addGenConstrCos("g", 1, 2, "o"); }},
      {Fn::GRBaddgenconstrTan, "GRBaddgenconstrTan(m1, \"g\", 1, 2, \"o\")", kYes, kMarks, [](M& m) { m.addGenConstrTan("g", 1, 2, "o"); }},

      {Fn::GRBgetintattr, "GRBgetintattr(m1, \"NumVars\", *)", kYes, kFirst, [](M& m) { m.getIntAttr("NumVars"); }},
      {Fn::GRBgetdblattr, "GRBgetdblattr(m1, \"ObjCon\", *)", kYes, kFirst, [](M& m) { m.getDblAttr("ObjCon"); }},
      {Fn::GRBgetstrattr, "GRBgetstrattr(m1, \"ModelName\", *)", kYes, kFirst, [](M& m) { m.getStrAttr("ModelName"); }},
      {Fn::GRBgetintattrelement, "GRBgetintattrelement(m1, \"Partition\", 1, *)", kYes, kFirst, [](M& m) { m.getIntAttrElement("Partition", 1); }},
      {Fn::GRBgetdblattrelement, "GRBgetdblattrelement(m1, \"LB\", 1, *)", kYes, kFirst, [](M& m) { m.getDblAttrElement("LB", 1); }},
      {Fn::GRBgetcharattrelement, "GRBgetcharattrelement(m1, \"VType\", 1, *)", kYes, kFirst, [](M& m) { m.getCharAttrElement("VType", 1); }},
      {Fn::GRBgetstrattrelement, "GRBgetstrattrelement(m1, \"VarName\", 1, *)", kYes, kFirst, [](M& m) { m.getStrAttrElement("VarName", 1); }},
      {Fn::GRBsetintattr, "GRBsetintattr(m1, \"ModelSense\", -1)", kYes, kMarks, [](M& m) { m.setIntAttr("ModelSense", -1); }},
      {Fn::GRBsetdblattr, "GRBsetdblattr(m1, \"ObjCon\", 2.5)", kYes, kMarks, [](M& m) { m.setDblAttr("ObjCon", 2.5); }},
      {Fn::GRBsetstrattr, "GRBsetstrattr(m1, \"ModelName\", \"n\")", kYes, kMarks, [](M& m) { m.setStrAttr("ModelName", "n"); }},
      {Fn::GRBsetintattrelement, "GRBsetintattrelement(m1, \"Lazy\", 1, 2)", kYes, kMarks, [](M& m) { m.setIntAttrElement("Lazy", 1, 2); }},
      {Fn::GRBsetdblattrelement, "GRBsetdblattrelement(m1, \"UB\", 1, 2.5)", kYes, kMarks, [](M& m) { m.setDblAttrElement("UB", 1, 2.5); }},
      {Fn::GRBsetstrattrelement, "GRBsetstrattrelement(m1, \"VarName\", 1, \"x\")", kYes, kMarks, [](M& m) { m.setStrAttrElement("VarName", 1, "x"); }},
      {Fn::GRBisattravailable, "GRBisattravailable(m1, \"X\")", kNo, kNone, [](M& m) { m.isAttrAvailable("X"); }},
      {Fn::GRBgetintattrarray, "GRBgetintattrarray(m1, \"Partition\", 0, 3, *)", kNo, kNone, [](M& m) { std::array<int, 3> v{}; m.getIntAttrArray("Partition", kAll, v); }},
      {Fn::GRBgetdblattrarray, "GRBgetdblattrarray(m1, \"LB\", 0, 3, *)", kNo, kNone, [](M& m) { std::array<double, 3> v{}; m.getDblAttrArray("LB", kAll, v); }},
      {Fn::GRBgetcharattrarray, "GRBgetcharattrarray(m1, \"VType\", 0, 3, *)", kNo, kNone, [](M& m) { std::array<char, 3> v{}; m.getCharAttrArray("VType", kAll, v); }},
      {Fn::GRBsetintattrarray, "GRBsetintattrarray(m1, \"Partition\", 0, 3, [0, 1, 2])", kNo, kNone, [](M& m) { m.setIntAttrArray("Partition", kAll, kInts); }},
      {Fn::GRBsetdblattrarray, "GRBsetdblattrarray(m1, \"LB\", 0, 3, [1.5, -2, 1e+100])", kNo, kNone, [](M& m) { m.setDblAttrArray("LB", kAll, kDoubles); }},

      {Fn::GRBgetintparam, "GRBgetintparam(m1.env, \"Threads\", *)", kYes, kFirst, [](M& m) { m.getIntParam("Threads"); }},
      {Fn::GRBgetdblparam, "GRBgetdblparam(m1.env, \"TimeLimit\", *)", kYes, kFirst, [](M& m) { m.getDblParam("TimeLimit"); }},
      {Fn::GRBgetstrparam, "GRBgetstrparam(m1.env, \"LogFile\", *)", kYes, kFirst, [](M& m) { m.getStrParam("LogFile"); }},
      {Fn::GRBsetintparam, "GRBsetintparam(m1.env, \"Threads\", 4)", kYes, kMarks, [](M& m) { m.setIntParam("Threads", 4); }},
      {Fn::GRBsetdblparam, "GRBsetdblparam(m1.env, \"TimeLimit\", 2.5)", kYes, kMarks, [](M& m) { m.setDblParam("TimeLimit", 2.5); }},
      {Fn::GRBsetstrparam, "GRBsetstrparam(m1.env, \"LogFile\", \"f\")", kYes, kMarks, [](M& m) { m.setStrParam("LogFile", "f"); }},
      {Fn::GRBgetintparaminfo, "GRBgetintparaminfo(m1.env, \"Threads\", *, *, *, *)", kYes, kNone, [](M& m) { m.getIntParamInfo("Threads"); }},
      {Fn::GRBgetdblparaminfo, "GRBgetdblparaminfo(m1.env, \"TimeLimit\", *, *, *, *)", kYes, kNone, [](M& m) { m.getDblParamInfo("TimeLimit"); }},
      {Fn::GRBgetstrparaminfo, "GRBgetstrparaminfo(m1.env, \"LogFile\", *, *)", kYes, kNone, [](M& m) { m.getStrParamInfo("LogFile"); }},
      {Fn::GRBgetparamname, "GRBgetparamname(m1.env, 0, *)", kYes, kNone, [](M& m) { m.getParamName(0); }},
      {Fn::GRBgetnumparams, "GRBgetnumparams(m1.env)", kNo, kNone, [](M& m) { m.getNumParams(); }},
      {Fn::GRBgetparamtype, "GRBgetparamtype(m1.env, \"Threads\")", kNo, kNone, [](M& m) { m.getParamType("Threads"); }},
      {Fn::GRBreadparams, "GRBreadparams(m1.env, \"f\")", kYes, kNone, [](M& m) { m.readParams("f"); }},
      {Fn::GRBwriteparams, "GRBwriteparams(m1.env, \"f\")", kYes, kNone, [](M& m) { m.writeParams("f"); }},
      {Fn::GRBisgpusupported, "GRBisgpusupported(m1.env)", kNo, kNone, [](M& m) { m.isGpuSupported(); }},

      {Fn::GRBwrite, "GRBwrite(m1, \"f\")", kYes, kNone, [](M& m) { m.write("f"); }},
      {Fn::GRBoptimize, "GRBoptimize(m1)", kYes, kClears, [](M& m) { m.optimize(); }},
      {Fn::GRBcomputeIIS, "GRBcomputeIIS(m1)", kYes, kNone, [](M& m) { m.computeIIS(); }},
      {Fn::GRBfeasrelax, "GRBfeasrelax(m1, 0, 1, [1.5, -2, 1e+100], null, [3, 4], *)", kYes, kFirst, [](M& m) { m.feasRelax(0, 1, kDoubles, {}, kTwo); }},
      {Fn::GRBconverttofixed, "GRBconverttofixed(m1)", kYes, kMarks, [](M& m) { m.convertToFixed(); }},
      {Fn::GRBgettuneresult, "GRBgettuneresult(m1, 0)", kYes, kNone, [](M& m) { m.getTuneResult(0); }},
      {Fn::GRBsetcallbackfuncadv, "GRBsetcallbackfuncadv(m1, null, null, 48)", kYes, kNone, [](M& m) { m.setCallbackFuncAdv(noCallback(), nullptr, 48); }},
      {Fn::GRBsetlogcallbackfunc, "GRBsetlogcallbackfunc(m1, null, null)", kYes, kNone, [](M& m) { m.setLogCallbackFunc(nullptr, nullptr); }},
      {Fn::GRBterminate, "GRBterminate(m1)", kNo, kNone, [](M& m) { m.terminate(); }},
  };
  // clang-format on
  return kRules;
}

class ModelRules : public ::testing::TestWithParam<Rule> {
 protected:
  ModelRules() {
    started.gurobi->defineParam({"Threads", 0, 0, 1024});
    started.gurobi->scriptAttr("TuneResultCount", 1);
  }

  StartedModel started;
  GurobiModel& model = started.model;
};

TEST_P(ModelRules, MakesTheOneCallAndMarksOnlyWhatChanges) {
  GetParam().run(model);
  EXPECT_EQ(started.gurobi->takeCalls(), std::vector{GetParam().call});
  EXPECT_EQ(model.dirty(), GetParam().update == Update::kMarks);
  EXPECT_FALSE(model.running());
}

TEST_P(ModelRules, UpdatesAPendingModelOnlyBeforeAScalarRead) {
  model.setDblAttr("ObjCon", 1);
  started.gurobi->takeCalls();
  // A conversion with queued changes is Gurobi's to refuse: the caller sees to the update.
  if (GetParam().function == Fn::GRBconverttofixed) {
    EXPECT_THROW(GetParam().run(model), GurobiException);
  } else {
    GetParam().run(model);
  }
  std::vector<std::string> expected{GetParam().call};
  if (GetParam().update == Update::kFirst) expected.insert(expected.begin(), "GRBupdatemodel(m1)");
  EXPECT_EQ(started.gurobi->takeCalls(), expected);
  EXPECT_EQ(model.dirty(), GetParam().update == Update::kMarks || GetParam().update == Update::kNone);
}

TEST_P(ModelRules, ThrowsForACodeOnlyWhereItIsChecked) {
  started.gurobi->failCall(GetParam().function, 10003, "told by Gurobi");
  if (GetParam().checked == Checked::kNo) {
    EXPECT_NO_THROW(GetParam().run(model));
    return;
  }
  try {
    GetParam().run(model);
    FAIL() << "no exception";
  } catch (const GurobiException& error) {
    EXPECT_EQ(error.tag(), "Gurobi");
    EXPECT_EQ(error.message(), "told by Gurobi");
    EXPECT_EQ(error.code(), 10003);
    EXPECT_EQ(error.context(), fnName(GetParam().function));
    EXPECT_EQ(error.location().file(), "grb/gurobi");
    EXPECT_EQ(error.location().line(), 164U);
    EXPECT_EQ(error.location().column(), 34U);
  }
  EXPECT_FALSE(started.gurobi->failurePending());
}

TEST_P(ModelRules, NeedsAModelUnlessItIsAboutParameters) {
  GurobiModel unstarted(model.env());
  started.gurobi->takeCalls();
  const std::string onModel = GetParam().call.find("m1.env") == std::string::npos ? "m1" : "m1.env";
  if (onModel == "m1.env") {
    GetParam().run(unstarted);
    std::string expected = GetParam().call;
    EXPECT_EQ(started.gurobi->takeCalls(), std::vector{expected.replace(expected.find(onModel), 6, "e1")});
    return;
  }
  try {
    GetParam().run(unstarted);
    FAIL() << "no exception";
  } catch (const tav::Exception& error) {
    EXPECT_EQ(dynamic_cast<const GurobiException*>(&error), nullptr);
    EXPECT_EQ(error.message(), "Requires model to be started first.");
    EXPECT_EQ(error.code(), std::nullopt);
    EXPECT_EQ(error.location().line(), 150U);
    EXPECT_EQ(error.location().column(), 29U);
  }
  EXPECT_TRUE(started.gurobi->takeCalls().empty());
}

INSTANTIATE_TEST_SUITE_P(All, ModelRules, ::testing::ValuesIn(rules()), [](const auto& rule) {
  return std::string(fnName(rule.param.function)) + "_" + std::to_string(rule.index);
});

}  // namespace
}  // namespace grb
