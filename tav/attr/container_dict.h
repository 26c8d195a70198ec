#pragma once

#include <concepts>
#include <memory>
#include <utility>

#include "tav/attr/abstract_dict.h"

namespace tav::attr {

// A handle that shares a container dictionary; made from nothing it is the dictionary without entries.
class ContainerDict final : public AbstractContainerDict {
 public:
  ContainerDict() = default;

  template <std::derived_from<AbstractContainerDict> D>
  ContainerDict(std::shared_ptr<D> dict) : dict_(std::move(dict)) {}  // NOLINT: implicit, a dictionary is its handle

  template <std::derived_from<AbstractContainerDict> D, class... Args>
  static ContainerDict make(Args&&... args) {
    return ContainerDict(std::make_shared<const D>(std::forward<Args>(args)...));
  }

  explicit operator bool() const { return dict_ != nullptr; }
  const std::shared_ptr<const AbstractContainerDict>& pointer() const { return dict_; }

  using Info = std::shared_ptr<const AbstractBaseInfo>;
  int count() const override { return dict_ ? dict_->count() : 0; }
  std::vector<int> keys() const override { return dict_ ? dict_->keys() : std::vector<int>(); }
  std::string name(int key) const override { return dict_ ? dict_->name(key) : std::string(); }
  Info info(int key) const override { return dict_ ? dict_->info(key) : nullptr; }
  Info info(std::string_view wanted) const override { return dict_ ? dict_->info(wanted) : nullptr; }
  bool isExtensible() const override { return dict_ && dict_->isExtensible(); }
  bool has(int key) const override { return dict_ && dict_->has(key); }
  bool has(std::string_view wanted) const override { return dict_ && dict_->has(wanted); }
  BaseContainer empty() const override { return dict_ ? dict_->empty() : BaseContainer(); }
  BaseContainer get(int key) const override { return dict_ ? dict_->get(key) : BaseContainer(); }
  BaseContainer get(std::string_view wanted) const override { return dict_ ? dict_->get(wanted) : BaseContainer(); }
  std::optional<int> find(std::string_view wanted) const override {
    return dict_ ? dict_->find(wanted) : std::optional<int>();
  }

 private:
  std::shared_ptr<const AbstractContainerDict> dict_;
};

}  // namespace tav::attr
