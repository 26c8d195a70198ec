#include "tests/brel/host.h"

#include <dlfcn.h>
#include <fmt/ranges.h>

#include <cstring>
#include <numeric>

#include "brel/link.h"
#include "grb/solver.h"
#include "tests/brel/forward_link.h"

namespace brel_test {
namespace {

LinkOverDouble* current = nullptr;

int create(void** handle, char* message, int length) {
  try {
    *handle = new brel::Link(std::make_shared<grb::Solver>(current->gurobi->library()), current->definition);
    return 0;
  } catch (const std::exception& error) {
    std::strncpy(message, error.what(), static_cast<std::size_t>(length));
    return 1;
  }
}

void destroy(void** handle) {
  delete static_cast<brel::Link*>(*handle);
  *handle = nullptr;
}

void forward(const link_functions& functions) {
  void* const library = dlopen(FORWARD_LINK, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (library == nullptr) throw std::runtime_error(dlerror());
  reinterpret_cast<forward_to>(dlsym(library, "forwardTo"))(&functions);
  dlclose(library);
}

void appendValues(std::string& text, const trpRec* model, int quantity, const char* name) {
  const double* values = nullptr;
  std::size_t count = 0;
  if (kavo_result(model, quantity, &values, &count) != KAVO_OK) return;
  text += fmt::format("{}: {}\n", name, fmt::join(values, values + count, " "));
}

void appendBasis(std::string& text, const trpRec* model, int kind, const char* name) {
  const int* statuses = nullptr;
  std::size_t count = 0;
  if (kavo_result_basis(model, kind, &statuses, &count) != KAVO_OK) return;
  text += fmt::format("{}: {}\n", name, fmt::join(statuses, statuses + count, " "));
}

}  // namespace

void HostModel::add(const std::vector<Column>& columns, const std::vector<Row>& rows) {
  std::vector<double> lower, upper, value;
  std::vector<unsigned char> type;
  std::vector<const char*> names;
  for (const Column& column : columns) {
    lower.push_back(column.lower), upper.push_back(column.upper);
    type.push_back(column.type), names.push_back(column.name);
  }
  ASSERT_EQ(kavo_add_columns(handle_, columns.size(), lower.data(), upper.data(), type.data(), names.data()), KAVO_OK)
      << kavo_last_error();
  lower.clear(), upper.clear(), names.clear();
  std::vector<std::size_t> start{0};
  std::vector<int> column;
  for (const Row& row : rows) {
    lower.push_back(row.lower), upper.push_back(row.upper), names.push_back(row.name);
    for (const auto& [j, coefficient] : row.terms) column.push_back(j), value.push_back(coefficient);
    start.push_back(column.size());
  }
  ASSERT_EQ(kavo_add_rows(handle_, rows.size(), lower.data(), upper.data(), start.data(), column.data(), value.data(),
                          names.data()),
            KAVO_OK)
      << kavo_last_error();
}

void HostModel::addObjective(int sense, const std::vector<double>& coefficients, double constant) {
  std::vector<int> columns(coefficients.size());
  std::iota(columns.begin(), columns.end(), 0);
  ASSERT_EQ(kavo_add_objective(handle_, sense, constant, columns.size(), columns.data(), coefficients.data(), nullptr),
            KAVO_OK)
      << kavo_last_error();
}

std::vector<std::string> HostModel::notes() const {
  std::vector<std::string> notes;
  const char* note = nullptr;
  for (std::size_t i = 0; kavo_note(handle_, i, &note) == KAVO_OK && note != nullptr; ++i) notes.emplace_back(note);
  return notes;
}

std::string HostModel::results() const {
  kavo_outcome outcome;
  if (kavo_get_outcome(handle_, &outcome) != KAVO_OK) return "none";
  std::string text = fmt::format("{}, {}, objective {}, bound {}, gap {}, iterations {}, nodes {}, solutions {}\n",
                                 outcome.status_text, outcome.termination, outcome.objective, outcome.bound,
                                 outcome.gap, outcome.iterations, outcome.nodes, outcome.solutions);
  appendValues(text, handle_, KAVO_PRIMAL, "primal");
  appendValues(text, handle_, KAVO_REDUCED_COST, "reduced costs");
  appendBasis(text, handle_, KAVO_COLUMN, "columns' basis");
  appendValues(text, handle_, KAVO_ACTIVITY, "activity");
  appendValues(text, handle_, KAVO_DUAL, "duals");
  appendValues(text, handle_, KAVO_SLACK, "slacks");
  appendBasis(text, handle_, KAVO_ROW, "rows' basis");
  for (int check = KAVO_CHECK_ROW; check <= KAVO_CHECK_SET; ++check) {
    double value = 0;
    long long element = -1;
    if (kavo_violation(handle_, check, &value, &element) != KAVO_OK || element < 0) continue;
    text += fmt::format("violation of kind {}: {} at {}\n", check, value, element);
  }
  return text;
}

void fill(HostModel& model, unsigned char type) {
  model.add({{"x", 0, 4}, {"y", -kNone, kNone}, {"z", 0, 9, type}}, {{"low", 2, {{0, 1}, {1, 1}}, kNone},
                                                                     {"range", 1, {{0, 1}, {2, 2}}, 5},
                                                                     {"free", -kNone, {{1, 1}, {2, 1}}, kNone},
                                                                     {"high", -kNone, {{2, 1}}, 3}});
  model.addObjective(KAVO_MAXIMIZE, {1, 0, 2}, 10);
}

LinkOverDouble::LinkOverDouble() {
  current = this;
  definition.enable(brel::Plugin::writeBack);
  forward({create, destroy,
           [](void* handle, trpRec* model) { return static_cast<brel::Link*>(handle)->readyAPI(model); },
           [](void* handle) { return static_cast<brel::Link*>(handle)->callSolver(); },
           [](void* handle) { return static_cast<brel::Link*>(handle)->modifyProblem(); }});
}

LinkOverDouble::~LinkOverDouble() { current = nullptr; }

void LinkOverDouble::scriptMip(const std::vector<double>& point, const std::vector<double>& slacks) {
  for (const auto& [name, value] : {std::pair{"Status", 2.0},
                                    {"SolCount", 1.0},
                                    {"ObjVal", 12.5},
                                    {"ObjBound", 12.0},
                                    {"IterCount", 7.0},
                                    {"NodeCount", 3.0},
                                    {"Runtime", 0.25}}) {
    gurobi->scriptAttr(name, value);
  }
  gurobi->scriptElements("X", point);
  gurobi->scriptElements("Slack", slacks);
}

void LinkOverDouble::scriptLp(const std::vector<double>& point, const std::vector<double>& slacks) {
  scriptMip(point, slacks);
  std::vector<double> numbers(std::max(point.size(), slacks.size()));
  std::iota(numbers.begin(), numbers.end(), 1);
  gurobi->scriptElements("RC", {numbers.begin(), numbers.begin() + static_cast<long>(point.size())});
  gurobi->scriptElements("Pi", {numbers.begin(), numbers.begin() + static_cast<long>(slacks.size())});
  gurobi->scriptElements("VBasis", std::vector<double>(point.size(), -2));
  gurobi->scriptElements("CBasis", std::vector<double>(slacks.size(), -1));
}

}  // namespace brel_test
