#include <fmt/core.h>

#include <filesystem>
#include <fstream>
#include <limits>

#include "brel/host.h"
#include "brel/plugin/plugins.h"
#include "tav/util/exception.h"

namespace brel::plugin {
namespace {

using settings::PluginAttribute;

constexpr const char* kSwitch = "mipstart";

std::string trimmed(const std::string& line) {
  constexpr const char* kBlanks = " \t\r\n";
  const auto first = line.find_first_not_of(kBlanks);
  return first == std::string::npos ? std::string() : line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
}

// Points from files that a file lists, as starts of the search.
class MultipleStarts : public AbstractPlugin {
 public:
  void prepare(Solve& solve) override {
    list_ = solve.values.text(PluginAttribute::startFiles);
    if (list_.empty()) return;
    readList(solve);
    if (kavo_link_starts_withheld(solve.host) != 0) return note(solve, "are withheld, as the basis ratio is 1");
    switchOn(solve);
  }

 private:
  void readList(Solve& solve) {
    std::ifstream list(list_);
    if (!list) fail(solve, "cannot be read");
    std::string line;
    for (int number = 1; std::getline(list, line); ++number) {
      const std::string name = trimmed(line);
      if (name.empty() || name.front() == '#') continue;
      readStart(solve, std::filesystem::path(list_).parent_path() / name, number);
    }
    if (list.bad()) fail(solve, "cannot be read");
    if (solve.choices.mipStarts.empty()) fail(solve, "names no file");
  }

  [[noreturn]] void fail(const Solve& solve, const char* what) const {
    throw tav::UserException(
        fmt::format("{}the list {} {}", solve.values.heading(PluginAttribute::startFiles), list_, what));
  }

  // line: of the list.
  void readStart(Solve& solve, const std::filesystem::path& file, int line) const {
    std::vector<double> values(solve.model.user.columns.count, std::numeric_limits<double>::quiet_NaN());
    std::size_t unknown = 0;
    if (kavo_read_point(solve.host, file.c_str(), values.data(), &unknown) != KAVO_OK) {
      throw tav::UserException(fmt::format("{}, line {}: {}", list_, line, kavo_last_error()));
    }
    if (unknown > 0) {
      const auto text = fmt::format("{}: {} of its names {} no variable of the model", file.string(), unknown,
                                    unknown == 1 ? "is" : "are");
      kavo_link_note(solve.host, text.c_str());
    }
    solve.choices.mipStarts.push_back(std::move(values));
  }

  // Who names starts wants them used, unless he says that he does not.
  void switchOn(Solve& solve) const {
    const auto given = settings::wholeNumber(solve.given, kSwitch);
    if (given == 0) return note(solve, "are not used, as mipstart is 0");
    const settings::Row* row = solve.table.find(kSwitch);
    if (!given && row != nullptr) solve.given.settings.push_back({row, 1});
  }

  void note(Solve& solve, const char* what) const {
    solve.choices.mipStarts.clear();
    kavo_link_note(solve.host, fmt::format("the starts that {} lists {}", list_, what).c_str());
  }

  std::string list_;
};

}  // namespace

std::unique_ptr<AbstractPlugin> multipleStarts() { return std::make_unique<MultipleStarts>(); }

}  // namespace brel::plugin
