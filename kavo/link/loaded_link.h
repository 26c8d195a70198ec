#pragma once

#include <string>

#include "kavo/link.h"

namespace kavo {

// A link library with one handle of it. Opening throws Error (KAVO_LINK) with the path and the loader's or the link's
// own message.
class LoadedLink {
 public:
  // Loads the library at `path` and makes a handle.
  explicit LoadedLink(const std::string& path);
  ~LoadedLink();
  LoadedLink(const LoadedLink&) = delete;
  LoadedLink& operator=(const LoadedLink&) = delete;

  // The link's own results: 0 is success.
  int ready(trpRec* model) { return ready_(handle_, model); }
  int modify() { return modify_(handle_); }
  int call() { return call_(handle_); }

  // libgrblink.so in the folder that holds this library.
  static std::string defaultPath();

 private:
  kavo_link_free free_ = nullptr;
  kavo_link_ready ready_ = nullptr;
  kavo_link_call modify_ = nullptr, call_ = nullptr;
  void* handle_ = nullptr;
};

}  // namespace kavo
