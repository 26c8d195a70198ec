#include "app/report/page.h"

#include <fmt/chrono.h>
#include <fmt/format.h>

#include <ctime>
#include <filesystem>

#include "app/failure.h"
#include "app/report/html.h"
#include "app/report/inputs.h"
#include "app/report/results.h"
#include "app/report/search.h"
#include "app/report/style.h"

namespace app::report {

namespace {

std::string now() {
  const std::time_t time = std::time(nullptr);
  std::tm local{};
  localtime_r(&time, &local);
  return fmt::format("{:%Y-%m-%d %H:%M:%S}", local);
}

}  // namespace

std::string page(const Session& session, const Path& path, const std::string& model) {
  const std::string name = escaped(std::filesystem::path(model).filename().string());
  std::string text = fmt::format(
      "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      "<meta name=\"viewport\" content=\"width=device-width\">\n<title>{0}: grblink report</title>\n"
      "<link rel=\"icon\" href=\"data:,\">\n<style>{1}</style>\n</head>\n<body>\n<main>\n<h1>{0}</h1>\n",
      name, kStyle);
  text += outcome(session);
  text += section("Notes", notes(session));
  text += section("Search", search(session, path));
  text += section("Conflict", conflict(session));
  text += section("Answers", answers(session));
  text += section("Model", statistics(session));
  text += section("Settings", settings(session));
  text += section("Variables", variables(session));
  text += section("Rows", rows(session));
  return text + fmt::format("</main>\n<footer>grblink {}, {}; {}; model {}</footer>\n</body>\n</html>\n",
                            kavo_version(), escaped(session.solverText()), now(), escaped(model));
}

void write(const std::string& file, const Session& session, const Path& path, const std::string& model) {
  const std::string text = page(session, path, model);
  check(kavo_write_text(file.c_str(), text.data(), text.size()));
}

}  // namespace app::report
