// Prints the model that the reader makes of a file as one JSON object, for the comparison with another reader.
#include <cstdio>
#include <exception>
#include <nlohmann/json.hpp>

#include "kavo/reader/reader.h"

namespace {

using Json = nlohmann::json;

// JSON has no infinity.
std::vector<double> finite(std::vector<double> values) {
  for (double& value : values) value = value > 1e100 ? 1e100 : value < -1e100 ? -1e100 : value;
  return values;
}

std::vector<std::string> namesOf(const kavo::Names& names) {
  std::vector<std::string> result;
  for (std::size_t i = 0; i < names.size(); ++i) result.emplace_back(names.at(i));
  return result;
}

Json dump(const kavo::Model& model) {
  Json result = {{"name", model.name},
                 {"notes", model.readNotes},
                 {"columnNames", namesOf(model.columns.names)},
                 {"columnLower", finite(model.columns.lower)},
                 {"columnUpper", finite(model.columns.upper)},
                 {"columnType", model.columns.type},
                 {"rowNames", namesOf(model.rows.names)},
                 {"rowLower", finite(model.rows.lower)},
                 {"rowUpper", finite(model.rows.upper)},
                 {"start", model.rows.start},
                 {"column", model.rows.column},
                 {"value", model.rows.value}};
  result["objectives"] = Json::array();
  for (const kavo::Objective& objective : model.objectives) {
    result["objectives"].push_back({{"name", objective.name},
                                    {"sense", objective.sense},
                                    {"constant", objective.constant},
                                    {"column", objective.column},
                                    {"value", objective.value}});
  }
  result["suffixes"] = Json::array();
  for (const kavo::Suffix& suffix : model.suffixes) {
    result["suffixes"].push_back({{"name", suffix.name}, {"index", suffix.index}, {"value", suffix.value}});
  }
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    for (int i = 1; i < argc; ++i) std::puts(dump(kavo::reader::readMps(argv[i])).dump().c_str());
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
