// One model written in many ways.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>

#include "tests/reader_mps/mps_text.h"

namespace kavo::reader {
namespace {

const char* const kModel =
    "max cost: 1 x 15 y +7\n"
    "lim1 [6, 10]: 2 x 2.5 y\n"
    "lim2 [3, inf]: -0.5 x\n"
    "x C [-inf, 4]\n"
    "y I [0, 1]\n";

std::string replaced(const std::string& text, const char* pattern, const char* by) {
  return std::regex_replace(text, std::regex(pattern), by);
}

TEST(MpsLayout, TakesOneModelWrittenInManyWays) {
  std::string comment = "*";
  comment.resize(std::size_t{5} << 20, '.');
  comment += '\n';
  const std::pair<const char*, std::string> cases[] = {
      {"fixed columns", kSample},
      {"single blanks", replaced(kSample, " +", " ")},
      {"tabs", replaced(replaced(kSample, " +", "\t"), "diet\tplan", "diet plan")},
      {"carriage returns", replaced(kSample, "\n", "\r\n")},
      {"comments and blank lines", "\n* a comment\n" + replaced(kSample, "\n", "\n*\tx y z \x01\n  \n")},
      {"more text than is kept mapped", replaced(kSample, "COLUMNS", (comment + "COLUMNS").c_str())},
      {"no newline at the end", kSample.substr(0, kSample.size() - 1)},
      {"text behind the end", kSample + "IMPORTANCES\nx 3\n\x02"},
      {"byte order mark", "\xEF\xBB\xBF" + kSample},
      {"section names in small letters", replaced(replaced(kSample, "ROWS", "rows"), "BOUNDS", "Bounds")},
      {"types in small letters", replaced(replaced(kSample, " L ", " l "), " UP ", " up ")},
      {"sense beside its name", replaced(kSample, "OBJSENSE\n +MAX", "OBJSENSE maximize")},
      {"sense before the name", "OBJSENSE MAXIMIZE\n" + replaced(kSample, "OBJSENSE\n +MAX\n", "")},
      {"sets without name", replaced(kSample, "( RHS  | RNG  | BND  )", "")},
      {"sets without name in some lines", replaced(kSample, " RHS       cost", "           cost")},
      {"a name for the format", replaced(kSample, "diet plan", "diet plan  FREE")},
      {"exponent letter of Fortran", replaced(kSample, "1.5e1", "1.5D1")},
      {"sections in another order", replaced(kSample, "(RHS\n[^]*)(RANGES[^]*)(BOUNDS[^]*)(ENDATA)", "$3$2$1$4")},
  };
  for (const auto& [what, text] : cases) {
    for (const char* file : {"model.mps", "model.mps.gz"}) {
      SCOPED_TRACE(fmt::format("{} in {}\n{}", what, file, text.substr(0, 2000)));
      const Model model = readText(text, file);
      EXPECT_EQ(describe(model), kModel);
      EXPECT_EQ(model.name, "diet plan");
      EXPECT_FALSE(model.ampl);
    }
  }
}

TEST(MpsLayout, TakesNamesWithBlanksFromFixedColumns) {
  EXPECT_EQ(describe(readText(kBlankSample)),
            "min the cost: 1 x 1 4 i\n"
            "at most [5, 7]: 2 x 1\n"
            "12 3 [8, 8]: 3 x 1\n"
            "x 1 C [-inf, inf]\n"
            "i I [0, 9]\n");

  const std::string shape = "line 8, section COLUMNS: expected column, row";
  const std::pair<std::string, std::string> bad[] = {
      {replaced(kBlankSample, "12 3      +3", "12 4               3"),
       "line 8, section COLUMNS: there is no row \"12 4\""},
      {replaced(kBlankSample, "x 1       12", "x 1      12"), shape},
      {replaced(kBlankSample, "x 1       12", "x 1      \t12"), shape},
      {replaced(kBlankSample, "x 1       12", "          12"), shape},
      {replaced(kBlankSample, "x 1       12 3", "x 1           "), "line 8, section COLUMNS: there is no row \"\""},
      // Neither way of reading comes further than this line.
      {replaced(kBlankSample, "the cost", "the  cost  of it"),
       "line 3, section ROWS: expected type and name of a row, found"},
  };
  for (const auto& [text, message] : bad) EXPECT_THAT(messageOf(text), testing::HasSubstr(message)) << text;
}

}  // namespace
}  // namespace kavo::reader
