// The parameters that spread a solve over machines reach Gurobi before the solve, in the order in which they matter.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <fstream>

#include "tests/brel/host.h"

namespace brel_test {
namespace {

using gurobi_double::Fn;

TEST(ScaleOut, JobsAreSetBehindTheStartAndThePoolIsReadBeforeTheSolve) {
  const std::string pool = testing::TempDir() + "scale_out_pool.prm";
  std::ofstream(pool) << "WorkerPool node1:61000,node2:61000\nWorkerPassword secret\n";
  LinkOverDouble link;
  link.scriptMip({1, 2, 1, 3}, {1, 0, 2});
  for (const char* name : {"DistributedMIPJobs", "ConcurrentJobs", "TuneJobs"}) {
    link.gurobi->defineParam({name, 0, 0, 2000000000});
  }
  for (const char* name : {"WorkerPool", "WorkerPassword"}) link.gurobi->defineParam({name, ""});
  link.gurobi->onCall(Fn::GRBreadparams, [&] {
    auto& values = link.gurobi->model(1).env.params;
    values.insert_or_assign("workerpool", "node1:61000,node2:61000");
    values.insert_or_assign("workerpassword", "secret");
  });
  HostModel model;
  fill(model, KAVO_INTEGER);
  for (const auto& [name, value] : {std::pair("distributedmipjobs", "2"), std::pair("concurrentjobs", "3"),
                                    std::pair("tunejobs", "4"), std::pair("readparams", pool.c_str())}) {
    ASSERT_EQ(kavo_set_option(model, name, value, nullptr, 0), KAVO_OK);
  }
  ASSERT_EQ(openAndSolve(model), KAVO_OK) << kavo_last_error();

  const auto calls = link.gurobi->calls();
  auto from = calls.begin();
  for (const std::string& step : {std::string("GRBstartenv(e1)"), std::string("GRBnewmodel(e1, "),
                                  std::string(R"(GRBsetintparam(m1.env, "DistributedMIPJobs", 2))"),
                                  std::string(R"(GRBsetintparam(m1.env, "ConcurrentJobs", 3))"),
                                  std::string(R"(GRBsetintparam(m1.env, "TuneJobs", 4))"), std::string("GRBaddvars(m1"),
                                  fmt::format("GRBreadparams(m1.env, \"{}\")", pool), std::string("GRBoptimize(m1)")}) {
    const auto found = std::find_if(from, calls.end(), [&](const std::string& call) { return call.starts_with(step); });
    ASSERT_NE(found, calls.end()) << step;
    from = found;
  }
}

}  // namespace
}  // namespace brel_test
