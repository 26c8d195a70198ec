// Whole solves in a program that is not Python.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/bridge/library.h"

namespace bridge_test {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::Pointwise;

int collect(char* line, void* lines) {
  static_cast<std::vector<std::string>*>(lines)->emplace_back(line);
  return 0;
}

TEST(Solve, AnLpWithItsDualsRangesAndLog) {
  const Env env;
  const Model model(env, "diet");
  std::vector<std::string> log;
  ASSERT_EQ(grb().GRBsetlogcallbackfunc(model.get(), collect, &log), 0);
  model.addVars({-3.0, -2.0}, {4.0, 1e100}, "CC");
  model.addRow({1.0, 1.0}, '<', 5.0);
  ASSERT_EQ(grb().GRBoptimize(model.get()), 0) << model.message();
  EXPECT_EQ(model.integer("Status"), 2);
  EXPECT_THAT(model.number("ObjVal"), DoubleNear(-14.0, 1e-9));
  EXPECT_THAT(model.numbers("X", 2), Pointwise(testing::DoubleEq(), {4.0, 1.0}));
  EXPECT_THAT(model.numbers("RC", 2), Pointwise(DoubleNear(1e-9), {-1.0, 0.0}));
  EXPECT_THAT(model.numbers("Pi", 1), ElementsAre(DoubleNear(-2.0, 1e-9)));
  EXPECT_THAT(model.numbers("SAObjUp", 2), Pointwise(DoubleNear(1e-9), {-2.0, 0.0}));
  EXPECT_THAT(model.numbers("SARHSUp", 1), ElementsAre(1e100));
  EXPECT_GT(log.size(), 10U);
  EXPECT_THAT(log, testing::Each(testing::EndsWith("\n")));
  EXPECT_THAT(log, testing::Contains(testing::HasSubstr("Optimal objective -1.4")));
}

TEST(Solve, NewModelsBringTheirVariables) {
  const Env env;
  GRBmodel* model = nullptr;
  double obj[] = {-1.0, 2.0}, lb[] = {-1e100, -5.0}, ub[] = {3.0, 1e100};
  char types[] = "IC";
  char first[] = "first", empty[] = "";
  char* names[] = {first, empty};
  ASSERT_EQ(grb().GRBnewmodel(env.get(), &model, nullptr, 2, obj, lb, ub, types, names), 0);
  int count = 0;
  EXPECT_EQ(grb().GRBgetintattr(model, "NumVars", &count), 0);
  EXPECT_EQ(count, 2);
  char type = ' ';
  EXPECT_EQ(grb().GRBgetcharattrelement(model, "VType", 0, &type), 0);
  EXPECT_EQ(type, 'I');
  double bound = 0;
  EXPECT_EQ(grb().GRBgetdblattrelement(model, "LB", 0, &bound), 0);
  EXPECT_EQ(bound, -1e100);
  for (const auto& [index, name] : {std::pair{0, "first"}, {1, "C1"}}) {
    char* read = nullptr;
    ASSERT_EQ(grb().GRBgetstrattrelement(model, "VarName", index, &read), 0);
    EXPECT_STREQ(read, name);
  }
  EXPECT_EQ(grb().GRBfreemodel(model), 0);
  GRBmodel* refused = nullptr;
  char wrong[] = "IQ";
  EXPECT_EQ(grb().GRBnewmodel(env.get(), &refused, "", 2, obj, lb, ub, wrong, nullptr), 10003);
  EXPECT_EQ(refused, nullptr);
  EXPECT_STREQ(grb().GRBgeterrormsg(env.get()), "Invalid variable type 'Q'");
}

TEST(Solve, BytesThatAreNotUtf8BecomeReadableNames) {
  const Env env;
  const Model model(env);
  ASSERT_EQ(grb().GRBaddvar(model.get(), 0, nullptr, nullptr, 0.0, 0.0, 1.0, 'C',
                            "gr\xF6\xDF"
                            "e"),
            0);
  ASSERT_EQ(grb().GRBupdatemodel(model.get()), 0);
  char* name = nullptr;
  ASSERT_EQ(grb().GRBgetstrattrelement(model.get(), "VarName", 0, &name), 0);
  EXPECT_STREQ(name, "größe");
}

}  // namespace
}  // namespace bridge_test
