// How the functions take handles that are not alive.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <type_traits>

#include "tests/bridge/library.h"

namespace bridge_test {
namespace {

/// Calls `function` with the handle and with zeros for everything else.
template <class Handle, class Result, class... Rest>
Result withHandle(Result (*function)(Handle*, Rest...), Handle* handle) {
  return function(handle, std::decay_t<Rest>{}...);
}

struct Row {
  std::string name;
  std::function<int()> call;
};

/// The functions that return a code and begin with a handle of the given type, called with that handle.
template <class Handle>
std::vector<Row> rows(Handle* handle) {
  std::vector<Row> found;
  const auto add = [&](const char* name, auto function) {
    if constexpr (requires {
                    { withHandle<Handle>(function, handle) } -> std::same_as<int>;
                  })
      found.push_back({name, [=] { return withHandle<Handle>(function, handle); }});
  };
#define GRB_FN(result, name, parameters, since) add(#name, grb().name);
#include "grb/gurobi/functions.def"
  return found;
}

/// Functions whose int is an answer instead of a code, with the answer for a handle that is not alive.
int answerWithoutHandle(const std::string& name) {
  if (name == "GRBisgpusupported" || name == "GRBgetnumparams" || name == "GRBisattravailable") return 0;
  return name == "GRBgetparamtype" ? -1 : 10002;
}

template <class Handle>
void expectRefused(Handle* handle, const std::set<std::string>& except) {
  const std::vector<Row> all = rows(handle);
  EXPECT_GT(all.size(), 10U);
  for (const Row& row : all) {
    SCOPED_TRACE(row.name);
    if (!except.contains(row.name)) {
      EXPECT_EQ(row.call(), answerWithoutHandle(row.name));
    }
  }
}

TEST(Handles, NullIsRefused) {
  expectRefused<GRBenv>(nullptr, {});
  expectRefused<GRBmodel>(nullptr, {"GRBfreemodel"});
  EXPECT_EQ(grb().GRBfreemodel(nullptr), 0);
  EXPECT_EQ(grb().GRBgetenv(nullptr), nullptr);
  EXPECT_STREQ(grb().GRBgeterrormsg(nullptr), "");
  grb().GRBfreeenv(nullptr);
  grb().GRBterminate(nullptr);
}

TEST(Handles, StaleOnesAreRefusedAlsoAfterNewOnesWereMade) {
  GRBmodel* model = nullptr;
  GRBenv* base = nullptr;
  ASSERT_EQ(grb().GRBemptyenvinternal(&base, 13, 0, 2), 0);
  grb().GRBsetintparam(base, "LogToConsole", 0);
  ASSERT_EQ(grb().GRBstartenv(base), 0);
  ASSERT_EQ(grb().GRBnewmodel(base, &model, "", 0, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
  GRBenv* const ofModel = grb().GRBgetenv(model);
  grb().GRBfreeenv(ofModel);
  EXPECT_EQ(grb().GRBsetintparam(ofModel, "Threads", 1), 0) << "a model's environment goes only with its model";
  ASSERT_EQ(grb().GRBfreemodel(model), 0);
  grb().GRBfreeenv(base);
  const Env env;
  const Model other(env);
  expectRefused(model, {});
  expectRefused(base, {});
  expectRefused(ofModel, {});
  grb().GRBterminate(model);
  EXPECT_EQ(grb().GRBoptimize(other.get()), 0);
}

TEST(Handles, AnEnvironmentMayBeFreedBeforeItsModels) {
  auto env = std::make_unique<Env>();
  const Model model(*env);
  env.reset();
  model.addVars({1.0}, {2.0}, "C");
  EXPECT_EQ(grb().GRBoptimize(model.get()), 0);
  EXPECT_EQ(model.integer("Status"), 2);
}

}  // namespace
}  // namespace bridge_test
