#include "grb/gurobi/model.h"

#include <utility>

#include "grb/gurobi/constants.h"
#include "grb/gurobi/exception.h"

// The places told by the errors of this file are constants: they stay the same when the file is edited, and people
// search for them.

namespace grb {
namespace {

constexpr tav::util::SourceLocation kCheck{"grb/gurobi", 164, 34,
                                           "void grb::GurobiModel::check(int, std::string_view) const"};

}  // namespace

GurobiModel::GurobiModel(std::shared_ptr<const Library> library)
    : GurobiModel(std::make_shared<GurobiEnv>(std::move(library))) {}

GurobiModel::GurobiModel(std::shared_ptr<GurobiEnv> env)
    : env_(std::move(env)), api_(&env_->api()), model_(nullptr, Free{api_}) {}

void GurobiModel::start() {
  env_->start();
  GRBmodel* made = nullptr;
  const int code = api_->GRBnewmodel(env_->env(), &made, "", 0, nullptr, nullptr, nullptr, nullptr, nullptr);
  install(made, code, "GRBnewmodel", {"grb/gurobi", 205, 30, "void grb::GurobiModel::start()"});
}

void GurobiModel::start(const char* filename) {
  env_->start();
  GRBmodel* made = nullptr;
  const int code = api_->GRBreadmodel(env_->env(), filename, &made);
  install(made, code, "GRBreadmodel", {"grb/gurobi", 214, 30, "void grb::GurobiModel::start(const char*)"});
}

void GurobiModel::clear() {
  if (!model_) return;
  GRBmodel* made = nullptr;
  const int code = api_->GRBnewmodel(envInUse(), &made, "", 0, nullptr, nullptr, nullptr, nullptr, nullptr);
  install(made, code, "GRBnewmodel", {"grb/gurobi", 224, 30, "void grb::GurobiModel::clear()"});
  dirty_ = false;
}

void GurobiModel::install(GRBmodel* made, int code, std::string_view function,
                          const tav::util::SourceLocation& location) {
  std::unique_ptr<GRBmodel, Free> owner(made, Free{api_});
  if (code != 0) throw GurobiException("Model creation failed", code, function, location);
  model_ = std::move(owner);
  usable_ = model_.get();
  fixed_ = relaxed_ = false;  // the new one is neither
}

GRBenv* GurobiModel::envInUse() const { return model_ ? api_->GRBgetenv(model_.get()) : env_->env(); }

void GurobiModel::updateIfPending() {
  if (!dirty_) return;
  // Parameters set before start() leave nothing to fold in.
  if (usable_ != nullptr && api_->GRBupdatemodel(usable_) == error::kOutOfMemory) {
    updateFailure_ = api_->GRBgeterrormsg(envInUse());
    usable_ = nullptr;
  }
  dirty_ = false;
}

void GurobiModel::fail(int code, std::string_view function) const {
  throw GurobiException(api_->GRBgeterrormsg(envInUse()), code, function, kCheck);
}

void GurobiModel::failUnusable() const {
  if (model_) throw GurobiException(updateFailure_, error::kOutOfMemory, "GRBupdatemodel", kCheck);
  throw tav::Exception("Requires model to be started first.",
                       {"grb/gurobi", 150, 29, "GRBmodel* grb::GurobiModel::model() const"});
}

}  // namespace grb
