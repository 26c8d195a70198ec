#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include "kavo/kavo.h"

namespace app::report {

struct Point {
  double seconds, value;
};

// What of points in the order of time can be seen when the time from begin to end is drawn in `slots` columns: of each
// column the first and the last point, the lowest and the highest.
std::vector<Point> thinned(std::span<const Point> points, double begin, double end, std::size_t slots);

// A value that stays what it is until it changes. However often it does, the memory that it takes is bounded: then
// points are thinned out that no chart could show.
class Series {
 public:
  // Later than all before; the same value again, NaN and infinite values are passed over.
  void add(double seconds, double value);
  const std::vector<Point>& points() const { return points_; }

 private:
  std::vector<Point> points_;
  double last_ = std::numeric_limits<double>::quiet_NaN();
};

// The way of incumbent and bound through a solve.
class Path {
 public:
  void add(const kavo_progress& now);

  const Series& incumbent() const { return incumbent_; }
  const Series& bound() const { return bound_; }
  // How many incumbents were told of.
  std::size_t incumbents() const { return incumbents_; }
  // What was told last.
  const kavo_progress& last() const { return last_; }
  // There was a search over a tree: a node or an incumbent was told of.
  bool hasSearch() const { return search_; }

 private:
  Series incumbent_, bound_;
  std::size_t incumbents_ = 0;
  kavo_progress last_{KAVO_PROGRESS_TICK, 0, kNone, kNone, kNone, kNone, 0};
  bool search_ = false;

  static constexpr double kNone = std::numeric_limits<double>::quiet_NaN();
};

}  // namespace app::report
