#include "tests/reader_mps/mps_text.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <zlib.h>

#include <filesystem>

#include "kavo/error.h"
#include "kavo/reader/reader.h"

namespace kavo::reader {

const std::string kSample =
    "NAME          diet plan\n"
    "OBJSENSE\n"
    "    MAX\n"
    "ROWS\n"
    " N  cost\n"
    " L  lim1\n"
    " G  lim2\n"
    "COLUMNS\n"
    "    x         cost               1.0   lim1               2.0\n"
    "    x         lim2               -.5\n"
    "    M1        'MARKER'                 'INTORG'\n"
    "    y         cost            +1.5e1   lim1               2.5\n"
    "    M2        'MARKER'                 'INTEND'\n"
    "RHS\n"
    "    RHS       lim1                10   lim2                 3\n"
    "    RHS       cost               -7.\n"
    "RANGES\n"
    "    RNG       lim1                 4\n"
    "BOUNDS\n"
    " UP BND       x                  4.0\n"
    " MI BND       x\n"
    "ENDATA\n";

const std::string kBlankSample =
    "NAME\n"
    "ROWS\n"
    " N  the cost\n"
    " L  at most\n"
    " E  12 3\n"
    "COLUMNS\n"
    "    x 1       the cost             1   at most              2.\n"
    "    x 1       12 3                3.0\n"
    "    M         'MARKER'                 'INTORG'\n"
    "    i         the cost             4\n"
    "RHS\n"
    "              at most              7   12 3                  8\n"
    "RANGES\n"
    "    my range  at most              2\n"
    "BOUNDS\n"
    " FR           x 1\n"
    " UP my set    i                    9\n"
    "ENDATA\n";

namespace {

// A file that is gone at the end.
class TemporaryFile {
 public:
  TemporaryFile(const std::string& name, std::string_view text)
      : path_(fmt::format("{}/{}-{}", testing::TempDir(), ::getpid(), name)) {
    // The modes of zlib: "T" writes plain text.
    gzFile file = gzopen(path_.c_str(), name.ends_with(".gz") ? "wb" : "wbT");
    if (file == nullptr ||
        gzwrite(file, text.data(), static_cast<unsigned>(text.size())) != static_cast<int>(text.size())) {
      ADD_FAILURE() << "cannot write " << path_;
    }
    gzclose(file);
  }
  ~TemporaryFile() { std::filesystem::remove(path_); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

std::string terms(const Model& model, const int* column, const double* value, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += fmt::format(" {} {}", value[i], model.columns.names.at(static_cast<std::size_t>(column[i])));
  }
  return text;
}

}  // namespace

Model readText(std::string_view text, const std::string& name) {
  const TemporaryFile file(name, text);
  Model model = readMps(file.path());
  EXPECT_EQ(model.file, file.path());
  return model;
}

std::string messageOf(std::string_view text, kavo_status status) {
  try {
    readText(text);
  } catch (const Error& error) {
    EXPECT_EQ(error.status(), status) << error.what();
    return error.what();
  }
  ADD_FAILURE() << "this was read:\n" << text;
  return "";
}

std::string describe(const Model& model) {
  std::string text;
  for (const Objective& o : model.objectives) {
    text += fmt::format("{} {}:{}{}\n", o.sense == KAVO_MAXIMIZE ? "max" : "min", o.name,
                        terms(model, o.column.data(), o.value.data(), o.value.size()),
                        o.constant == 0 ? std::string() : fmt::format(" {:+}", o.constant));
  }
  for (std::size_t i = 0; i < model.rows.size(); ++i) {
    const std::size_t start = model.rows.start[i];
    text +=
        fmt::format("{} [{}, {}]:{}\n", model.rows.names.at(i), model.rows.lower[i], model.rows.upper[i],
                    terms(model, &model.rows.column[start], &model.rows.value[start], model.rows.start[i + 1] - start));
  }
  for (std::size_t i = 0; i < model.columns.size(); ++i) {
    text += fmt::format("{} {} [{}, {}]\n", model.columns.names.at(i), "CBISN"[model.columns.type[i]],
                        model.columns.lower[i], model.columns.upper[i]);
  }
  return text;
}

std::string with(const Extra& extra) {
  const auto section = [](const char* name, const std::string& text) {
    return text.empty() ? text : fmt::format("{}\n{}\n", name, text);
  };
  return "NAME small\n" + extra.head +
         "ROWS\n N obj\n L l\n G g\n E e\nCOLUMNS\n x obj 1 l 2\n x g 3\n y e 4\n"
         " M 'MARKER' 'INTORG'\n i obj 5 l 6\n M 'MARKER' 'INTEND'\n" +
         section("RHS", extra.rhs) + section("RANGES", extra.ranges) + section("BOUNDS", extra.bounds) + "ENDATA\n";
}

}  // namespace kavo::reader
