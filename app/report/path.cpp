#include "app/report/path.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace app::report {

namespace {

constexpr std::size_t kMostPoints = 1 << 15;
constexpr std::size_t kSlots = kMostPoints / 8;  // much finer than any chart; leaves at most half of the points
constexpr double kInfinite = 1e100;

// The points of one slot that can be seen.
void keep(std::span<const Point> slot, std::vector<Point>& kept) {
  const auto lower = [](const Point& a, const Point& b) { return a.value < b.value; };
  const auto [low, high] = std::minmax_element(slot.begin(), slot.end(), lower);
  std::array<std::size_t, 4> seen{0, static_cast<std::size_t>(low - slot.begin()),
                                  static_cast<std::size_t>(high - slot.begin()), slot.size() - 1};
  std::sort(seen.begin(), seen.end());
  const auto* const end = std::unique(seen.begin(), seen.end());
  for (const auto* index = seen.begin(); index != end; ++index) kept.push_back(slot[*index]);
}

}  // namespace

std::vector<Point> thinned(std::span<const Point> points, double begin, double end, std::size_t slots) {
  const double width = (end - begin) / static_cast<double>(slots);
  const auto slotOf = [&](const Point& point) { return width > 0 ? std::floor((point.seconds - begin) / width) : 0; };
  std::vector<Point> kept;
  for (std::size_t first = 0; first < points.size();) {
    std::size_t next = first + 1;
    while (next < points.size() && slotOf(points[next]) == slotOf(points[first])) ++next;
    keep(points.subspan(first, next - first), kept);
    first = next;
  }
  return kept;
}

void Series::add(double seconds, double value) {
  if (!(std::abs(value) < kInfinite) || value == last_) return;
  last_ = value;
  points_.push_back({seconds, value});
  if (points_.size() >= kMostPoints) points_ = thinned(points_, points_.front().seconds, seconds, kSlots);
}

void Path::add(const kavo_progress& now) {
  search_ = search_ || now.event == KAVO_PROGRESS_NODE || now.event == KAVO_PROGRESS_INCUMBENT || now.nodes > 0;
  const double seconds = std::max(now.seconds, last_.seconds);
  incumbent_.add(seconds, now.incumbent);
  bound_.add(seconds, now.bound);
  if (now.event == KAVO_PROGRESS_INCUMBENT) ++incumbents_;
  last_ = now;
  last_.seconds = seconds;
}

}  // namespace app::report
