// Prints the model that the reader makes of a file as one JSON object, for the comparison with another reader.
#include <cstdio>
#include <exception>
#include <nlohmann/json.hpp>

#include "kavo/model/operators.h"
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

// Nodes in postfix order: ["number", value], ["column", number] or [operator, number of operands].
Json expressionsOf(const kavo::Expressions& all) {
  Json result = Json::array();
  for (std::size_t e = 0; e < all.size(); ++e) {
    Json nodes = Json::array();
    for (std::size_t k = all.start[e]; k < all.start[e + 1]; ++k) {
      const int arity = kavo::arity(all.op[k]);
      if (all.op[k] == KAVO_OP_NUMBER) {
        nodes.push_back({"number", all.value[k]});
      } else if (all.op[k] == KAVO_OP_VARIABLE) {
        nodes.push_back({"column", all.index[k]});
      } else {
        nodes.push_back({kavo::operatorName(all.op[k]), arity < 0 ? all.index[k] : arity});
      }
    }
    result.push_back(nodes);
  }
  return result;
}

// What a linear model does not have.
Json beyondLinear(const kavo::Model& model) {
  const kavo::Quadratics& q = model.quadratics;
  return {{"expressions", expressionsOf(model.expressions)},
          {"rowExpression", model.rows.expression},
          {"rowQuadratic", model.rows.quadratic},
          {"quadratics", {{"start", q.start}, {"first", q.first}, {"second", q.second}, {"value", q.value}}},
          {"indicator", model.rows.indicator},
          {"indicatorValue", model.rows.indicatorValue},
          {"setType", model.sets.type},
          {"setStart", model.sets.start},
          {"setColumn", model.sets.column},
          {"setWeight", model.sets.weight}};
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
                                    {"quadratic", objective.quadratic},
                                    {"expression", objective.expression},
                                    {"column", objective.column},
                                    {"value", objective.value}});
  }
  result.update(beyondLinear(model));
  result["suffixes"] = Json::array();
  for (const kavo::Suffix& suffix : model.suffixes) {
    result["suffixes"].push_back({{"name", suffix.name}, {"index", suffix.index}, {"value", suffix.value}});
  }
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    for (int i = 1; i < argc; ++i) std::puts(dump(kavo::reader::read(argv[i])).dump().c_str());
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
  }
}
