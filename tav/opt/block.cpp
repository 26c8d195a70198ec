#include "tav/opt/block.h"

namespace tav::opt {

void BlockGroup::set(int key, std::string name, attr::BaseContainer container) {
  entries_.insert_or_assign(key, Entry{std::move(name), std::move(container)});
}

int BlockGroup::count() const { return static_cast<int>(entries_.size()); }

std::vector<int> BlockGroup::keys() const {
  std::vector<int> result;
  result.reserve(entries_.size());
  for (const auto& [key, entry] : entries_) result.push_back(key);
  return result;
}

std::string BlockGroup::name(int key) const {
  const auto found = entries_.find(key);
  return found == entries_.end() ? std::string() : found->second.name;
}

bool BlockGroup::has(int key) const { return entries_.contains(key); }

attr::BaseContainer BlockGroup::get(int key) const {
  const auto found = entries_.find(key);
  return found == entries_.end() ? attr::BaseContainer() : found->second.container;
}

void Block::setGroup(std::string_view tag, std::shared_ptr<const attr::AbstractContainerDict> group) {
  groups_.insert_or_assign(std::string(tag), std::move(group));
}

attr::ContainerDict Block::group(std::string_view tag) const {
  const auto found = groups_.find(tag);
  return found == groups_.end() ? attr::ContainerDict() : attr::ContainerDict(found->second);
}

}  // namespace tav::opt
