// From a filled model of the host to a Gurobi that only copies arrays: what our own code costs. Beside it, in the same
// run, a plain loop that makes the same calls on the same sink from ready arrays.
//
//   load_bench [n ...]     default 10000 100000 1000000

#include <fmt/core.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#include "bench/load/allocations.h"
#include "bench/load/synthetic_lp.h"
#include "bench/timing.h"
#include "brel/load/loader.h"
#include "grb/solver.h"
#include "tests/double/gurobi_sink.h"

namespace {

using bench::median;
using bench::now;

// The model as one would keep it to make nothing but Gurobi calls.
struct ReadyArrays {
  std::vector<char> types, senses;
  std::vector<double> sides;

  explicit ReadyArrays(const bench::SyntheticLp& lp) : types(lp.columns, 'C') {
    for (std::size_t i = 0; i < lp.columns; ++i) {
      senses.push_back(i % 3 == 0 ? 'G' : i % 3 == 1 ? 'L' : 'E');
      sides.push_back(i % 3 == 1 ? lp.rowUpper[i] : lp.rowLower[i]);
    }
  }
};

int runPlain(const grb::Api& api, GRBmodel* model, bench::SyntheticLp& lp, ReadyArrays& ready) {
  const int n = static_cast<int>(lp.columns);
  int failures = api.GRBaddvars(model, n, 0, nullptr, nullptr, nullptr, nullptr, lp.lower.data(), lp.upper.data(),
                                ready.types.data(), nullptr);
  for (std::size_t i = 0; i < lp.columns; ++i) {
    const std::size_t first = lp.start[i];
    failures += api.GRBaddconstr(model, static_cast<int>(lp.start[i + 1] - first), lp.column.data() + first,
                                 lp.value.data() + first, ready.senses[i], ready.sides[i], "");
  }
  failures += api.GRBsetintattr(model, "ModelSense", 1);
  failures += api.GRBsetdblattrarray(model, "Obj", 0, n, lp.cost.data());
  return failures + api.GRBsetdblattr(model, "ObjCon", 0);
}

void measure(std::size_t n) {
  bench::SyntheticLp lp(n);
  ReadyArrays ready(lp);
  trpRec* host = nullptr;
  if (kavo_create(&host) != KAVO_OK || !lp.fill(host)) std::exit(EXIT_FAILURE);

  grb::Solver solver(gurobi_double::sinkLibrary());
  solver.setup();
  const auto library = gurobi_double::sinkLibrary();
  GRBmodel* plainModel = nullptr;
  library->api().GRBnewmodel(nullptr, &plainModel, "", 0, nullptr, nullptr, nullptr, nullptr, nullptr);

  std::vector<double> ours, plain, ratios;
  long allocations = 0;
  long calls = 0;
  for (int run = 0; run < 11; ++run) {
    solver.clear();
    gurobi_double::resetSink();
    const long before = bench::allocations();
    double start = now();
    brel::load::TranslatedModel model = brel::load::translate(host, solver, {});
    brel::load::send(model, solver, {});
    ours.push_back(now() - start);
    allocations = bench::allocations() - before;
    calls = gurobi_double::sinkTotals().calls;

    gurobi_double::resetSink();
    start = now();
    if (runPlain(library->api(), plainModel, lp, ready) != 0) std::exit(EXIT_FAILURE);
    plain.push_back(now() - start);
    ratios.push_back(ours.back() / plain.back());
    if (calls != gurobi_double::sinkTotals().calls) {
      fmt::print(stderr, "not the same calls: {} and {}\n", calls, gurobi_double::sinkTotals().calls);
      std::exit(EXIT_FAILURE);
    }
  }
  const double perNonzero = 1e9 / static_cast<double>(lp.nonzeros);
  fmt::print("{:>9} {:>10} {:>12.2f} {:>12.2f} {:>7.2f} {:>9} {:>12}\n", n, lp.nonzeros, median(ours) * perNonzero,
             median(plain) * perNonzero, median(ratios), calls, allocations);
  kavo_free(&host);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::size_t> sizes;
  for (int i = 1; i < argc; ++i) sizes.push_back(std::strtoul(argv[i], nullptr, 10));
  if (sizes.empty()) sizes = {10000, 100000, 1000000};
  fmt::print("{:>9} {:>10} {:>12} {:>12} {:>7} {:>9} {:>12}\n", "columns", "nonzeros", "ns/nonzero", "plain loop",
             "ratio", "calls", "allocations");
  for (const std::size_t n : sizes) measure(n);
  return EXIT_SUCCESS;
}
