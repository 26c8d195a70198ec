#include "grb/adder/lin_obj_adder.h"

#include <gmock/gmock.h>

#include "tests/grb/blocks.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class LinObjAdderTest : public testing::Test, protected OpenRecord {
 protected:
  LinObjAdderTest() : OpenRecord(4) {}
  tav::idx::List add(const std::vector<Function>& objectives, const OwnGroup& own = {}) {
    return adder.add(functions(data->variableSpace(), objectives, {}, own));
  }

  LinObjAdder adder{data};
};

TEST_F(LinObjAdderTest, WritesOneObjectiveAsTheModelsOwn) {
  EXPECT_THAT(positionsOf(add({{1, {0, 2}, {2, -1}, 5}})), ElementsAre(0));
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre(kReadCount, R"(GRBsetintattr(m1, "ModelSense", -1))",
                          R"(GRBsetdblattrlist(m1, "Obj", 2, [0, 2], [2, -1]))", R"(GRBsetdblattr(m1, "ObjCon", 5))"));
}

// Values are written by position: a run of positions takes the array call, and terms of one variable must be summed.
TEST_F(LinObjAdderTest, WritesCoefficientsByArrayOrListAndSumsTermsOfOneVariable) {
  struct Case {
    Function objective;
    const char* call;
  };
  const Case cases[]{
      {{0, {1, 2, 3}, {1, 2, 3}}, R"(GRBsetdblattrarray(m1, "Obj", 1, 3, [1, 2, 3]))"},
      {{0, {3, 0}, {1, 2}}, R"(GRBsetdblattrlist(m1, "Obj", 2, [0, 3], [2, 1]))"},
      {{0, {2, 1, 2}, {1, 5, 3}}, R"(GRBsetdblattrarray(m1, "Obj", 1, 2, [5, 4]))"},
      {{0, {2}, {7}}, R"(GRBsetdblattrarray(m1, "Obj", 2, 1, [7]))"},
  };
  for (const Case& c : cases) {
    data->linearObjectives.clear();
    add({c.objective});
    EXPECT_THAT(gurobi->takeCalls(), testing::Contains(c.call));
  }
  data->linearObjectives.clear();
  add({{0, {}, {}, 1}});
  EXPECT_EQ(gurobi->count(Fn::GRBsetdblattrarray) + gurobi->count(Fn::GRBsetdblattrlist), 0);
  EXPECT_EQ(gurobi->calls().back(), R"(GRBsetdblattr(m1, "ObjCon", 1))");
}

// So that the user's choice can be put back before the solve.
constexpr const char* kLookAtObjNumber = R"(GRBgetintparaminfo(m1.env, "ObjNumber", *, *, *, *))";

Calls objectiveCalls(int number, const char* weight, const char* priority, const char* absolute, const char* relative) {
  return {fmt::format(R"(GRBsetintparam(m1.env, "ObjNumber", {}))", number),
          fmt::format(R"(GRBsetdblattr(m1, "ObjNWeight", {}))", weight),
          fmt::format(R"(GRBsetintattr(m1, "ObjNPriority", {}))", priority),
          fmt::format(R"(GRBsetdblattr(m1, "ObjNAbsTol", {}))", absolute),
          fmt::format(R"(GRBsetdblattr(m1, "ObjNRelTol", {}))", relative)};
}

TEST_F(LinObjAdderTest, WritesSeveralObjectivesWithOneSenseAndSignedWeights) {
  EXPECT_THAT(positionsOf(add({{0, {0}, {1}, 0}, {1, {1}, {2}, 3}}, {{"weight", values<double>({2, 4})},
                                                                     {"priority", onlyAt(1, 6, 2)},
                                                                     {"abstol", values<double>({0.5, 0})},
                                                                     {"reltol", values<double>({0, 0.25})}})),
              ElementsAre(0, 1));
  Calls expected{kReadCount, R"(GRBsetintattr(m1, "ModelSense", 1))", R"(GRBsetintattr(m1, "NumObj", 2))",
                 kLookAtObjNumber};
  const auto expect = [&](const Calls& calls) { expected.insert(expected.end(), calls.begin(), calls.end()); };
  expect(objectiveCalls(0, "2", "0", "0.5", "0"));
  expect({R"(GRBsetdblattrarray(m1, "ObjN", 0, 1, [1]))", R"(GRBsetdblattr(m1, "ObjNCon", 0))"});
  expect(objectiveCalls(1, "-4", "6", "0", "0.25"));
  expect({R"(GRBsetdblattrarray(m1, "ObjN", 1, 1, [2]))", R"(GRBsetdblattr(m1, "ObjNCon", 3))"});
  EXPECT_EQ(gurobi->takeCalls(), expected);
}

TEST_F(LinObjAdderTest, ALaterBlockKeepsTheSenseOfTheFirstAndCountsOn) {
  add({{1, {0}, {1}, 0}});
  gurobi->takeCalls();
  EXPECT_THAT(positionsOf(add({{0, {3}, {1}, 0}})), ElementsAre(1));
  Calls expected{"GRBupdatemodel(m1)", kReadCount, R"(GRBgetintattr(m1, "ModelSense", *))",
                 R"(GRBsetintattr(m1, "NumObj", 2))", kLookAtObjNumber};
  const Calls last = objectiveCalls(1, "-1", "0", "0", "0");
  expected.insert(expected.end(), last.begin(), last.end());
  expected.insert(expected.end(),
                  {R"(GRBsetdblattrarray(m1, "ObjN", 3, 1, [1]))", R"(GRBsetdblattr(m1, "ObjNCon", 0))"});
  EXPECT_EQ(gurobi->takeCalls(), expected);
}

TEST_F(LinObjAdderTest, RefusesWhatItCanCheckBeforeAnyCall) {
  const Function sound{0, {0}, {1}, 0};
  const auto expectRefusal = [&](const std::vector<Function>& objectives, const OwnGroup& own, const char* message) {
    EXPECT_EQ(messageOf([&] { add(objectives, own); }), message);
    EXPECT_THAT(gurobi->calls(), IsEmpty()) << message;
  };
  expectRefusal({sound, {2, {0}, {1}, 0}}, {}, "Domain type not supported.");
  expectRefusal({{0, {4}, {1}, 0}}, {}, "Element 0 of the block: there is no variable 4.");
  expectRefusal({{0, {0}, {1}, kNaN}}, {}, "Element 0 of the block: the constant nan is not finite.");
  expectRefusal({sound}, {{"weight", values<double>({1, 2})}},
                "'weight' (which is 2) must be equal to 'count' (which is 1).");
  EXPECT_EQ(messageOf([&] { adder.add(functions(data->variableSpace() + 1, {sound})); }), "Input not supported");
  for (Registry* other : {&data->quadraticObjectives, &data->nonlinearObjectives}) {
    other->add(1);
    expectRefusal({sound}, {}, "Multiple objectives only supported with linear objectives.");
    other->clear();
  }
  EXPECT_EQ(add({}).size(), 0);
  EXPECT_THAT(gurobi->calls(), IsEmpty());
  EXPECT_EQ(data->linearObjectives.count(), 0);
}

}  // namespace
}  // namespace grb
