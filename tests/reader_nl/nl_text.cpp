#include "tests/reader_nl/nl_text.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "kavo/error.h"
#include "kavo/reader/nl/nl.h"

namespace kavo::reader {

std::string header(const Counts& c, char form) {
  std::string text = fmt::format("{}3 1 1 0\t# problem m\n", form);
  text += fmt::format(" {} {} {} 0 0 {}\t# vars\n", c.variables, c.constraints, c.objectives, c.logical);
  text += fmt::format(" {} {}\n 0 0\n", c.nonlinearConstraints, c.nonlinearObjectives);
  text += fmt::format(" {} {} {}\n", c.inConstraints, c.inObjectives, c.inBoth);
  text += fmt::format(" {} {} {} 1\n", c.arcs, c.functions, c.arithmetic);
  text += fmt::format(" {} {} {} {} {}\n", c.binaries, c.integers, c.integerInBoth, c.integerInConstraints,
                      c.integerInObjectives);
  return text + fmt::format(" {} {}\n 0 0\n {} 0 0 0 0\n", c.nonzeros, c.gradients, c.defined);
}

std::string withBody(const std::string& tree, const std::string& before, Counts counts) {
  counts.variables = counts.constraints = counts.nonlinearConstraints = counts.inConstraints = counts.nonzeros = 1;
  return header(counts) + before + "C0\n" + tree + "r\n1 5\nb\n3\nk0\nJ0 1\n0 0\n";
}

Model fromText(const std::string& text) { return nl::readText(text, "m.nl"); }

std::string failure(const std::string& text) {
  try {
    fromText(text);
    return "";
  } catch (const Error& error) {
    EXPECT_EQ(error.status(), KAVO_FILE);
    return error.what();
  }
}

std::string postfix(const Model& model, int expression) {
  const Expressions& all = model.expressions;
  const auto e = static_cast<std::size_t>(expression);
  std::string text;
  for (std::size_t k = all.start[e]; k < all.start[e + 1]; ++k) {
    if (!text.empty()) text += ' ';
    switch (all.op[k]) {
      case KAVO_OP_NUMBER:
        text += fmt::format("n{}", all.value[k]);
        break;
      case KAVO_OP_VARIABLE:
        text += fmt::format("v{}", all.index[k]);
        break;
      case KAVO_OP_DEFINED_VARIABLE:
        text += fmt::format("d{}", all.index[k]);
        break;
      case KAVO_OP_STRING:
        text += fmt::format("\"{}\"", all.strings[static_cast<std::size_t>(all.index[k])]);
        break;
      case KAVO_OP_CALL:
        text += fmt::format("{}/{}", model.functions[static_cast<std::size_t>(all.value[k])], all.index[k]);
        break;
      default:
        text += operatorName(static_cast<int>(all.op[k]));
        if (arity(all.op[k]) < 0) text += fmt::format("/{}", all.index[k]);
    }
  }
  return text;
}

std::string dump(const Model& m) {
  std::string text = fmt::format("options {} {}\n", fmt::join(m.amplOptions, " "), m.amplTolerance);
  for (std::size_t i = 0; i < m.columns.size(); ++i) {
    text += fmt::format("column {} {} {} {} \"{}\"\n", i, m.columns.lower[i], m.columns.upper[i], m.columns.type[i],
                        m.columns.names.at(i));
  }
  for (std::size_t i = 0; i < m.rows.size(); ++i) {
    text += fmt::format("row {} {} {} \"{}\"", i, m.rows.lower[i], m.rows.upper[i], m.rows.names.at(i));
    for (std::size_t k = m.rows.start[i]; k < m.rows.start[i + 1]; ++k) {
      text += fmt::format(" {}*{}", m.rows.value[k], m.rows.column[k]);
    }
    const int e = m.rows.expression.empty() ? -1 : m.rows.expression[i];
    text += e < 0 ? "\n" : fmt::format(" ({})\n", postfix(m, e));
  }
  for (const Objective& o : m.objectives) {
    text += fmt::format("objective {} {} \"{}\" {} {}", o.sense, o.constant, o.name, o.column, o.value);
    text += o.expression < 0 ? "\n" : fmt::format(" ({})\n", postfix(m, o.expression));
  }
  for (int e : m.definedVariables) text += fmt::format("defined ({})\n", postfix(m, e));
  for (int e : m.logical) text += fmt::format("logical ({})\n", postfix(m, e));
  for (const Complementarity& c : m.complementarity)
    text += fmt::format("complement {} {} {}\n", c.row, c.column, c.flags);
  for (const Suffix& s : m.suffixes) {
    text += fmt::format("suffix {} {} {} {} {}\n", s.kind, s.name, s.real ? "real" : "whole", s.index, s.value);
  }
  return text + fmt::format("functions {}\nstart {} {}\n", m.functions, m.primalStart, m.dualStart);
}

Folder::Folder() {
  std::string name = (std::filesystem::temp_directory_path() / "reader_nl_XXXXXX").string();
  if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make a folder for the test");
  path_ = name;
}

Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string Folder::write(const std::string& name, std::string_view content) const {
  std::ofstream(path(name), std::ios::binary) << content;
  return path(name);
}

}  // namespace kavo::reader
