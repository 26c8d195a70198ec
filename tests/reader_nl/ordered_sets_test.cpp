// Special ordered sets by suffixes of the variables.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "tests/reader_nl/nl_text.h"

namespace kavo::reader {
namespace {

// Eight free variables and these suffixes.
std::string withSuffixes(const std::string& suffixes) {
  std::string text = header({.variables = 8}) + suffixes + "b\n";
  for (int i = 0; i < 8; ++i) text += "3\n";
  return text;
}

std::string sets(const Model& model) {
  std::string text;
  for (std::size_t s = 0; s < model.sets.size(); ++s) {
    text += fmt::format("type {}:", model.sets.type[s]);
    for (std::size_t k = model.sets.start[s]; k < model.sets.start[s + 1]; ++k) {
      text += fmt::format(" {}@{}", model.sets.column[k], model.sets.weight[k]);
    }
    text += "; ";
  }
  return text;
}

// The AMPL library takes the same sets from such files.
TEST(NlOrderedSets, OfSuffixes) {
  const std::string modelers = "S0 6 sosno\n6 -1\n3 -1\n0 2\n1 -1\n2 2\n5 0\n", order = "S4 3 ref\n0 4\n3 -0.5\n6 9\n";
  // Variable 7 stands for set 1 and is no member; variable 6 has weight 0.
  const std::string ampls = "S4 2 sosref\n4 2\n5 1\nS0 4 sos\n7 18\n6 17\n4 17\n5 17\n";
  const std::string ofModeler = "type 2: 3@-0.5 1@0 6@9; type 1: 2@0 0@4; ", ofAmpl = "type 2: 6@0 5@1 4@2; ";
  const std::pair<std::string, std::string> cases[] = {
      {modelers + order, ofModeler},
      {ampls, ofAmpl},
      {ampls + order + modelers, ofModeler + ofAmpl},
      {"S4 2 sosno\n0 1.5\n1 1.5\nS0 1 ref\n0 3\n", "type 1: 1@0 0@3; "},
      {"S0 2 sos\n0 20\n1 20\nS0 1 sosref\n0 3\n", "type 1: 1@0 0@3; "},
      {order, ""},
      {"S0 1 sosno\n0 0\nS1 0 sosno\n", ""},
  };
  for (const auto& [suffixes, expected] : cases) {
    const Model model = fromText(withSuffixes(suffixes));
    EXPECT_EQ(sets(model), expected) << suffixes;
    EXPECT_TRUE(model.readNotes.empty());
  }
}

TEST(NlOrderedSets, OfOneVariableRestrictNothing) {
  const Model model = fromText(withSuffixes("S0 4 sosno\n0 1\n1 2\n2 2\n3 -7\nS0 1 ref\n1 1\n"));
  EXPECT_EQ(sets(model), "type 1: 2@0 1@1; ");
  EXPECT_THAT(
      model.readNotes,
      testing::ElementsAre("2 special ordered sets of one variable only, which restricts nothing, are left out"));
}

TEST(NlOrderedSets, Bad) {
  const std::pair<const char*, const char*> cases[] = {
      {"S0 2 sosno\n0 1\n1 1\n", "suffix sosno: the order of the sets is missing, the suffix ref"},
      {"S0 2 sos\n0 17\n1 17\n", "suffix sos: the order of the sets is missing, the suffix sosref"},
      {"S0 3 sosno\n0 1\n1 2\n2 1\nS0 3 ref\n0 5\n1 5\n2 5\n",
       "suffix ref: variables 0 and 2 of the same set have the same weight 5"},
      {"S0 2 sosno\n0 1\n1 1\nS4 1 ref\n1 inf\n", "suffix ref: variable 1 has an infinite value"},
      {"S0 2 sos\n0 17\n1 1\nS0 0 sosref\n", "suffix sos: variable 1 has the value 1, which names no set"},
      {"S4 2 sos\n0 17\n1 17.5\nS0 0 sosref\n", "suffix sos: variable 1 has the value 17.5, which names no set"},
      {"S0 1 sos\n1 -16\nS0 0 sosref\n", "suffix sos: variable 1 has the value -16, which names no set"},
  };
  for (const auto& [suffixes, message] : cases) {
    EXPECT_EQ(failure(withSuffixes(suffixes)), std::string("m.nl, ") + message);
  }
}

}  // namespace
}  // namespace kavo::reader
