#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "tav/attr/container_dict.h"

namespace tav::opt {

// One group of a block's attributes: containers by number, each with a name. An attribute that is absent yields the
// empty container.
class BlockGroup : public attr::AbstractContainerDict {
 public:
  void set(int key, std::string name, attr::BaseContainer container);

  int count() const override;
  std::vector<int> keys() const override;
  std::string name(int key) const override;
  std::shared_ptr<const attr::AbstractBaseInfo> info(int) const override { return nullptr; }
  bool has(int key) const override;
  attr::BaseContainer get(int key) const override;
  using attr::AbstractContainerDict::get;
  using attr::AbstractContainerDict::has;
  using attr::AbstractContainerDict::info;

 private:
  struct Entry {
    std::string name;
    attr::BaseContainer container;
  };
  std::map<int, Entry> entries_;
};

// A block of elements of one kind on their way to a solver: their attributes in groups, each found by a tag. The
// standard group ("tav:variable" or "tav:constraint") says with its type container how many elements there are; a
// solver's own group bears the solver's short name. The containers usually view the host's arrays, so a block must not
// outlive them.
class Block {
 public:
  void setGroup(std::string_view tag, std::shared_ptr<const attr::AbstractContainerDict> group);
  // The empty dictionary when there is no such group.
  attr::ContainerDict group(std::string_view tag) const;

 private:
  std::map<std::string, std::shared_ptr<const attr::AbstractContainerDict>, std::less<>> groups_;
};

class VariableContainer : public Block {};
class ConstraintContainer : public Block {};
// Constraints of which each is linked to a variable that switches it on; a further group (tag::kConstraintLink) tells
// of the links.
class LinkedConstraintContainer : public Block {};

}  // namespace tav::opt
