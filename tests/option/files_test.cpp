// Files around a solve: parameters read and written, the model written.
#include <fmt/format.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

#include "grb/gurobi/exception.h"
#include "grb/procedure/parameter_file.h"
#include "grb/procedure/parameter_lines.h"
#include "tests/grb/solver_fixture.h"
#include "tests/tav/thrown.h"

namespace grb {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string inTemp(const std::string& name) { return testing::TempDir() + "option_test_" + name; }

std::string written(const std::string& name, std::string_view content) {
  const std::string file = inTemp(name);
  std::ofstream(file, std::ios::binary) << content;
  return file;
}

// "number:name=value" of each line, with a + where there is more.
std::string linesOf(std::string_view content) {
  std::string text;
  for (const ParameterLine& line : linesOfParameterFile(written("lines.prm", content))) {
    text += fmt::format("{}:{}={}{} ", line.number, line.name, line.value, line.hasMore ? "+" : "");
  }
  return text;
}

// What is a name and what a value is what Gurobi takes for them.
TEST(ParameterFile, LinesAreANameAndAValue) {
  struct Case {
    std::string_view content;
    const char* lines;
  };
  const Case cases[]{
      {"", ""},
      {"# a comment\n\n  # another\n \t\r\n", ""},
      {"TimeLimit 5\nThreads 2", "1:TimeLimit=5 2:Threads=2 "},
      {"TimeLimit=5\n  Threads\t= 2 more\n", "1:TimeLimit=5 2:Threads=2+ "},
      {"TimeLimit 5\r\nThreads  =2 # two\r\n", "1:TimeLimit=5 2:Threads=2 "},
      {"Threads\nNodefileDir  \nResultFile=", "1:Threads= 2:NodefileDir= 3:ResultFile= "},
      {"Foo 1\n#\nfoo 2#3\nBar ==4\n", "1:Foo=1 3:foo=2#3 4:Bar==4 "},
      {"TimeLimit,5\nNope#3\n* x\n=3\n", "1:TimeLimit,5= 2:Nope#3= 3:*=x "},
  };
  for (const Case& c : cases) EXPECT_EQ(linesOf(c.content), c.lines) << c.content;
}

TEST(ParameterFile, WhatIsNoReadableTextIsRefused) {
  EXPECT_EQ(messageOf([] { linesOfParameterFile("no/such.prm"); }),
            "The file 'no/such.prm' cannot be read: No such file or directory.");
  EXPECT_EQ(messageOf([] { linesOfParameterFile(testing::TempDir()); }),
            fmt::format("The file '{}' cannot be read: it is a folder.", testing::TempDir()));
  EXPECT_THAT(messageOf([] { linesOfParameterFile(written("x.prm.gz", "")); }), HasSubstr("read: it is compressed."));
  using std::string_view_literals::operator""sv;
  EXPECT_THAT(messageOf([] { linesOf("TimeLimit 5\nT\0h\0"sv); }), HasSubstr("cannot be read: line 2 is not a text."));
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

class FilesOfASolveTest : public SolverOverDouble {
 protected:
  FilesOfASolveTest() {
    gurobi->scriptAttr("Status", 2);
    gurobi->defineParam({"Threads", 0, 0, 1024});
    gurobi->defineParam({"TimeLimit", 1e100, 0, 1e100});
    gurobi->defineParam({"NodefileDir", "."});
    gurobi->defineParam({"LogToConsole", 1, 0, 1});
  }
  // What Gurobi makes of a parameter file.
  void onReading(const std::map<std::string, gurobi_double::ParamValue>& values) {
    gurobi->onCall(Fn::GRBreadparams, [this, values] { gurobi->model(1).env.params = values; });
  }
};

TEST_F(FilesOfASolveTest, AreReadBeforeAndWrittenAroundTheSolve) {
  const std::string read = written("read.prm", "nope 1\nThreads 2\n");
  const std::string write = inTemp("write.prm");
  set("readparams", read);
  set("writeparams", write);
  set("writeprob", "x.lp");
  onReading({{"threads", 2}});
  solver.solve();
  std::vector<std::string> calls = gurobi->takeCalls();
  std::erase_if(calls, [](const std::string& call) { return call.starts_with("GRBgetintattr"); });
  EXPECT_THAT(calls, ElementsAre(R"(GRBgetintparam(m1.env, "PDHGGPU", *))", "GRBsetlogcallbackfunc(m1, *, *)",
                                 R"(GRBgetparamtype(m1.env, "nope"))", R"(GRBgetparamtype(m1.env, "Threads"))",
                                 R"(GRBgetintparaminfo(m1.env, "Threads", *, *, *, *))",
                                 R"(GRBgetintparam(m1.env, "Threads", *))",  // to be put back
                                 fmt::format("GRBreadparams(m1.env, \"{}\")", read),
                                 R"(GRBgetintparam(m1.env, "Threads", *))", R"(GRBwrite(m1, "x.lp"))",
                                 "GRBoptimize(m1)", fmt::format("GRBwriteparams(m1.env, \"{}\")", write)));
  EXPECT_THAT(log->text, testing::StartsWith(fmt::format("*** Warning: {}, line 1: ", read)));

  for (const Fn step : {Fn::GRBwriteparams, Fn::GRBgetintparaminfo, Fn::GRBreadparams, Fn::GRBwrite, Fn::GRBoptimize}) {
    gurobi->failCall(step, 10003, "told by Gurobi");
    EXPECT_EQ(thrown<GurobiException>([&] { solver.solve(); }).context(), fnName(step));
    EXPECT_EQ(solver.lostFile(), step == Fn::GRBwriteparams
                                     ? fmt::format("writeparams: cannot write {}: told by Gurobi", write)
                                     : std::string());
    EXPECT_THAT(gurobi->takeCalls().back(), testing::StartsWith(std::string(fnName(step)))) << "nothing runs after it";
  }

  gurobi->failCall(Fn::GRBwriteparams, 10013, "of an earlier failure");
  EXPECT_THROW(solver.solve(), GurobiException);
  EXPECT_THAT(solver.lostFile(), HasSubstr("Gurobi does not say"));
  gurobi->takeCalls();

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
  gurobi->onCall(Fn::GRBreadparams, [&] {
    before = log->text;
    gurobi->model(1).env.params = {{"threads", 4}};
  });
  solver.solve();
  const auto line = [&](int number, const std::string& name) {
    return fmt::format("*** Warning: {}, line {}: Gurobi has no parameter '{}'; the line has no effect.\n", file,
                       number, name);
  };
  EXPECT_EQ(before, line(1, R"(\xef\xbb\xbfThreads)") + line(3, "iis") + line(4, std::string(60, 'y') + "..."));
}

TEST_F(FilesOfASolveTest, WhatAFileChangesIsPutBackWhenTheModelStartsAnew) {
  set("readparams", written("first.prm", "Threads 2\nNodefileDir /a\nTimeLimit 5\n"));
  onReading({{"threads", 2}, {"nodefiledir", "/a"}, {"timelimit", 5.0}});
  solver.solve();
  solver.solve();  // what the file gave is not what was before it
  gurobi->takeCalls();
  solver.clear();
  EXPECT_THAT(gurobi->takeCalls(), testing::IsSupersetOf({R"(GRBsetstrparam(m2.env, "nodefiledir", "."))",
                                                          R"(GRBsetintparam(m2.env, "threads", 0))",
                                                          R"(GRBsetdblparam(m2.env, "timelimit", 1e+100))"}));
  solver.clear();
  EXPECT_EQ(gurobi->count(Fn::GRBsetintparam), 0) << "once";
}

TEST_F(FilesOfASolveTest, ValuesThatGurobiWouldNotTakeAreRefusedBeforeItReads) {
  const std::string whole = ": the value must be a whole number from 0 to 1024";
  const std::string real = ": the value must be a number from 0 to infinity";
  const std::string more = ": a line has one value without blanks, and # begins a comment";
  const std::pair<std::string, std::string> cases[]{
      {"Threads two", "1: Threads=two" + whole},
      {"# ok\nThreads 2\nTHREADS 1.5\nThreads 3", "3: THREADS=1.5" + whole},
      {"Threads 1025", "1: Threads=1025" + whole},
      {"Threads -1", "1: Threads=-1" + whole},
      {"Threads inf", "1: Threads=inf" + whole},
      {"Threads nan", "1: Threads=nan" + whole},
      {"Threads 4294967298", "1: Threads=4294967298" + whole},
      {"Threads", "1: Threads=" + whole},
      {"TimeLimit \xff" + std::string(100, '1'), R"(1: TimeLimit=\xff)" + std::string(59, '1') + "..." + real},
      {"TimeLimit 5s", "1: TimeLimit=5s" + real},
      {"TimeLimit 1,5", "1: TimeLimit=1,5" + real},
      {"TimeLimit -inf", "1: TimeLimit=-inf" + real},
      {"TimeLimit nan", "1: TimeLimit=nan" + real},
      {"TimeLimit 5 seconds", "1: TimeLimit" + more},
      {"LogToConsole 1", "1: LogToConsole: the log is up to the link; leave the line out"},
      {"NodefileDir \"a b\"", "1: NodefileDir" + more},
      {"NodefileDir " + std::string(512, 's'), "1: NodefileDir: the text has 512 bytes and may have 511"},
  };
  for (const auto& [content, message] : cases) {
    set("readparams", written("bad.prm", content));
    EXPECT_EQ(thrown<tav::UserException>([&] { solver.solve(); }).message(), inTemp("bad.prm") + ", line " + message);
  }
  EXPECT_EQ(gurobi->count(Fn::GRBreadparams), 0);
}

TEST_F(FilesOfASolveTest, ValuesAreReadAsGurobiReadsThemAndComparedAfterwards) {
  using Values = std::map<std::string, gurobi_double::ParamValue>;
  struct Case {
    const char* content;
    Values taken;
    const char* refused = "";
  };
  const std::string text511(511, 's');
  const std::string long511 = "NodefileDir " + text511;
  const std::string gurobis =
      ": Gurobi has not taken the value; there are parameters that it takes only before it starts";
  const Case cases[]{
      {"Threads 1e1#ten\nTimeLimit inf", {{"threads", 10}, {"timelimit", 1e100}}},
      {"Threads +2.0\nTimeLimit 1e999 # long", {{"threads", 2}, {"timelimit", 1e100}}},
      {"TimeLimit 5\nTimeLimit 7\ntimelimit 1e-999", {{"timelimit", 0.0}}},
      {"LogToConsole 0", {{"logtoconsole", 0}}},
      {"NodefileDir", {{"nodefiledir", ""}}},
      {"NodefileDir /a#b", {{"nodefiledir", "/a#b"}}},
      {long511.c_str(), {{"nodefiledir", text511}}},
      {"TimeLimit 5\nThreads 3\nTimeLimit 7", {{"timelimit", 7.0}}, "2: Threads"},
      {"TimeLimit 5\nTimeLimit 7", {{"timelimit", 5.0}}, "2: TimeLimit"},
      {"NodefileDir secret", {}, "1: NodefileDir"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.content);
    set("readparams", written("good.prm", c.content));
    onReading(c.taken);
    if (*c.refused == '\0') {
      EXPECT_NO_THROW(solver.solve());
    } else {
      EXPECT_EQ(messageOf([&] { solver.solve(); }), inTemp("good.prm") + ", line " + c.refused + gurobis);
      EXPECT_THAT(gurobi->takeCalls().back(), HasSubstr("param(")) << "nothing is solved";
    }
  }
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
  set("readparams", written("read.prm", "Threads 0\n"));
  gurobi->onCall(Fn::GRBreadparams, [&] { gurobi->fireLog(gurobi->model(1), "Set parameter Threads to value 2\n"); });
  EXPECT_THROW(solver.solve(), std::runtime_error);
  EXPECT_EQ(gurobi->count(Fn::GRBoptimize), 0);
}

}  // namespace
}  // namespace grb
