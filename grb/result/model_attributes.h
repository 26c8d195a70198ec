#pragma once

#include <memory>

#include "grb/gurobi/model.h"
#include "tav/attr/abstract_dict.h"

namespace grb {

// The Gurobi parameters by name, in any case, with type, bounds and default as Gurobi tells them: items are settable
// and carry their info. It can be asked before the environment is started. Nothing is provided once the model is gone,
// nor the two parameters that send the log elsewhere than to the framework (LogToConsole, LogFile).
class ModelAttributes : public tav::attr::AbstractItemDict {
 public:
  explicit ModelAttributes(std::weak_ptr<GurobiModel> model) : model_(std::move(model)) {}

  bool has(std::string_view name) const override;
  tav::attr::BaseItem get(std::string_view name) const override;
  std::shared_ptr<const tav::attr::AbstractBaseInfo> info(std::string_view name) const override;

  // Nothing has a number.
  int count() const override { return 0; }
  std::vector<int> keys() const override { return {}; }
  std::string name(int /*key*/) const override { return {}; }
  bool has(int /*key*/) const override { return false; }
  tav::attr::BaseItem get(int /*key*/) const override { return empty(); }
  std::shared_ptr<const tav::attr::AbstractBaseInfo> info(int /*key*/) const override { return nullptr; }

 private:
  std::weak_ptr<GurobiModel> model_;
};

}  // namespace grb
