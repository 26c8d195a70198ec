#pragma once

#include <memory>
#include <span>
#include <string_view>

#include "grb/gurobi/library.h"

namespace grb {

/// One Gurobi environment: parameters and, once started, a licence. Made with std::make_shared and held by every model
/// made in it.
class GurobiEnv {
 public:
  /// Makes an empty environment for the version that grblink speaks, and switches Gurobi's console output off: its log
  /// goes through the log callback only. Throws GurobiException.
  explicit GurobiEnv(std::shared_ptr<const Library> library);
  GurobiEnv(const GurobiEnv&) = delete;
  GurobiEnv& operator=(const GurobiEnv&) = delete;

  /// Takes the licence, unless that has been done. May be tried again after a failure. Throws GurobiException with the
  /// context "GRBstartenv".
  void start();

  /// The handle, never null.
  GRBenv* env() const noexcept { return env_.get(); }
  bool started() const noexcept { return started_; }

  const Api& api() const noexcept { return library_->api(); }
  const std::shared_ptr<const Library>& library() const noexcept { return library_; }

  /// Does nothing for the code 0; otherwise throws GurobiException with Gurobi's text for the last failure on this
  /// environment, the code and `function` as context.
  void check(int code, std::string_view function) const {
    if (code != 0) [[unlikely]]
      fail(code, function);
  }

  /// Tunes several models of one type together. The handles must come from models of this environment.
  void tuneModels(std::span<GRBmodel* const> models) const;

 private:
  [[noreturn]] void fail(int code, std::string_view function) const;

  struct Free {
    const Api* api;
    void operator()(GRBenv* env) const noexcept { api->GRBfreeenv(env); }
  };

  std::shared_ptr<const Library> library_;
  std::unique_ptr<GRBenv, Free> env_;
  bool started_ = false;
};

}  // namespace grb
