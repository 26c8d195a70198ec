#include "kavo/link/loaded_link.h"

#include <dlfcn.h>
#include <fmt/format.h>

#include <array>
#include <cstring>
#include <memory>

#include "kavo/error.h"

namespace kavo {

namespace {

template <class Function>
Function resolve(void* library, const char* name, const std::string& path) {
  void* found = dlsym(library, name);
  if (found == nullptr) {
    throw Error(KAVO_LINK, fmt::format("{} is not a link: it does not export {}", path, name));
  }
  return reinterpret_cast<Function>(found);
}

// What grbCreate left in its buffer, which it may fill without a terminating NUL.
std::string messageIn(const std::array<char, 4096>& buffer) {
  return {buffer.data(), strnlen(buffer.data(), buffer.size())};
}

}  // namespace

// A link's solver may leave threads or exit handlers behind, so its code stays mapped when the link is closed.
LoadedLink::LoadedLink(const std::string& path) {
  const std::unique_ptr<void, int (*)(void*)> library(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE),
                                                      dlclose);
  if (!library) throw Error(KAVO_LINK, fmt::format("cannot load the link: {}", dlerror()));
  const auto create = resolve<kavo_link_create>(library.get(), "grbCreate", path);
  free_ = resolve<kavo_link_free>(library.get(), "grbFree", path);
  ready_ = resolve<kavo_link_ready>(library.get(), "grbReadyAPI", path);
  call_ = resolve<kavo_link_call>(library.get(), "grbCallSolver", path);
  modify_ = resolve<kavo_link_call>(library.get(), "grbModifyProblem", path);
  std::array<char, 4096> message{};
  if (create(&handle_, message.data(), static_cast<int>(message.size())) != 0)
    throw Error(KAVO_LINK, messageIn(message));
}

LoadedLink::~LoadedLink() { free_(&handle_); }

std::string LoadedLink::defaultPath() {
  Dl_info info;
  if (dladdr(reinterpret_cast<void*>(&kavo_create), &info) == 0 || info.dli_fname == nullptr) {
    throw Error(KAVO_LINK, "cannot tell where this library stands; give the path of the link");
  }
  const std::string self = info.dli_fname;
  const auto slash = self.rfind('/');
  return (slash == std::string::npos ? "./" : self.substr(0, slash + 1)) + "libgrblink.so";
}

}  // namespace kavo
