#include <algorithm>
#include <cmath>

#include "brel/rewrite/expression_rules.h"

namespace brel::rewrite {
namespace {

using expr::Point;
using Points = std::span<const Point>;

double slope(const Point& a, const Point& b) { return a.x == b.x ? 0 : (b.y - a.y) / (b.x - a.x); }
double slopeBefore(Points points) { return points.size() < 2 ? 0 : slope(points[0], points[1]); }
double slopeAfter(Points points) { return points.size() < 2 ? 0 : slope(points[points.size() - 2], points.back()); }

// The value where there is no point.
double valueAt(Points points, double x) {
  if (x < points.front().x) return points.front().y + slopeBefore(points) * (x - points.front().x);
  if (x > points.back().x) return points.back().y + slopeAfter(points) * (x - points.back().x);
  const auto next = std::find_if(points.begin(), points.end(), [x](const Point& p) { return p.x > x; });
  const Point& before = *(next - 1);
  return before.y + slope(before, *next) * (x - before.x);
}

// The points within the bounds of x. The outermost points only tell the slope where x goes
// on beyond them, and are left out there.
std::vector<Point> reachable(Points points, Interval x) {
  if (points.size() > 2 && x.lower < points[0].x && points[0].x < points[1].x) points = points.subspan(1);
  const std::size_t last = points.size() - 1;
  if (points.size() > 1 && x.upper > points[last].x && points[last - 1].x < points[last].x) points = points.first(last);
  std::vector<Point> kept;
  for (const Point& point : points) {
    if (x.lower <= point.x && point.x <= x.upper) kept.push_back(point);
  }
  return kept;
}

// The same with a point at each finite bound.
std::vector<Point> withBounds(Points points, Interval x) {
  std::vector<Point> kept = reachable(points, x);
  const bool startsAtBound = !kept.empty() && kept.front().x == x.lower;
  const bool endsAtBound = !kept.empty() && kept.back().x == x.upper;
  if (std::isfinite(x.lower) && !startsAtBound) kept.insert(kept.begin(), {x.lower, valueAt(points, x.lower)});
  if (std::isfinite(x.upper) && !endsAtBound && x.upper != x.lower) kept.push_back({x.upper, valueAt(points, x.upper)});
  return kept;
}

}  // namespace

// x and y are the same mixture of the points, of which a special ordered set of type 2 lets two neighbours count. Where
// x has no bound, the first or last weight may move on along the outer slope: by a column next to it in the set.
NodeId lowerPiecewise(Lowering& in, NodeId node) {
  Graph& graph = in.graph();
  Rewriter& rewriter = in.rewriter();
  const std::vector<Point> given(graph.points(node).begin(), graph.points(node).end());
  const NodeId x = rewriter.asAffine(in.lowered(graph.children(node)[0]));
  const Interval bounds = graph.interval(x);
  const std::vector<Point> points = withBounds(given, bounds);
  std::vector<NodeId> members;
  std::vector<expr::Term> one, xTerms, yTerms;
  const auto beyond = [&](double direction, double slope) {
    const NodeId distance = rewriter.addColumn({0, HUGE_VAL}, false, kNoNode, "beyond");
    members.push_back(distance);
    xTerms.push_back({distance, direction});
    yTerms.push_back({distance, direction * slope});
  };
  if (points.size() == 2 && std::isfinite(bounds.lower) && std::isfinite(bounds.upper) && points[0].x < points[1].x) {
    const double rise = slope(points[0], points[1]);
    return in.finish(node, graph.sum(points[0].y - rise * points[0].x, {{{x, rise}}}));
  }
  if (!std::isfinite(bounds.lower)) beyond(-1, slopeBefore(given));
  for (const Point& point : points) {
    const NodeId weight = rewriter.addColumn({0, 1}, false, kNoNode, "weight");
    members.push_back(weight);
    one.push_back({weight, 1});
    xTerms.push_back({weight, point.x});
    yTerms.push_back({weight, point.y});
  }
  if (!std::isfinite(bounds.upper)) beyond(1, slopeAfter(given));
  xTerms.push_back({x, -1});
  rewriter.addRow(graph.sum(-1, one), RowType::equal, "one");
  rewriter.addRow(graph.sum(0, xTerms), RowType::equal, "mix");
  if (members.size() > 1) rewriter.addOrderedSet(members);
  return in.finish(node, graph.sum(0, yTerms));
}

}  // namespace brel::rewrite
