// The native Gurobi library, as far as it goes without a licence.
#include <gmock/gmock.h>

#include "grb/gurobi/constants.h"
#include "grb/gurobi/exception.h"
#include "grb/gurobi/model.h"
#include "tests/gurobi/native_path.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using ::testing::HasSubstr;

class Native : public ::testing::Test {
 protected:
  std::shared_ptr<const Library> library_ = Library::open(nativeGurobi());
};

TEST_F(Native, VersionAndPlatform) {
  EXPECT_THAT(library_->text(), HasSubstr("Gurobi 13.0."));
  EXPECT_STREQ(library_->api().GRBplatform(), "linux64");
}

TEST_F(Native, ParametersOfAnUnstartedEnvironment) {
  GurobiModel model(library_);
  EXPECT_EQ(model.getIntParam("LogToConsole"), 0);
  const ParamInfo<double> limit = model.getDblParamInfo("TimeLimit");
  EXPECT_EQ(limit.minimum, 0);
  EXPECT_EQ(limit.maximum, kInfinity);
  EXPECT_EQ(limit.defaultValue, kInfinity);
  const ParamInfo<int> threads = model.getIntParamInfo("Threads");
  EXPECT_EQ(threads.minimum, -1);
  EXPECT_EQ(threads.maximum, 1024);
  model.setIntParam("threads", 3);
  EXPECT_EQ(model.getIntParam("Threads"), 3);
  model.setStrParam("LogFile", "");
  EXPECT_EQ(model.getStrParamInfo("LogFile").value, "");
  EXPECT_EQ(model.getParamType("MIPGap"), paramtype::kDouble);
  EXPECT_EQ(model.getParamType("WorkerPassword"), paramtype::kString);
  EXPECT_EQ(model.getParamType("Nope"), paramtype::kUnknown);
  EXPECT_GT(model.getNumParams(), 150);
  EXPECT_EQ(model.getParamName(0), "Cutoff");
  EXPECT_FALSE(model.isGpuSupported());
}

TEST_F(Native, ParameterFiles) {
  const std::string file = ::testing::TempDir() + "native.prm";
  GurobiModel writer(library_);
  writer.setDblParam("MIPGap", 0.0125);
  writer.writeParams(file.c_str());
  GurobiModel reader(library_);
  reader.readParams(file.c_str());
  EXPECT_EQ(reader.getDblParam("MIPGap"), 0.0125);
}

TEST_F(Native, ErrorsCarryGurobisText) {
  const struct {
    void (*run)(GurobiModel&);
    int code;
    const char *text, *context;
  } cases[]{
      {[](GurobiModel& m) { m.setIntParam("Nope", 1); }, 10007, "Unknown parameter: Nope", "GRBsetintparam"},
      {[](GurobiModel& m) { m.setIntParam("TimeLimit", 1); }, 10007, "Wrong type for parameter: TimeLimit",
       "GRBsetintparam"},
      {[](GurobiModel& m) { m.setIntParam("Threads", 5000); }, 10008,
       "Unable to set parameter Threads to value 5000 (maximum is 1024)", "GRBsetintparam"},
      {[](GurobiModel& m) { m.getDblParamInfo("Threads"); }, 10007, "Wrong type for parameter: Threads",
       "GRBgetdblparaminfo"},
      {[](GurobiModel& m) { m.getParamName(100000); }, 10003, "Invalid argument value for required parameter",
       "GRBgetparamname"},
      {[](GurobiModel& m) { m.readParams("/no/such/file.prm"); }, 10003,
       "Unable to read parameter file /no/such/file.prm", "GRBreadparams"},
  };
  for (const auto& c : cases) {
    GurobiModel model(library_);  // a new one each: Gurobi does not always replace the text of an earlier failure
    const auto error = thrown<GurobiException>([&] { c.run(model); });
    EXPECT_EQ(error.message(), c.text);
    EXPECT_EQ(error.code(), c.code);
    EXPECT_EQ(error.context(), c.context);
  }
}

}  // namespace
}  // namespace grb
