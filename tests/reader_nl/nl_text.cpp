#include "tests/reader_nl/nl_text.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

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

}  // namespace kavo::reader
