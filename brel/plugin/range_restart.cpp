#include <fmt/core.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>

#include "brel/host.h"
#include "brel/plugin/plugins.h"
#include "brel/plugin/writable.h"
#include "brel/result/stored.h"
#include "brel/result/write_back.h"
#include "tav/util/exception.h"

namespace brel::plugin {
namespace {

using settings::PluginAttribute;

void note(Solve& solve, const std::string& line) { kavo_link_note(solve.host, line.c_str()); }

// Of the options that were given, those that ask for something which only a solve can give.
std::string withoutEffect(const settings::Given& given) {
  constexpr std::string_view kNames[] = {"dumpbcsol",     "feasopt",   "iis",         "kappa",      "kappaexact",
                                         "miptrace",      "pool",      "solvefixed",  "statistics", "tuning",
                                         "multimipstart", "writeprob", "writeparams", "ResultFile", "SolFiles"};
  std::string names;
  for (const settings::Checked& setting : given.settings) {
    const std::string& name = setting.row->name();
    if (std::find(std::begin(kNames), std::end(kNames), name) == std::end(kNames)) continue;
    names += (names.empty() ? "" : ", ") + name;
  }
  return names;
}

// Results with their sensitivity ranges go to a file, and come from it without a solve.
class RangeRestart : public AbstractPlugin {
 public:
  void prepare(Solve& solve) override {
    target_ = solve.values.text(PluginAttribute::rangeFile);
    const std::string source = solve.values.text(PluginAttribute::rangeSource);
    if (solve.choices.allObjectives && !(source.empty() && target_.empty())) {
      throw tav::UserException(
          fmt::format("{} is for one objective and multobj 1 solves several; leave one of them out",
                      source.empty() ? "rngrestart" : "rngread"));
    }
    if (!source.empty()) return readBack(solve, source);
    if (target_.empty()) return;
    checkWritable(solve, PluginAttribute::rangeFile, target_);
    solve.values.set(PluginAttribute::ranges, 1);
  }

  void finish(Solve& solve) override {
    if (target_.empty()) return;
    const std::string text = result::stored(solve.model.user, solve.result);
    if (kavo_link_write_file(target_.c_str(), text.data(), text.size()) == KAVO_OK) return;
    const std::string why = solve.values.heading(PluginAttribute::rangeFile) + kavo_last_error();
    kavo_link_lost_file(solve.host, why.c_str());
  }

 private:
  void readBack(Solve& solve, const std::string& source) const {
    const UserModel& user = solve.model.user;
    solve.result = result::readStored(user, source);
    if (kavo_link_has_result(solve.host, KAVO_PRIMAL) != 0) {
      double* values = nullptr;
      std::size_t count = 0;
      checkHost(kavo_link_result(solve.host, KAVO_PRIMAL, &values, &count));
      result::tellPoint(user, rewrite::UserPoint(user, {values, count}));
    }
    checkHost(kavo_link_finish(solve.host, &solve.result));
    note(solve, fmt::format("the results were read from {}; nothing was solved", source));
    if (!target_.empty()) note(solve, fmt::format("{} was not written: nothing was solved", target_));
    if (const std::string others = withoutEffect(solve.given); !others.empty()) {
      note(solve, fmt::format("rngread leaves these options without effect: {}", others));
    }
    solve.isDone = true;
  }

  std::string target_;
};

}  // namespace

std::unique_ptr<AbstractPlugin> rangeRestart() { return std::make_unique<RangeRestart>(); }

}  // namespace brel::plugin
