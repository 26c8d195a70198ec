#include "app/option_help.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>
#include <iterator>

#include "app/words.h"

namespace app {

namespace {

constexpr double kSolverInfinity = 1e100;  // and all beyond it

std::string shown(double value) {
  if (value >= kSolverInfinity) return "infinity";
  if (value <= -kSolverInfinity) return "-infinity";
  return fmt::format("{}", value);
}

std::string typeOf(const kavo_setting_info& info) {
  switch (info.type) {
    case KAVO_SETTING_INT:
      return "whole number";
    case KAVO_SETTING_DOUBLE:
      return "number";
    default:
      return "text";
  }
}

// "" when there is none.
std::string defaultOf(const kavo_setting_info& info) {
  if (info.default_text == nullptr) return "";
  const std::string text = info.default_text;
  if (info.type == KAVO_SETTING_TEXT) return text.empty() ? "empty" : text;
  return text == "1e+100" ? "infinity" : text == "-1e+100" ? "-infinity" : text;
}

std::string boundsOf(const kavo_setting_info& info) {
  return info.type == KAVO_SETTING_TEXT ? "" : fmt::format("{} to {}", shown(info.lower), shown(info.upper));
}

std::string inFull(const kavo_setting_info& info, std::size_t width) {
  std::string facts = typeOf(info);
  if (const std::string bounds = boundsOf(info); !bounds.empty()) facts += " from " + bounds;
  const std::string initial = defaultOf(info);
  facts += initial.empty() ? ", no default" : ", default " + initial;
  constexpr std::size_t kIndent = 4;
  return fmt::format("{}\n{}{}\n", info.name, wrapped(facts, kIndent, width), wrapped(info.help, kIndent, width));
}

// The groups in the order of their first settings, with their settings.
std::vector<std::pair<std::string, SettingInfos>> grouped(const SettingInfos& infos) {
  std::vector<std::pair<std::string, SettingInfos>> groups;
  for (const kavo_setting_info& info : infos) {
    auto found =
        std::find_if(groups.begin(), groups.end(), [&](const auto& group) { return group.first == info.group; });
    if (found == groups.end()) found = groups.insert(found, {info.group, {}});
    found->second.push_back(info);
  }
  return groups;
}

// A vertical bar would end the cell.
std::string cell(std::string_view text) {
  std::string escaped;
  for (const char c : text) escaped += c == '|' ? std::string("\\|") : std::string(1, c);
  return escaped;
}

std::string code(const std::string& text) { return text.empty() ? "" : "`" + text + "`"; }

}  // namespace

std::string groupList(const SettingInfos& infos) {
  std::string text;
  for (const auto& [group, members] : grouped(infos)) text += fmt::format("  {:<28}{:>4}\n", group, members.size());
  return text + fmt::format("  {:<28}{:>4}\n", "all", infos.size());
}

std::string helpAbout(const SettingInfos& infos, std::string_view word, std::size_t width) {
  SettingInfos exact, named, mentioned;
  for (const kavo_setting_info& info : infos) {
    if (isSameWord(info.name, word)) {
      exact.push_back(info);
    } else if (hasWord(info.name, word) || hasWord(info.group, word)) {
      named.push_back(info);
    } else if (hasWord(info.help, word)) {
      mentioned.push_back(info);
    }
  }
  named.insert(named.begin(), exact.begin(), exact.end());
  if (named.empty()) named.swap(mentioned);
  if (named.empty()) return fmt::format("no option has \"{}\" in its name, group or meaning\n", word);
  std::string text;
  for (const kavo_setting_info& info : named) text += inFull(info, width);
  if (mentioned.empty()) return text;
  std::vector<const char*> names;
  for (const kavo_setting_info& info : mentioned) names.push_back(info.name);
  return text + wrapped(fmt::format("Also mentioned by: {}", fmt::join(names, ", ")), 0, width);
}

std::string helpAboutAll(const SettingInfos& infos, std::size_t width) {
  std::string text;
  for (const auto& [group, members] : grouped(infos)) {
    text += fmt::format("{}{}\n{:-<{}}\n", text.empty() ? "" : "\n", group, "", group.size());
    for (const kavo_setting_info& info : members) text += inFull(info, width);
  }
  return text;
}

std::string optionPage(const SettingInfos& infos) {
  std::string page =
      "# Options\n\n"
      "Every option that `grblink` knows. [command-line.md](command-line.md) tells how they are given; names count in "
      "any\n"
      "case. `grblink --help-options WORD` shows the same text, `grblink --describe-options FILE` writes it as "
      "YAML.\n\n"
      "This page is written by the build from the catalogue in the program: `cmake --build --preset release --target\n"
      "options_page`. A test fails when it is not current.\n";
  for (const auto& [group, members] : grouped(infos)) {
    page += fmt::format("\n## {}\n\n| name | default | range | meaning |\n|---|---|---|---|\n", group);
    for (const kavo_setting_info& info : members) {
      const std::string bounds = boundsOf(info);
      const std::string range = typeOf(info) + (bounds.empty() ? "" : ", " + bounds);
      page += fmt::format("| `{}` | {} | {} | {} |\n", info.name, code(defaultOf(info)), range, cell(info.help));
    }
  }
  return page;
}

}  // namespace app
