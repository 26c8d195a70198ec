#include <fmt/core.h>

#include <filesystem>
#include <memory>
#include <string>

#include "brel/plugin/plugins.h"
#include "brel/plugin/writable.h"

namespace brel::plugin {
namespace {

std::string fileOf(const std::string& base, int number) { return fmt::format("{}{}.sol", base, number); }

class DumpListener : public watch::Listener {
 public:
  DumpListener(trpRec* host, std::string base) : host_(host), base_(std::move(base)) {}

  void hear(const watch::Progress& now) override {
    if (now.reason != watch::Reason::incumbent) return;
    const std::string file = fileOf(base_, written_ + 1);
    if (kavo_link_write_point(host_, file.c_str(), now.incumbent, now.point.data()) == KAVO_OK) {
      ++written_;
    } else if (lost_++ == 0) {
      failure_ = kavo_last_error();
    }
  }

  int written() const { return written_; }
  int lost() const { return lost_; }
  const std::string& failure() const { return failure_; }

 private:
  trpRec* host_;
  std::string base_;
  int written_ = 0, lost_ = 0;
  std::string failure_;  // the first
};

class DumpSolutions : public AbstractPlugin {
 public:
  void prepare(Solve& solve) override {
    base_ = solve.values.text(settings::PluginAttribute::dumpBase);
    if (!base_.empty()) checkWritable(solve, settings::PluginAttribute::dumpBase, fileOf(base_, 1));
  }

  void loaded(Solve& solve) override {
    if (base_.empty()) return;
    listener_ = std::make_shared<DumpListener>(solve.host, base_);
    solve.watch.add(listener_);
  }

  void finish(Solve& solve) override {
    if (!listener_) return;
    const int written = listener_->written();
    solve.log.writeLine(written == 0
                            ? "no incumbent to dump"
                            : fmt::format("incumbents dumped: {} to {}", fileOf(base_, 1), fileOf(base_, written)));
    if (listener_->lost() > 0) {
      kavo_link_lost_file(
          solve.host,
          fmt::format("{} incumbents could not be dumped: {}", listener_->lost(), listener_->failure()).c_str());
    }
    const std::string next = fileOf(base_, written + 1);
    std::error_code ignored;
    if (std::filesystem::exists(next, ignored)) {
      kavo_link_note(solve.host,
                     fmt::format("{} incumbents were dumped; {} is from an earlier run", written, next).c_str());
    }
  }

 private:
  std::string base_;
  std::shared_ptr<DumpListener> listener_;
};

}  // namespace

std::unique_ptr<AbstractPlugin> dumpSolutions() { return std::make_unique<DumpSolutions>(); }

}  // namespace brel::plugin
