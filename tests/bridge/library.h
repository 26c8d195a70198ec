// The bridge as a program without Python meets it: opened at run time, its functions looked up by name.
#pragma once

#include <string>
#include <vector>

#include "grb/gurobi/types.h"

namespace bridge_test {

/// One pointer per listed function.
struct Functions {
#define GRB_FN(result, name, parameters, since) result(*name) parameters = nullptr;
#include "grb/gurobi/functions.def"
};

/// The functions of the library under test, which is opened at the first call. Ends the process when one is missing.
const Functions& grb();

/// A started environment that prints nothing.
class Env {
 public:
  Env();
  ~Env() { grb().GRBfreeenv(handle_); }
  Env(const Env&) = delete;
  Env& operator=(const Env&) = delete;

  GRBenv* get() const { return handle_; }

 private:
  GRBenv* handle_ = nullptr;
};

/// A model of an environment, freed at the end.
class Model {
 public:
  explicit Model(const Env& env, const char* name = "");
  ~Model() { grb().GRBfreemodel(handle_); }
  Model(const Model&) = delete;
  Model& operator=(const Model&) = delete;

  GRBmodel* get() const { return handle_; }
  GRBenv* env() const { return grb().GRBgetenv(handle_); }
  std::string message() const { return grb().GRBgeterrormsg(env()); }

  int integer(const char* attribute) const;
  double number(const char* attribute) const;

  /// Variables with the given objective and upper bounds.
  void addVars(std::vector<double> obj, std::vector<double> ub, const std::string& types) const;
  void addRow(std::vector<double> coefficients, char sense, double rhs) const;

 private:
  GRBmodel* handle_ = nullptr;
};

/// A feasibility problem over 40 binary variables that takes the solver far longer than any test waits.
void makeHard(const Model& model);

}  // namespace bridge_test
