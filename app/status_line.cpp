#include "app/status_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "app/words.h"

namespace app {

namespace {

constexpr auto kBetween = std::chrono::milliseconds(100);
constexpr const char* kClear = "\r\x1b[K";
constexpr double kInfinite = 1e100;

std::string timeText(double seconds) {
  if (seconds < 60) return fmt::format("{:.1f} s", seconds);
  const auto whole = static_cast<long long>(seconds);
  if (whole < 3600) return fmt::format("{}:{:02}", whole / 60, whole % 60);
  return fmt::format("{}:{:02}:{:02}", whole / 3600, whole / 60 % 60, whole % 60);
}

bool isThere(double value) { return std::abs(value) < kInfinite; }

struct Part {
  std::string text;
  int rank;  // 1 is wanted most
};

std::string joined(const std::array<Part, 5>& parts, const std::array<bool, 5>& chosen) {
  std::string line;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (chosen[i]) line += line.empty() ? parts[i].text : "  " + parts[i].text;
  }
  return line;
}

}  // namespace

std::string statusText(const kavo_progress& now, bool stopping, std::size_t width) {
  const auto number = [](const char* name, double value) {
    return isThere(value) ? fmt::format("{} {}", name, numberText(value, 7)) : "";
  };
  std::array<Part, 5> parts{{{timeText(now.seconds), 2},
                             {isThere(now.nodes) ? fmt::format("{:.0f} nodes", now.nodes) : "", 5},
                             {number("incumbent", now.incumbent), 1},
                             {number("bound", now.bound), 4},
                             {isThere(now.gap) ? fmt::format("gap {:.2f}%", 100 * now.gap) : "", 3}}};
  if (stopping) parts[0].text = "stopping  " + parts[0].text;
  std::array<bool, 5> chosen{};
  for (int rank = 1; rank <= 5; ++rank) {
    for (std::size_t i = 0; i < parts.size(); ++i) {
      if (parts[i].rank != rank || parts[i].text.empty()) continue;
      chosen[i] = true;
      chosen[i] = joined(parts, chosen).size() <= width;
    }
  }
  return joined(parts, chosen);
}

void StatusLine::open() {
  const std::lock_guard lock(mutex_);
  open_ = true;
}

void StatusLine::logAhead(std::string_view text) {
  const std::lock_guard lock(mutex_);
  if (!open_ || shown_ || text.empty()) return;
  screen_.write(text);
  isMidLine_ = text.back() != '\n';
}

void StatusLine::show(const kavo_progress& now, bool stopping) {
  const std::lock_guard lock(mutex_);
  const auto time = std::chrono::steady_clock::now();
  if (!open_ || time < next_ || now.event == KAVO_PROGRESS_END) return;
  next_ = time + kBetween;
  if (isMidLine_) screen_.write("\n");
  isMidLine_ = false;
  // The last column stays free: a terminal goes to the next line after a character there.
  const std::size_t columns = std::max<std::size_t>(terminalColumns(), 2);
  screen_.write(kClear + statusText(now, stopping, columns - 1));
  shown_ = true;
}

void StatusLine::close() {
  const std::lock_guard lock(mutex_);
  clear();
}

void StatusLine::abandon() {
  const std::unique_lock lock(mutex_, std::try_to_lock);
  if (lock.owns_lock()) clear();
}

void StatusLine::clear() {
  if (shown_) screen_.write(kClear);
  open_ = shown_ = false;
}

}  // namespace app
