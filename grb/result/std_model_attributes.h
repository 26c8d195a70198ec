#pragma once

#include <memory>
#include <optional>

#include "grb/data.h"
#include "grb/result/callback_values.h"
#include "grb/result/quantity_view.h"
#include "tav/attr/abstract_dict.h"

namespace grb {

// The standard facts of a model and its last solve, by tav::opt::ModelAttribute; in an event of a running solve the
// status and the number of nodes only. Limits are parameters and can be set.
class StdModelAttributes : public tav::attr::AbstractItemDict {
 public:
  StdModelAttributes(const Data& data, std::optional<Event> event);

  int count() const override;
  std::vector<int> keys() const override;
  std::string name(int key) const override;
  std::shared_ptr<const tav::attr::AbstractBaseInfo> info(int /*key*/) const override { return nullptr; }
  bool has(int key) const override;
  tav::attr::BaseItem get(int key) const override;
  using tav::attr::AbstractItemDict::get;
  using tav::attr::AbstractItemDict::has;
  using tav::attr::AbstractItemDict::info;

 private:
  tav::attr::BaseItem ofModel(int key) const;
  tav::attr::BaseItem ofEvent(int key) const;

  std::weak_ptr<GurobiModel> model_;
  CallbackSource source_;
  std::optional<int> status_;
  std::optional<Event> event_;
};

}  // namespace grb
