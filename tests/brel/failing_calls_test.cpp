// Every call of Gurobi fails once: in an LP, in the solve after its numbers have changed, in a MIP and in a model with
// elements of every kind.
#include <gmock/gmock.h>

#include <set>

#include "tests/brel/every_kind.h"

namespace brel_test {
namespace {

using gurobi_double::Fn;
using testing::HasSubstr;
using testing::IsEmpty;

// Calls whose code nobody looks at. An update that fails shows in the counts that are read after it; what is written in
// bulk was checked before, and what is read in bulk shows by values that are left as they were.
const std::set<Fn> kUncheckedWrites{Fn::GRBupdatemodel, Fn::GRBsetdblattrarray, Fn::GRBsetdblattrlist,
                                    Fn::GRBsetintattrarray};
const std::set<Fn> kBulkReads{Fn::GRBgetdblattrarray, Fn::GRBgetintattrarray, Fn::GRBgetcharattrarray};

enum class Kind { lp, changedLp, mip, everyKind };

class EveryCall : public testing::TestWithParam<Kind> {
 protected:
  static void build(HostModel& model) {
    if (GetParam() == Kind::everyKind) return fillEveryKind(model);
    fill(model, GetParam() == Kind::mip ? KAVO_INTEGER : KAVO_CONTINUOUS);
  }

  static void script(LinkOverDouble& link) {
    const std::vector<double> point{1, 2, 2, 5}, slacks{-1, 0, 2};
    if (GetParam() <= Kind::changedLp) link.scriptLp(point, slacks);
    if (GetParam() == Kind::mip) link.scriptMip(point, slacks);
    if (GetParam() == Kind::everyKind) link.scriptMip(std::vector<double>(9), std::vector<double>(5));
    link.gurobi->defineParam({"TimeLimit", 1e100, 0, 1e100});
  }

  static void change(HostModel& model) {
    const int rows[] = {0, 1}, columns[] = {2, 1};
    const double values[] = {2, 1};
    EXPECT_EQ(kavo_change_coefficients(model, 2, rows, columns, values), KAVO_OK) << kavo_last_error();
    EXPECT_EQ(kavo_change_sides(model, 2, rows, values, nullptr), KAVO_OK);
    EXPECT_EQ(kavo_change_objective(model, 0, values, 2, columns, values), KAVO_OK);
  }

  // A whole run in which the nth call fails (0: none); false when there is no nth call.
  bool run(int nth) {
    LinkOverDouble link;
    script(link);
    {
      HostModel model;
      build(model);
      EXPECT_EQ(kavo_set_option(model, "timelimit", "9", nullptr, 0), KAVO_OK);
      const bool isChanged = GetParam() == Kind::changedLp;
      if (isChanged) {
        EXPECT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();
        change(model);
      }
      if (nth > 0) link.gurobi->failAnyCall(nth, 10001, "made to fail");
      const int status = isChanged ? kavo_solve(model) : openAndSolve(model);
      if (link.gurobi->failurePending()) return false;
      if (nth == 0) {
        EXPECT_EQ(status, KAVO_OK) << kavo_last_error();
        sound = model.results();
        return true;
      }
      expectTold(status, *link.gurobi->lastFailed(), model);
      kavo_open_link(model, FORWARD_LINK);  // refused when it was open and only the solve has failed
      EXPECT_EQ(kavo_solve(model), KAVO_OK) << kavo_last_error();
      EXPECT_EQ(model.results(), sound);
    }
    EXPECT_THAT(link.gurobi->openHandles(), IsEmpty());
    EXPECT_THAT(link.gurobi->misuses(), IsEmpty());
    return true;
  }

  void expectTold(int status, Fn failed, const HostModel& model) const {
    const std::string name(failed == Fn::GRBemptyenvinternal ? "GRBemptyenv" : grb::fnName(failed));
    const std::string message = kavo_last_error();
    SCOPED_TRACE(name);
    if (kUncheckedWrites.contains(failed) && status == KAVO_OK) return;
    EXPECT_EQ(status, KAVO_LINK);
    EXPECT_EQ(model.results(), "none");
    EXPECT_EQ(message.find('\n'), std::string::npos) << message;
    if (kBulkReads.contains(failed)) {
      EXPECT_THAT(message, HasSubstr("were not handed out"));
    } else if (!kUncheckedWrites.contains(failed)) {
      EXPECT_THAT(message, HasSubstr("[" + name + ", code 10001]"));
    }
  }

  std::string sound;
};

TEST_P(EveryCall, FailsWithAClearErrorAndTheNextSolveIsSound) {
  ASSERT_TRUE(run(0));
  int nth = 1;
  for (bool failed = true; failed; ++nth) {
    SCOPED_TRACE(nth);
    failed = run(nth);
  }
  EXPECT_GT(nth, 30);
}

std::string nameOf(const testing::TestParamInfo<Kind>& kind) {
  constexpr const char* kNames[]{"Lp", "ChangedLp", "Mip", "EveryKind"};
  return kNames[static_cast<int>(kind.param)];
}

INSTANTIATE_TEST_SUITE_P(Of, EveryCall, testing::Values(Kind::lp, Kind::changedLp, Kind::mip, Kind::everyKind), nameOf);

}  // namespace
}  // namespace brel_test
