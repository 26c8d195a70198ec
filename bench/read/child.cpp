#include "bench/read/child.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <stdexcept>

namespace bench {

namespace {

// Starts a program whose output goes to a pipe.
pid_t start(const std::vector<std::string>& command, const std::array<int, 2>& pipe) {
  std::vector<char*> words;
  for (const std::string& word : command) words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, pipe[1], STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, pipe[0]);
  pid_t child = -1;
  const int error = posix_spawn(&child, words[0], &actions, nullptr, words.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return error == 0 ? child : -1;
}

}  // namespace

double numberFrom(const std::vector<std::string>& command) {
  std::array<int, 2> pipe{};
  if (::pipe(pipe.data()) != 0) throw std::runtime_error("no pipe can be made");
  const pid_t child = start(command, pipe);
  ::close(pipe[1]);
  std::string text;
  std::array<char, 256> buffer{};
  for (ssize_t got = 0; (got = ::read(pipe[0], buffer.data(), buffer.size())) > 0;) {
    text.append(buffer.data(), static_cast<std::size_t>(got));
  }
  ::close(pipe[0]);
  int status = -1;
  char* end = nullptr;
  const double value = std::strtod(text.c_str(), &end);
  if (child < 0 || ::waitpid(child, &status, 0) != child || status != 0 || end == text.c_str()) {
    throw std::runtime_error(fmt::format("no result from: {}", fmt::join(command, " ")));
  }
  return value;
}

}  // namespace bench
