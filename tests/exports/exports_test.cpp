#include "exports/exports.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <sstream>
#include <thread>

#include "brel/link.h"
#include "exports/plugins.h"
#include "exports/process.h"
#include "grb/gurobi/library.h"
#include "grb/solver.h"

namespace exports {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string outputOf(const std::string& command) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> pipe(popen(command.c_str(), "r"), pclose);
  std::string text;
  for (int c = pipe ? std::getc(pipe.get()) : EOF; c != EOF; c = std::getc(pipe.get())) text += static_cast<char>(c);
  return text;
}

TEST(Library, DefinesItsSevenFunctionsAndNothingElse) {
  std::istringstream table(outputOf(NM " -D --defined-only " GRBLINK_LIBRARY));
  std::set<std::string> defined;
  for (std::string address, kind, name; table >> address >> kind >> name;) defined.insert(kind + " " + name);
  EXPECT_THAT(defined, ElementsAre("T grbCallSolver", "T grbCreate", "T grbFree", "T grbModifyProblem", "T grbReadyAPI",
                                   "T grbSolverCreate", "T grbSolverFree"));
}

TEST(PluginDefinition, SwitchesAllPluginsOnTheWriteBackLast) {
  const brel::LinkDef definition = pluginDefinition();
  std::vector<int> enabled;
  for (const brel::Plugin plugin : definition.enabled()) enabled.push_back(static_cast<int>(plugin));
  EXPECT_THAT(enabled, ElementsAre(0, 1, 3, 4, 5, 6, 7, 8, 9, 10, 2));
}

// Without a Gurobi library, whose absence is the failure that hosts meet.
class WithoutGurobi : public testing::Test {
 public:
  WithoutGurobi() { setenv("GRBLINK_GUROBI", "/nonexistent/libgurobi.so", 1); }
  ~WithoutGurobi() override { unsetenv("GRBLINK_GUROBI"); }

  // What a call leaves in a buffer of '#'.
  std::string create(std::size_t room, int length) {
    std::string buffer(room, '#');
    brel::Link* const before = reinterpret_cast<brel::Link*>(&buffer);
    brel::Link* slot = before;
    EXPECT_EQ(grbCreate(&slot, buffer.data(), length), 1);
    EXPECT_EQ(slot, before) << "the slot is not written";
    return buffer;
  }
};

TEST_F(WithoutGurobi, CreateTellsWhyAsFarAsTheBufferReaches) {
  std::string message = create(4096, 4096);
  message.resize(message.find('\0'));
  EXPECT_THAT(message, HasSubstr("/nonexistent/libgurobi.so"));
  const int length = static_cast<int>(message.size());
  const std::size_t room = message.size() + 5;
  EXPECT_EQ(create(room, length + 1), message + '\0' + "####") << "with room for the zero there is one";
  EXPECT_EQ(create(room, length), message + "#####") << "a text that fills the buffer has none";
  EXPECT_EQ(create(room, 4), message.substr(0, 4) + std::string(room - 4, '#'));
  EXPECT_EQ(create(room, 0), std::string(room, '#'));
  EXPECT_EQ(create(room, -1), std::string(room, '#'));
  brel::Link* slot = nullptr;
  EXPECT_EQ(grbCreate(&slot, nullptr, 10), 1);
}

TEST_F(WithoutGurobi, SolverCreateRaises) { EXPECT_THROW(grbSolverCreate(), grb::LoadError); }

TEST(Exports, FreeingNothingIsHarmless) {
  brel::Link* slot = nullptr;
  grbFree(&slot);
  grbFree(&slot);
  EXPECT_EQ(slot, nullptr);
  grbSolverFree(nullptr);
}

TEST(Process, MakesItsThreeSectionsOnceAndTakesThemAway) {
  const auto isHeldElsewhere = [](const std::recursive_mutex& section) {
    bool taken = false;
    auto& mutex = const_cast<std::recursive_mutex&>(section);
    std::thread([&] {
      taken = mutex.try_lock();
      if (taken) mutex.unlock();
    }).join();
    return !taken;
  };
  const Process::Sections& sections = Process::sections();
  for (const auto& section : sections) ASSERT_TRUE(section) << "made when the code was loaded";
  auto& first = const_cast<std::recursive_mutex&>(*sections.front());
  first.lock();
  first.lock();
  Process::attach();
  EXPECT_TRUE(isHeldElsewhere(first)) << "not made anew";
  EXPECT_FALSE(isHeldElsewhere(*sections.back()));
  first.unlock();
  first.unlock();
  for (int i = 0; i < 2; ++i) {
    Process::detach();
    for (const auto& section : sections) EXPECT_FALSE(section);
  }
  Process::attach();
  for (const auto& section : sections) EXPECT_TRUE(section);
}

}  // namespace
}  // namespace exports
