#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>
#include <string_view>

#include "app/output.h"
#include "kavo/kavo.h"

namespace app {

// What a status line says, in at most `width` columns: time, nodes, incumbent, bound and gap, as far as there are such
// numbers; where the width does not do, the less telling ones are left out. stopping: a stop was asked for.
std::string statusText(const kavo_progress& now, bool stopping, std::size_t width);

// One line of a terminal, renewed in place. Any thread may call.
class StatusLine {
 public:
  explicit StatusLine(Output& screen) : screen_(screen) {}

  // Before this nothing is shown.
  void open();
  // Shows text that comes ahead of the line; once that is there, the text is left out.
  void logAhead(std::string_view text);
  // Renews the line, at most every tenth of a second.
  void show(const kavo_progress& now, bool stopping);
  // Leaves the line empty; nothing is shown from now on.
  void close();
  // The same when the program is about to end whatever another thread is doing: does not wait for one that writes.
  void abandon();

 private:
  void clear();

  std::mutex mutex_;
  Output& screen_;
  bool open_ = false;
  bool shown_ = false;
  bool isMidLine_ = false;  // the text ahead has not ended its last line
  std::chrono::steady_clock::time_point next_;
};

}  // namespace app
