#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "kavo/kavo.h"
#include "tests/readers/folder.h"

namespace kavo_test {

// A handle that is freed with the test.
class Model {
 public:
  Model() { EXPECT_EQ(kavo_create(&handle_), KAVO_OK); }
  ~Model() { EXPECT_EQ(kavo_free(&handle_), KAVO_OK); }
  Model(const Model&) = delete;
  Model& operator=(const Model&) = delete;
  operator trpRec*() const { return handle_; }

 private:
  trpRec* handle_ = nullptr;
};

// max 3x + 2y, 1 <= x + y <= 4 named "c1", x + 3y = 6, 0 <= x <= 3 named "x", y in {0, 1, ...} without name.
inline void fillSmall(trpRec* model) {
  const double lower[] = {0, 0}, upper[] = {3, 1e20}, costs[] = {3, 2}, sides[] = {1, 6, 4, 6}, values[] = {1, 1, 1, 3};
  const unsigned char type[] = {KAVO_CONTINUOUS, KAVO_INTEGER};
  const char *names[] = {"x", nullptr}, *rowNames[] = {"c1", ""};
  const std::size_t start[] = {0, 2, 4};
  const int columns[] = {0, 1, 0, 1};
  ASSERT_EQ(kavo_add_columns(model, 2, lower, upper, type, names), KAVO_OK) << kavo_last_error();
  ASSERT_EQ(kavo_add_rows(model, 2, sides, sides + 2, start, columns, values, rowNames), KAVO_OK) << kavo_last_error();
  ASSERT_EQ(kavo_add_objective(model, KAVO_MAXIMIZE, 0, 2, columns, costs, "profit"), KAVO_OK) << kavo_last_error();
}

// Dual values, reduced costs and basis statuses of the small model, for the setting `give` of the fake link.
inline constexpr const char* kDualsAndBasis = "values 3 1.5 2.5;values 1 -0.5 0.5;basis 0 1 2;basis 1 1 2";

using Settings = std::vector<std::pair<std::string, std::string>>;

// Solves through the fake link (tests/fake_link), which answers what the settings say.
inline int solveFake(trpRec* model, const Settings& settings) {
  for (const auto& [name, value] : settings)
    EXPECT_EQ(kavo_set_option(model, name.c_str(), value.c_str(), "test", 1), KAVO_OK);
  EXPECT_EQ(kavo_open_link(model, FAKE_LINK), KAVO_OK) << kavo_last_error();
  const int status = kavo_solve(model);
  EXPECT_EQ(kavo_close_link(model), KAVO_OK);
  return status;
}

// Solves through a link that is open already, and returns the log.
inline std::string logOfSolve(trpRec* model, const Settings& settings, int expected = KAVO_OK) {
  std::string log;
  EXPECT_EQ(kavo_clear_options(model), KAVO_OK);
  for (const auto& [name, value] : settings)
    EXPECT_EQ(kavo_set_option(model, name.c_str(), value.c_str(), "test", 1), KAVO_OK);
  const auto write = [](const char* text, std::size_t length, void* data) {
    static_cast<std::string*>(data)->append(text, length);
  };
  EXPECT_EQ(kavo_set_log(model, write, &log), KAVO_OK);
  EXPECT_EQ(kavo_solve(model), expected) << kavo_last_error();
  EXPECT_EQ(kavo_set_log(model, nullptr, nullptr), KAVO_OK);
  return log;
}

inline std::vector<std::string> notesOf(const trpRec* model) {
  std::vector<std::string> notes;
  const char* note = nullptr;
  for (std::size_t i = 0; kavo_note(model, i, &note) == KAVO_OK && note != nullptr; ++i) notes.emplace_back(note);
  return notes;
}

inline std::string contentOf(const std::string& path) {
  std::ostringstream text;
  text << std::ifstream(path, std::ios::binary).rdbuf();
  return text.str();
}

inline nlohmann::json jsonOf(const trpRec* model, const Folder& folder) {
  EXPECT_EQ(kavo_write_json(model, (folder / "m.json").c_str()), KAVO_OK) << kavo_last_error();
  return nlohmann::json::parse(contentOf(folder / "m.json"));
}

inline std::string solOf(const trpRec* model, const Folder& folder, const char* message = "", int code = -1) {
  EXPECT_EQ(kavo_write_sol(model, (folder / "m.sol").c_str(), message, code), KAVO_OK) << kavo_last_error();
  return contentOf(folder / "m.sol");
}

inline kavo_outcome outcomeOf(const trpRec* model) {
  kavo_outcome outcome;
  EXPECT_EQ(kavo_get_outcome(model, &outcome), KAVO_OK) << kavo_last_error();
  return outcome;
}

// The small model and a folder for its files.
class SmallModel : public testing::Test {
 protected:
  SmallModel() { fillSmall(model); }
  void solve(const Settings& settings = {}) { EXPECT_EQ(solveFake(model, settings), KAVO_OK) << kavo_last_error(); }

  Model model;
  Folder folder;
};

inline void writeTo(const std::string& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

}  // namespace kavo_test
