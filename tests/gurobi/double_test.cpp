// Where the double's answers must be those of Gurobi for other tests to mean anything.
#include <gmock/gmock.h>

#include "tests/double/gurobi_sink.h"
#include "tests/gurobi/started_model.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using ::testing::ElementsAre;

TEST(Double, QueuedElementsCanBeWrittenButNotRead) {
  StartedModel s;
  const Api& api = s.model.api();
  GRBmodel* const handle = s.model.model();
  s.model.addVar({}, {}, 0, 0, 1, 'B', "new");
  double bound = -1;
  EXPECT_EQ(api.GRBgetdblattrelement(handle, "UB", 3, &bound), error::kIndexOutOfRange);
  EXPECT_EQ(bound, -1);
  EXPECT_EQ(api.GRBsetdblattrelement(handle, "UB", 3, 5), 0);
  EXPECT_EQ(api.GRBsetdblattrelement(handle, "UB", 4, 5), error::kIndexOutOfRange);
  EXPECT_EQ(s.model.getDblAttrElement("UB", 3), 5);
  EXPECT_EQ(s.model.getStrAttrElement("VarName", 2), "C2");
}

TEST(Double, AFailingAddThrowsTheQueueAwayAndNothingElseDoes) {
  StartedModel s;
  s.model.addVars(4, {}, {}, {}, {}, {});
  EXPECT_EQ(thrown([&] { s.model.setDblAttrElement("LB", 99, 1); }).code(), error::kIndexOutOfRange);
  EXPECT_EQ(s.model.getIntAttr("NumVars"), 7);
  s.model.addVars(4, {}, {}, {}, {}, {});
  s.gurobi->failCall(Fn::GRBaddgenconstrExpA, 10003, "non-positive base for exponential function not supported");
  EXPECT_EQ(thrown([&] { s.model.addGenConstrExpA(nullptr, 0, 1, -1, nullptr); }).code(), 10003);
  EXPECT_EQ(s.model.getIntAttr("NumVars"), 7);
}

TEST(Double, SinkCountsAndCopies) {
  gurobi_double::resetSink();
  GurobiModel model(gurobi_double::sinkLibrary());
  model.start();
  const auto before = gurobi_double::sinkTotals();
  model.addVars(3, {}, std::array{1.0, 2.0, 3.0}, {}, {}, {});
  model.addConstr(std::array{0, 1}, std::array{1.0, 1.0}, '<', 4, nullptr);
  const auto after = gurobi_double::sinkTotals();
  EXPECT_EQ(after.calls - before.calls, 2);
  EXPECT_EQ(after.bytes - before.bytes, 3 * 8 + 2 * (4 + 8));
  EXPECT_EQ(model.getIntAttr("NumVars"), 3);
  EXPECT_EQ(model.getIntAttr("NumConstrs"), 1);
  std::array<double, 2> x{};
  model.getDblAttrArray("X", tav::idx::lib::Range(0, 2), x);
  EXPECT_THAT(x, ElementsAre(1.0, 1.0));
}

}  // namespace
}  // namespace grb
