#include "grb/gurobi/env.h"

#include <string>
#include <utility>

#include "grb/gurobi/constants.h"
#include "grb/gurobi/exception.h"

namespace grb {

GurobiEnv::GurobiEnv(std::shared_ptr<const Library> library)
    : library_(std::move(library)), env_(nullptr, Free{&library_->api()}) {
  GRBenv* made = nullptr;
  const int code = api().GRBemptyenvinternal(&made, kVersionMajor, kVersionMinor, kVersionTechnical);
  env_.reset(made);  // owned before the code is looked at: it may be there even after a failure
  check(code, "GRBemptyenv");
  check(api().GRBsetintparam(env(), "LogToConsole", 0), "GRBsetintparam");
}

void GurobiEnv::start() {
  if (started_) return;
  check(api().GRBstartenv(env()), "GRBstartenv");
  started_ = true;
}

void GurobiEnv::tuneModels(std::span<GRBmodel* const> models) const {
  check(api().GRBtunemodels(env(), static_cast<int>(models.size()), const_cast<GRBmodel**>(models.data())),
        "GRBtunemodels");
}

// The place that is told stays the same when this file is edited: people search for it.
// Without a handle there is no text to ask for.
void GurobiEnv::fail(int code, std::string_view function) const {
  throw GurobiException(env_ ? api().GRBgeterrormsg(env()) : "", code, function,
                        {"grb/gurobi", 54, 34, "void grb::GurobiEnv::check(int, std::string_view) const"});
}

}  // namespace grb
