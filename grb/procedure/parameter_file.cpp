#include "grb/procedure/parameter_file.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "grb/gurobi/constants.h"
#include "grb/procedure/parameter_lines.h"
#include "tav/attr/lib/allowed.h"
#include "tav/util/ascii.h"
#include "tav/util/exception.h"
#include "tav/util/number.h"

namespace grb {
namespace {

namespace fs = std::filesystem;
namespace lib = tav::attr::lib;

using Value = ParameterValues::mapped_type;

// One reading of a parameter file.
class Reading {
 public:
  Reading(GurobiModel& model, tav::opt::AbstractLog& log, const std::string& file)
      : model_(model), log_(log), file_(file) {}

  // Tells and checks what a line says.
  void look(const ParameterLine& line) {
    const std::string key = tav::util::lowerCased(line.name);
    const int type = model_.getParamType(line.name.c_str());
    if (type == paramtype::kUnknown) return passOver(line, key);
    if (line.hasMore) refuse(line, ": a line has one value without blanks, and # begins a comment");
    switch (type) {
      case paramtype::kInt:
        return keep(line, key, wholeNumber(line, key));
      case paramtype::kDouble:
        return keep(line, key, number(line));
      default:
        return keep(line, key, text(line));
    }
  }

  void read(ParameterValues& before) const {
    for (const Given& given : given_) before.emplace(tav::util::lowerCased(given.line.name), inForce(given));
    model_.readParams(file_.c_str());
  }

  // Compares what Gurobi has with the last value that the file gives to each name.
  void compare() const {
    for (const Given& given : given_) {
      if (inForce(given) == given.value) continue;
      refuse(given.line, ": Gurobi has not taken the value; there are parameters that it takes only before it starts");
    }
  }

 private:
  struct Given {
    ParameterLine line;
    Value value;
  };

  [[noreturn]] void refuse(const ParameterLine& line, std::string_view why) const {
    throw tav::UserException(fmt::format("{}, line {}: {}{}", file_, line.number, line.name, why));
  }

  template <class T>
  [[noreturn]] void refuseNumber(const ParameterLine& line, const ParamInfo<T>& facts) const {
    const lib::RangeInfo<T> range(line.name, {}, true, {}, facts.minimum, facts.maximum, {}, {});
    refuse(line, fmt::format("={}: the value must be {}", shownWord(line.value), lib::allowed(range)));
  }

  // Told once for each name.
  void passOver(const ParameterLine& line, const std::string& key) {
    if (!unknown_.insert(key).second) return;
    log_.headed("Warning", fmt::format("{}, line {}: Gurobi has no parameter '{}'; the line has no effect.", file_,
                                       line.number, shownWord(line.name)));
  }

  void keep(const ParameterLine& line, const std::string& key, Value value) {
    const auto [place, isNew] = places_.emplace(key, given_.size());
    if (isNew) given_.emplace_back();
    given_[place->second] = {line, std::move(value)};
  }

  // As Gurobi, takes 1e3 for a whole number, and a comment that follows at once.
  static std::optional<double> numberIn(const ParameterLine& line) {
    return tav::util::toDouble(std::string_view(line.value).substr(0, line.value.find('#')));
  }

  int wholeNumber(const ParameterLine& line, const std::string& key) const {
    const ParamInfo<int> facts = model_.getIntParamInfo(line.name.c_str());
    const auto value = numberIn(line);
    if (!value || std::trunc(*value) != *value) refuseNumber(line, facts);
    if (*value < facts.minimum || *value > facts.maximum) refuseNumber(line, facts);
    // The link has the log by its callback; on the console it would come twice, or where nothing may be written.
    if (key == "logtoconsole" && *value != 0) refuse(line, ": the log is up to the link; leave the line out");
    return static_cast<int>(*value);
  }

  double number(const ParameterLine& line) const {
    const ParamInfo<double> facts = model_.getDblParamInfo(line.name.c_str());
    const auto value = numberIn(line);
    if (!value) refuseNumber(line, facts);
    const double finite = std::clamp(*value, -lib::kSolverInfinity, lib::kSolverInfinity);
    if (!(finite >= facts.minimum && finite <= facts.maximum)) refuseNumber(line, facts);
    return finite;
  }

  std::string text(const ParameterLine& line) const {
    if (line.value.size() < kStringParamSize) return line.value;
    refuse(line, fmt::format(": the text has {} bytes and may have {}", line.value.size(), kStringParamSize - 1));
  }

  Value inForce(const Given& given) const {
    const char* name = given.line.name.c_str();
    if (std::holds_alternative<int>(given.value)) return model_.getIntParam(name);
    if (std::holds_alternative<std::string>(given.value)) return model_.getStrParam(name);
    return std::clamp(model_.getDblParam(name), -lib::kSolverInfinity, lib::kSolverInfinity);
  }

  GurobiModel& model_;
  tav::opt::AbstractLog& log_;
  const std::string& file_;
  std::unordered_set<std::string> unknown_;
  std::vector<Given> given_;                             // what the last line of each name says
  std::unordered_map<std::string, std::size_t> places_;  // in given_, by name in lower case
};

[[noreturn]] void refuseToWrite(const std::string& file, std::string_view why) {
  throw tav::UserException(fmt::format("The file '{}' cannot be written: {}.", file, why));
}

}  // namespace

void readParameterFile(GurobiModel& model, tav::opt::AbstractLog& log, const std::string& file,
                       ParameterValues& before) {
  Reading reading(model, log, file);
  for (const ParameterLine& line : linesOfParameterFile(file)) reading.look(line);
  reading.read(before);
  reading.compare();
}

void putBack(GurobiModel& model, ParameterValues& before) {
  while (!before.empty()) {
    const auto& [name, value] = *before.begin();
    if (const auto* whole = std::get_if<int>(&value)) {
      model.setIntParam(name.c_str(), *whole);
    } else if (const auto* number = std::get_if<double>(&value)) {
      model.setDblParam(name.c_str(), *number);
    } else {
      model.setStrParam(name.c_str(), std::get<std::string>(value).c_str());
    }
    before.erase(before.begin());  // only now: what cannot be put back is tried again
  }
}

void requireWritable(const std::string& file) {
  std::error_code ignored;
  if (fs::is_directory(file, ignored)) refuseToWrite(file, "it is a folder");
  if (access(file.c_str(), W_OK) == 0) return;
  if (errno != ENOENT) refuseToWrite(file, std::strerror(errno));
  const fs::path folder = fs::path(file).parent_path() / ".";
  if (access(folder.c_str(), W_OK) != 0) refuseToWrite(file, std::strerror(errno));
}

}  // namespace grb
