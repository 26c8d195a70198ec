#include <fmt/format.h>

#include <string>
#include <utility>
#include <vector>

#include "brel/host.h"
#include "brel/plugin/plugins.h"
#include "kavo/link.h"

namespace brel::plugin {
namespace {

// From here on the largest and the smallest number of a kind are too far apart for exact answers.
constexpr double kWideSpan = 1e9;

using Counts = std::vector<std::pair<std::size_t, const char*>>;

// "binary 3, integer 2": of what there is any.
std::string listed(const Counts& counts) {
  std::string text;
  for (const auto& [count, what] : counts) {
    if (count > 0) text += fmt::format("{}{} {}", text.empty() ? "" : ", ", what, count);
  }
  return text;
}

// Tells before the solve what the model consists of.
class Statistics : public AbstractPlugin {
 public:
  void prepare(Solve& solve) override {
    if (solve.values.whole(settings::PluginAttribute::statistics) == 0) return;
    kavo_statistics all{};
    checkHost(kavo_get_statistics(solve.host, &all));
    solve.log.writeLine("Model statistics");
    writeColumns(solve.log, all);
    writeRows(solve.log, all);
    writeOthers(solve.log, all);
    const std::pair<const char*, kavo_range> ranges[] = {{"coefficients of rows", all.coefficients},
                                                         {"coefficients of the objective", all.objective},
                                                         {"bounds", all.bounds},
                                                         {"sides of rows", all.sides}};
    for (const auto& [what, range] : ranges) writeRange(solve.log, what, range);
    for (const auto& [what, range] : ranges) warnOfSpan(solve.log, what, range);
  }

 private:
  static void writeLine(tav::opt::AbstractLog& log, const char* what, const std::string& text) {
    log.writeLine(fmt::format("  {:<29} {}", what, text));
  }

  static void writeCounted(tav::opt::AbstractLog& log, const char* what, std::size_t count, const Counts& kinds) {
    const std::string list = listed(kinds);
    writeLine(log, what, list.empty() ? fmt::format("{}", count) : fmt::format("{} ({})", count, list));
  }

  static void writeColumns(tav::opt::AbstractLog& log, const kavo_statistics& all) {
    const auto& of = all.columns;
    const std::size_t count = of[0] + of[1] + of[2] + of[3] + of[4];
    writeCounted(log, "variables", count,
                 {{of[KAVO_CONTINUOUS], "continuous"},
                  {of[KAVO_BINARY], "binary"},
                  {of[KAVO_INTEGER], "integer"},
                  {of[KAVO_SEMICONTINUOUS], "semi-continuous"},
                  {of[KAVO_SEMIINTEGER], "semi-integer"}});
  }

  static void writeRows(tav::opt::AbstractLog& log, const kavo_statistics& all) {
    writeCounted(log, "rows", all.rows,
                 {{all.equalities, "equalities"},
                  {all.inequalities, "inequalities"},
                  {all.ranges, "with two sides"},
                  {all.free_rows, "without sides"},
                  {all.quadratic_rows, "quadratic"},
                  {all.nonlinear_rows, "nonlinear"},
                  {all.switched_rows, "switched"}});
    writeLine(log, "nonzeros", fmt::format("{}", all.nonzeros));
  }

  static void writeOthers(tav::opt::AbstractLog& log, const kavo_statistics& all) {
    const Counts others{{all.quadratic_terms, "quadratic terms"},
                        {all.nodes, "nodes of expressions"},
                        {all.logical, "logical constraints"},
                        {all.sets1, "ordered sets of type 1"},
                        {all.sets2, "ordered sets of type 2"}};
    for (const auto& [count, what] : others) {
      if (count > 0) writeLine(log, what, fmt::format("{}", count));
    }
    writeLine(log, "objectives", fmt::format("{}", all.objectives));
  }

  static void writeRange(tav::opt::AbstractLog& log, const char* what, const kavo_range& range) {
    if (range.largest > 0) writeLine(log, what, fmt::format("{:.3g} to {:.3g}", range.smallest, range.largest));
  }

  static void warnOfSpan(tav::opt::AbstractLog& log, const char* what, const kavo_range& range) {
    if (range.largest == 0 || range.largest / range.smallest <= kWideSpan) return;
    log.headed("Warning", fmt::format("The {} span more than {:g}; answers may be inexact.", what, kWideSpan));
  }
};

}  // namespace

std::unique_ptr<AbstractPlugin> statistics() { return std::make_unique<Statistics>(); }

}  // namespace brel::plugin
