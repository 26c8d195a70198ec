// A log and a callback object that note what they hear.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tav/opt/callback.h"
#include "tav/opt/log.h"

namespace grb {

struct TextLog : tav::opt::AbstractLog {
  void write(std::string_view more) override { text += more; }
  std::string text;
};

struct Listener : tav::opt::AbstractCallback {
  void notify(const tav::opt::ContextEntry& entry) override {
    heard.emplace_back(entry.kind, entry.id);
    if (action) action(entry);
  }
  std::vector<std::pair<int, int>> heard;  // kind and id
  std::function<void(const tav::opt::ContextEntry&)> action;
};

}  // namespace grb
