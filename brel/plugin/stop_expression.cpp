#include <fmt/core.h>

#include <cmath>
#include <memory>
#include <string>

#include "brel/plugin/plugins.h"
#include "brel/plugin/rule.h"
#include "brel/plugin/steps.h"
#include "tav/util/exception.h"

namespace brel::plugin {
namespace {

using settings::PluginAttribute;

std::string textOf(const watch::Progress& now) {
  const auto number = [](double value) {
    return std::isnan(value) ? std::string("unknown") : fmt::format("{}", value);
  };
  return fmt::format("time {:.3f}, nodes {}, incumbent {}, bound {}, gap {}, solutions {}", now.seconds,
                     number(now.nodes), number(now.incumbent), number(now.bound), number(now.gap), now.solutions);
}

class StopListener : public watch::Listener {
 public:
  StopListener(const std::string& expression, watch::Watch& watch, const settings::PluginValues& values)
      : expression_(expression),
        rule_(expression),
        watch_(watch),
        steps_(values.whole(PluginAttribute::stopNodes), values.number(PluginAttribute::stopSeconds)),
        tolerance_(values.number(PluginAttribute::stopTolerance)),
        verbosity_(values.whole(PluginAttribute::stopVerbosity)) {}

  void hear(const watch::Progress& now) override {
    if (!stopped_.empty() || now.reason == watch::Reason::end || !isDue(now)) return;
    const bool stops = rule_.isTrue(now);
    if (verbosity_ > 0) watch_.say(checked(now, stops));
    if (!stops) return;
    stopped_ = fmt::format("stopped by the expression {} ({})", expression_, textOf(now));
    watch_.say(stopped_);
    watch_.stopByRule();
  }

  // What stopped the solve; empty when nothing did.
  const std::string& stopped() const { return stopped_; }

 private:
  // Both steps are asked each time, so that each keeps its own pace.
  bool isDue(const watch::Progress& now) {
    const bool atNodes = steps_.passedNodes(now);
    const bool atSeconds = steps_.passedSeconds(now);
    return isBetter(now) || atNodes || atSeconds;
  }

  bool isBetter(const watch::Progress& now) {
    if (now.reason != watch::Reason::incumbent) return false;
    if (!std::isnan(last_) && std::abs(now.incumbent - last_) <= tolerance_) return false;
    last_ = now.incumbent;
    return true;
  }

  std::string checked(const watch::Progress& now, bool result) const {
    const std::string line = fmt::format("stop expression: {}", result);
    return verbosity_ > 1 ? fmt::format("{} ({})", line, textOf(now)) : line;
  }

  std::string expression_;
  Rule rule_;
  watch::Watch& watch_;
  Steps steps_;
  double tolerance_;
  int verbosity_;
  double last_ = watch::Progress::kNone;  // the incumbent that was good enough for a check
  std::string stopped_;
};

class StopExpression : public AbstractPlugin {
 public:
  void prepare(Solve& solve) override {
    const std::string expression = solve.values.text(PluginAttribute::stopExpression);
    if (expression.empty()) return;
    try {
      listener_ = std::make_shared<StopListener>(expression, solve.watch, solve.values);
    } catch (const tav::UserException& wrong) {
      throw tav::UserException(solve.values.heading(PluginAttribute::stopExpression) + wrong.message());
    }
    solve.watch.add(listener_);
  }

  void finish(Solve& solve) override {
    if (listener_ && !listener_->stopped().empty()) kavo_link_note(solve.host, listener_->stopped().c_str());
  }

 private:
  std::shared_ptr<StopListener> listener_;
};

}  // namespace

std::unique_ptr<AbstractPlugin> stopExpression() { return std::make_unique<StopExpression>(); }

}  // namespace brel::plugin
