// Files around a solve: parameters read and written, the model written.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "grb/gurobi/exception.h"
#include "grb/procedure/parameter_file.h"
#include "grb/solver.h"
#include "tests/double/gurobi_double.h"
#include "tests/grb/listeners.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using gurobi_double::GurobiDouble;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string inTemp(const std::string& name) { return testing::TempDir() + "option_test_" + name; }

std::string written(const std::string& name, std::string_view content) {
  const std::string file = inTemp(name);
  std::ofstream(file, std::ios::binary) << content;
  return file;
}

std::string namesOf(std::string_view content) {
  std::string text;
  for (const NamedLine& entry : namesInParameterFile(written("names.prm", content))) {
    text += fmt::format("{}:{} ", entry.line, entry.name);
  }
  return text;
}

// What is a name is what Gurobi takes for one.
TEST(ParameterFile, NamesAreTheFirstWordsOfLines) {
  struct Case {
    std::string_view content;
    const char* names;
  };
  const Case cases[]{
      {"", ""},
      {"# a comment\n\n  # another\n \t\r\n", ""},
      {"TimeLimit 5\nThreads 2", "1:TimeLimit 2:Threads "},
      {"TimeLimit=5\n  Threads\t= 2 more\n", "1:TimeLimit 2:Threads "},
      {"TimeLimit 5\r\nThreads 2\r\n", "1:TimeLimit 2:Threads "},
      {"Threads\n", "1:Threads "},
      {"Foo 1\n#\nBar 2\nFOO 3\nBar 4\n", "1:Foo 3:Bar "},
      {"TimeLimit,5\nNope#3\n* x\n=3\n", "1:TimeLimit,5 2:Nope#3 3:* "},
  };
  for (const Case& c : cases) EXPECT_EQ(namesOf(c.content), c.names) << c.content;
  EXPECT_THAT(namesInParameterFile(written("names.prm.gz", "TimeLimit 5\n")), IsEmpty()) << "taken for compressed";
}

TEST(ParameterFile, WhatIsNoReadableTextIsRefused) {
  EXPECT_EQ(messageOf([] { namesInParameterFile("no/such.prm"); }),
            "The file 'no/such.prm' cannot be read: No such file or directory.");
  EXPECT_EQ(messageOf([] { namesInParameterFile(testing::TempDir()); }),
            fmt::format("The file '{}' cannot be read: it is a folder.", testing::TempDir()));
  using std::string_view_literals::operator""sv;
  EXPECT_THAT(messageOf([] { namesOf("TimeLimit 5\nT\0h\0"sv); }), HasSubstr("cannot be read: line 2 is not a text."));
}

TEST(ParameterFile, FilesThatCannotBeWrittenAreKnownBeforehand) {
  const std::string file = written("there.prm", "");
  EXPECT_NO_THROW(requireWritable(file));
  EXPECT_NO_THROW(requireWritable(inTemp("not_there.prm")));
  EXPECT_NO_THROW(requireWritable("not_there.prm"));
  EXPECT_EQ(messageOf([] { requireWritable("no/such.prm"); }),
            "The file 'no/such.prm' cannot be written: No such file or directory.");
  EXPECT_THAT(messageOf([&] { requireWritable(file + "/x.prm"); }), HasSubstr("written: Not a directory."));
  EXPECT_THAT(messageOf([] { requireWritable(testing::TempDir()); }), HasSubstr("written: it is a folder."));
}

class FilesOfASolveTest : public testing::Test {
 protected:
  FilesOfASolveTest() {
    solver.setLog(log);
    solver.setup();
    gurobi->scriptAttr("Status", 2);
    gurobi->defineParam({"Threads", 0, 0, 1024});
    gurobi->takeCalls();
  }
  void set(std::string_view option, const std::string& file) {
    solver.makeModelAttributes("grb", {})->get(option).as<std::string>().set(file);
  }

  std::shared_ptr<GurobiDouble> gurobi = GurobiDouble::make();
  std::shared_ptr<TextLog> log = std::make_shared<TextLog>();
  Solver solver{gurobi->library()};
};

TEST_F(FilesOfASolveTest, AreReadBeforeAndWrittenAroundTheSolve) {
  const std::string read = written("read.prm", "Threads 2\n");
  const std::string write = inTemp("write.prm");
  set("readparams", read);
  set("writeparams", write);
  set("writeprob", "x.lp");
  solver.solve();
  EXPECT_THAT(gurobi->takeCalls(),
              ElementsAre(R"(GRBgetintparam(m1.env, "PDHGGPU", *))", "GRBsetlogcallbackfunc(m1, *, *)",
                          R"(GRBgetparamtype(m1.env, "Threads"))", fmt::format("GRBreadparams(m1.env, \"{}\")", read),
                          R"(GRBwrite(m1, "x.lp"))", "GRBoptimize(m1)",
                          fmt::format("GRBwriteparams(m1.env, \"{}\")", write), R"(GRBgetintattr(m1, "Status", *))"));
  EXPECT_EQ(log->text, "");

  for (const Fn step : {Fn::GRBreadparams, Fn::GRBwrite, Fn::GRBoptimize, Fn::GRBwriteparams}) {
    gurobi->failCall(step, 10003, "told by Gurobi");
    EXPECT_EQ(thrown<GurobiException>([&] { solver.solve(); }).context(), fnName(step));
    EXPECT_THAT(gurobi->takeCalls().back(), testing::StartsWith(std::string(fnName(step)))) << "nothing runs after it";
  }

  for (const char* option : {"readparams", "writeparams", "writeprob"}) set(option, "");
  solver.solve();
  for (const Fn none : {Fn::GRBreadparams, Fn::GRBwrite, Fn::GRBwriteparams}) EXPECT_EQ(gurobi->count(none), 0);
}

TEST_F(FilesOfASolveTest, NamesThatGurobiDoesNotKnowAreToldBeforeItReads) {
  const std::string garbage(70, 'y');
  const std::string file =
      written("unknown.prm", "\xef\xbb\xbfThreads 2\nthreads 1\niis 1\n" + garbage + " 2\nIIS 2\nthreads=4\n");
  set("readparams", file);
  std::string before;
  gurobi->onCall(Fn::GRBreadparams, [&] { before = log->text; });
  solver.solve();
  const auto line = [&](int number, const std::string& name) {
    return fmt::format("*** Warning: {}, line {}: Gurobi has no parameter '{}'; the line has no effect.\n", file,
                       number, name);
  };
  EXPECT_EQ(before, line(1, R"(\xef\xbb\xbfThreads)") + line(3, "iis") + line(4, std::string(60, 'y') + "..."));
}

TEST_F(FilesOfASolveTest, AFileThatCannotBeUsedEndsTheSolveBeforeItBegins) {
  set("writeparams", "no/such.prm");
  EXPECT_THAT(messageOf([&] { solver.solve(); }), HasSubstr("'no/such.prm' cannot be written"));
  EXPECT_THAT(gurobi->takeCalls(), IsEmpty());
  set("writeparams", "");
  set("readparams", "no/such.prm");
  EXPECT_THAT(messageOf([&] { solver.solve(); }), HasSubstr("'no/such.prm' cannot be read"));
  EXPECT_EQ(gurobi->count(Fn::GRBreadparams) + gurobi->count(Fn::GRBoptimize), 0);
}

TEST_F(FilesOfASolveTest, ALogThatFailsWhileAFileIsReadEndsTheSolve) {
  struct BrokenLog : tav::opt::AbstractLog {
    void write(std::string_view) override { throw std::runtime_error("the log"); }
  };
  solver.setLog(std::make_shared<BrokenLog>());
  set("readparams", written("read.prm", "Threads 2\n"));
  gurobi->onCall(Fn::GRBreadparams, [&] { gurobi->fireLog(gurobi->model(1), "Set parameter Threads to value 2\n"); });
  EXPECT_THROW(solver.solve(), std::runtime_error);
  EXPECT_EQ(gurobi->count(Fn::GRBoptimize), 0);
}

}  // namespace
}  // namespace grb
