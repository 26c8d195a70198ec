// What is read from a solved model, and how Gurobi's codes, signs and sentinels come out.
#include <gmock/gmock.h>

#include "grb/result/attribute_container.h"
#include "grb/result/transforms.h"
#include "tav/idx/lib/list.h"
#include "tests/grb/solver_fixture.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNan;
using Var = tav::opt::VariableQuantity;
using Row = tav::opt::RowQuantity;
using Obj = tav::opt::ObjectiveQuantity;
using Fact = tav::opt::ModelAttribute;
namespace tag = tav::opt::tag;

/// A solver whose model has six variables, six rows (>= 1, <= 2, = 3, >= 1, <= 2, = 3) and one objective.
class ResultTest : public SolverOverDouble {
 protected:
  ResultTest() {
    addVariables(plainVariables(6));
    const Function sides[]{{0, {0}, {1}, -1}, {1, {1}, {1}, -2}, {2, {2}, {1}, -3}};
    rowAdder->add(functions(space(), {sides[0], sides[1], sides[2], sides[0], sides[1], sides[2]}));
    objectiveAdder->add(functions(space(), {{0, {0}, {1}, 4}}));
    gurobi->model(1).commit();
    gurobi->takeCalls();
  }
  template <class T>
  tav::attr::Container<T> ofRows(int quantity) {
    return solver.makeConstraintContainers(rowAdder, {}, {}).first.get(quantity).as<T>();
  }
  tav::attr::Container<double> ofObjectives(int quantity) {
    return solver.makeConstraintContainers(objectiveAdder, {}, {}).first.get(quantity).as<double>();
  }
  template <class T>
  tav::attr::Item<T> fact(int key) {
    return solver.makeModelAttributes("tav:solver", {})->get(key).as<T>();
  }

  std::shared_ptr<tav::opt::AbstractConstraintAdder> rowAdder =
      solver.makeConstraintAdder(tag::kStaticBoundedDomain, tag::kLinearFunction);
  std::shared_ptr<tav::opt::AbstractConstraintAdder> objectiveAdder =
      solver.makeConstraintAdder(tag::kSenseDomain, tag::kLinearFunction);
};

TEST_F(ResultTest, TellsNothingThatGurobiDoesNotHold) {
  gurobi->scriptElements("X", {1, 2, 3, 4, 5, 6});  // Gurobi may hold "X" of a point that is none
  for (const int quantity : {Var::level, Var::reducedCost, Var::lowerRangeLow, Var::upperRangeHigh}) {
    EXPECT_EQ(ofVariables(quantity).solutionCount(), 0) << quantity;
  }
  EXPECT_EQ(ofVariables<int>(Var::basis).solutionCount() + ofRows<int>(Row::basis).solutionCount(), 0);
  EXPECT_EQ(ofRows<double>(Row::slack).solutionCount() + ofRows<double>(Row::marginal).solutionCount(), 0);
  EXPECT_EQ(ofObjectives(Obj::value).solutionCount() + ofObjectives(Obj::bound).solutionCount(), 0);
  EXPECT_EQ(fact<unsigned long long>(Fact::iterations).solutionCount(), 0);
  // A list that is read anyway comes back as unknown, one element as Gurobi's error.
  gurobi->takeCalls();
  const auto reducedCost = ofVariables(Var::reducedCost);
  EXPECT_THAT(reducedCost.getAll(), Each(IsNan()));
  EXPECT_THAT(ofVariables<int>(Var::basis).getAll(), Each(ElementAccess<int>::kUnread));
  EXPECT_THAT(ofRows<int>(Row::basis).getAll(), Each(ElementAccess<int>::kUnread));
  EXPECT_EQ(gurobi->count(Fn::GRBgetdblattrarray) + gurobi->count(Fn::GRBgetintattrarray), 0);
  EXPECT_EQ(thrown<GurobiException>([&] { reducedCost.get(1); }).context(), "GRBgetdblattrelement");
}

TEST_F(ResultTest, RaisesWhenGurobiKeepsWhatItHas) {
  gurobi->scriptAttr("SolCount", 1);
  for (const char* name : {"X", "RC", "VBasis", "CBasis", "Slack"}) gurobi->scriptElements(name, {0, 0, 0, 0, 0, 0});
  const auto expectRaised = [&](Fn failing, const char* attribute, const auto& container) {
    gurobi->failCall(failing, 10001, "Out of memory");
    EXPECT_EQ(messageOf([&] { container.getAll(); }),
              fmt::format("The values of the attribute '{}' were not handed out", attribute));
  };
  expectRaised(Fn::GRBgetdblattrarray, "X", ofVariables(Var::level));
  expectRaised(Fn::GRBgetdblattrarray, "RC", ofVariables(Var::reducedCost));
  expectRaised(Fn::GRBgetdblattrarray, "Slack", ofRows<double>(Row::slack));
  expectRaised(Fn::GRBgetintattrarray, "VBasis", ofVariables<int>(Var::basis));
  expectRaised(Fn::GRBgetintattrarray, "CBasis", ofRows<int>(Row::basis));
  expectRaised(Fn::GRBgetcharattrarray, "Sense", ofRows<int>(Row::basis));
}

TEST_F(ResultTest, MapsCodesAndSentinels) {
  gurobi->scriptElements("VBasis", {0, -1, -2, -3, -4, 7});
  EXPECT_THAT(ofVariables<int>(Var::basis).getAll(), ElementsAre(3, 1, 2, 4, 4, 4));
  EXPECT_EQ(ofVariables<int>(Var::basis).get(2), 2);
  gurobi->scriptElements("RC", {1e100, -1e100, 1e101, 2e100, 0, -5});
  EXPECT_THAT(ofVariables(Var::reducedCost).getAll(), ElementsAre(kInf, -kInf, IsNan(), 2e100, 0, -5));
  const auto basis = ofVariables<int>(Var::basis);
  EXPECT_EQ(basis.toOptional(2), 2);
  EXPECT_EQ(basis.toOptional(0), 4);
  EXPECT_EQ(ofVariables(Var::lower).toOptional(kInf), 1e100);
  EXPECT_EQ(ofVariables(Var::lower).toOptional(-kInf), -1e100);
  const std::vector<int> codes(6);
  for (const auto& write : std::vector<std::function<void()>>{[&] { basis.set(0, 1); }, [&] { basis.setAll(codes); },
                                                              [&] { basis.set(tav::idx::lib::Range(0, 6), codes); }}) {
    EXPECT_THAT(thrown<tav::attr::Exception>(write).what(), testing::HasSubstr("grb::transform::Basis"));
  }
}

TEST_F(ResultTest, MapsTheBasisOfARowByItsSense) {
  const auto basis = ofRows<int>(Row::basis);
  gurobi->scriptElements("CBasis", {-1, -1, -1, 0, -2, -3});
  EXPECT_EQ(basis.solutionCount(), 1);
  EXPECT_THAT(basis.getAll(), ElementsAre(1, 2, 1, 3, 2, 4));
  EXPECT_EQ(basis.get(1), 2);
  gurobi->scriptElements("CBasis", {0, 0, 0, -2, -3, -9});
  EXPECT_THAT(basis.getAll(), ElementsAre(3, 3, 3, 2, 4, 4));
  gurobi->scriptAvailable("Sense", false);
  EXPECT_EQ(basis.solutionCount(), 0);
}

// Which attribute each quantity is read from, with which sign, and whether it can be written.
TEST_F(ResultTest, ReadsEveryQuantityFromItsAttribute) {
  const auto quadratic = solver.makeConstraintAdder(tag::kStaticBoundedDomain, tag::kQuadraticFunction);
  const std::vector<Quadratic> squares(6, Quadratic{{1, {}, {}, -2}, {0}, {0}, {1}});
  quadratic->add(functions<Quadratic>(rowAdder->variableSpace(), squares));
  gurobi->model(1).commit();
  gurobi->scriptAttr("SolCount", 1);
  const auto ofPart = [&](const auto& part) { return solver.makeConstraintContainers(part, {}, {}); };
  const auto variables = solver.makeVariableContainers({});
  const auto [rows, rowFunctions] = ofPart(rowAdder);
  const auto [objectives, objectiveFunctions] = ofPart(objectiveAdder);
  const auto quadraticRows = ofPart(quadratic).first;
  struct Case {
    const tav::attr::ContainerDict& part;
    int quantity;
    const char* attribute;
    double sign, huge;  // what 1e100 is
    bool isSettable;
  };
  for (const Case& c : {Case{variables, 1, "LB", 1, kInf, true},
                        {variables, 2, "UB", 1, kInf, true},
                        {variables, 7, "X", 1, kInf, false},
                        {variables, 8, "RC", 1, kInf, false},
                        {variables, 10, "SALBLow", 1, kInf, false},
                        {variables, 11, "SALBUp", 1, kInf, false},
                        {variables, 12, "SAUBLow", 1, kInf, false},
                        {variables, 13, "SAUBUp", 1, kInf, false},
                        {rows, 5, "Slack", -1, -1e100, false},
                        {rows, 6, "Pi", 1, kInf, false},
                        {rowFunctions, 2, "RHS", -1, -1e100, false},
                        {objectives, 7, "SAObjLow", 1, kInf, false},
                        {objectives, 8, "SAObjUp", 1, kInf, false},
                        {objectiveFunctions, 3, "Obj", 1, 1e100, false},
                        {quadraticRows, 5, "QCSlack", -1, -1e100, false},
                        {quadraticRows, 6, "QCPi", 1, kInf, false}}) {
    gurobi->scriptElements(c.attribute, {0, 2, 3, 4, 1e100, -6});
    const auto container = c.part.get(c.quantity).as<double>();
    EXPECT_EQ(container.size(), 6) << c.attribute;
    EXPECT_EQ(container.solutionCount(), 1) << c.attribute;
    EXPECT_THAT(container.getAll(), ElementsAre(0, 2 * c.sign, 3 * c.sign, 4 * c.sign, c.huge, -6 * c.sign))
        << c.attribute;
    EXPECT_EQ(container.get(5), -6 * c.sign) << c.attribute;
    EXPECT_EQ(container.isSettable(), c.isSettable) << c.attribute;
  }
}

TEST_F(ResultTest, TellsTheRangeOfASideFromTheSideOn) {
  EXPECT_EQ(ofRows<double>(Row::sideRangeLow).solutionCount() + ofRows<double>(Row::sideRangeHigh).solutionCount(), 0);
  gurobi->scriptElements("RHS", {5, 2, 3, 1, 2, 3});
  gurobi->scriptElements("SARHSLow", {3, 2, -1e100, 1, 2, 1e101});
  gurobi->scriptElements("SARHSUp", {1e100, 2, 3, 4, 2, 2e100});
  const auto low = ofRows<double>(Row::sideRangeLow), high = ofRows<double>(Row::sideRangeHigh);
  EXPECT_EQ(low.solutionCount(), 1);
  EXPECT_THAT(low.getAll(), ElementsAre(-2, 0, -kInf, 0, 0, IsNan()));
  EXPECT_THAT(high.getAll(), ElementsAre(kInf, 0, 0, 3, 0, 2e100));
  EXPECT_EQ(high.get(3), 3);
  EXPECT_EQ(high.toOptional(kInf), 1e100);
}

// Whoever holds on to a container longer than the solver lives reads nothing, and no error.
TEST_F(ResultTest, OutlivesTheModel) {
  gurobi->scriptAttr("SolCount", 2);
  for (const char* name : {"X", "RC", "Slack", "SARHSLow", "RHS"}) gurobi->scriptElements(name, {1, 1, 1, 1, 1, 1});
  std::vector<tav::attr::Container<double>> held;
  for (const int quantity : {Var::lower, Var::level, Var::reducedCost}) held.push_back(ofVariables(quantity));
  for (const int quantity : {Row::slack, Row::sideRangeLow}) held.push_back(ofRows<double>(quantity));
  for (const int quantity : {Obj::value, Obj::bound, Obj::coefficientRangeLow}) held.push_back(ofObjectives(quantity));
  const auto bound = ofObjectives(Obj::bound);
  const auto basis = ofRows<int>(Row::basis);
  const auto status = fact<int>(Fact::status);
  rowAdder.reset(), objectiveAdder.reset();
  solver = Solver(gurobi->library());
  gurobi->takeCalls();
  for (const auto& container : held) {
    std::vector<double> read{0};
    container.get(tav::idx::lib::Range(0, 1), read);
    EXPECT_THAT(read, ElementsAre(0));
    EXPECT_THAT(std::pair(container.solutionCount(), container.get(0)), testing::Pair(0, 0));
  }
  std::vector<double> untouched{7};
  bound.get(tav::idx::lib::Range(0, 1), untouched);
  EXPECT_THAT(untouched, ElementsAre(7));
  EXPECT_EQ(basis.size() + basis.solutionCount() + basis.get(0) + status.get() + status.solutionCount(), 0);
  EXPECT_THAT(gurobi->calls(), IsEmpty());
}

TEST_F(ResultTest, ReadsARunByTheArrayCallAndOtherwiseTheList) {
  gurobi->scriptElements("RC", {0, 1, 2, 3, 4, 5});
  const auto reducedCost = ofVariables(Var::reducedCost);
  EXPECT_THAT(reducedCost.getValues(tav::idx::lib::Range(2, 4)), ElementsAre(2, 3, 4, 5));
  EXPECT_EQ(gurobi->takeCalls().back(), R"(GRBgetdblattrarray(m1, "RC", 2, 4, *))");
  EXPECT_THAT(reducedCost.getValues(std::make_shared<tav::idx::lib::List>(std::vector{1, 5})), ElementsAre(1, 5));
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre(R"(GRBisattravailable(m1, "RC"))", R"(GRBgetdblattrlist(m1, "RC", 2, [1, 5], *))"));
  EXPECT_THAT(reducedCost.getValues(tav::idx::List()), IsEmpty());
  EXPECT_THAT(gurobi->takeCalls(), IsEmpty());
  solver.makeModelAttributes("tav:solver", {})->get(Fact::timeLimit).as<double>().set(3);
  gurobi->takeCalls();
  reducedCost.getValues(tav::idx::lib::Range(0, 2));
  EXPECT_EQ(gurobi->takeCalls().front(), "GRBupdatemodel(m1)") << "before a bulk read, which makes none by itself";
}

TEST_F(ResultTest, WritesBoundsByTheSameChoiceAndRefusesTheRest) {
  const auto lower = ofVariables(Var::lower);
  lower.set(tav::idx::lib::Range(1, 2), std::vector<double>{7, 8});
  lower.set(std::make_shared<tav::idx::lib::List>(std::vector{0, 4}), std::vector<double>{1, 2});
  lower.set(3, 9);
  EXPECT_THAT(gurobi->takeCalls(), ElementsAre(R"(GRBsetdblattrarray(m1, "LB", 1, 2, [7, 8]))",
                                               R"(GRBsetdblattrlist(m1, "LB", 2, [0, 4], [1, 2]))",
                                               R"(GRBsetdblattrelement(m1, "LB", 3, 9))"));
  for (const int quantity : {Var::reducedCost, Var::level}) {
    thrown<tav::attr::Exception>([&] { ofVariables(quantity).set(0, 1); });
    thrown<tav::attr::Exception>([&] { ofVariables(quantity).setAll(std::vector<double>(6)); });
  }
  EXPECT_THAT(gurobi->calls(), Each(testing::HasSubstr("NumVars"))) << "nothing was written";
}

TEST_F(ResultTest, ReadsTheBestPointAsItIsAndOthersBySolutionNumber) {
  gurobi->scriptAttr("SolCount", 3);
  gurobi->scriptElements("X", {1, 2, 3, 4, 5, 6});
  gurobi->scriptElements("Xn", {0, 0, 0, 0, 1e100, 7});
  const auto level = ofVariables(Var::level);
  EXPECT_EQ(level.solutionCount(), 3);
  EXPECT_TRUE(level.hasSolution(2));
  EXPECT_FALSE(level.hasSolution(3) || level.hasSolution(-1));
  gurobi->takeCalls();
  EXPECT_EQ(level.get(4, 0), 5);
  EXPECT_THAT(level.getAll(0), ElementsAre(1, 2, 3, 4, 5, 6));
  EXPECT_EQ(gurobi->count(Fn::GRBsetintparam), 0);
  gurobi->takeCalls();
  EXPECT_EQ(level.get(4, 2), kInf);
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre(R"(GRBgetintparam(m1.env, "SolutionNumber", *))",
                          R"(GRBsetintparam(m1.env, "SolutionNumber", 2))", "GRBupdatemodel(m1)",
                          R"(GRBgetdblattrelement(m1, "Xn", 4, *))", R"(GRBsetintparam(m1.env, "SolutionNumber", 0))"));
}

TEST_F(ResultTest, ReadsObjectiveValuesBySolutionAndObjective) {
  gurobi->scriptAttr("SolCount", 2);
  gurobi->scriptAttr("ObjVal", 10);
  gurobi->scriptAttr("PoolNObjVal", 11);
  gurobi->scriptAttr("ObjNVal", 12);
  gurobi->scriptAttr("ObjBound", -1e100);
  const auto single = ofObjectives(Obj::value);
  EXPECT_EQ(single.solutionCount(), 2);
  EXPECT_THAT(single.getValues(tav::idx::lib::Range(0, 1)), ElementsAre(10));
  EXPECT_EQ(gurobi->count(Fn::GRBsetintparam), 0);
  EXPECT_EQ(single.get(0, 1), 11);
  EXPECT_EQ(ofObjectives(Obj::bound).get(0), -kInf);
  const auto constant = solver.makeConstraintContainers(objectiveAdder, {}, {}).second.get(2).as<double>();
  EXPECT_THAT(constant.getAll(), ElementsAre(4));

  objectiveAdder->add(functions(rowAdder->variableSpace(), {{0, {1}, {1}, 0}}));
  gurobi->model(1).commit();
  gurobi->takeCalls();
  const auto several = ofObjectives(Obj::value);
  EXPECT_EQ(several.size(), 2);
  gurobi->takeCalls();
  EXPECT_EQ(several.get(1, 1), 12);
  EXPECT_THAT(
      gurobi->takeCalls(),
      ElementsAre(R"(GRBgetintattr(m1, "NumObj", *))", R"(GRBgetintparam(m1.env, "ObjNumber", *))",
                  R"(GRBsetintparam(m1.env, "ObjNumber", 1))", "GRBupdatemodel(m1)",
                  R"(GRBgetintparam(m1.env, "SolutionNumber", *))", R"(GRBsetintparam(m1.env, "SolutionNumber", 1))",
                  "GRBupdatemodel(m1)", R"(GRBgetdblattr(m1, "ObjNVal", *))",
                  R"(GRBsetintparam(m1.env, "SolutionNumber", 0))", R"(GRBsetintparam(m1.env, "ObjNumber", 1))"))
      << "what the user chose, or the objectives that were added last, stays chosen";
  gurobi->scriptAvailable("ObjVal", false);
  EXPECT_EQ(several.solutionCount(), 0);
}

TEST_F(ResultTest, OffersTwelveStandardFacts) {
  const auto facts = solver.makeModelAttributes("tav:solver", {});
  EXPECT_EQ(facts->count(), 12);
  EXPECT_THAT(facts->keys(), ElementsAre(0, 2, 3, 4, 5, 6, 7, 8, 9, 11, 12, 13));
  for (const int key : {1, 10, 14, 15, -1}) {
    EXPECT_FALSE(facts->has(key) || facts->get(key) || !facts->name(key).empty()) << key;
  }
  gurobi->scriptAttr("ModelName", std::string("diet"));
  gurobi->scriptAttr("Status", 4);
  gurobi->scriptAttr("SolCount", 2);
  gurobi->scriptAttr("IterCount", 12);
  gurobi->scriptAttr("NodeCount", 1e15);
  gurobi->scriptAttr("Runtime", 0.5);
  EXPECT_EQ(fact<std::string>(Fact::name).get(), "diet");
  EXPECT_EQ(fact<int>(Fact::status).get(), 5);
  EXPECT_EQ(fact<int>(Fact::status).solutionCount(), 2);
  EXPECT_EQ(fact<unsigned long long>(Fact::iterations).get(), 12u);
  EXPECT_EQ(fact<unsigned long long>(Fact::nodes).get(), 1000000000000000u);
  EXPECT_EQ(fact<double>(Fact::runTime).get(), 0.5);
  for (const int key : {Fact::name, Fact::status, Fact::iterations, Fact::nodes, Fact::runTime}) {
    EXPECT_FALSE(facts->get(key).isSettable()) << key;
  }
  gurobi->scriptAttr("NodeCount", -1);
  thrown([&] { fact<unsigned long long>(Fact::nodes).get(); });
  thrown<tav::attr::Exception>([&] { fact<int>(Fact::status).set(1); });
}

TEST_F(ResultTest, SetsLimitsAsParametersOfTheirOwnType) {
  fact<unsigned long long>(Fact::iterationLimit).set(7);
  fact<unsigned long long>(Fact::nodeLimit).set(8);
  fact<unsigned long long>(Fact::threads).set(2);
  fact<double>(Fact::timeLimit).set(1.5);
  fact<double>(Fact::relativeGap).set(0.25);
  fact<double>(Fact::absoluteGap).set(0.5);
  fact<double>(Fact::cutoff).set(-3);
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre(R"(GRBsetdblparam(m1.env, "IterationLimit", 7))", R"(GRBsetdblparam(m1.env, "NodeLimit", 8))",
                          R"(GRBsetintparam(m1.env, "Threads", 2))", R"(GRBsetdblparam(m1.env, "TimeLimit", 1.5))",
                          R"(GRBsetdblparam(m1.env, "MIPGap", 0.25))", R"(GRBsetdblparam(m1.env, "MIPGapAbs", 0.5))",
                          R"(GRBsetdblparam(m1.env, "Cutoff", -3))"));
  EXPECT_EQ(fact<unsigned long long>(Fact::nodeLimit).get(), 8u);
  gurobi->defineParam({"Threads", 0, 0, 1024});
  EXPECT_EQ(thrown<GurobiException>([&] { fact<unsigned long long>(Fact::threads).set(5000); }).code(), 10008);
}

}  // namespace
}  // namespace grb
