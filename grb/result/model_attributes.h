#pragma once

#include <memory>

#include "grb/gurobi/model.h"
#include "grb/option/catalogue.h"
#include "grb/option/link_options.h"
#include "tav/attr/abstract_dict.h"

namespace grb {

// Everything that a user may set (grb/option/catalogue.h), by key or by name in any case. Items of parameters read and
// write Gurobi, before the environment is started as well; those of options are the options' own. All can be set and
// carry their description, and none takes a value beyond its bounds (tav::CheckException). A parameter that Gurobi has
// and the catalogue leaves out is not provided; nothing is once the model is gone.
//
// The item of a password says only that there is one: it reads "***" when it was set and "" when not.
class ModelAttributes : public tav::attr::AbstractItemDict {
 public:
  ModelAttributes(std::weak_ptr<GurobiModel> model, OptionSet options)
      : model_(std::move(model)), options_(std::move(options)) {}

  int count() const override { return static_cast<int>(keys().size()); }
  std::vector<int> keys() const override;
  std::string name(int key) const override;
  std::shared_ptr<const tav::attr::AbstractBaseInfo> info(int key) const override;
  bool has(int key) const override { return entry(key).has_value(); }
  tav::attr::BaseItem get(int key) const override;

  std::optional<int> find(std::string_view wanted) const override;
  using tav::attr::AbstractItemDict::get;
  using tav::attr::AbstractItemDict::has;
  using tav::attr::AbstractItemDict::info;

 private:
  std::optional<Entry> entry(int key) const;

  std::weak_ptr<GurobiModel> model_;
  OptionSet options_;
};

}  // namespace grb
