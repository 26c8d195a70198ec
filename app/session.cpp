#include "app/session.h"

#include "app/failure.h"
#include "app/words.h"

namespace app {

Session::Session() { check(kavo_create(&model_)); }

void Session::openLink(const std::string& path) {
  check(kavo_open_link(model_, path.empty() ? nullptr : path.c_str()));
}

kavo_outcome Session::outcome() const {
  kavo_outcome outcome;
  check(kavo_get_outcome(model_, &outcome));
  return outcome;
}

std::string Session::solverText() const {
  const char* text = nullptr;
  check(kavo_solver_text(model_, &text));
  return text;
}

std::string Session::name(int kind, std::size_t index) const {
  const char* text = nullptr;
  check(kavo_name(model_, kind, index, &text));
  return text;
}

std::vector<std::string> Session::notes() const {
  std::vector<std::string> notes = ownNotes_;
  const char* note = nullptr;
  for (std::size_t i = 0; kavo_note(model_, i, &note) == KAVO_OK && note != nullptr; ++i) notes.emplace_back(note);
  return notes;
}

std::string Session::given(std::string_view name) const {
  std::string value;
  kavo_setting setting{};
  for (std::size_t i = 0; kavo_setting_at(model_, i, &setting) == KAVO_OK && setting.name != nullptr; ++i) {
    if (isSameWord(setting.name, name) && std::string_view(setting.value) != "?") value = setting.value;
  }
  return value;
}

std::vector<kavo_setting_info> Session::settingInfos() const {
  std::vector<kavo_setting_info> infos;
  kavo_setting_info info{};
  for (std::size_t i = 0; kavo_setting_info_at(model_, i, &info) == KAVO_OK && info.name != nullptr; ++i) {
    infos.push_back(info);
  }
  return infos;
}

Session::Values Session::values(int quantity) const {
  Values values;
  kavo_result(model_, quantity, &values.first, &values.count);
  return values;
}

Session::Values Session::objectiveValues() const {
  Values values;
  kavo_objective_values(model_, &values.first, &values.count);
  return values;
}

std::size_t Session::poolSize() const {
  std::size_t count = 0;
  kavo_pool_size(model_, &count);
  return count;
}

double Session::poolObjective(std::size_t point) const {
  double objective = 0;
  Values values;
  check(kavo_pool_point(model_, point, &objective, &values.first, &values.count));
  return objective;
}

std::optional<Session::Violation> Session::violation(int check) const {
  Violation found{};
  if (kavo_violation(model_, check, &found.value, &found.element) != KAVO_OK) return std::nullopt;
  return found;
}

}  // namespace app
