#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "kavo/kavo.h"

namespace app {

// A model of kavo with the calls that the command line needs; they throw Failure.
class Session {
 public:
  Session();
  ~Session() { kavo_free(&model_); }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  trpRec* model() const { return model_; }
  // path: "" for the link that belongs to the program.
  void openLink(const std::string& path);

  kavo_outcome outcome() const;
  std::string solverText() const;
  // With the default name when none was given.
  std::string name(int kind, std::size_t index) const;
  // Of kavo, and those that were added.
  std::vector<std::string> notes() const;
  void addNote(std::string note) { ownNotes_.push_back(std::move(note)); }

  // The last value given to the link for a setting, its name in any case; "" for none.
  std::string given(std::string_view name) const;
  // Everything that can be set; there is some once the link is open.
  std::vector<kavo_setting_info> settingInfos() const;

  // A quantity of the result; count 0 and null when the solve has not given it.
  struct Values {
    const double* first = nullptr;
    std::size_t count = 0;
  };
  Values values(int quantity) const;
  // The values of the objectives at the point.
  Values objectiveValues() const;
  std::size_t poolSize() const;
  double poolObjective(std::size_t point) const;

  struct Violation {
    double value;
    long long element;
  };
  std::optional<Violation> violation(int check) const;

 private:
  trpRec* model_ = nullptr;
  std::vector<std::string> ownNotes_;
};

}  // namespace app
