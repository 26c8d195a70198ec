#include <fmt/core.h>

#include <cmath>
#include <memory>
#include <string>

#include "brel/plugin/line_file.h"
#include "brel/plugin/plugins.h"
#include "brel/plugin/steps.h"
#include "brel/plugin/writable.h"

namespace brel::plugin {
namespace {

using settings::PluginAttribute;

// A number as it reads back; empty for one that is not known.
std::string field(double value) { return std::isnan(value) ? std::string() : fmt::format("{}", value); }

class TraceListener : public watch::Listener {
 public:
  TraceListener(const std::string& path, const settings::PluginValues& values)
      : file_(path),
        steps_(values.whole(PluginAttribute::traceNodes), values.number(PluginAttribute::traceSeconds)),
        withIncumbents_(values.whole(PluginAttribute::traceIncumbents) != 0) {
    file_.add("seconds,nodes,incumbent,bound,gap,reason");
  }

  void hear(const watch::Progress& now) override {
    hasSearch_ = hasSearch_ || !std::isnan(now.nodes) || now.solutions > 0;
    if (const char* reason = reasonOf(now)) {
      file_.add(fmt::format("{:.6f},{},{},{},{},{}", now.seconds, field(now.nodes), field(now.incumbent),
                            field(now.bound), field(now.gap), reason));
    }
  }

  // Whether there was a search in a tree at all.
  bool hasSearch() const { return hasSearch_; }
  const std::optional<std::string>& failure() const { return file_.failure(); }

 private:
  // Null: no line.
  const char* reasonOf(const watch::Progress& now) {
    if (now.reason == watch::Reason::end) return "end";
    if (now.reason == watch::Reason::incumbent && withIncumbents_) return "incumbent";
    if (steps_.passedNodes(now)) return "node";
    return steps_.passedSeconds(now) ? "time" : nullptr;
  }

  LineFile file_;
  Steps steps_;
  bool withIncumbents_;
  bool hasSearch_ = false;
};

class Trace : public AbstractPlugin {
 public:
  void prepare(Solve& solve) override {
    path_ = solve.values.text(PluginAttribute::trace);
    if (!path_.empty()) checkWritable(solve, PluginAttribute::trace, path_);
  }

  void loaded(Solve& solve) override {
    if (path_.empty()) return;
    listener_ = std::make_shared<TraceListener>(path_, solve.values);
    solve.watch.add(listener_);
  }

  void finish(Solve& solve) override {
    if (!listener_) return;
    if (listener_->failure()) {
      kavo_link_lost_file(solve.host, fmt::format("the trace ends early: {}", *listener_->failure()).c_str());
    } else if (!listener_->hasSearch()) {
      kavo_link_note(solve.host, fmt::format("{} tells of no search: the model needed none", path_).c_str());
    }
  }

 private:
  std::string path_;
  std::shared_ptr<TraceListener> listener_;
};

}  // namespace

std::unique_ptr<AbstractPlugin> trace() { return std::make_unique<Trace>(); }

}  // namespace brel::plugin
