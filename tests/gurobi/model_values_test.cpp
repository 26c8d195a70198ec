// What the wrappers hand back, and the flags around the long-running calls.
#include <gmock/gmock.h>

#include <cmath>

#include "tav/idx/lib/list.h"
#include "tests/gurobi/started_model.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using tav::idx::List;
using tav::idx::lib::Range;
using ::testing::ElementsAre;

List listOf(std::vector<int> indices) { return List(std::make_shared<const tav::idx::lib::List>(std::move(indices))); }

TEST(ModelValues, ScalarReadsHandBackWhatGurobiHolds) {
  StartedModel s;
  s.model.addVar({}, {}, 0.5, -3, 8, 'I', "speed");
  s.model.setStrAttr("ModelName", "plan");
  EXPECT_EQ(s.model.getIntAttr("NumVars"), 4);
  EXPECT_EQ(s.model.getStrAttr("ModelName"), "plan");
  EXPECT_EQ(s.model.getDblAttrElement("LB", 3), -3);
  EXPECT_EQ(s.model.getCharAttrElement("VType", 3), 'I');
  EXPECT_EQ(s.model.getStrAttrElement("VarName", 3), "speed");
  EXPECT_EQ(s.model.getIntAttrElement("Partition", 3), -1);
  EXPECT_EQ(s.gurobi->count(Fn::GRBupdatemodel), 1) << "one update for all reads";
  EXPECT_FALSE(s.model.isAttrAvailable("X"));
}

TEST(ModelValues, ScalarReadKeepsTheTextOfAFailure) {
  StartedModel s;
  EXPECT_STREQ(thrown<GurobiException>([&] { s.model.getDblAttr("ObjVal"); }).what(),
               "Gurobi: Unable to retrieve attribute 'ObjVal' [GRBgetdblattr, code 10005] (grb/gurobi:164)");
}

TEST(ModelValues, BulkFormFollowsTheList) {
  struct Case {
    List elements;
    std::vector<double> values;
    const char *form, *written;
  };
  const Case cases[]{
      {Range(1, 2), {7, 8}, R"(array(m1, "Obj", 1, 2, )", "[7, 8])"},
      {listOf({2, 0}), {7, 8}, R"(list(m1, "Obj", 2, [2, 0], )", "[7, 8])"},
      {List(), {}, R"(array(m1, "Obj", 0, 0, )", "[])"},
  };
  StartedModel s;
  for (const Case& c : cases) {
    std::vector<double> values = c.values;
    values.reserve(1);  // an address even when empty
    s.model.setDblAttrArray("Obj", c.elements, values);
    EXPECT_THAT(s.gurobi->takeCalls(), ElementsAre(std::string("GRBsetdblattr") + c.form + c.written));
    EXPECT_FALSE(s.model.dirty());
    s.gurobi->model(1).commit();
    std::fill(values.begin(), values.end(), NAN);
    s.model.getDblAttrArray("Obj", c.elements, values);
    EXPECT_THAT(s.gurobi->takeCalls(), ElementsAre(std::string("GRBgetdblattr") + c.form + "*)"));
    EXPECT_EQ(values, c.values);
  }
}

TEST(ModelValues, BulkReadsOfOtherTypesAndFailures) {
  StartedModel s;
  s.gurobi->scriptElements("VBasis", {0, -1, -2});
  std::array<int, 3> statuses{};
  s.model.getIntAttrArray("VBasis", Range(0, 3), statuses);
  EXPECT_THAT(statuses, ElementsAre(0, -1, -2));
  std::array<char, 2> types{};
  s.model.getCharAttrArray("VType", listOf({2, 1}), types);
  EXPECT_THAT(types, ElementsAre('C', 'C'));
  s.model.setIntAttrArray("Partition", listOf({2, 1}), std::array{5, 6});
  EXPECT_EQ(s.gurobi->takeCalls().back(), "GRBsetintattrlist(m1, \"Partition\", 2, [2, 1], [5, 6])");

  std::array<double, 2> untouched{4, 5};
  s.model.getDblAttrArray("X", Range(0, 2), untouched);  // no solution: no exception, values as they were
  EXPECT_THAT(untouched, ElementsAre(4, 5));
  s.gurobi->takeCalls();
  EXPECT_THROW(s.model.getDblAttrArray("LB", Range(0, 3), untouched), tav::CheckException);
  EXPECT_TRUE(s.gurobi->takeCalls().empty()) << "a short target never reaches Gurobi";
}

TEST(ModelValues, LongCallsTellThatTheyRunAndKeepTheMarkWhenTheyFail) {
  struct Case {
    Fn function;
    void (*run)(GurobiModel&);
    bool fixes, relaxes;
  };
  const Case cases[]{
      {Fn::GRBoptimize, [](GurobiModel& m) { m.optimize(); }, false, false},
      {Fn::GRBcomputeIIS, [](GurobiModel& m) { m.computeIIS(); }, false, false},
      {Fn::GRBfeasrelax, [](GurobiModel& m) { m.feasRelax(0, 0, {}, {}, {}); }, false, true},
      {Fn::GRBconverttofixed, [](GurobiModel& m) { m.convertToFixed(); }, true, false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(fnName(c.function));
    StartedModel s;
    bool ranInside = false;
    s.gurobi->onCall(c.function, [&] { ranInside = s.model.running(); });
    s.gurobi->failCall(c.function, 10001, "Out of memory");
    EXPECT_THROW(c.run(s.model), GurobiException);
    EXPECT_TRUE(s.model.running());
    EXPECT_FALSE(s.model.fixed() || s.model.relaxed());
    c.run(s.model);
    EXPECT_TRUE(ranInside);
    EXPECT_FALSE(s.model.running());
    EXPECT_EQ(s.model.fixed(), c.fixes);
    EXPECT_EQ(s.model.relaxed(), c.relaxes);
  }
}

}  // namespace
}  // namespace grb
