#pragma once

#include <array>
#include <mutex>
#include <optional>

namespace exports {

// What lives from the loading of the library to its unloading. attach() and detach() run by themselves then; a second
// attach() makes nothing new.
class Process {
 public:
  static void attach();
  static void detach();

  // The three process-wide critical sections; a thread that holds one may enter it again. Empty before attach() and
  // after detach().
  using Sections = std::array<std::optional<std::recursive_mutex>, 3>;
  static const Sections& sections();
};

}  // namespace exports
