#include "grb/procedure/tuning.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>

#include "grb/callback/callbacks.h"
#include "grb/gurobi/constants.h"
#include "grb/gurobi/exception.h"
#include "tav/util/exception.h"

namespace grb {
namespace {

constexpr std::string_view kSeparators = ", \t\r\n";
constexpr int kMostResults = 100;

// They steer the tuning itself, or the output, rather than how a model is solved.
constexpr std::array<std::string_view, 14> kExcluded{
    "MIPGap",  "MIPGapAbs", "TimeLimit",  "TuneTargetMIPGap", "TuneTargetTime", "TuneTimeLimit", "OutputFlag",
    "Threads", "TuneJobs",  "TuneMetric", "TuneOutput",       "TuneResults",    "TuneTrials",    "LogFile"};

using Models = std::vector<std::unique_ptr<GurobiModel>>;
using Value = ParameterValues::mapped_type;

struct Parameter {
  Value value;
  Value standard;
};

std::optional<Parameter> parameter(const GurobiModel& model, const char* name) {
  const auto of = [](const auto& info) { return Parameter{info.value, info.defaultValue}; };
  switch (model.getParamType(name)) {
    case paramtype::kInt:
      return of(model.getIntParamInfo(name));
    case paramtype::kDouble:
      return of(model.getDblParamInfo(name));
    case paramtype::kString:
      return of(model.getStrParamInfo(name));
    default:
      return std::nullopt;
  }
}

// Calls use(name, parameter) for every parameter of a model.
template <class Use>
void forEachParameter(const GurobiModel& model, const Use& use) {
  for (int i = 0; i < model.getNumParams(); ++i) {
    const std::string name = model.getParamName(i);
    if (const auto found = parameter(model, name.c_str())) use(name, *found);
  }
}

// What the user has set stands in the parameters of the record's model. Models from files begin with those of the
// environment, and several models are tuned under those.
void copyToEnvironment(const GurobiModel& from) {
  GurobiModel environment(from.env());  // without a model of its own
  ParameterValues different;
  forEachParameter(from, [&](const std::string& name, const Parameter& given) {
    if (parameter(environment, name.c_str())->value != given.value) different.emplace(name, given.value);
  });
  putBack(environment, different);
}

// Gurobi does not say which file it could not read.
void startFrom(GurobiModel& model, const std::string& file) {
  try {
    model.start(file.c_str());
  } catch (const GurobiException& failure) {
    throw GurobiException(fmt::format("{} from the tuning file '{}'", failure.message(), file), *failure.code(),
                          failure.context(), failure.location());
  }
}

Models readModels(Data& data) {
  const std::string parameters = data.options.file(FileOption::readparams);
  Models models;
  copyToEnvironment(*data.model);
  for (const std::string& file : listedFiles(data.options.file(FileOption::tuning))) {
    GurobiModel& model = *models.emplace_back(std::make_unique<GurobiModel>(data.model->env()));
    startFrom(model, file);
    if (!parameters.empty()) model.readParams(parameters.c_str());
  }
  return models;
}

void run(Data& data, const Models& models) {
  std::vector<GRBmodel*> handles;
  for (const auto& model : models) {
    model->setLogCallbackFunc(grbLogCallback, &data.callbacks);
    if (data.callbacks.handler) model->setCallbackFuncAdv(grbAdvancedCallback, &data.callbacks, kCallbackMask);
    handles.push_back(model->model());
  }
  data.callbacks.log->writeLine(
      "TuneTimeLimit ends the tuning, and TimeLimit its first solve, the baseline, which may take 3600 seconds else; "
      "an "
      "interrupt stops neither.");
  if (models.size() == 1) {
    models.front()->tuneModel();
  } else {
    models.front()->env()->tuneModels(handles);
  }
  if (data.isInterrupted) data.callbacks.log->writeLine("An interrupt came and did not stop the tuning.");
}

// gurobi.o99 for the last result, counting down; below 10 the letter p fills up.
std::string resultFile(int result, int count) {
  const std::string number = std::to_string(result - count + kMostResults);
  return fmt::format("gurobi.{}{}", std::string_view("opt").substr(0, 3 - number.size()), number);
}

void writeResult(const GurobiModel& model, const std::string& file) {
  std::ofstream out(file);
  forEachParameter(model, [&](const std::string& name, const Parameter& given) {
    const bool isExcluded = std::find(kExcluded.begin(), kExcluded.end(), name) != kExcluded.end();
    if (isExcluded || given.value == given.standard) return;
    std::visit([&](const auto& value) { out << fmt::format("{}  {}\n", name, value); }, given.value);
  });
  out.close();
  if (!out) throw tav::UserException(fmt::format("The file '{}' cannot be written.", file));
}

}  // namespace

std::vector<std::string> listedFiles(std::string_view list) {
  std::vector<std::string> files;
  while (true) {
    list.remove_prefix(std::min(list.find_first_not_of(kSeparators), list.size()));
    if (list.empty()) return files;
    const bool isQuoted = list.front() == '"' || list.front() == '\'';
    const std::size_t end = isQuoted ? list.find(list.front(), 1) : list.find_first_of(kSeparators);
    const std::string_view word = list.substr(0, end);
    files.emplace_back(word.substr(isQuoted ? 1 : 0));
    if (files.back().empty()) files.pop_back();
    list.remove_prefix(std::min(word.size() + (isQuoted ? 1 : 0), list.size()));
  }
}

void tune(Data& data) {
  const Models models = readModels(data);
  if (models.empty()) return;
  run(data, models);
  GurobiModel& model = *models.front();
  const int count = std::min(model.getIntAttr("TuneResultCount"), kMostResults);
  for (int i = count - 1; i >= 0; --i) {
    model.getTuneResult(i);
    const std::string file = resultFile(i, count);
    data.callbacks.log->status("Writing Gurobi option file: " + file);
    writeResult(model, file);
    model.setIntParam("LogToConsole", 0);  // the result has set it back to its default
  }
}

}  // namespace grb
