#include "app/run_files.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "app/gurobi_files.h"

namespace app {

namespace {

using Writer = RunFiles::Writer;
constexpr std::string_view kBlanks = " \t\r\n";
constexpr const char* kSolutionFiles = "SolFiles";

// What comes from a pipe can be read only once, and not here.
bool canLookInto(const std::string& path) {
  std::error_code none;
  return std::filesystem::is_regular_file(path, none);
}

void add(std::vector<RunFiles::One>& files, const std::string& path, const std::string& what,
         Writer writer = Writer::us) {
  if (!path.empty()) files.push_back({path, what, writer});
}

// AMPL's files with the names of a model's rows and columns stand beside it.
void addModel(RunFiles& files, const Arguments& arguments, const Paths& paths) {
  add(files.read, arguments.model, "the model");
  if (paths.nl.empty()) return;
  add(files.read, paths.nl, "the model");
  const std::string stub = paths.nl.substr(0, paths.nl.size() - std::string_view(".nl").size());
  add(files.read, stub + ".row", "the names of the rows");
  add(files.read, stub + ".col", "the names of the columns");
}

// The files that a list names, one per line, from its own folder on.
void addStarts(RunFiles& files, const std::string& path) {
  add(files.read, path, "the list of multimipstart");
  if (!canLookInto(path)) return;
  std::ifstream list(path);
  for (std::string line; std::getline(list, line);) {
    const std::size_t first = line.find_first_not_of(kBlanks);
    if (first == std::string::npos || line[first] == '#') continue;
    const std::string name = line.substr(first, line.find_last_not_of(kBlanks) - first + 1);
    add(files.read, std::filesystem::path(path).parent_path() / name, "a start that multimipstart lists");
  }
}

// The names in a list with commas or blanks in between, perhaps in quotes; the results get names of their own.
void addTuning(RunFiles& files, std::string_view list) {
  if (list.empty()) return;
  files.numbered.push_back({"gurobi.o", "", "tuning", Writer::link});
  const std::string separators = std::string(kBlanks) + ",";
  while (true) {
    list.remove_prefix(std::min(list.find_first_not_of(separators), list.size()));
    if (list.empty()) return;
    const bool isQuoted = list[0] == '"' || list[0] == '\'';
    const std::string end = isQuoted ? std::string(1, list[0]) : separators;
    if (isQuoted) list.remove_prefix(1);
    const std::size_t length = std::min(list.find_first_of(end), list.size());
    for (const std::string& file : modelFiles(std::string(list.substr(0, length)))) {
      add(files.read, file, "a model of tuning");
    }
    list.remove_prefix(std::min(length + (isQuoted ? 1 : 0), list.size()));
  }
}

// Gurobi's own outputs.
void addResults(RunFiles& files, const char* what, const std::string& result, const std::string& solutions) {
  add(files.written, result, what, Writer::gurobi);
  if (!solutions.empty()) files.numbered.push_back({solutions + "_", ".sol", kSolutionFiles, Writer::gurobi});
}

// Files of settings can name outputs too: one of parameters wins over the settings, and the solve of the fixed model
// has settings of its own.
void addGurobiOutputs(RunFiles& files, const Session& session) {
  const std::string parameters = session.given("readparams"), fixed = session.given("fixoptfile");
  const auto inForce = [&](const char* name) {
    const std::string value = parameters.empty() ? "" : parameterIn(parameters, name);
    return value.empty() ? session.given(name) : value;
  };
  addResults(files, kResultFile, inForce(kResultFile), inForce(kSolutionFiles));
  if (!parameters.empty()) add(files.written, parameterIn(parameters, "LogFile"), "LogFile", Writer::gurobi);
  if (!canLookInto(fixed)) return;
  const Session settings;
  if (kavo_read_options(settings.model(), fixed.c_str()) != KAVO_OK) return;  // told when the link reads it
  addResults(files, kFixedResultFile, settings.given(kResultFile), settings.given(kSolutionFiles));
}

// What is read whatever the settings say.
void addInputs(RunFiles& files, const Arguments& arguments, const Paths& paths) {
  if (!arguments.model.empty()) addModel(files, arguments, paths);
  for (const std::string& path : arguments.options) add(files.read, path, "an option file");
  add(files.read, arguments.link, "the link");
}

}  // namespace

RunFiles runFiles(const Session& session, const Arguments& arguments, const Paths& paths) {
  RunFiles files;
  addInputs(files, arguments, paths);
  addStarts(files, session.given("multimipstart"));
  add(files.read, session.given("rngread"), "the file of rngread");
  add(files.read, session.given("fixoptfile"), "the file of fixoptfile");
  add(files.read, session.given("readparams"), "the file of readparams");
  addTuning(files, session.given("tuning"));
  for (const char* name : {"miptrace", "rngrestart", "writeprob", "writeparams"}) {
    add(files.written, session.given(name), name, Writer::link);
  }
  if (const std::string dump = session.given("dumpbcsol"); !dump.empty())
    files.numbered.push_back({dump, ".sol", "dumpbcsol", Writer::link});
  addGurobiOutputs(files, session);
  return files;
}

RunFiles filesOfDescription(const Arguments& arguments) {
  RunFiles files;
  addInputs(files, arguments, pathsOf(arguments));
  add(files.written, arguments.description, "--describe-options");
  return files;
}

void addOwnOutputs(RunFiles& files, const Arguments& arguments, const std::string& sol, const OwnWords& words) {
  const char* trace = std::getenv("GRBLINK_TRACE");
  add(files.written, sol, "the solution file");
  add(files.written, arguments.json, "--json");
  add(files.written, words.logFile, arguments.log.empty() ? "logfile" : "--log");
  add(files.written, arguments.report, "--report");
  if (!arguments.trace.empty()) {
    add(files.written, arguments.trace, "--trace");
  } else if (trace != nullptr) {
    add(files.written, trace, "GRBLINK_TRACE", Writer::link);
  }
  if (!words.poolStub.empty()) files.numbered.push_back({words.poolStub, ".sol", "poolstub"});
}

}  // namespace app
