#include "app/arguments.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>

#include "app/failure.h"

namespace app {

namespace {

constexpr const char* kSwitches = R"(Switches of the AMPL protocol:
  MODEL -AMPL   solve for AMPL, Pyomo or JuMP: always write a .sol, print nothing
  -s            write a .sol (the default; see wantsol)
  -oFILE        name of the .sol
  -e            do not echo assignments (they never are)
  -=            explain all options
  -=WORD        the same as --help-options WORD
  -v            print the version
  -?            print the usage
  -!            print the result codes of a .sol
  --            end of the options

Options are given by words name=value behind the model, in option files (--options), and in the environment variable
grblink_options; words win over files, and files over the environment. --help-options lists what there is; name=? shows
the value in force.
)";

// The long options; single-dash switches are not CLI11's business.
void declare(CLI::App& cli, Arguments& arguments, std::vector<std::string>& positional) {
  cli.set_help_flag();
  cli.add_flag("--quiet", arguments.quiet, "print nothing but errors");
  cli.add_flag("--progress", arguments.progress, "show one status line in place of the log, in a terminal");
  cli.add_flag("--statistics", arguments.statistics, "tell the sizes of the model before it is solved");
  cli.add_flag("--ranges", arguments.ranges, "print the ranges of costs, bounds and sides after the solve");
  cli.add_flag("--no-sol", arguments.noSol, "write no solution file");
  cli.add_option("--json", arguments.json, "write everything known about the result as JSON")->type_name("FILE");
  cli.add_option("--report", arguments.report, "write a page in HTML about model, search and result")
      ->type_name("FILE");
  cli.add_option("--log", arguments.log, "write the solver's log to a file")->type_name("FILE");
  cli.add_option("--trace", arguments.trace, "write every call of the Gurobi library to a file")->type_name("FILE");
  cli.add_option("--link", arguments.link, "use another link library than libgrblink.so")->type_name("PATH");
  cli.add_option("--options", arguments.options, "read an option file with a line \"name value\" for each option")
      ->type_name("FILE")
      ->allow_extra_args(false)
      ->take_all();
  const auto action = [&](Action chosen) { return [&arguments, chosen](auto) { arguments.action = chosen; }; };
  cli.add_option("--help-options", arguments.topic, "list the groups of options, or explain those about a word")
      ->type_name("[WORD]")
      ->expected(0, 1);
  cli.add_flag("--option-page", action(Action::optionPage), "print a page in Markdown about all options");
  cli.add_option("--describe-options", arguments.description, "write what is known of all options as YAML")
      ->type_name("FILE");
  cli.add_flag("--version", action(Action::version), "print the version and the Gurobi library in use");
  cli.add_flag("--help", action(Action::help), "print this text");
  cli.add_option("MODEL", positional, "a .nl, .mps or .lp file (.mps.gz, .lp.gz), and words name=value behind it")
      ->type_name("");
}

// Takes a single-dash switch.
void takeSwitch(const std::string& word, Arguments& arguments) {
  if (word == "-AMPL") {
    arguments.ampl = true;
  } else if (word == "-v") {
    arguments.action = Action::versionLine;
  } else if (word == "-?") {
    arguments.action = Action::usage;
  } else if (word == "-h") {
    arguments.action = Action::help;
  } else if (word == "-!") {
    arguments.action = Action::resultCodes;
  } else if (word.starts_with("-=")) {
    arguments.action = Action::optionHelp;
    arguments.topic = word.substr(2);
  } else if (word == "-s") {
    arguments.writeSol = true;
  } else if (word.starts_with("-o") && word.size() > 2) {
    arguments.sol = word.substr(2);
  } else if (word != "-e") {
    throw Failure(fmt::format("unknown option {}: see --help", word), kExitUsage);
  }
}

bool isSwitch(const std::string& word) { return word.size() > 1 && word[0] == '-' && word[1] != '-'; }

// Takes the switches out of the words and leaves the others, for CLI11 in reverse order.
std::vector<std::string> takeSwitches(std::vector<std::string> words, Arguments& arguments) {
  std::vector<std::string> others;
  auto word = words.begin();
  for (; word != words.end() && *word != "--" && !arguments.ampl; ++word) {
    isSwitch(*word) ? takeSwitch(*word, arguments) : others.push_back(*word);
  }
  others.insert(others.end(), word, words.end());
  std::reverse(others.begin(), others.end());
  return others;
}

// An empty name of a file, such as that of a variable which is not set, asks for an output that nobody would get.
void requireValues(const CLI::App& cli) {
  for (const CLI::Option* option : cli.get_options()) {
    if (option->get_positional() || option->get_expected_min() == 0) continue;
    const auto& values = option->results();
    if (std::find(values.begin(), values.end(), "") == values.end()) continue;
    throw Failure(fmt::format("{} is given an empty name: see --help", option->get_name()), kExitUsage);
  }
}

}  // namespace

Arguments parseArguments(int count, const char* const* words) {
  Arguments arguments;
  if (count <= 1) {
    arguments.action = Action::bare;
    return arguments;
  }
  CLI::App cli;
  std::vector<std::string> positional;
  declare(cli, arguments, positional);
  try {
    cli.parse(takeSwitches({words + 1, words + count}, arguments));
  } catch (const CLI::ParseError& error) {
    throw Failure(oneLine(error.what()) + ": see --help", kExitUsage);
  }
  requireValues(cli);
  if (cli.count("--describe-options") > 0) arguments.action = Action::describeOptions;
  if (cli.count("--help-options") > 0) {
    arguments.action = arguments.topic.empty() ? Action::optionGroups : Action::optionHelp;
  }
  if (!positional.empty()) arguments.model = positional.front();
  if (arguments.action != Action::solve) return arguments;
  if (positional.empty()) throw Failure("no model was given: see --help", kExitUsage);
  arguments.words.assign(positional.begin() + 1, positional.end());
  return arguments;
}

const char* amplModel(int count, const char* const* words) {
  for (int i = 2; i < count; ++i) {
    if (std::string_view(words[i]) == "-AMPL") return words[i - 1];
  }
  return nullptr;
}

std::string usageText() {
  return "usage: grblink [options] stub [-AMPL] [<assignment> ...]\n"
         "       grblink [options] MODEL [name=value ...]        (grblink --help tells more)\n";
}

std::string helpText() {
  CLI::App cli;
  Arguments arguments;
  std::vector<std::string> positional;
  declare(cli, arguments, positional);
  std::string text = "Solves a model with the Gurobi Optimizer.\n\n" + usageText() + "\nOptions:\n";
  for (const CLI::Option* option : cli.get_options()) {
    if (option->get_positional()) continue;
    text += fmt::format("  {:<25}{}\n", option->get_name() + " " + option->get_type_name(), option->get_description());
  }
  return text + "\n" + kSwitches;
}

}  // namespace app
