// A transport problem for n right-hand sides on real Gurobi: one model whose sides change, against a model that is
// built anew for each in the same process, and against a process of its own for each. Time on the wall and simplex
// iterations.
//
//   resolve_bench [n]     default 100

#include <fmt/core.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <string>
#include <vector>

#include "kavo/kavo.h"

namespace {

constexpr std::size_t kPlants = 30, kTowns = 40;

void require(int status) {
  if (status == KAVO_OK) return;
  fmt::print(stderr, "{}\n", kavo_last_error());
  std::exit(EXIT_FAILURE);
}

double demand(std::size_t town, std::size_t day) {
  return 50 + static_cast<double>((town * 7 + day * 13) % 20) + (town % 10 == day % 10 ? 15 : 0);
}

std::vector<double> demands(std::size_t day) {
  std::vector<double> values(kTowns);
  for (std::size_t town = 0; town < kTowns; ++town) values[town] = demand(town, day);
  return values;
}

// Rows: what each plant can give, then what each town needs.
trpRec* makeModel(std::size_t day) {
  trpRec* model = nullptr;
  require(kavo_create(&model));
  const std::size_t columns = kPlants * kTowns;
  require(kavo_add_columns(model, columns, nullptr, nullptr, nullptr, nullptr));
  std::vector<std::size_t> start{0};
  std::vector<int> column;
  std::vector<double> lower(kPlants, -1e20), upper(kPlants, 110), cost(columns);
  const auto at = [](std::size_t plant, std::size_t town) { return static_cast<int>(plant * kTowns + town); };
  for (std::size_t plant = 0; plant < kPlants; ++plant) {
    for (std::size_t town = 0; town < kTowns; ++town) column.push_back(at(plant, town));
    start.push_back(column.size());
  }
  for (std::size_t town = 0; town < kTowns; ++town) {
    for (std::size_t plant = 0; plant < kPlants; ++plant) column.push_back(at(plant, town));
    start.push_back(column.size());
    lower.push_back(demand(town, day));
    upper.push_back(1e20);
  }
  const std::vector<double> ones(column.size(), 1);
  require(kavo_add_rows(model, kPlants + kTowns, lower.data(), upper.data(), start.data(), column.data(), ones.data(),
                        nullptr));
  for (std::size_t j = 0; j < columns; ++j) cost[j] = 1 + static_cast<double>((j * 7919) % 97);
  std::vector<int> all(columns);
  std::iota(all.begin(), all.end(), 0);
  require(kavo_add_objective(model, KAVO_MINIMIZE, 0, columns, all.data(), cost.data(), nullptr));
  require(kavo_set_option(model, "threads", "1", nullptr, 0));
  require(kavo_open_link(model, nullptr));
  return model;
}

struct Totals {
  double seconds = 0, iterations = 0, objective = 0;
};

void solve(trpRec* model, Totals& totals) {
  require(kavo_solve(model));
  kavo_outcome outcome{};
  require(kavo_get_outcome(model, &outcome));
  if (outcome.status != KAVO_OPTIMAL) std::exit(EXIT_FAILURE);
  totals.iterations += outcome.iterations;
  totals.objective += outcome.objective;
}

Totals keep(std::size_t days) {
  Totals totals;
  trpRec* model = makeModel(0);
  std::vector<int> rows(kTowns);
  std::iota(rows.begin(), rows.end(), static_cast<int>(kPlants));
  for (std::size_t day = 0; day < days; ++day) {
    if (day > 0) require(kavo_change_sides(model, kTowns, rows.data(), demands(day).data(), nullptr));
    solve(model, totals);
  }
  require(kavo_free(&model));
  return totals;
}

void solveAnew(std::size_t day, Totals& totals) {
  trpRec* model = makeModel(day);
  solve(model, totals);
  require(kavo_free(&model));
}

Totals anew(std::size_t days) {
  Totals totals;
  for (std::size_t day = 0; day < days; ++day) solveAnew(day, totals);
  return totals;
}

Totals processes(const std::string& self, std::size_t days) {
  Totals totals;
  for (std::size_t day = 0; day < days; ++day) {
    if (std::system(fmt::format("'{}' day {}", self, day).c_str()) != 0) std::exit(EXIT_FAILURE);
  }
  return totals;
}

template <class Work>
Totals timed(const Work& work) {
  const auto begin = std::chrono::steady_clock::now();
  Totals totals = work();
  totals.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
  return totals;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3) {  // one of the processes
    Totals totals;
    solveAnew(std::strtoul(argv[2], nullptr, 10), totals);
    return EXIT_SUCCESS;
  }
  const std::size_t days = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 100;
  keep(1);  // starts the interpreter, if Gurobi comes through one
  const Totals kept = timed([&] { return keep(days); });
  const Totals fresh = timed([&] { return anew(days); });
  const Totals apart = timed([&] { return processes(argv[0], days); });
  if (std::abs(kept.objective - fresh.objective) > 1e-6 * std::abs(fresh.objective)) return EXIT_FAILURE;
  const double runs = static_cast<double>(days);
  fmt::print("{:<22} {:>8} {:>12} {:>7}\n", "", "ms/run", "iterations", "ratio");
  const auto print = [&](const char* what, const Totals& totals, const std::string& iterations) {
    fmt::print("{:<22} {:>8.2f} {:>12} {:>7.2f}\n", what, 1e3 * totals.seconds / runs, iterations,
               totals.seconds / kept.seconds);
  };
  print("one model, new sides", kept, fmt::format("{:.0f}", kept.iterations));
  print("a model each", fresh, fmt::format("{:.0f}", fresh.iterations));
  print("a process each", apart, "");
  return EXIT_SUCCESS;
}
