// A stand-in for the Gurobi library that records every call and answers as Gurobi would, as far as bookkeeping goes: it
// queues changes until an update, keeps parameters and attributes, and solves nothing. What a solve would find is
// scripted; any call can be made to fail.
//
//   auto gurobi = gurobi_double::GurobiDouble::make();
//   grb::GurobiModel model(gurobi->library());
//   model.start();
//   gurobi->failCall(grb::Fn::GRBaddconstr, 10003, "Invalid constraint sense: 'Q'");
//   ...
//   EXPECT_THAT(gurobi->takeCalls(), ElementsAre("GRBaddconstr(m1, 1, [0], [1], 'Q', 0, null)"));
//
// Texts of calls: environments are e1, e2..., models m1, m2..., a model's own environment m1.env; arrays whose length
// is known are written out; other pointers are * or null.
//
// One double lives at a time, since the rows of a table are plain functions. Libraries made from it keep it alive.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "grb/gurobi/library.h"
#include "tests/double/handles.h"

namespace gurobi_double {

using grb::Fn;

class GurobiDouble : public std::enable_shared_from_this<GurobiDouble> {
 public:
  static std::shared_ptr<GurobiDouble> make();
  ~GurobiDouble();

  std::shared_ptr<const grb::Library> library();

  // --- The record ---

  /// The calls so far, in order, without those of hidden functions. GRBgetenv and GRBgeterrormsg are hidden at first:
  /// they only look something up.
  std::vector<std::string> calls() const;
  /// The same, and begins a new record.
  std::vector<std::string> takeCalls();
  void hide(Fn function) { hidden_.insert(function); }
  void show(Fn function) { hidden_.erase(function); }
  /// How often a function was called since the record began, hidden or not.
  int count(Fn function) const;

  // --- Failures: the call is recorded, changes nothing and returns the code. As in Gurobi, a failing add call throws
  // away everything that is queued. ---

  /// The nth call of a function from now on.
  void failCall(Fn function, int code, std::string message, int nth = 1);
  /// The nth call from now on, among all functions that return a code.
  void failAnyCall(int nth, int code, std::string message);
  /// Whether a failure that was asked for is still to come.
  bool failurePending() const { return failure_.has_value(); }
  /// The function that failed last because it was asked to.
  std::optional<Fn> lastFailed() const { return lastFailed_; }

  // --- Scripts ---

  /// Runs inside every call of a function, also one that fails, after it was recorded and before it is answered.
  void onCall(Fn function, std::function<void()> action) { actions_[function] = std::move(action); }
  /// Values that reads of every model see at once, queued or not: scalar attributes and one value per element.
  void scriptAttr(const std::string& name, double value);
  void scriptAttr(const std::string& name, const std::string& value);
  void scriptElements(const std::string& name, const std::vector<double>& values);
  /// Takes a scripted attribute away again, or an availability.
  void unscript(const std::string& name);
  /// What GRBisattravailable answers; without it, whether the double has a value.
  void scriptAvailable(const std::string& name, bool available);
  /// The value that GRBfeasrelax hands back.
  void scriptRelaxation(double value) { state_.relaxation = value; }
  /// What GRBcbget hands out, as the type that the code stands for.
  void scriptCallbackInt(int what, int value) { state_.callbackInts[what] = value; }
  void scriptCallbackDoubles(int what, std::vector<double> values) { state_.callbackDoubles[what] = std::move(values); }
  /// A parameter with its type and bounds; sets beyond them fail as in Gurobi. Others are taken as they come.
  void defineParam(ParamDefinition definition);
  /// From now on, a parameter without definition is an error.
  void refuseUnknownParams() { state_.unknownParamsRefused = true; }

  // --- Looking in ---

  /// The n-th model or environment made, counted from 1.
  GRBmodel& model(int n) { return *state_.models.at(static_cast<std::size_t>(n - 1)); }
  GRBenv& env(int n) { return *state_.envs.at(static_cast<std::size_t>(n - 1)); }
  /// Handles not freed yet, such as "m1".
  std::vector<std::string> openHandles() const;
  /// Uses of handles after they were freed, as texts of calls. Empty in a correct program.
  const std::vector<std::string>& misuses() const { return misuses_; }
  /// Hands text to the log callback of a model, an event to its callback (if its mask asks for it).
  void fireLog(GRBmodel& model, std::string text);
  int fireCallback(GRBmodel& model, int where);

  // --- For the rows of the table ---

  static GurobiDouble& current();
  /// Records a call and returns the code that it must fail with, or 0.
  int enter(Fn function, std::string text, bool returnsCode);
  void note(std::string misuse) { misuses_.push_back(std::move(misuse)); }
  const std::string& failureMessage() const { return failureMessage_; }

  State& state() { return state_; }

 private:
  struct Failure {
    std::optional<Fn> function;
    int remaining;
    int code;
    std::string message;
  };
  struct Call {
    Fn function;
    std::string text;
  };

  GurobiDouble() = default;

  mutable std::mutex mutex_;  // guards the record and the failure: interrupts come from other threads
  std::vector<Call> calls_;
  std::set<Fn> hidden_{Fn::GRBgetenv, Fn::GRBgeterrormsg};
  std::optional<Failure> failure_;
  std::string failureMessage_;
  std::optional<Fn> lastFailed_;
  std::map<Fn, std::function<void()>> actions_;
  std::vector<std::string> misuses_;
  State state_;
};

/// The table of the living double.
grb::Api recordingTable();

}  // namespace gurobi_double
