#include <algorithm>
#include <cmath>

#include "brel/expr/host_operators.h"

namespace brel::expr {

namespace {

// Steps along the pieces from x = 0, where the value is 0, in one direction (1 or -1) through all breakpoints on that
// side, and adds one point beyond the last of them.
class Walk {
 public:
  Walk(int direction, std::vector<Point>& points) : direction_(direction), points_(points) {}
  // A breakpoint, with the slope of the piece that leads to it.
  void step(double slope, double breakpoint) {
    at_ = {breakpoint, at_.y + slope * (breakpoint - at_.x)};
    points_.push_back(at_);
  }
  // So far beyond that the slope can be read off the two points without loss.
  void end(double slope) {
    const double distance = direction_ * std::exp2(std::ceil(std::log2(1 + std::fabs(at_.x))));
    points_.push_back({at_.x + distance, at_.y + slope * distance});
  }

 private:
  int direction_;
  std::vector<Point>& points_;
  Point at_{0, 0};
};

}  // namespace

std::vector<Point> pointsOfSlopes(std::span<const double> given) {
  const auto slope = [&](std::size_t piece) { return given[2 * piece]; };
  const auto breakpoint = [&](std::size_t piece) { return given[2 * piece + 1]; };  // where the piece ends
  const std::size_t last = given.size() / 2;
  std::size_t origin = 0;  // the piece on which x = 0 lies; at a breakpoint the left one
  while (origin < last && breakpoint(origin) < 0) ++origin;
  std::vector<Point> points;
  Walk left(-1, points);
  for (std::size_t piece = origin; piece > 0; --piece) left.step(slope(piece), breakpoint(piece - 1));
  left.end(slope(0));
  std::reverse(points.begin(), points.end());
  Walk right(1, points);
  for (std::size_t piece = origin; piece < last; ++piece) right.step(slope(piece), breakpoint(piece));
  right.end(slope(last));
  const auto isSame = [](const Point& a, const Point& b) { return a.x == b.x; };
  points.erase(std::unique(points.begin(), points.end(), isSame), points.end());
  return points;
}

}  // namespace brel::expr
