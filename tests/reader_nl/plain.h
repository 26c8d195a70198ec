#pragma once

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "kavo/model/model.h"

namespace kavo::reader {

// A model in the form in which two readers are compared. Expressions are written in postfix order; what one reader may
// write in another way than the other stands in one form: all powers are "power", linear terms are sorted, zeros among
// suffix values are left out, and a body that is a number has moved the row's sides.
struct Plain {
  using Terms = std::vector<std::pair<int, double>>;
  struct Row {
    double lower = 0, upper = 0;
    Terms terms;
    std::string body;  // "": none
    int complements = -1;
  };
  struct Objective {
    int sense = 0;
    double constant = 0;
    Terms terms;
    std::string body;
  };
  struct Suffix {
    int kind = 0;
    std::string name;
    bool real = false;
    Terms values;
  };

  std::vector<std::pair<double, double>> bounds;  // of the variables
  int discrete = 0;                               // how many variables are not continuous
  std::vector<Row> rows;
  std::vector<Objective> objectives;
  std::vector<std::string> logical, defined;
  std::vector<double> primal, dual;  // start values, NaN: unknown
  std::vector<Suffix> suffixes;

  // As text, a line per element.
  std::string text() const;
};

Plain plain(const Model& model);
// The text of an expression in which powers with a constant are powers as all others.
std::string withPowers(std::string text);

// The model as the AMPL library reads it. Throws std::runtime_error when the library refuses the file. The library is
// not made for threads.
Plain readWithAmplLibrary(const std::string& path);

}  // namespace kavo::reader
