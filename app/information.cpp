#include "app/information.h"

#include <fmt/format.h>

#include <cstdlib>
#include <set>
#include <string>
#include <utility>

#include "app/failure.h"
#include "app/option_help.h"
#include "app/output.h"
#include "app/overwriting.h"
#include "app/own_words.h"
#include "app/run_files.h"
#include "app/session.h"
#include "app/words.h"

namespace app {

namespace {

std::string versionLine() {
  return fmt::format("grblink {} (Linux x86_64), kavo {}\n", GRBLINK_VERSION, kavo_version());
}

// The link is opened for its word about Gurobi; that there is none is an answer too.
std::string version(const Arguments& arguments) {
  const Session session;
  const int opened = kavo_open_link(session.model(), arguments.link.empty() ? nullptr : arguments.link.c_str());
  if (opened != KAVO_OK) return versionLine() + "no solver: " + kavo_last_error() + "\n";
  return versionLine() + session.solverText() + "\n";
}

std::string resultCodes() {
  std::set<std::pair<int, std::string>> rows;
  int code = 0;
  const char* message = nullptr;
  for (std::size_t i = 0; kavo_outcome_row(i, &code, &message) == KAVO_OK && message != nullptr; ++i)
    rows.emplace(code, message);
  std::string text = "code  message\n";
  for (const auto& [number, words] : rows) text += fmt::format("{:>4}  {}\n", number, words);
  return text;
}

// Lists, help and descriptions of all settings, as the link tells them. `tell` gets a session with the open link.
template <class Tell>
std::string aboutOptions(const Arguments& arguments, Tell tell) {
  Session session;
  declareOwnWords(session);
  session.openLink(arguments.link);
  return tell(session);
}

std::string optionHelp(const Arguments& arguments) {
  return aboutOptions(arguments, [&](const Session& session) {
    const SettingInfos infos = session.settingInfos();
    return arguments.topic.empty() ? helpAboutAll(infos, screenWidth())
                                   : helpAbout(infos, arguments.topic, screenWidth());
  });
}

std::string optionGroups(const Arguments& arguments) {
  constexpr std::string_view kHead =
      "Groups of options, with the number of their options. --help-options WORD explains those of a group, or those "
      "that "
      "have a word in their name or meaning; -= explains all.";
  return aboutOptions(arguments, [&](const Session& session) {
    return wrapped(kHead, 0, screenWidth()) + groupList(session.settingInfos());
  });
}

std::string describeOptions(const Arguments& arguments) {
  checkOutputs(filesOfDescription(arguments));
  return aboutOptions(arguments, [&](const Session& session) {
    check(kavo_describe_options(session.model(), arguments.description.c_str()));
    return std::string();
  });
}

std::string answer(const Arguments& arguments) {
  switch (arguments.action) {
    case Action::help:
      return helpText();
    case Action::version:
      return version(arguments);
    case Action::versionLine:
      return versionLine();
    case Action::resultCodes:
      return resultCodes();
    case Action::optionGroups:
      return optionGroups(arguments);
    case Action::optionHelp:
      return optionHelp(arguments);
    case Action::optionPage:
      return aboutOptions(arguments, [](const Session& session) { return optionPage(session.settingInfos()); });
    case Action::describeOptions:
      return describeOptions(arguments);
    default:
      return usageText();
  }
}

}  // namespace

int inform(const Arguments& arguments) {
  Output screen = Output::standard();
  screen.write(answer(arguments));
  screen.finish();
  return arguments.action == Action::bare ? kExitUsage : EXIT_SUCCESS;
}

}  // namespace app
