// The rules of all wrapped calls: which Gurobi function with which arguments, whether its code is checked, whether it
// marks, makes or ignores the pending update.
#include <ostream>

#include "tests/gurobi/rules.h"
#include "tests/gurobi/started_model.h"

namespace grb {

// The test framework finds it by this name.  NOLINTNEXTLINE(readability-identifier-naming)
void PrintTo(const Rule& rule, std::ostream* out) { *out << rule.call; }

namespace {

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
  if (GetParam().checked == Checked::kNo) {
    EXPECT_NO_THROW(GetParam().run(model_));
    return;
  }
  try {
    GetParam().run(model_);
    FAIL() << "no exception";
  } catch (const GurobiException& error) {
    EXPECT_EQ(error.tag(), "Gurobi");
    EXPECT_EQ(error.message(), "told by Gurobi");
    EXPECT_EQ(error.code(), 10003);
    EXPECT_EQ(error.context(), fnName(GetParam().function()));
    EXPECT_EQ(error.location().file(), "grb/gurobi");
    EXPECT_EQ(error.location().line(), 164U);
    EXPECT_EQ(error.location().column(), 34U);
  }
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
  EXPECT_TRUE(started_.gurobi->takeCalls().empty());
}

INSTANTIATE_TEST_SUITE_P(All, ModelRules, ::testing::ValuesIn(allRules()), [](const auto& rule) {
  return std::string(fnName(rule.param.function())) + "_" + std::to_string(rule.index);
});

}  // namespace
}  // namespace grb
