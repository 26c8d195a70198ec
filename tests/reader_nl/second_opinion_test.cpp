// Every model of the corpus, and our own, reads as the AMPL library reads it.
#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "kavo/reader/reader.h"
#include "tests/reader_nl/model_of_all.h"
#include "tests/reader_nl/nl_text.h"
#include "tests/reader_nl/plain.h"
#include "tests/readers/folder.h"

namespace kavo::reader {
namespace {

using kavo_test::Folder;

namespace fs = std::filesystem;

void expectSame(const std::string& path) {
  SCOPED_TRACE(path);
  EXPECT_EQ(plain(readNl(path)).text(), readWithAmplLibrary(path).text());
}

TEST(AmplLibrary, ReadsOurModelsAsWeDo) {
  const std::string defined = header({.variables = 2,
                                      .constraints = 1,
                                      .nonlinearConstraints = 1,
                                      .inConstraints = 2,
                                      .nonzeros = 2,
                                      .defined = 3}) +
                              "V2 2 0\n0 3\n1 0.5\nn0\nV3 1 0\n0 1\no2\nv0\nv2\nV4 2 1\n0 1\n1 2\no43\nv3\n"
                              "C0\no0\no43\nv4\nv3\nr\n3\nb\n3\n3\nk1\n1\nJ0 2\n0 0\n1 0\n";
  const std::string complements = header({.variables = 2, .constraints = 4}) +
                                  "C0\nn0\nC1\nn3\nC2\nn0\nC3\nn0\nr\n5 1 2\n5 2 1\n5 3 1\n5 0 2\nb\n3\n3\n";
  const std::string constants =
      header({.variables = 1, .constraints = 3, .objectives = 2, .logical = 1, .gradients = 1}) +
      "r\n0 1 2\n1 5\n3\nC0\nn5\nC1\nn-0.5\nC2\nn4\nL0\nn1\nO1 1\nn2.5\nO0 0\nn0\nb\n3\nG1 1\n0 4\n";
  const auto counted = [](std::string text, const std::string& counts, const std::string& by) {
    return text.replace(text.find(counts), counts.size(), by);
  };
  const Folder folder;
  for (const std::string& text : {
           textOfAll(),
           bytesOfAll(false),
           bytesOfAll(true),
           constants,
           // Two defined variables that several constraints use, one that only one uses: the library wants to know.
           counted(defined, " 3 0 0 0 0\n", " 0 2 0 1 0\n"),
           counted(complements, " 0 0\n", " 0 0 4 0 0 0\n"),
       }) {
    expectSame(folder.write("model.nl", text));
  }
}

TEST(AmplLibrary, ReadsOurTreesAsWeDo) {
  const char* const trees[] = {
      "v0\n",
      "o5\t#^\nv0\nn2\n",
      "o5\nv0\nn3\n",
      "o5\nn2\nv0\n",
      "o5\nn2\nn2\n",
      "o5\nv0\nv0\n",
      "o5\no16\nv0\no0\nv0\nn1\n",
      "o1\no16\nv0\no3\nn1.5\nn-3\n",
      "o54\n3\nv0\nn7\no2\nv0\nv0\n",
      "o35\no21\no23\nv0\nn1\no34\no24\nv0\nn0\nv0\no12\n1\nv0\n",
      "o72\no20\nn0\nv0\nn1\nn0\n",
      "o62\nn1\no59\n2\no28\nv0\nn1\no30\nv0\nn2\n",
      "o60\n2\nn1\nv0\n",
      "o64\n2\nn-1\nn3\nn2\nv0\n",
      "o70\n3\nn1\nn1\no73\nn1\nn0\n",
      "o61\n1\no65\nv0\nn0\nn1\n",
      "o61\n3\nh1:a\nh1:b\nv0\n",
  };
  const Folder folder;
  for (const char* tree : trees) expectSame(folder.write("tree.nl", withBody(tree)));
  for (int number = 0; number < 75; ++number) {
    if (operatorName(number).empty() || number == 64 || number == 65) continue;
    const int operands = arity(number) < 0 ? 3 : arity(number);
    std::string tree = fmt::format("o{}\n{}", number, arity(number) < 0 ? "3\n" : "");
    for (int k = 0; k < operands; ++k) tree += k % 2 == 0 ? "v0\n" : "n3\n";
    expectSame(folder.write("operator.nl", withBody(tree)));
  }
  const std::string functions = "F0 1 -3 pick\nF1 0 1 twice\nF2 0 0 pi\n";
  expectSame(folder.write("functions.nl", withBody("o0\nf0 3\nh5:a\nb:c\no65\nv0\nh1:z\nn1\nf1 1\nv0\nf2 0\n",
                                                   functions, {.functions = 3})));
}

TEST(AmplLibrary, ReadsTheCorpusAsWeDo) {
  const char* given = std::getenv("GRBLINK_MODELS");
  const fs::path corpus = fs::path(given != nullptr ? given : GRBLINK_SOURCE_DIR "/../shared/models") / "nl";
  if (!fs::is_directory(corpus)) {
    const char* ci = std::getenv("CI");
    ASSERT_FALSE(ci != nullptr && std::string(ci) == "true") << "no corpus in " << corpus << "; set GRBLINK_MODELS";
    std::puts("the corpus of .nl files was not run: set GRBLINK_MODELS to its folder");
    return;
  }
  // The library refuses models without variables.
  const std::set<std::string> empty = {"py_mpec_cov3.nl"};
  std::vector<fs::path> paths;
  for (const auto& entry : fs::directory_iterator(corpus)) {
    if (entry.path().extension() == ".nl") paths.push_back(entry.path());
  }
  std::sort(paths.begin(), paths.end());
  for (const fs::path& path : paths) {
    if (empty.contains(path.filename())) {
      EXPECT_EQ(readNl(path).columns.size(), 0u);
    } else {
      expectSame(path);
    }
  }
  EXPECT_GT(paths.size(), 100u);
  std::printf("%zu models of the corpus were compared\n", paths.size() - empty.size());
}

}  // namespace
}  // namespace kavo::reader
