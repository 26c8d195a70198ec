#pragma once

#include <string>

#include "kavo/model/model.h"

namespace kavo::reader {

// The counts of a header; those not given are 0.
struct Counts {
  int variables = 0, constraints = 0, objectives = 0, logical = 0;
  int nonlinearConstraints = 0, nonlinearObjectives = 0;
  int inConstraints = 0, inObjectives = 0, inBoth = 0;
  int arcs = 0, functions = 0, arithmetic = 1;
  int binaries = 0, integers = 0, integerInBoth = 0, integerInConstraints = 0, integerInObjectives = 0;
  int nonzeros = 0, gradients = 0, defined = 0;
};

// The ten lines of a header; form: 'g' or 'b'.
std::string header(const Counts& counts, char form = 'g');

// A model of one free variable and one nonlinear constraint whose body is `tree`, with `before` in front of its
// segment.
std::string withBody(const std::string& tree, const std::string& before = "", Counts counts = {});

// Reads a text as the file "m.nl".
Model fromText(const std::string& text);
// The message of the Error with KAVO_FILE that reading gives, "" when the text is read.
std::string failure(const std::string& text);

// The nodes of an expression, such as "v0 n2 power"; an operator with any number of operands shows it: "sum/3".
std::string postfix(const Model& model, int expression);

}  // namespace kavo::reader
