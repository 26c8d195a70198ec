#include <cmath>
#include <limits>

#include "tav/util/cast.h"
#include "tav/util/exception.h"
#include "tav/util/number.h"
#include "tests/tav/thrown.h"

using tav::CheckException;
using tav::numCast;
using tav::util::SourceLocation;
using Size = unsigned long long;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(SourceLocationTest, TellsTheCallerAndKeepsWhatIsTold) {
  static constexpr const char* kFile = "kept as told.cpp";
  EXPECT_EQ(SourceLocation(kFile, 1, 2, "f()").file(), kFile);
  const auto here = SourceLocation::here();
  EXPECT_EQ(here.file(), "tests/tav/util_test");
  EXPECT_EQ(here.line(), __LINE__ - 2);
  EXPECT_NE(here.function().find("TestBody"), std::string_view::npos);
  EXPECT_EQ(here.inFunction("g(int)").function(), "g(int)");
  EXPECT_EQ(here.inFunction("g(int)").line(), here.line());
}

TEST(ExceptionTest, WhatLeavesAbsentPartsOut) {
  const SourceLocation at("grb/gurobi", 150, 29, "model()");
  const SourceLocation nowhere("", 0, 0, "");
  struct Case {
    tav::Exception error;
    const char* what = "";
  };
  const Case cases[] = {
      {{"Gurobi", "No license", 10009, "GRBstartenv", at},
       "Gurobi: No license [GRBstartenv, code 10009] (grb/gurobi:150)"},
      {{"Gurobi", "No license", 10009, "", at}, "Gurobi: No license [code 10009] (grb/gurobi:150)"},
      {{"Gurobi", "No license", std::nullopt, "GRBstartenv", at}, "Gurobi: No license [GRBstartenv] (grb/gurobi:150)"},
      {{"", "No license", 0, "", nowhere}, "No license [code 0]"},
      {{"Gurobi", "", std::nullopt, "", nowhere}, "Gurobi"},
      {tav::Exception("No license", at), "No license (grb/gurobi:150)"},
  };
  for (const auto& c : cases) EXPECT_STREQ(c.error.what(), c.what);
  EXPECT_EQ(cases[0].error.code(), 10009);
  EXPECT_EQ(cases[0].error.context(), "GRBstartenv");
  EXPECT_EQ(cases[0].error.location().column(), 29U);
}

TEST(CheckExceptionTest, Messages) {
  const auto text = [](const CheckException& error) { return error.message(); };
  EXPECT_EQ(text(CheckException::failedGreaterOrEqualTo("size", -1, 0)),
            "'size' (which is -1) must be greater or equal to 0.");
  EXPECT_EQ(text(CheckException::failedLessOrEqualTo("x", 2.5, {"bound", 1e100})),
            "'x' (which is 2.5) must be less or equal to 'bound' (which is 1e+100).");
  EXPECT_EQ(text(CheckException::failedLessThan("i", 7ULL, 5)), "'i' (which is 7) must be less than 5.");
  EXPECT_EQ(text(CheckException::failedGreaterThan("strlen(tag)", 0, 0)),
            "'strlen(tag)' (which is 0) must be greater than 0.");
  EXPECT_EQ(text(CheckException::failedEqualTo("kind", "variable", {"expected", "constant"})),
            "'kind' (which is variable) must be equal to 'expected' (which is constant).");
  EXPECT_EQ(text(CheckException::failedTrue("ready")), "'ready' must be true.");
  EXPECT_EQ(text(CheckException::failedFalse("ready")), "'ready' must be false.");
  EXPECT_EQ(CheckException::failedTrue("ready").location().file(), "tests/tav/util_test");
}

TEST(ExceptionTest, AUserIsToldNoPlaceInTheSource) {
  const tav::UserException error("a.opt, line 2: Threads=two");
  EXPECT_STREQ(error.what(), "a.opt, line 2: Threads=two");
  EXPECT_EQ(error.location().file(), "tests/tav/util_test");
}

TEST(NumberTest, ATextIsANumberAsAWholeOrNot) {
  struct Case {
    const char* text;
    std::optional<int> whole;
    double real;
  };
  const std::optional<int> none;
  for (const Case& c : {Case{"0", 0, 0},
                        {"-3", -3, -3},
                        {"+7", 7, 7},
                        {"007", 7, 7},
                        {"2147483647", 2147483647, 2147483647},
                        {"-2147483648", std::numeric_limits<int>::min(), -2147483648.0},
                        {"2147483648", none, 2147483648.0},
                        {"99999999999999999999", none, 1e20},
                        {"1.5", none, 1.5},
                        {"1e3", none, 1000},
                        {"1.", none, 1},
                        {"+.5", none, 0.5},
                        {"5e-324", none, std::numeric_limits<double>::denorm_min()},
                        {"1e-999", none, 0},
                        {"1e-99999999999999999999", none, 0},
                        {"1e999", none, kInf},
                        {"+1e999", none, kInf},
                        {"-1e99999999999999999999", none, -kInf},
                        {"Inf", none, kInf},
                        {"-infinity", none, -kInf}}) {
    EXPECT_EQ(tav::util::toInt(c.text), c.whole) << c.text;
    EXPECT_EQ(tav::util::toDouble(c.text), c.real) << c.text;
  }
  for (const char* text :
       {"", "+", "-", "+-3", "--3", "++3", " 1", "1 ", "1 2", "0x10", "1,5", "1e", ".", "5s", "two"}) {
    EXPECT_FALSE(tav::util::toInt(text) || tav::util::toDouble(text)) << text;
  }
  EXPECT_EQ(tav::util::toDouble(std::string(400, '9')), kInf);
  EXPECT_EQ(tav::util::toDouble("0." + std::string(400, '0') + "1"), 0);
  EXPECT_TRUE(std::isnan(tav::util::toDouble("NaN").value()));
}

TEST(NumCastTest, KeepsWhatFits) {
  EXPECT_EQ(numCast<int>(Size{2147483647}), 2147483647);
  EXPECT_EQ(numCast<Size>(0), 0U);
  EXPECT_EQ(numCast<double>(Size{1} << 53), 9007199254740992.0);
  EXPECT_EQ(numCast<double>(Size{1} << 63), 9223372036854775808.0);
  EXPECT_EQ(numCast<Size>(18446744073709549568.0), 18446744073709549568U);  // the largest double below 2^64
  EXPECT_EQ(numCast<Size>(-0.0), 0U);
  EXPECT_EQ(numCast<int>(-2147483648.0), std::numeric_limits<int>::min());
}

TEST(NumCastTest, RefusesWhatDoesNot) {
  const auto castInt = [](auto value) { return messageOf([=] { numCast<int>(value); }); };
  EXPECT_EQ(castInt(Size{2147483648}), "Cannot cast 2147483648 from 'unsigned __int64' to 'int'.");
  EXPECT_EQ(castInt(2147483648.0), "Cannot cast 2147483648 from 'double' to 'int'.");
  const auto castSize = [](auto value) { return messageOf([=] { numCast<Size>(value); }); };
  EXPECT_EQ(castSize(-1), "Cannot cast -1 from 'int' to 'unsigned __int64'.");
  EXPECT_EQ(castSize(2.5), "Cannot cast 2.5 from 'double' to 'unsigned __int64'.");
  for (const double value : {-1.0, -0.5, 18446744073709551616.0, 1e100, kInf, -kInf, kNaN}) {
    EXPECT_EQ(thrown([=] { numCast<Size>(value); }).tag(), "Cast Error") << value;
  }
  for (const Size value : {(Size{1} << 53) + 1, ~Size{0}}) {
    EXPECT_EQ(thrown([=] { numCast<double>(value); }).location().file(), "tav/util/cast") << value;
  }
}
