#include "app/report/chart.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>

#include "app/report/axis.h"
#include "app/report/html.h"

namespace app::report {

namespace {

constexpr double kWidth = 860, kHeight = 360, kTop = 40, kBottom = 312, kRight = 838;  // of the paper, of the plot
constexpr std::size_t kMostDots = 50;

// Lowest and highest value.
struct Extent {
  double low = std::numeric_limits<double>::infinity(), high = -low;

  void take(double value) {
    low = std::min(low, value);
    high = std::max(high, value);
  }
  double size() const { return high - low; }
};

// All values that were in force at `begin` or later.
Extent extentFrom(const Path& path, double begin) {
  Extent extent;
  for (const Series* series : {&path.incumbent(), &path.bound()}) {
    const auto& points = series->points();
    for (std::size_t i = 0; i < points.size(); ++i) {
      if (i + 1 == points.size() || points[i + 1].seconds > begin) extent.take(points[i].value);
    }
  }
  return extent;
}

// What the chart shows of the values: all of them, unless the first moments would press the rest flat.
Extent shownExtent(const Path& path, double end) {
  constexpr double kFlat = 8, kFirstMoments = 0.05;
  Extent shown = extentFrom(path, -1);
  const Extent late = extentFrom(path, kFirstMoments * end);
  if (late.size() > 0 && shown.size() > kFlat * late.size()) {
    const double margin = 0.25 * late.size();
    shown = {std::max(shown.low, late.low - margin), std::min(shown.high, late.high + margin)};
  }
  const double size = std::max(std::abs(shown.low), std::abs(shown.high));
  const double flat = size == 0 ? 1 : 0.1 * size;
  const double margin = shown.size() == 0 ? flat : std::max(0.06 * shown.size(), 1e-9 * size);
  return {shown.low - margin, shown.high + margin};
}

class Drawing {
 public:
  Drawing(const Path& path, double end, const Extent& values)
      : path_(path),
        unit_(timeUnit(end)),
        rows_(ticks(values.low, values.high, 6)),
        left_(leftOf(rows_)),
        x_{0, end, left_, kRight},
        y_{values.low, values.high, kBottom, kTop},
        slots_(static_cast<std::size_t>(kRight - left_)) {}

  std::string text() {
    const auto incumbent = thinned(path_.incumbent().points(), x_.low, x_.high, slots_);
    const auto bound = thinned(path_.bound().points(), x_.low, x_.high, slots_);
    return head() + grid() + "<g clip-path=\"url(#plot)\">\n" + gap(incumbent, bound) + line("bound", bound) +
           line("incumbent", incumbent) + dots(incumbent) + "</g>\n" + legend() + "</svg>\n";
  }

 private:
  // Where the plot begins, so that the longest label has room beside it.
  static double leftOf(const std::vector<Tick>& rows) {
    std::size_t longest = 1;
    for (const Tick& tick : rows) longest = std::max(longest, tick.label.size());
    return 34 + 7.4 * static_cast<double>(longest);
  }

  std::string head() const {
    return fmt::format(
        "<svg viewBox=\"0 0 {} {}\" role=\"img\" aria-labelledby=\"chart-title chart-text\">\n"
        "<title id=\"chart-title\">Incumbent and bound over time</title>\n"
        "<desc id=\"chart-text\">Best objective found ({} of them) and best bound, over {:.3g} {}. The last values "
        "stand "
        "in the table beside the chart.</desc>\n"
        "<clipPath id=\"plot\"><rect x=\"{:.1f}\" y=\"{}\" width=\"{:.1f}\" height=\"{}\"/></clipPath>\n",
        kWidth, kHeight, path_.incumbents(), x_.high / unit_.seconds, unit_.name, left_ - 4, kTop - 4,
        kRight - left_ + 8, kBottom - kTop + 8);
  }

  std::string grid() const {
    std::string text;
    for (const Tick& tick : rows_) {
      const double y = y_(tick.value);
      text += fmt::format(
          "<path class=\"grid\" d=\"M{:.1f} {:.1f}H{}\"/><text class=\"end\" x=\"{:.1f}\" y=\"{:.1f}\">{}</text>\n",
          left_, y, kRight, left_ - 8, y + 4, tick.label);
    }
    for (const Tick& tick : ticks(0, x_.high / unit_.seconds, 8)) {
      const double x = x_(tick.value * unit_.seconds);
      text += fmt::format(
          "<path class=\"axis\" d=\"M{0:.1f} {1}v5\"/><text class=\"middle\" x=\"{0:.1f}\" y=\"{2}\">{3}</text>\n", x,
          kBottom, kBottom + 20, tick.label);
    }
    return text + fmt::format(
                      "<path class=\"axis\" d=\"M{0:.1f} {1}V{2}H{3}\"/>\n"
                      "<text class=\"middle\" x=\"{4:.1f}\" y=\"{5}\">{6}</text>\n"
                      "<text class=\"middle\" transform=\"translate(14 {7:.1f}) rotate(-90)\">objective</text>\n",
                      left_, kTop, kBottom, kRight, (left_ + kRight) / 2, kHeight - 8, unit_.name,
                      (kTop + kBottom) / 2);
  }

  // Steps from the point with this number on, each value until the next one.
  std::string steps(const std::vector<Point>& points) const {
    std::string text = fmt::format("{:.1f} {:.1f}", x_(points[0].seconds), place(points[0].value));
    for (std::size_t i = 1; i < points.size(); ++i) {
      text += fmt::format("H{:.1f}V{:.1f}", x_(points[i].seconds), place(points[i].value));
    }
    return text + fmt::format("H{:.1f}", x_.highPlace);
  }

  std::string line(const char* name, const std::vector<Point>& points) const {
    return points.empty() ? "" : fmt::format("<path class=\"{}\" d=\"M{}\"/>\n", name, steps(points));
  }

  // The area between the two from when both are known.
  std::string gap(const std::vector<Point>& incumbent, const std::vector<Point>& bound) const {
    if (incumbent.empty() || bound.empty()) return {};
    const double begin = std::max(incumbent[0].seconds, bound[0].seconds);
    const std::vector<Point> back = from(bound, begin);
    std::string text =
        fmt::format("<path class=\"gap\" d=\"M{}V{:.1f}", steps(from(incumbent, begin)), place(back.back().value));
    for (std::size_t i = back.size() - 1; i > 0; --i) {
      text += fmt::format("H{:.1f}V{:.1f}", x_(back[i].seconds), place(back[i - 1].value));
    }
    return text + fmt::format("H{:.1f}Z\"/>\n", x_(begin));
  }

  static std::vector<Point> from(std::vector<Point> points, double begin) {
    std::size_t first = 0;
    while (first + 1 < points.size() && points[first + 1].seconds <= begin) ++first;
    points.erase(points.begin(), points.begin() + static_cast<std::ptrdiff_t>(first));
    points[0].seconds = std::max(points[0].seconds, begin);
    return points;
  }

  // A mark at each new incumbent; where they stand close there are none but for the last one.
  std::string dots(const std::vector<Point>& points) const {
    std::string text;
    for (std::size_t i = points.size() > kMostDots ? points.size() - 1 : 0; i < points.size(); ++i) {
      text += fmt::format("<circle cx=\"{:.1f}\" cy=\"{:.1f}\" r=\"2.8\"/>\n", x_(points[i].seconds),
                          place(points[i].value));
    }
    return text;
  }

  std::string legend() const {
    std::string text;
    double x = left_;
    const auto entry = [&](const char* name, const char* words, bool there) {
      if (!there) return;
      text += fmt::format("<path class=\"{}\" d=\"M{:.1f} 18h26\"/><text x=\"{:.1f}\" y=\"22\">{}</text>\n", name, x,
                          x + 34, words);
      x += 62 + 7.0 * static_cast<double>(std::string_view(words).size());
    };
    entry("incumbent", "incumbent (best point found)", !path_.incumbent().points().empty());
    entry("bound", "bound (no point can be better)", !path_.bound().points().empty());
    return text;
  }

  // Far beyond an edge is as good as just beyond it, and no renderer has trouble with it.
  double place(double value) const { return std::clamp(y_(value), -kHeight, 2 * kHeight); }

  const Path& path_;
  const TimeUnit unit_;
  const std::vector<Tick> rows_;
  const double left_;
  const Scale x_, y_;
  const std::size_t slots_;
};

std::string beyond(const Extent& all, const Extent& shown) {
  std::string text;
  if (all.high > shown.high) text += "up to " + numberText(all.high);
  if (all.low < shown.low) text += (text.empty() ? "down to " : " and down to ") + numberText(all.low);
  return text.empty()
             ? text
             : "<p class=\"cut\">In its first moments the search had values beyond the chart, " + text + ".</p>\n";
}

}  // namespace

std::string chart(const Path& path) {
  const Extent all = extentFrom(path, -1);
  if (!(all.low <= all.high)) return {};
  const double end = std::max(path.last().seconds, 0.01);
  const Extent shown = shownExtent(path, end);
  return Drawing(path, end, shown).text() + beyond(all, shown);
}

}  // namespace app::report
