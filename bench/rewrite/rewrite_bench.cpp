// Rewriting of a model with n rows |x - y| <= 1 and of one expression with n nested absolute values, and beside it, in
// the same run, a plain copy of the same expressions: time per row must not grow with n.
//
//   rewrite_bench [n ...]     default 1000 10000 100000

#include <fmt/core.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numeric>
#include <vector>

#include "bench/timing.h"
#include "brel/rewrite/rewrite_beyond.h"
#include "kavo/kavo.h"

namespace {

using bench::now;

struct Formulas {
  std::vector<std::size_t> start{0};
  std::vector<int> op, index;
  std::vector<double> value;

  void push(int o, int i) { op.push_back(o), index.push_back(i), value.push_back(0); }
  void end() { start.push_back(op.size()); }
};

// Row i: |x[i] - x[i+1]|.
Formulas wide(std::size_t n) {
  Formulas formulas;
  for (std::size_t i = 0; i < n; ++i) {
    formulas.push(KAVO_OP_VARIABLE, static_cast<int>(i));
    formulas.push(KAVO_OP_VARIABLE, static_cast<int>(i + 1));
    formulas.push(KAVO_OP_MINUS, 0);
    formulas.push(KAVO_OP_ABS, 0);
    formulas.end();
  }
  return formulas;
}

// One row: |x[n] - |x[n-1] - ... |x[1] - x[0]|||.
Formulas deep(std::size_t n) {
  Formulas formulas;
  formulas.push(KAVO_OP_VARIABLE, 0);
  for (std::size_t i = 0; i < n; ++i) {
    formulas.push(KAVO_OP_VARIABLE, static_cast<int>(i + 1));
    formulas.push(KAVO_OP_MINUS, 0);
    formulas.push(KAVO_OP_ABS, 0);
  }
  formulas.end();
  return formulas;
}

void require(int status) {
  if (status == KAVO_OK) return;
  fmt::print(stderr, "{}\n", kavo_last_error());
  std::exit(EXIT_FAILURE);
}

trpRec* modelOf(const Formulas& formulas, std::size_t n) {
  const std::size_t rows = formulas.start.size() - 1;
  trpRec* model = nullptr;
  require(kavo_create(&model));
  const std::vector<double> lower(n + 1, -10), upper(n + 1, 10), side(rows, 1);
  require(kavo_add_columns(model, n + 1, lower.data(), upper.data(), nullptr, nullptr));
  const std::vector<std::size_t> start(rows + 1, 0);
  require(kavo_add_rows(model, rows, nullptr, side.data(), start.data(), nullptr, nullptr, nullptr));
  int first = 0;
  require(kavo_add_expressions(model, rows, formulas.start.data(), formulas.op.data(), formulas.index.data(),
                               formulas.value.data(), &first));
  std::vector<int> numbers(rows);
  std::iota(numbers.begin(), numbers.end(), 0);
  require(kavo_set_expressions(model, KAVO_ROW, rows, numbers.data(), numbers.data()));
  return model;
}

template <class Work>
double leastTime(const Work& work) {
  double least = HUGE_VAL;
  for (int run = 0; run < 7; ++run) {
    const double start = now();
    work();
    least = std::min(least, now() - start);
  }
  return least;
}

// The cost per absolute value, in nanoseconds, and what was made.
void measure(const char* shape, const Formulas& formulas, std::size_t n) {
  trpRec* model = modelOf(formulas, n);
  const brel::UserModel user = brel::userModel(model);
  std::size_t made = 0;
  const double ours = leastTime([&] { made = brel::rewrite::rewriteBeyond(user, 1, {})->columns.size(); });
  std::size_t copied = 0;
  const double plain = leastTime([&] { copied += Formulas(formulas).op.size(); });
  const double perValue = 1e9 / static_cast<double>(n);
  fmt::print("{:>6} {:>9} {:>10} {:>14.1f} {:>11.2f} {:>7.1f}\n", shape, n, made, ours * perValue, plain * perValue,
             ours / plain);
  if (copied == 0 || made < n) std::exit(EXIT_FAILURE);
  require(kavo_free(&model));
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<std::size_t> sizes;
  for (int i = 1; i < argc; ++i) sizes.push_back(std::strtoul(argv[i], nullptr, 10));
  if (sizes.empty()) sizes = {1000, 10000, 100000};
  fmt::print("{:>6} {:>9} {:>10} {:>14} {:>11} {:>7}\n", "shape", "values", "columns", "ns/value", "plain copy",
             "ratio");
  for (const std::size_t n : sizes) measure("wide", wide(n), n);
  for (const std::size_t n : sizes) measure("deep", deep(n), n);
  return EXIT_SUCCESS;
}
