// Settings as the framework sees them, and what of them reaches Gurobi.
#include "grb/result/model_attributes.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "grb/gurobi/exception.h"
#include "grb/solver.h"
#include "tests/double/gurobi_double.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using gurobi_double::GurobiDouble;
using testing::ElementsAre;
using testing::IsEmpty;

class ModelAttributesTest : public testing::Test {
 protected:
  ModelAttributesTest() { gurobi->takeCalls(); }
  template <class T>
  tav::attr::Item<T> item(std::string_view name) {
    return attributes->get(name).as<T>();
  }

  std::shared_ptr<GurobiDouble> gurobi = GurobiDouble::make();
  std::unique_ptr<Solver> solver = std::make_unique<Solver>(gurobi->library());
  std::shared_ptr<tav::attr::AbstractItemDict> attributes = solver->makeModelAttributes("grb", {});
};

// Sets the item to its default, or to a text, and tells the call that this must lead to.
std::string setToDefault(const tav::attr::BaseItem& item) {
  const std::string& name = item.info()->name();
  if (const auto whole = item.as<int>()) {
    whole.set(whole.getDefault());
    return fmt::format("GRBsetintparam(e1, \"{}\", {})", name, whole.getDefault());
  }
  if (const auto number = item.as<double>()) {
    number.set(number.getDefault());
    return fmt::format("GRBsetdblparam(e1, \"{}\", {})", name, number.getDefault());
  }
  item.as<std::string>().set("a text");
  return fmt::format("GRBsetstrparam(e1, \"{}\", \"a text\")", name);
}

TEST_F(ModelAttributesTest, EachParameterIsSetByTheCallOfItsTypeUnderGurobisName) {
  EXPECT_EQ(attributes->count(), 176);
  for (const int key : attributes->keys()) {
    const auto found = attributes->get(key);
    ASSERT_TRUE(attributes->has(key) && found && found.isSettable()) << key;
    EXPECT_EQ(found.info(), attributes->info(key));
    EXPECT_EQ(found.valueType(), found.info()->valueType());
    EXPECT_EQ(attributes->name(key), found.info()->name());
    if (key < 4000) continue;
    const std::string expected = setToDefault(found);
    EXPECT_THAT(gurobi->takeCalls(), ElementsAre(expected));
  }
}

TEST_F(ModelAttributesTest, OptionsHaveOneItemEachAndReachNobody) {
  EXPECT_EQ(attributes->find("IIS"), 2003);
  EXPECT_EQ(attributes->get("Iis").pointer(), attributes->get(2003).pointer());
  EXPECT_EQ(solver->makeModelAttributes("grb", {})->get(2003).pointer(), attributes->get(2003).pointer());
  item<int>("iis").set(2);
  item<std::string>("writeProb").set("x.lp");
  EXPECT_EQ(attributes->get(2003).as<int>().get(), 2);
  EXPECT_EQ(attributes->get(3003).as<std::string>().get(), "x.lp");
  EXPECT_EQ(messageOf<tav::CheckException>([&] { item<int>("iis").set(3); }),
            "'iis' (which is 3) must be less or equal to 2.");
  EXPECT_EQ(item<int>("iis").get(), 2);
  EXPECT_THAT(gurobi->calls(), IsEmpty());
}

TEST_F(ModelAttributesTest, ValuesBeyondTheBoundsNeverReachGurobi) {
  const double inf = std::numeric_limits<double>::infinity();
  struct Case {
    const char* name;
    double value;
    const char* message;
  };
  const Case cases[]{{"TimeLimit", -1, "'TimeLimit' (which is -1) must be greater or equal to 0."},
                     {"timelimit", inf, "'TimeLimit' (which is inf) must be less or equal to 1e+100."},
                     {"MIPGAP", NAN, "'MIPGap' (which is nan) must be greater or equal to 0."},
                     {"Heuristics", 1.5, "'Heuristics' (which is 1.5) must be less or equal to 1."}};
  for (const Case& c : cases) {
    EXPECT_EQ(messageOf<tav::CheckException>([&] { item<double>(c.name).set(c.value); }), c.message);
  }
  EXPECT_EQ(messageOf<tav::CheckException>([&] { item<int>("threads").set(1025); }),
            "'Threads' (which is 1025) must be less or equal to 1024.");
  for (const char* name : {"NodefileDir", "WorkerPassword"}) {
    EXPECT_EQ(messageOf<tav::CheckException>([&] { item<std::string>(name).set(std::string(512, 'x')); }),
              "'length of a text parameter' (which is 512) must be less than 512.");
  }
  EXPECT_THAT(gurobi->calls(), IsEmpty());

  item<double>("timelimit").set(1e100);  // on the bound: no limit
  item<double>("timelimit").reset();
  item<std::string>("nodefiledir").set(std::string(511, 'x'));
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre(R"(GRBsetdblparam(e1, "TimeLimit", 1e+100))", R"(GRBsetdblparam(e1, "TimeLimit", 1e+100))",
                          fmt::format(R"(GRBsetstrparam(e1, "NodefileDir", "{}"))", std::string(511, 'x'))));
}

TEST_F(ModelAttributesTest, ParametersGoToTheEnvironmentInForce) {
  item<double>("mipgap").set(0.25);
  solver->setup();
  gurobi->takeCalls();
  item<double>("MIPGAP").set(0.5);
  EXPECT_EQ(item<double>("MipGap").get(), 0.5);
  EXPECT_THAT(gurobi->takeCalls(), ElementsAre(R"(GRBsetdblparam(m1.env, "MIPGap", 0.5))", "GRBupdatemodel(m1)",
                                               R"(GRBgetdblparam(m1.env, "MIPGap", *))"));
  gurobi->failCall(Fn::GRBsetdblparam, 10008, "Unable to set parameter MIPGap");
  EXPECT_EQ(messageOf<GurobiException>([&] { item<double>("mipgap").set(1); }), "Unable to set parameter MIPGap");
}

TEST_F(ModelAttributesTest, ThePasswordIsInTheCallAlone) {
  const auto password = item<std::string>("workerpassword");
  EXPECT_EQ(password.get(), "");
  password.set("open sesame");
  EXPECT_THAT(gurobi->takeCalls().back(), R"(GRBsetstrparam(e1, "WorkerPassword", "open sesame"))");
  EXPECT_EQ(password.get(), "***");
  EXPECT_THAT(password.getAll(), ElementsAre("***"));
  item<std::string>("ResultFile").set("x.sol");
  EXPECT_EQ(item<std::string>("ResultFile").get(), "x.sol");
}

TEST_F(ModelAttributesTest, ProvidesNothingElseAndNothingOfAModelThatIsGone) {
  for (const char* none : {"LogFile", "logtoconsole", "WLSToken", "no such", ""}) {
    EXPECT_FALSE(attributes->has(none) || attributes->get(none) || attributes->info(none)) << none;
  }
  EXPECT_FALSE(attributes->has(4050) || attributes->get(4050) || attributes->info(4050));
  EXPECT_EQ(attributes->name(4050), "");
  const auto limit = item<double>("TimeLimit");
  solver.reset();
  EXPECT_EQ(attributes->count(), 0);
  for (const char* name : {"TimeLimit", "iis"}) {
    EXPECT_FALSE(attributes->has(name) || attributes->get(name) || attributes->info(name)) << name;
  }
  EXPECT_FALSE(attributes->has(2003) || attributes->get(4000));
  gurobi->takeCalls();
  EXPECT_EQ(limit.get(), 0);
  limit.set(5);
  EXPECT_THAT(gurobi->calls(), IsEmpty());
}

}  // namespace
}  // namespace grb
