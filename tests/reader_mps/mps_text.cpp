#include "tests/reader_mps/mps_text.h"

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <unistd.h>
#include <zlib.h>

#include <filesystem>

#include "kavo/error.h"
#include "kavo/model/operators.h"
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

const std::string kBeyondSample =
    "NAME\nROWS\n N  cost 2 1 1e-6 0\n N  goal 1 2.5 0 .1\n L  c1\n G  c2\n E  c3\nCOLUMNS\n"
    " x cost 1 goal 2\n x c1 1 c2 1\n y c1 2 c3 1\n z goal 3 c3 1\n M 'MARKER' 'INTORG'\n a c2 1\n b c2 1\n"
    " M 'MARKER' 'INTEND'\nRHS\n R c1 4 goal 3\nBOUNDS\n MI B z\n"
    "SOS\n S1 s1\n    x 1\n    y 2\n S2 SOS s2 5\n    z 9\n    x 3\n    y 7\n"
    "QUADOBJ\n x x 2\n x y 3\nQCMATRIX c1\n y y 2\n y z 1\n z y 1\n"
    "PWLOBJ\n z 0 1\n z 1 2\n z 1 4\n z 3 9\nINDICATORS\n IF c2 a 1\n IF c3 b 0\n"
    "GENCONS\n MAX g1\n    x\n    y\n    z\n    4.5\n AND g2\n    a\n    b\n NORM INF g3\n    x\n    y\n    z\n"
    " PWL g4\n    x  y\n    0  2\n    1  3\n    4  4\n POLY g5\n    x  y\n    3  2\n    0  5\n EXPA g6\n"
    "    Options  -1  0.01  0.001  -1  -1\n    x  y\n    3.5\n NL g7\n    x\n    PLUS  -1  -1\n    POW  -1  0\n"
    "    VARIABLE  y  1\n    CONSTANT  2  1\n    VARIABLE  z  0\nENDATA\n";

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

std::string quadraticTerms(const Model& model, int number) {
  std::string text;
  const Quadratics& all = model.quadratics;
  if (number < 0) return text;
  const auto q = static_cast<std::size_t>(number);
  for (std::size_t k = all.start[q]; k < all.start[q + 1]; ++k) {
    text += fmt::format(" + {} {}*{}", all.value[k], model.columns.names.at(static_cast<std::size_t>(all.first[k])),
                        model.columns.names.at(static_cast<std::size_t>(all.second[k])));
  }
  return text;
}

std::string expression(const Model& model, int number) {
  std::string text;
  const Expressions& all = model.expressions;
  if (number < 0) return text;
  const auto e = static_cast<std::size_t>(number);
  for (std::size_t k = all.start[e]; k < all.start[e + 1]; ++k) {
    text += text.empty() ? " {" : " ";
    if (all.op[k] == KAVO_OP_NUMBER) {
      text += fmt::format("{}", all.value[k]);
    } else if (all.op[k] == KAVO_OP_VARIABLE) {
      text += model.columns.names.at(static_cast<std::size_t>(all.index[k]));
    } else {
      text += operatorName(all.op[k]);
      if (arity(all.op[k]) < 0) text += fmt::format("({})", all.index[k]);
    }
  }
  return text + "}";
}

// The entry of an element in an array that is empty when no element has one.
int entry(const std::vector<int>& values, std::size_t i) { return values.empty() ? -1 : values[i]; }

std::string beyondLinear(const Model& model, std::size_t row) {
  const int column = entry(model.rows.indicator, row);
  return quadraticTerms(model, entry(model.rows.quadratic, row)) +
         expression(model, entry(model.rows.expression, row)) +
         (column < 0 ? std::string()
                     : fmt::format(" if {}={}", model.columns.names.at(static_cast<std::size_t>(column)),
                                   model.rows.indicatorValue[row]));
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
    text += fmt::format("{} {}:{}{}{}{}\n", o.sense == KAVO_MAXIMIZE ? "max" : "min", o.name,
                        terms(model, o.column.data(), o.value.data(), o.value.size()),
                        o.constant == 0 ? std::string() : fmt::format(" {:+}", o.constant),
                        quadraticTerms(model, o.quadratic), expression(model, o.expression));
  }
  for (std::size_t i = 0; i < model.rows.size(); ++i) {
    const std::size_t start = model.rows.start[i];
    text +=
        fmt::format("{} [{}, {}]:{}{}\n", model.rows.names.at(i), model.rows.lower[i], model.rows.upper[i],
                    terms(model, &model.rows.column[start], &model.rows.value[start], model.rows.start[i + 1] - start),
                    beyondLinear(model, i));
  }
  for (std::size_t i = 0; i < model.columns.size(); ++i) {
    text += fmt::format("{} {} [{}, {}]\n", model.columns.names.at(i), "CBISN"[model.columns.type[i]],
                        model.columns.lower[i], model.columns.upper[i]);
  }
  const OrderedSets& sets = model.sets;
  for (std::size_t s = 0; s < sets.size(); ++s) {
    text += fmt::format("{} S{}:", sets.names.at(s), sets.type[s]);
    for (std::size_t k = sets.start[s]; k < sets.start[s + 1]; ++k) {
      text += fmt::format("{} {} {}", &","[k == sets.start[s]],
                          model.columns.names.at(static_cast<std::size_t>(sets.column[k])), sets.weight[k]);
    }
    text += '\n';
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

std::string withSections(const std::string& sections) {
  std::string text = with({.head = "", .rhs = "", .ranges = "", .bounds = ""});
  return text.insert(text.find("ENDATA"), sections);
}

}  // namespace kavo::reader
