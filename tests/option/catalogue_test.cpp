// The entries of the catalogue: their order, keys and names. That the parameters agree with Gurobi's own is checked on
// the real library.
#include "grb/option/catalogue.h"

#include <gtest/gtest.h>

#include <limits>
#include <set>

#include "grb/option/link_options.h"
#include "tav/util/fnv1a.h"

namespace grb {
namespace {

std::string inCase(std::string text, int (*change)(int)) {
  for (char& c : text) c = static_cast<char>(change(c));
  return text;
}

TEST(Catalogue, KeysFollowTheOrderOfEachKind) {
  struct Case {
    int key;
    const char* name;
  };
  const Case cases[]{{2000, "dofuncpieces"}, {2010, "varhint"},     {3000, "readparams"},    {3003, "writeprob"},
                     {4000, "Cutoff"},       {4049, "FuncMaxVal"},  {5000, "SolutionLimit"}, {5001, "Method"},
                     {5106, "OutputFlag"},   {6000, "NodefileDir"}, {6003, "ResultFile"}};
  for (const Case& c : cases) {
    ASSERT_TRUE(entryOf(c.key)) << c.key;
    EXPECT_EQ(entryOf(c.key)->info->name(), c.name);
    EXPECT_EQ(entryOf(c.key)->key(), c.key);
  }
  for (const int none : {1999, 2011, 2999, 3004, 4050, 5107, 6004, 7000, 0, -1, -2000, std::numeric_limits<int>::min(),
                         std::numeric_limits<int>::max()}) {
    EXPECT_FALSE(entryOf(none)) << none;
  }
  EXPECT_EQ(entryKeys().size(), 11u + 4u + 50u + 107u + 4u);
}

TEST(Catalogue, FindsEveryNameInAnyCaseAndNoOther) {
  std::set<std::string> names;
  for (const int key : entryKeys()) {
    const std::string name = entryOf(key)->info->name();
    EXPECT_TRUE(names.insert(inCase(name, std::tolower)).second) << name;
    EXPECT_EQ(entryOf(key)->info->maxCount(), 1) << name;
    for (const std::string& asked : {name, inCase(name, std::tolower), inCase(name, std::toupper)}) {
      ASSERT_TRUE(findEntry(asked)) << asked;
      EXPECT_EQ(findEntry(asked)->key(), key) << asked;
    }
  }
  for (const char* none : {"LogToConsole", "LogFile", "WLSToken", "Dummy", "MIPGap ", "mip gap", "MIPGa", ""}) {
    EXPECT_FALSE(findEntry(none)) << none;
  }
}

// The well-known values of this hash.
static_assert(tav::util::fnv1a("") == 0xcbf29ce484222325);
static_assert(tav::util::fnv1a("a") == 0xaf63dc4c8601ec8c);
static_assert(tav::util::fnv1a("foobar") == 0x85944171f73967e8);

// Which item of the catalogue each word stands for; their defaults and bounds are those of the documents.
TEST(OptionSet, HasTheOptionsByTheirNames) {
  const OptionSet options;
  for (const auto& [option, name] : {std::pair(IntOption::dofuncpieces, "dofuncpieces"),
                                     {IntOption::feasopt, "feasopt"},
                                     {IntOption::feasoptmode, "feasoptmode"},
                                     {IntOption::iis, "iis"},
                                     {IntOption::kappa, "kappa"},
                                     {IntOption::kappaexact, "kappaexact"},
                                     {IntOption::mipstart, "mipstart"},
                                     {IntOption::names, "names"},
                                     {IntOption::rerun, "rerun"},
                                     {IntOption::usebasis, "usebasis"},
                                     {IntOption::varhint, "varhint"}}) {
    EXPECT_EQ(options.item(option)->info()->name(), name);
  }
  for (const auto& [option, name] : {std::pair(FileOption::readparams, "readparams"),
                                     {FileOption::tuning, "tuning"},
                                     {FileOption::writeparams, "writeparams"},
                                     {FileOption::writeprob, "writeprob"}}) {
    EXPECT_EQ(options.item(option)->info()->name(), name);
    EXPECT_EQ(options.file(option), "");
    EXPECT_FALSE(options.item(option)->hasDefault());
  }
}

TEST(OptionSet, ADefaultIsNotAGivenValue) {
  const OptionSet options;
  const std::vector<OptionSet> copies(1, options);
  EXPECT_FALSE(options.isGiven(IntOption::rerun));
  EXPECT_FALSE(options.isSetTo(IntOption::rerun, -1));
  copies[0].item(IntOption::rerun)->set(-1, 0);
  EXPECT_TRUE(options.isSetTo(IntOption::rerun, -1)) << "copies share the items";
  EXPECT_FALSE(options.isSetTo(IntOption::rerun, 0));
  options.item(IntOption::rerun)->reset();
  EXPECT_FALSE(copies[0].isGiven(IntOption::rerun));
}

}  // namespace
}  // namespace grb
