// What a callback costs when nobody listens, with a trace, with a stop expression: the whole road from Gurobi's call to
// the plug-in and back, over a Gurobi that answers at once. Beside it, in the same run, how long real searches take
// from one call to the next.
//
//   callback_bench [columns]     default 100

#include <fmt/core.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "bench/timing.h"
#include "brel/link.h"
#include "grb/gurobi/callback_constants.h"
#include "grb/solver.h"
#include "tests/double/gurobi_sink.h"

namespace {

constexpr int kCalls = 200000;
constexpr int kCallsPerIncumbent = 2000;  // as in the real searches, where they are rarer

// The search that GRBoptimize plays.
struct Search {
  grb::GurobiCallback callback = nullptr;
  void* context = nullptr;
  std::size_t columns = 0;
  double nodes = 0;
  double seconds = 0;  // of all callbacks of the last search
};
Search search;

int setCallback(GRBmodel*, grb::GurobiCallback callback, void* context, unsigned) {
  search.callback = callback;
  search.context = context;
  return 0;
}

int answer(void*, int, int what, void* result) {
  auto* const values = static_cast<double*>(result);
  namespace code = grb::what;
  if (what == code::kMipSolSol) {
    for (std::size_t j = 0; j < search.columns; ++j) values[j] = 1e6 - search.nodes;
  } else {
    *values = what == code::kMipNodeNodCnt || what == code::kMipSolNodCnt ? search.nodes : 1.0;
  }
  return 0;
}

int optimize(GRBmodel* model) {
  const double begin = bench::now();
  int cbdata = 0;
  for (int k = 0; k < kCalls && search.callback != nullptr; ++k) {
    search.nodes = k;
    const int where = k % kCallsPerIncumbent == 0 ? grb::where::kMipSol : grb::where::kMipNode;
    search.callback(model, &cbdata, where, search.context);
  }
  search.seconds = bench::now() - begin;
  return 0;
}

std::shared_ptr<const grb::Library> searchingLibrary() {
  const auto sink = gurobi_double::sinkLibrary();
  grb::Api api = sink->api();
  api.GRBsetcallbackfuncadv = setCallback;
  api.GRBcbget = answer;
  api.GRBoptimize = optimize;
  return grb::Library::fromTable(api, "a search of callbacks only", sink);
}

brel::LinkDef definition() {
  brel::LinkDef definition;
  definition.enable(brel::Plugin::dumpSolutions);
  definition.setName(brel::PluginAttrib{0}, "dump");
  definition.enable(brel::Plugin::trace);
  definition.setName(brel::PluginAttrib{17}, "trace");
  definition.setName(brel::PluginAttrib{18}, "tracenode");
  definition.enable(brel::Plugin::stopExpression);
  definition.setName(brel::PluginAttrib{21}, "stop");
  definition.setName(brel::PluginAttrib{22}, "stopnode");
  return definition;
}

void check(int status) {
  if (status == KAVO_OK) return;
  fmt::print(stderr, "{}\n", kavo_last_error());
  std::exit(EXIT_FAILURE);
}

trpRec* makeModel(std::size_t columns) {
  trpRec* host = nullptr;
  check(kavo_create(&host));
  const std::vector<unsigned char> types(columns, KAVO_INTEGER);
  check(kavo_add_columns(host, columns, nullptr, nullptr, types.data(), nullptr));
  std::vector<int> positions(columns);
  for (std::size_t j = 0; j < columns; ++j) positions[j] = static_cast<int>(j);
  const std::vector<double> costs(columns, 1.0);
  check(kavo_add_objective(host, KAVO_MINIMIZE, 0, columns, positions.data(), costs.data(), nullptr));
  return host;
}

using Options = std::vector<std::pair<const char*, std::string>>;

// Nanoseconds per callback, the median of several searches. A link that has followed a solve before keeps its callback.
double measure(std::size_t columns, const Options& options, bool afterAnother) {
  search = {};
  search.columns = columns;
  trpRec* host = makeModel(columns);
  brel::Link link(std::make_shared<grb::Solver>(searchingLibrary()), definition());
  check(link.readyAPI(host));
  if (afterAnother) {
    check(kavo_set_option(host, "stop", "time < 0", nullptr, 0));
    check(link.callSolver());
    check(kavo_clear_options(host));
  }
  for (const auto& [name, value] : options) check(kavo_set_option(host, name, value.c_str(), nullptr, 0));
  std::vector<double> times;
  for (int run = 0; run < 7; ++run) {
    check(link.callSolver());
    times.push_back(search.seconds * 1e9 / kCalls);
  }
  kavo_free(&host);
  return bench::median(times);
}

struct RealSearch {
  std::string name;
  double nanoseconds;  // between two calls
};

std::vector<RealSearch> realSearches() {
  std::vector<RealSearch> found;
  FILE* const output = popen(GRBLINK_PYTHON " -B " GRBLINK_REAL_SEARCH, "r");
  char line[256];
  while (output != nullptr && std::fgets(line, sizeof line, output) != nullptr) {
    std::istringstream words(line);
    std::string name;
    long calls = 0;
    double nanoseconds = 0;
    if (!(words >> name >> calls >> nanoseconds)) break;
    fmt::print("{}: {} calls, one every {:.0f} ns\n", name, calls, nanoseconds);
    found.push_back({name, nanoseconds});
  }
  if (output == nullptr || pclose(output) != 0 || found.empty()) {
    fmt::print(stderr, "the real searches failed\n");
    std::exit(EXIT_FAILURE);
  }
  return found;
}

}  // namespace

int main(int argc, char** argv) {
  const std::size_t columns = argc > 1 ? std::strtoul(argv[1], nullptr, 10) : 100;
  const auto file = std::filesystem::temp_directory_path() / "callback_bench.csv";
  struct Case {
    const char* name;
    Options options;
    bool afterAnother = false;
  };
  const std::vector<Case> cases{
      {"nobody listens", {}},
      {"nobody, after a solve with one", {}, true},
      {"trace, every 100 nodes", {{"trace", file}}},
      {"trace, every node", {{"trace", file}, {"tracenode", "1"}}},
      {"stop expression, every 100 nodes", {{"stop", "gap < 0.01 && time > 1000"}}},
      {"stop expression, every node", {{"stop", "gap < 0.01 && time > 1000"}, {"stopnode", "1"}}},
  };
  const auto real = realSearches();
  fmt::print("{:34} {:>12}", "", "ns/callback");
  for (const RealSearch& one : real) fmt::print(" {:>16}", "of " + one.name);
  fmt::print("\n");
  for (const Case& one : cases) {
    const double cost = measure(columns, one.options, one.afterAnother);
    fmt::print("{:34} {:>12.1f}", one.name, cost);
    for (const RealSearch& other : real) fmt::print(" {:>15.3f}%", 100 * cost / other.nanoseconds);
    fmt::print("\n");
  }
  std::filesystem::remove(file);
  return EXIT_SUCCESS;
}
