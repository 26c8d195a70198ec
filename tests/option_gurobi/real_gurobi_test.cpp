// The catalogue and the files of a solve against the real library.
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "grb/option/catalogue.h"
#include "tests/grb/real_solver.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using testing::HasSubstr;

std::string inTemp(const std::string& name) { return testing::TempDir() + "option_gurobi_test_" + name; }

std::string contentOf(const std::string& file) {
  std::ostringstream text;
  text << std::ifstream(file).rdbuf();
  return text.str();
}

// The name as Gurobi spells it, for a name in any case.
std::string spelled(const GurobiModel& model, const std::string& name) {
  for (int i = 0; i < model.getNumParams(); ++i) {
    if (tav::attr::isSameName(model.getParamName(i), name)) return model.getParamName(i);
  }
  return "";
}

template <class Info, class Told>
void expectSame(const GurobiModel& model, const Info& info, const Told& told) {
  EXPECT_EQ(spelled(model, info.name()), info.name());
  EXPECT_EQ(info.getDefault(), told.defaultValue) << info.name();
  EXPECT_EQ(info.lower(), told.minimum) << info.name();
  EXPECT_EQ(info.upper(), told.maximum) << info.name();
}

TEST(RealCatalogue, AgreesWithGurobiInNamesTypesDefaultsAndBounds) {
  const GurobiModel model(realGurobi());
  for (const DoubleInfo& info : doubleParameters()) expectSame(model, info, model.getDblParamInfo(info.name().c_str()));
  for (const IntInfo& info : intParameters()) expectSame(model, info, model.getIntParamInfo(info.name().c_str()));
  for (const TextInfo& info : stringParameters()) {
    EXPECT_EQ(spelled(model, info.name()), info.name());
    EXPECT_EQ(info.hasDefault() ? info.getDefault() : "", model.getStrParamInfo(info.name().c_str()).defaultValue);
  }
}

using RealSolveTest = RealSolver;

// A value within the bounds that is not the default, and harmless.
template <class T>
T otherValue(const tav::attr::lib::RangeInfo<T>& info) {
  const T next = info.getDefault() + 1;
  if (next <= info.upper() && next != info.getDefault()) return next;
  return std::min<T>(1000, info.getDefault() == info.upper() ? info.upper() - 1 : info.upper());
}

template <class T>
void expectTaken(const tav::attr::BaseItem& found, const T& value) {
  const auto item = found.as<T>();
  ASSERT_TRUE(item);
  item.set(value);
  EXPECT_EQ(item.get(), value) << found.info()->name();
}

TEST_F(RealSolveTest, EachParameterTakesAnotherValueAndGivesItBack) {
  for (const DoubleInfo& info : doubleParameters()) expectTaken(option(info.name()), otherValue(info));
  for (const IntInfo& info : intParameters()) {
    if (info.name() != "Record") expectTaken(option(info.name()), otherValue(info));
  }
  for (const char* name : {"NodefileDir", "SolFiles"}) expectTaken(option(name), inTemp("solution"));
  expectTaken(option("ResultFile"), inTemp("result.sol"));
  set("WorkerPassword", "open sesame");
  EXPECT_EQ(option("WorkerPassword").as<std::string>().get(), "***");
}

// Gurobi records from its start on or not at all.
TEST_F(RealSolveTest, RecordingIsRefusedAfterTheStart) {
  EXPECT_THAT(messageOf([&] { set("Record", 1); }), HasSubstr("after environment started"));
}

TEST_F(RealSolveTest, FilesAreReadAndWritten) {
  const std::string read = inTemp("read.prm");
  std::ofstream(read) << "# settings\nMIPGap 0.25\nNoSuchName 3\nthreads=1\n";
  const std::string parameters = inTemp("written.prm");
  const std::string model = inTemp("written.lp");
  for (const std::string& file : {parameters, model}) std::filesystem::remove(file);
  set("readparams", read);
  set("writeparams", parameters);
  set("writeprob", model);
  solver.solve();
  EXPECT_THAT(log->text,
              testing::StartsWith("*** Warning: " + read + ", line 3: Gurobi has no parameter 'NoSuchName'"));
  EXPECT_EQ(option("mipgap").as<double>().get(), 0.25);
  EXPECT_THAT(contentOf(parameters), testing::AllOf(HasSubstr("MIPGap  0.25\n"), HasSubstr("Threads  1\n")));
  EXPECT_THAT(contentOf(model), HasSubstr("Minimize"));
}

TEST_F(RealSolveTest, FilesThatGurobiCannotWriteEndTheSolve) {
  for (const auto& [file, message] :
       {std::pair(inTemp("folder/x.lp"), "Unable to write to file"), {inTemp("x.foo"), "Unknown file type for file"}}) {
    set("writeprob", file);
    EXPECT_THAT(messageOf([&] { solver.solve(); }), HasSubstr(message));
  }
  EXPECT_EQ(solver.stopReason(), tav::opt::StopReason::notRun);
}

}  // namespace
}  // namespace grb
