#include "app/report/search.h"

#include <fmt/format.h>

#include <cmath>

#include "app/report/chart.h"
#include "app/report/html.h"

namespace app::report {

namespace {

std::string lastValues(const Path& path) {
  const kavo_progress& last = path.last();
  Table table({{"at the end", false}, {"value", true}});
  const auto line = [&](const char* what, const std::string& value) {
    table.add({what, value.empty() ? "none" : value});
  };
  line("incumbent", path.incumbent().points().empty() ? "" : numberText(path.incumbent().points().back().value));
  line("bound", path.bound().points().empty() ? "" : numberText(path.bound().points().back().value));
  line("relative gap", std::isfinite(last.gap) && last.gap < 1e100 ? fmt::format("{:.4g} %", 100 * last.gap) : "");
  line("nodes", numberText(last.nodes));
  line("seconds", fmt::format("{:.2f}", last.seconds));
  line("new incumbents", fmt::format("{}", path.incumbents()));
  return table.text();
}

std::string whyNone(const Session& session, const Path& path) {
  if (path.hasSearch()) return "The search found neither a point nor a bound.";
  if (session.outcome().nodes > 0) return "The solver told nothing of its search.";
  return "The model was decided without a search over a tree, so there is no path of incumbent and bound.";
}

}  // namespace

std::string search(const Session& session, const Path& path) {
  const std::string picture = path.hasSearch() ? chart(path) : "";
  if (picture.empty()) return "<p>" + whyNone(session, path) + "</p>\n";
  return "<div class=\"search\">\n<figure>\n" + picture + "</figure>\n<div>" + lastValues(path) + "</div>\n</div>\n";
}

}  // namespace app::report
