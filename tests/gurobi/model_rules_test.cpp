// The rules of all wrapped calls: which Gurobi function with which arguments, whether its code is checked, whether it
// marks, makes or ignores the pending update.
#include <algorithm>
#include <functional>
#include <ostream>

#include "tav/idx/lib/range.h"
#include "tests/gurobi/started_model.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using M = GurobiModel;

constexpr std::array kInts{0, 1, 2};
constexpr std::array kPair{0, 2};
constexpr std::array kOther{1, 2};
constexpr std::array kDoubles{1.5, -2.0, 1e100};
constexpr std::array kTwo{3.0, 4.0};
const tav::idx::List kAll(tav::idx::lib::Range(0, 3));

// The text of the one Gurobi call that a wrapper makes on a StartedModel.
struct Row {
  std::string call;
  std::function<void(GurobiModel&)> run;
};

// Checked, and the model is to be updated before the next scalar read.
const Row kChanges[]{
    {R"(GRBaddvar(m1, 2, [0, 2], [3, 4], 5, -1, 1e+100, 'I', "v"))",
     [](M& m) { m.addVar(kPair, kTwo, 5, -1, kInfinity, 'I', "v"); }},
    {R"(GRBaddvars(m1, 3, 0, null, null, null, null, [1.5, -2, 1e+100], null, ['C', 'I', 'B'], ["a", "b", null]))",
     [](M& m) {
       m.addVars(3, {}, kDoubles, {}, std::array{'C', 'I', 'B'}, std::array<const char*, 3>{"a", "b", nullptr});
     }},
    {"GRBaddconstr(m1, 2, [0, 2], [3, 4], '=', 7, null)", [](M& m) { m.addConstr(kPair, kTwo, '=', 7, nullptr); }},
    {R"(GRBaddqconstr(m1, 3, [0, 1, 2], [1.5, -2, 1e+100], 2, [0, 2], [1, 2], [3, 4], '>', 8, "q"))",
     [](M& m) { m.addQConstr(kInts, kDoubles, kPair, kOther, kTwo, '>', 8, "q"); }},
    {"GRBaddqpterms(m1, 2, [0, 2], [1, 2], [3, 4])", [](M& m) { m.addQpTerms(kPair, kOther, kTwo); }},
    {"GRBaddsos(m1, 1, 3, [2], [0], [0, 1, 2], [1.5, -2, 1e+100])",
     [](M& m) { m.addSos(std::array{2}, std::array{0}, kInts, kDoubles); }},
    {"GRBaddsos(m1, 1, 2, [1], [0], [0, 2], null)", [](M& m) { m.addSos(std::array{1}, std::array{0}, kPair, {}); }},
    {R"(GRBaddgenconstrMax(m1, "g", 1, 2, [0, 2], -1e+100))",
     [](M& m) { m.addGenConstrMax("g", 1, kPair, -kInfinity); }},
    {R"(GRBaddgenconstrMin(m1, "g", 1, 2, [0, 2], 3.5))", [](M& m) { m.addGenConstrMin("g", 1, kPair, 3.5); }},
    {"GRBaddgenconstrAbs(m1, null, 1, 2)", [](M& m) { m.addGenConstrAbs(nullptr, 1, 2); }},
    {R"(GRBaddgenconstrAnd(m1, "g", 1, 2, [0, 2]))", [](M& m) { m.addGenConstrAnd("g", 1, kPair); }},
    {R"(GRBaddgenconstrOr(m1, "g", 1, 2, [0, 2]))", [](M& m) { m.addGenConstrOr("g", 1, kPair); }},
    {R"(GRBaddgenconstrNorm(m1, "g", 1, 2, [0, 2], 2))", [](M& m) { m.addGenConstrNorm("g", 1, kPair, 2); }},
    {R"(GRBaddgenconstrIndicator(m1, "g", 2, 1, 2, [0, 2], [3, 4], '<', 9))",
     [](M& m) { m.addGenConstrIndicator("g", 2, 1, kPair, kTwo, '<', 9); }},
    {R"(GRBaddgenconstrPoly(m1, "g", 1, 2, 3, [1.5, -2, 1e+100], "o"))",
     [](M& m) { m.addGenConstrPoly("g", 1, 2, kDoubles, "o"); }},
    {R"(GRBaddgenconstrExp(m1, "g", 1, 2, "o"))", [](M& m) { m.addGenConstrExp("g", 1, 2, "o"); }},
    {R"(GRBaddgenconstrExpA(m1, "g", 1, 2, 3.5, "o"))", [](M& m) { m.addGenConstrExpA("g", 1, 2, 3.5, "o"); }},
    {R"(GRBaddgenconstrLog(m1, "g", 1, 2, "o"))", [](M& m) { m.addGenConstrLog("g", 1, 2, "o"); }},
    {R"(GRBaddgenconstrLogA(m1, "g", 1, 2, 3.5, "o"))", [](M& m) { m.addGenConstrLogA("g", 1, 2, 3.5, "o"); }},
    {R"(GRBaddgenconstrLogistic(m1, "g", 1, 2, "o"))", [](M& m) { m.addGenConstrLogistic("g", 1, 2, "o"); }},
    {R"(GRBaddgenconstrPow(m1, "g", 1, 2, 3.5, null))", [](M& m) { m.addGenConstrPow("g", 1, 2, 3.5, nullptr); }},
    {R"(GRBaddgenconstrSin(m1, "g", 1, 2, "o"))", [](M& m) { m.addGenConstrSin("g", 1, 2, "o"); }},
    {R"(GRBaddgenconstrCos(m1, "g", 1, 2, "o"))", [](M& m) { m.addGenConstrCos("g", 1, 2, "o"); }},
    {R"(GRBaddgenconstrTan(m1, "g", 1, 2, "o"))", [](M& m) { m.addGenConstrTan("g", 1, 2, "o"); }},
    {R"(GRBsetintattr(m1, "ModelSense", -1))", [](M& m) { m.setIntAttr("ModelSense", -1); }},
    {R"(GRBsetdblattr(m1, "ObjCon", 2.5))", [](M& m) { m.setDblAttr("ObjCon", 2.5); }},
    {R"(GRBsetstrattr(m1, "ModelName", "n"))", [](M& m) { m.setStrAttr("ModelName", "n"); }},
    {R"(GRBsetintattrelement(m1, "Lazy", 1, 2))", [](M& m) { m.setIntAttrElement("Lazy", 1, 2); }},
    {R"(GRBsetdblattrelement(m1, "UB", 1, 2.5))", [](M& m) { m.setDblAttrElement("UB", 1, 2.5); }},
    {R"(GRBsetstrattrelement(m1, "VarName", 1, "x"))", [](M& m) { m.setStrAttrElement("VarName", 1, "x"); }},
    {R"(GRBsetintparam(m1.env, "Threads", 4))", [](M& m) { m.setIntParam("Threads", 4); }},
    {R"(GRBsetdblparam(m1.env, "TimeLimit", 2.5))", [](M& m) { m.setDblParam("TimeLimit", 2.5); }},
    {R"(GRBsetstrparam(m1.env, "LogFile", "f"))", [](M& m) { m.setStrParam("LogFile", "f"); }},
    {"GRBconverttofixed(m1)", [](M& m) { m.convertToFixed(); }},
};

// Checked, and nothing besides.
const Row kChecked[]{
    {"GRBXchgcoeffs(m1, 2, [0, 2], [1, 2], [3, 4])", [](M& m) { m.xchgCoeffs(kPair, kOther, kTwo); }},
    {R"(GRBaddgenconstrNL(m1, "g", 1, 2, [0, 2], [3, 4], [1, 2]))",
     [](M& m) { m.addGenConstrNL("g", 1, kPair, kTwo, kOther); }},
    {R"(GRBgetintparaminfo(m1.env, "Threads", *, *, *, *))", [](M& m) { m.getIntParamInfo("Threads"); }},
    {R"(GRBgetdblparaminfo(m1.env, "TimeLimit", *, *, *, *))", [](M& m) { m.getDblParamInfo("TimeLimit"); }},
    {R"(GRBgetstrparaminfo(m1.env, "LogFile", *, *))", [](M& m) { m.getStrParamInfo("LogFile"); }},
    {"GRBgetparamname(m1.env, 0, *)", [](M& m) { m.getParamName(0); }},
    {R"(GRBreadparams(m1.env, "f"))", [](M& m) { m.readParams("f"); }},
    {R"(GRBwriteparams(m1.env, "f"))", [](M& m) { m.writeParams("f"); }},
    {R"(GRBwrite(m1, "f"))", [](M& m) { m.write("f"); }},
    {"GRBcomputeIIS(m1)", [](M& m) { m.computeIIS(); }},
    {"GRBgettuneresult(m1, 0)", [](M& m) { m.getTuneResult(0); }},
    {"GRBsetcallbackfuncadv(m1, null, null, 48)", [](M& m) { m.setCallbackFuncAdv(nullptr, nullptr, 48); }},
    {"GRBsetlogcallbackfunc(m1, null, null)", [](M& m) { m.setLogCallbackFunc(nullptr, nullptr); }},
};

// Checked, behind an update if one is pending.
const Row kReads[]{
    {R"(GRBgetintattr(m1, "NumVars", *))", [](M& m) { m.getIntAttr("NumVars"); }},
    {R"(GRBgetdblattr(m1, "ObjCon", *))", [](M& m) { m.getDblAttr("ObjCon"); }},
    {R"(GRBgetstrattr(m1, "ModelName", *))", [](M& m) { m.getStrAttr("ModelName"); }},
    {R"(GRBgetintattrelement(m1, "Partition", 1, *))", [](M& m) { m.getIntAttrElement("Partition", 1); }},
    {R"(GRBgetdblattrelement(m1, "LB", 1, *))", [](M& m) { m.getDblAttrElement("LB", 1); }},
    {R"(GRBgetcharattrelement(m1, "VType", 1, *))", [](M& m) { m.getCharAttrElement("VType", 1); }},
    {R"(GRBgetstrattrelement(m1, "VarName", 1, *))", [](M& m) { m.getStrAttrElement("VarName", 1); }},
    {R"(GRBgetintparam(m1.env, "Threads", *))", [](M& m) { m.getIntParam("Threads"); }},
    {R"(GRBgetdblparam(m1.env, "TimeLimit", *))", [](M& m) { m.getDblParam("TimeLimit"); }},
    {R"(GRBgetstrparam(m1.env, "LogFile", *))", [](M& m) { m.getStrParam("LogFile"); }},
    {"GRBfeasrelax(m1, 0, 1, [1.5, -2, 1e+100], null, [3, 4], *)", [](M& m) { m.feasRelax(0, 1, kDoubles, {}, kTwo); }},
};

// Checked; Gurobi updates by itself.
const Row kSolves[]{
    {"GRBoptimize(m1)", [](M& m) { m.optimize(); }},
};

// Their codes are not looked at.
const Row kUnchecked[]{
    {R"(GRBisattravailable(m1, "X"))", [](M& m) { m.isAttrAvailable("X"); }},
    {R"(GRBgetintattrarray(m1, "Partition", 0, 3, *))",
     [](M& m) {
       std::array<int, 3> v{};
       m.getIntAttrArray("Partition", kAll, v);
     }},
    {R"(GRBgetdblattrarray(m1, "LB", 0, 3, *))",
     [](M& m) {
       std::array<double, 3> v{};
       m.getDblAttrArray("LB", kAll, v);
     }},
    {R"(GRBgetcharattrarray(m1, "VType", 0, 3, *))",
     [](M& m) {
       std::array<char, 3> v{};
       m.getCharAttrArray("VType", kAll, v);
     }},
    {R"(GRBsetintattrarray(m1, "Partition", 0, 3, [0, 1, 2]))",
     [](M& m) { m.setIntAttrArray("Partition", kAll, kInts); }},
    {R"(GRBsetdblattrarray(m1, "LB", 0, 3, [1.5, -2, 1e+100]))", [](M& m) { m.setDblAttrArray("LB", kAll, kDoubles); }},
    {"GRBgetnumparams(m1.env)", [](M& m) { m.getNumParams(); }},
    {R"(GRBgetparamtype(m1.env, "Threads"))", [](M& m) { m.getParamType("Threads"); }},
    {"GRBisgpusupported(m1.env)", [](M& m) { m.isGpuSupported(); }},
    {"GRBterminate(m1)", [](M& m) { m.terminate(); }},
};

enum class Update { kMarks, kFirst, kNone, kClears };

struct Rule : Row {
  bool isChecked;
  Update update;

  Fn function() const {
    const auto name = std::find(kFnNames.begin(), kFnNames.end(), call.substr(0, call.find('(')));
    return static_cast<Fn>(name - kFnNames.begin());
  }
};

// The test framework finds it by this name.  NOLINTNEXTLINE(readability-identifier-naming)
void PrintTo(const Rule& rule, std::ostream* out) { *out << rule.call; }

std::vector<Rule> allRules() {
  std::vector<Rule> all;
  const auto add = [&](std::span<const Row> rows, bool isChecked, Update update) {
    for (const Row& row : rows) all.push_back({row, isChecked, update});
  };
  add(kChanges, true, Update::kMarks);
  add(kChecked, true, Update::kNone);
  add(kReads, true, Update::kFirst);
  add(kSolves, true, Update::kClears);
  add(kUnchecked, false, Update::kNone);
  return all;
}

class ModelRules : public ::testing::TestWithParam<Rule> {
 protected:
  ModelRules() {
    started_.gurobi->defineParam({"Threads", 0, 0, 1024});
    started_.gurobi->scriptAttr("TuneResultCount", 1);
  }

  StartedModel started_;
  GurobiModel& model_ = started_.model;
};

TEST_P(ModelRules, MakesTheOneCallAndMarksOnlyWhatChanges) {
  GetParam().run(model_);
  EXPECT_EQ(started_.gurobi->takeCalls(), std::vector{GetParam().call});
  EXPECT_EQ(model_.dirty(), GetParam().update == Update::kMarks);
  EXPECT_FALSE(model_.running());
}

TEST_P(ModelRules, UpdatesAPendingModelOnlyBeforeAScalarRead) {
  model_.setDblAttr("ObjCon", 1);
  started_.gurobi->takeCalls();
  // A conversion with queued changes is Gurobi's to refuse: the caller sees to the update.
  if (GetParam().function() == Fn::GRBconverttofixed) {
    EXPECT_THROW(GetParam().run(model_), GurobiException);
  } else {
    GetParam().run(model_);
  }
  std::vector<std::string> expected{GetParam().call};
  if (GetParam().update == Update::kFirst) expected.insert(expected.begin(), "GRBupdatemodel(m1)");
  EXPECT_EQ(started_.gurobi->takeCalls(), expected);
  EXPECT_EQ(model_.dirty(), GetParam().update == Update::kMarks || GetParam().update == Update::kNone);
}

TEST_P(ModelRules, ThrowsForACodeOnlyWhereItIsChecked) {
  started_.gurobi->failCall(GetParam().function(), 10003, "told by Gurobi");
  if (!GetParam().isChecked) {
    EXPECT_NO_THROW(GetParam().run(model_));
    return;
  }
  const auto error = thrown<GurobiException>([&] { GetParam().run(model_); });
  EXPECT_EQ(error.tag(), "Gurobi");
  EXPECT_EQ(error.message(), "told by Gurobi");
  EXPECT_EQ(error.code(), 10003);
  EXPECT_EQ(error.context(), fnName(GetParam().function()));
  EXPECT_EQ(error.location().file(), "grb/gurobi");
  EXPECT_EQ(error.location().line(), 164U);
  EXPECT_EQ(error.location().column(), 34U);
  EXPECT_FALSE(started_.gurobi->failurePending());
}

TEST_P(ModelRules, NeedsAModelUnlessItIsAboutParameters) {
  GurobiModel unstarted(model_.env());
  started_.gurobi->takeCalls();
  const std::string onModel = GetParam().call.find("m1.env") == std::string::npos ? "m1" : "m1.env";
  if (onModel == "m1.env") {
    GetParam().run(unstarted);
    std::string expected = GetParam().call;
    EXPECT_EQ(started_.gurobi->takeCalls(), std::vector{expected.replace(expected.find(onModel), 6, "e1")});
    return;
  }
  const auto error = thrown([&] { GetParam().run(unstarted); });
  EXPECT_EQ(error.message(), "Requires model to be started first.");
  EXPECT_EQ(error.code(), std::nullopt);
  EXPECT_EQ(error.location().line(), 150U);
  EXPECT_EQ(error.location().column(), 29U);
  EXPECT_TRUE(started_.gurobi->takeCalls().empty());
}

INSTANTIATE_TEST_SUITE_P(All, ModelRules, ::testing::ValuesIn(allRules()), [](const auto& rule) {
  return std::string(fnName(rule.param.function())) + "_" + std::to_string(rule.index);
});

}  // namespace
}  // namespace grb
