// From an expression to the arrays that Gurobi takes: nanoseconds per node, for sizes far apart. Beside it, in the same
// run, a plain loop that appends the same nodes from ready arrays to three arrays of the same room.
//
//   encode_bench [n ...]     default 10 100 1000 10000 100000 1000000

#include <fmt/core.h>

#include <algorithm>
#include <cstdlib>
#include <vector>

#include "bench/encode/shapes.h"
#include "bench/timing.h"
#include "grb/data.h"
#include "grb/nonlinear/nonlinear_stack.h"
#include "tests/double/gurobi_sink.h"

namespace {

using bench::median;
using bench::now;

constexpr int kVariables = 10;
constexpr int kRuns = 15;
constexpr std::size_t kNodesPerRun = 2000000;

struct Arrays {
  std::vector<int> opcodes, parents;
  std::vector<double> data;

  explicit Arrays(std::size_t room) {
    opcodes.reserve(room);
    parents.reserve(room);
    data.reserve(room);
  }
};

// Keeps the compiler from dropping work whose result nobody reads.
volatile std::size_t nodesMade = 0;

void appendPlain(const grb::NonlinearStack& ready) {
  const std::size_t n = ready.opcodes().size();
  Arrays copy(ready.opcodes().capacity());
  for (std::size_t i = 0; i < n; ++i) {
    copy.opcodes.push_back(ready.opcodes()[i]);
    copy.parents.push_back(ready.parents()[i]);
    copy.data.push_back(ready.data()[i]);
  }
  nodesMade = nodesMade + copy.data.size();
}

// Nanoseconds per node of one run.
template <class Work>
double measure(std::size_t nodes, const Work& work) {
  const std::size_t repetitions = std::max<std::size_t>(1, kNodesPerRun / nodes);
  const double start = now();
  for (std::size_t i = 0; i < repetitions; ++i) work();
  return 1e9 * (now() - start) / static_cast<double>(repetitions * nodes);
}

// Prints a line and returns the nanoseconds per node.
double measureShape(const bench::Shape& shape, std::size_t n, grb::Data& data) {
  tav::math::Expression<double> expression;
  shape.build(expression, data.variableSpace(), n);
  const auto symbol = tav::math::Symbol<double>::ofView(expression.whole());
  const auto ready = grb::NonlinearStack::load(symbol, &data);
  const std::size_t nodes = ready.opcodes().size();
  std::vector<double> ours, plain;
  for (int run = 0; run < kRuns; ++run) {
    ours.push_back(
        measure(nodes, [&] { nodesMade = nodesMade + grb::NonlinearStack::load(symbol, &data).opcodes().size(); }));
    plain.push_back(measure(nodes, [&] { appendPlain(ready); }));
  }
  fmt::print("{:>9} {:>9} {:>9.1f} {:>11.1f}\n", shape.name, nodes, median(ours), median(plain));
  return median(ours);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::size_t> sizes;
  for (int i = 1; i < argc; ++i) sizes.push_back(std::strtoul(argv[i], nullptr, 10));
  if (sizes.empty()) sizes = {10, 100, 1000, 10000, 100000, 1000000};
  grb::Data data(gurobi_double::sinkLibrary());
  data.model->start();
  data.model->addVars(kVariables, {}, {}, {}, {}, {});
  data.variables.add(kVariables);
  fmt::print("{:>9} {:>9} {:>9} {:>11}\n", "shape", "nodes", "ns/node", "plain loop");
  for (const bench::Shape& shape : bench::kShapes) {
    std::vector<double> times;
    for (const std::size_t n : sizes) times.push_back(measureShape(shape, n, data));
    const auto [least, most] = std::minmax_element(times.begin(), times.end());
    fmt::print("{:>9} slowest / fastest size {:.2f}\n", shape.name, *most / *least);
  }
  return EXIT_SUCCESS;
}
