#include "brel/settings/settings.h"

#include <fmt/core.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <type_traits>
#include <unordered_map>

#include "brel/host.h"
#include "brel/settings/rewrite_settings.h"
#include "brel/settings/text.h"
#include "tav/attr/lib/allowed.h"
#include "tav/attr/lib/range_info.h"
#include "tav/opt/solver_services.h"
#include "tav/util/number.h"

namespace brel::settings {
namespace {

namespace lib = tav::attr::lib;

// "command line: " or "run.opt, line 3: ", as far as it is known.
std::string place(const kavo_setting& setting) {
  if (*setting.source == '\0') return {};
  return setting.line > 0 ? fmt::format("{}, line {}: ", setting.source, setting.line)
                          : fmt::format("{}: ", setting.source);
}

[[noreturn]] void refuse(const kavo_setting& setting, const std::string& why) {
  throw tav::UserException(place(setting) + why);
}

// "inf" is the largest number that a solver takes for infinity.
std::optional<double> number(std::string_view text, const lib::RangeInfo<double>& /*info*/) {
  const auto value = tav::util::toDouble(text);
  return value ? std::optional(std::clamp(*value, -lib::kSolverInfinity, lib::kSolverInfinity)) : value;
}
std::optional<int> number(std::string_view text, const lib::RangeInfo<int>& /*info*/) { return tav::util::toInt(text); }

template <class T>
T checkedNumber(const kavo_setting& setting, const lib::RangeInfo<T>& info) {
  const auto value = number(setting.value, info);
  if (value && info.accepts(*value)) return *value;
  refuse(setting,
         fmt::format("{}={}: the value must be {}", info.name(), shortened(setting.value), lib::allowed(info)));
}

std::size_t longestText(const Row& row, const tav::opt::AbstractSolver& solver) {
  const auto* services = dynamic_cast<const tav::opt::AbstractSolverServices*>(&solver);
  return services != nullptr && row.owner == Owner::solver ? services->longestText(row.key) : std::string().max_size();
}

// A text that is refused is not shown: it is long, and it may be secret.
std::string checkedText(const kavo_setting& setting, const Row& row, const tav::opt::AbstractSolver& solver) {
  std::string text(setting.value);
  const std::size_t longest = longestText(row, solver);
  if (text.size() <= longest) return text;
  refuse(setting, fmt::format("{}: the text has {} bytes and may have {}", row.name(), text.size(), longest));
}

Checked checkedValue(const kavo_setting& setting, const Row& row, const tav::opt::AbstractSolver& solver) {
  if (const auto* range = dynamic_cast<const lib::RangeInfo<int>*>(row.info.get())) {
    return {&row, checkedNumber(setting, *range), place(setting)};
  }
  if (const auto* range = dynamic_cast<const lib::RangeInfo<double>*>(row.info.get())) {
    return {&row, checkedNumber(setting, *range), place(setting)};
  }
  return {&row, checkedText(setting, row, solver), place(setting)};
}

[[noreturn]] void refuseUnknown(const kavo_setting& setting, const Table& table) {
  const auto near = table.namesNear(setting.name);
  const std::string suggestion =
      near.empty() ? "" : fmt::format("; did you mean {}?", fmt::join(near, near.size() == 2 ? " or " : ", "));
  refuse(setting, fmt::format("unknown option '{}'{}", shortened(setting.name), suggestion));
}

// Whether the solver has a parameter of this name, although the table leaves it out.
bool isWithheld(const kavo_setting& setting, const tav::opt::AbstractSolver& solver) {
  const auto* services = dynamic_cast<const tav::opt::AbstractSolverServices*>(&solver);
  return services != nullptr && services->knowsParameter(setting.name);
}

// Words that the host acts on itself do not come here; those of plug-ins do.
void requireActing(const kavo_setting& setting, const Row& row, const Table& table) {
  if (row.owner != Owner::plugin) return;
  const PluginSetting& plugin = table.plugins()[static_cast<std::size_t>(row.key)];
  if (plugin.acts) return;
  refuse(setting, fmt::format("the option '{}' is reserved for plug-in {} and has no effect", row.name(),
                              static_cast<int>(plugin.plugin)));
}

// Collects settings; of one name the last stays.
class Collector {
 public:
  void add(Checked checked) {
    const auto [found, isNew] = places_.emplace(checked.row, all_.size());
    if (!isNew) all_[found->second].row = nullptr;
    found->second = all_.size();
    all_.push_back(std::move(checked));
  }

  std::vector<Checked> take() {
    std::erase_if(all_, [](const Checked& checked) { return checked.row == nullptr; });
    return std::move(all_);
  }

 private:
  std::vector<Checked> all_;
  std::unordered_map<const Row*, std::size_t> places_;
};

bool isEarly(const Row& row, const tav::opt::AbstractSolver& solver) {
  const auto* services = dynamic_cast<const tav::opt::AbstractSolverServices*>(&solver);
  return services != nullptr && row.owner == Owner::solver && services->isSetBeforeSetup(row.key);
}

// Runs `use` with the item of a setting and the value, both typed.
template <class Use>
auto withItem(const Checked& setting, const tav::attr::AbstractItemDict& dictionary, const Use& use) {
  const auto item = dictionary.get(setting.row->key);
  return std::visit([&](const auto& value) { return use(item.as<std::decay_t<decltype(value)>>(), value); },
                    setting.value);
}

void set(const Checked& setting, const tav::attr::AbstractItemDict& dictionary) {
  withItem(setting, dictionary, [](const auto& item, const auto& value) { item.set(value); });
}

bool isInForce(const Checked& setting, const tav::attr::AbstractItemDict& dictionary) {
  return withItem(setting, dictionary, [](const auto& item, const auto& value) { return item.get() == value; });
}

// Without a default a number stays, and a text becomes empty.
template <class T>
void setDefault(const Row& row, const tav::attr::BaseItem& item) {
  const auto& info = dynamic_cast<const tav::attr::AbstractInfo<T>&>(*row.info);
  if (info.hasDefault()) return item.as<T>().set(info.getDefault());
  if constexpr (std::is_same_v<T, std::string>) item.as<T>().set("");
}

void setDefault(const Row& row, const tav::attr::BaseItem& item) {
  if (item.isResettable()) return item.reset();
  switch (row.info->valueType()) {
    case tav::attr::ValueType::kInt:
      return setDefault<int>(row, item);
    case tav::attr::ValueType::kDouble:
      return setDefault<double>(row, item);
    default:
      return setDefault<std::string>(row, item);
  }
}

std::string text(const std::string& value) { return fmt::format("\"{}\"", value); }
template <class T>
std::string text(const T& value) {
  return lib::shown(value);
}

template <class T>
std::string answerTo(const Row& row, const T& value) {
  const auto& info = dynamic_cast<const tav::attr::AbstractInfo<T>&>(*row.info);
  std::string line = fmt::format("{}={}", row.name(), text(value));
  if (info.hasDefault()) line += fmt::format(" (default {})", text(info.getDefault()));
  return line;
}

std::string answerTo(const Row& row, const tav::attr::BaseItem& item) {
  switch (row.info->valueType()) {
    case tav::attr::ValueType::kInt:
      return answerTo(row, item.as<int>().get());
    case tav::attr::ValueType::kDouble:
      return answerTo(row, item.as<double>().get());
    default:
      return answerTo(row, item.as<std::string>().get());
  }
}

}  // namespace

std::optional<int> wholeNumber(const Given& given, std::string_view name) {
  for (const Checked& setting : given.settings) {
    if (setting.row->name() == name) return std::get<int>(setting.value);
  }
  return std::nullopt;
}

Given check(const trpRec* host, const Table& table, tav::opt::AbstractSolver& solver) {
  const kavo_setting* first = nullptr;
  std::size_t count = 0;
  checkHost(kavo_link_settings(host, &first, &count));
  Given given;
  Collector settings;
  for (const kavo_setting* setting = first; setting != first + count; ++setting) {
    const Row* row = table.find(setting->name);
    if (row != nullptr) {
      requireActing(*setting, *row, table);
      const bool asks = std::string_view(setting->value) == "?";
      asks ? given.questions.push_back(row) : settings.add(checkedValue(*setting, *row, solver));
      continue;
    }
    if (!isWithheld(*setting, solver)) refuseUnknown(*setting, table);
    const auto line =
        fmt::format("{} has a parameter '{}' that is not among the options", solver.name(), shortened(setting->name));
    if (setting->line <= 0) refuse(*setting, line);
    given.skipped.push_back(place(*setting) + line + "; skipped");
  }
  given.settings = settings.take();
  return given;
}

void applyBeforeSetup(const std::vector<Checked>& settings, tav::opt::AbstractSolver& solver) {
  const auto dictionary = solver.makeModelAttributes(solver.shortName(), {});
  for (const Checked& setting : settings) {
    if (isEarly(*setting.row, solver)) set(setting, *dictionary);
  }
}

void withdraw(const std::vector<std::string>& earlier, const std::vector<Checked>& given, const Table& table,
              tav::opt::AbstractSolver& solver) {
  const auto dictionary = solver.makeModelAttributes(solver.shortName(), {});
  for (const std::string& name : earlier) {
    const Row* row = table.find(name);
    const bool again = std::any_of(given.begin(), given.end(), [row](const Checked& c) { return c.row == row; });
    if (!again && row->owner == Owner::solver && !isEarly(*row, solver)) setDefault(*row, dictionary->get(row->key));
  }
}

void apply(const std::vector<Checked>& settings, tav::opt::AbstractSolver& solver) {
  const auto dictionary = solver.makeModelAttributes(solver.shortName(), {});
  for (const Checked& setting : settings) {
    if (setting.row->owner != Owner::solver) continue;
    if (!isEarly(*setting.row, solver) || !isInForce(setting, *dictionary)) set(setting, *dictionary);
  }
}

void answer(trpRec* host, const Given& given, tav::opt::AbstractSolver& solver) {
  const auto dictionary = solver.makeModelAttributes(solver.shortName(), {});
  for (const Row* row : given.questions) {
    if (row->owner == Owner::framework) {
      kavo_link_note(host, answerTo(*row, rewriteOptions(given).strictStep).c_str());
    }
    if (row->owner == Owner::solver) kavo_link_note(host, answerTo(*row, dictionary->get(row->key)).c_str());
  }
}

}  // namespace brel::settings
