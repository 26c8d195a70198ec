#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace kavo::reader::nl {

// The ten lines of text at the head of a .nl file, checked: no count is negative, no part is larger than its whole, and
// none is so large that the file could not hold what it announces, so that memory may be sized by them. Numbers that
// old files leave out are 0.
struct Header {
  bool binary = false;
  std::vector<int> options;  // line 1, without the number of them in front
  double tolerance = 0;      // line 1, behind the options when the second of them is 3

  int variables = 0, constraints = 0, objectives = 0, ranges = 0, equations = 0, logical = 0;
  int nonlinearConstraints = 0, nonlinearObjectives = 0;
  // Nonlinear variables: in constraints, in objectives, in both. nonlinearInObjectives counts from the first variable
  // to the last one of an objective, those only in constraints included, when some are only in objectives.
  int nonlinearInConstraints = 0, nonlinearInObjectives = 0, nonlinearInBoth = 0;
  int arcs = 0, functions = 0;
  int arithmetic = 0;             // of the writer's machine: 0 unknown, 1 IEEE little-endian, 2 IEEE big-endian
  int binary01 = 0, integer = 0;  // linear ones
  int integerInBoth = 0, integerInConstraints = 0, integerInObjectives = 0;  // nonlinear ones
  int nonzeros = 0, gradients = 0;
  int defined = 0;  // defined variables of all five sorts

  std::size_t length = 0;  // of the header in bytes

  int nonlinearOnlyInConstraints() const { return nonlinearInConstraints - nonlinearInBoth; }
  int nonlinearOnlyInObjectives() const {
    return nonlinearInObjectives > nonlinearInConstraints ? nonlinearInObjectives - nonlinearInConstraints : 0;
  }
};

// Reads the header of `text`, the content of `file`. Throws Error as Source tells.
Header readHeader(const std::string& file, std::string_view text);

}  // namespace kavo::reader::nl
