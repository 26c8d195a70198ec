// From a Gurobi that only copies arrays to the results of the host: what our own code costs. Beside it, in the same
// run, plain array calls on the same Gurobi into arrays that are as fresh as the host's.
//
//   results_bench [n ...]     default 10000 100000 1000000

#include <dlfcn.h>
#include <fmt/core.h>

#include <cstdlib>
#include <memory>
#include <vector>

#include "bench/load/synthetic_lp.h"
#include "bench/timing.h"
#include "brel/load/loader.h"
#include "brel/result/reader.h"
#include "grb/solver.h"
#include "kavo/link.h"
#include "tav/idx/lib/range.h"
#include "tav/opt/quantities.h"
#include "tests/brel/forward_link.h"
#include "tests/double/gurobi_sink.h"

namespace {

using bench::median;
using bench::now;

void require(bool isSo) {
  if (isSo) return;
  fmt::print(stderr, "{}\n", kavo_last_error());
  std::exit(EXIT_FAILURE);
}

// Processor seconds of one run, and what the plain calls of the same arrays take.
struct Pair {
  std::vector<double> ours, plain;
  void add(double begin, double middle, double end) {
    ours.push_back(middle - begin);
    plain.push_back(end - middle);
  }
  double ratio() const {
    std::vector<double> ratios(ours.size());
    for (std::size_t k = 0; k < ours.size(); ++k) ratios[k] = ours[k] / plain[k];
    return median(ratios);
  }
};

struct Times {
  Pair three, all;
};

template <class T>
std::unique_ptr<T[]> fresh(std::size_t n) {
  return std::make_unique_for_overwrite<T[]>(n);
}

// Arrays that a program of its own would read; they are given back when the time is taken.
class Plain {
 public:
  explicit Plain(std::size_t n) : api_(gurobi_double::sinkLibrary()->api()), n_(n) {
    api_.GRBnewmodel(nullptr, &model_, "", 0, nullptr, nullptr, nullptr, nullptr, nullptr);
  }
  void doubles(const char* name) {
    doubles_.push_back(fresh<double>(n_));
    require(api_.GRBgetdblattrarray(model_, name, 0, static_cast<int>(n_), doubles_.back().get()) == 0);
  }
  void integers(const char* name) {
    integers_.push_back(fresh<int>(n_));
    require(api_.GRBgetintattrarray(model_, name, 0, static_cast<int>(n_), integers_.back().get()) == 0);
  }
  void letters(const char* name) {
    letters_.push_back(fresh<char>(n_));
    require(api_.GRBgetcharattrarray(model_, name, 0, static_cast<int>(n_), letters_.back().get()) == 0);
  }

 private:
  const grb::Api& api_;
  std::size_t n_;
  GRBmodel* model_ = nullptr;
  std::vector<std::unique_ptr<double[]>> doubles_;
  std::vector<std::unique_ptr<int[]>> integers_;
  std::vector<std::unique_ptr<char[]>> letters_;
};

// The link that the host calls.
class Bench {
 public:
  explicit Bench(Times& times) : solver_(gurobi_double::sinkLibrary()), times_(times) { solver_.setup(); }

  int ready(trpRec* host) {
    host_ = host;
    return 0;
  }

  int call() {
    solver_.clear();
    gurobi_double::resetSink();
    brel::load::TranslatedModel model = brel::load::translate(host_, solver_, {});
    brel::load::send(model, solver_, {});
    isTurn_ ? readThree(model) : readAll(model);
    isTurn_ = !isTurn_;
    const kavo_finish finish{KAVO_OPTIMAL, KAVO_STOP_FINISHED, 1, 1, 0, 0, 0, 0, 1, 0, 0, 0};
    return kavo_link_finish(host_, &finish);
  }

 private:
  // Values, reduced costs and duals alone.
  void readThree(const brel::load::TranslatedModel& model) {
    const std::size_t n = model.user.columns.count;
    const double begin = now();
    const auto columns = solver_.makeVariableContainers({});
    const auto rows = solver_.makeConstraintContainers(model.rowAdder, std::nullopt, {}).first;
    give(columns.get(tav::opt::VariableQuantity::level), KAVO_PRIMAL);
    give(columns.get(tav::opt::VariableQuantity::reducedCost), KAVO_REDUCED_COST);
    give(rows.get(tav::opt::RowQuantity::marginal), KAVO_DUAL);
    const double middle = now();
    Plain plain(n);
    for (const char* name : {"X", "RC", "Pi"}) plain.doubles(name);
    times_.three.add(begin, middle, now());
  }

  void give(const tav::attr::BaseContainer& from, int quantity) {
    double* values = nullptr;
    std::size_t count = 0;
    require(kavo_link_result(host_, quantity, &values, &count) == KAVO_OK);
    from.as<double>().get(tav::idx::lib::Range(0, static_cast<int>(count)), {values, count});
  }

  // Everything that a solve reads.
  void readAll(const brel::load::TranslatedModel& model) {
    const std::size_t n = model.user.columns.count;
    const double begin = now();
    brel::result::Reader(host_, solver_, model).read(brel::result::Extent::all);
    const double middle = now();
    Plain plain(n);
    for (const char* name : {"X", "RC", "Pi", "Slack"}) plain.doubles(name);
    for (const char* name : {"VBasis", "CBasis"}) plain.integers(name);
    plain.letters("Sense");
    times_.all.add(begin, middle, now());
  }

  grb::Solver solver_;
  Times& times_;
  trpRec* host_ = nullptr;
  bool isTurn_ = true;
};

Times* current = nullptr;

void forward() {
  void* const library = dlopen(FORWARD_LINK, RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (library == nullptr) std::exit(EXIT_FAILURE);
  const link_functions functions{[](void** handle, char*, int) {
                                   *handle = new Bench(*current);
                                   return 0;
                                 },
                                 [](void** handle) {
                                   delete static_cast<Bench*>(*handle);
                                   *handle = nullptr;
                                 },
                                 [](void* handle, trpRec* model) { return static_cast<Bench*>(handle)->ready(model); },
                                 [](void* handle) { return static_cast<Bench*>(handle)->call(); },
                                 [](void*) { return 0; }};
  reinterpret_cast<forward_to>(dlsym(library, "forwardTo"))(&functions);
}

void measure(std::size_t n) {
  Times times;
  current = &times;
  trpRec* host = nullptr;
  require(kavo_create(&host) == KAVO_OK && bench::SyntheticLp(n).fill(host));
  require(kavo_open_link(host, FORWARD_LINK) == KAVO_OK);
  for (int run = 0; run < 22; ++run) require(kavo_solve(host) == KAVO_OK);
  const double perElement = 1e9 / static_cast<double>(n);
  fmt::print("{:>9} {:>12.2f} {:>12.2f} {:>7.2f} {:>12.2f} {:>12.2f} {:>7.2f}\n", n,
             median(times.three.ours) * perElement, median(times.three.plain) * perElement, times.three.ratio(),
             median(times.all.ours) * perElement, median(times.all.plain) * perElement, times.all.ratio());
  kavo_free(&host);
}

}  // namespace

int main(int argc, char** argv) {
  forward();
  fmt::print("Nanoseconds per element for values, reduced costs and duals, and for all results.\n");
  fmt::print("{:>9} {:>12} {:>12} {:>7} {:>12} {:>12} {:>7}\n", "n", "three: ours", "plain", "ratio", "all: ours",
             "plain", "ratio");
  std::vector<std::size_t> sizes{10000, 100000, 1000000};
  if (argc > 1) sizes.clear();
  for (int k = 1; k < argc; ++k) sizes.push_back(std::strtoul(argv[k], nullptr, 10));
  for (const std::size_t n : sizes) measure(n);
}
