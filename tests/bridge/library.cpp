#include "tests/bridge/library.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <numeric>
#include <random>

namespace bridge_test {
namespace {

void* lookUp(void* library, const char* name) {
  void* const found = dlsym(library, name);
  if (found == nullptr) {
    std::fprintf(stderr, "%s\n", dlerror());
    std::abort();
  }
  return found;
}

Functions open() {
  void* const library = dlopen(GRBLINK_BRIDGE_PATH, RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) {
    std::fprintf(stderr, "%s\n", dlerror());
    std::abort();
  }
  Functions functions;
#define GRB_FN(result, name, parameters, since) \
  functions.name = reinterpret_cast<result(*) parameters>(lookUp(library, #name));
#include "grb/gurobi/functions.def"
  return functions;
}

}  // namespace

const Functions& grb() {
  static const Functions kFunctions = open();
  return kFunctions;
}

Env::Env() {
  EXPECT_EQ(grb().GRBemptyenvinternal(&handle_, 13, 0, 2), 0);
  EXPECT_EQ(grb().GRBsetintparam(handle_, "LogToConsole", 0), 0);
  EXPECT_EQ(grb().GRBstartenv(handle_), 0) << grb().GRBgeterrormsg(handle_);
}

Model::Model(const Env& env, const char* name) {
  EXPECT_EQ(grb().GRBnewmodel(env.get(), &handle_, name, 0, nullptr, nullptr, nullptr, nullptr, nullptr), 0);
}

int Model::integer(const char* attribute) const {
  int value = -1;
  EXPECT_EQ(grb().GRBgetintattr(handle_, attribute, &value), 0) << attribute << ": " << message();
  return value;
}

double Model::number(const char* attribute) const {
  double value = -1;
  EXPECT_EQ(grb().GRBgetdblattr(handle_, attribute, &value), 0) << attribute << ": " << message();
  return value;
}

void Model::addVars(std::vector<double> obj, std::vector<double> ub, const std::string& types) const {
  std::string mutableTypes = types;
  EXPECT_EQ(grb().GRBaddvars(handle_, static_cast<int>(obj.size()), 0, nullptr, nullptr, nullptr, obj.data(), nullptr,
                             ub.data(), mutableTypes.data(), nullptr),
            0)
      << message();
}

void Model::addRow(std::vector<double> coefficients, char sense, double rhs) const {
  std::vector<int> indices(coefficients.size());
  std::iota(indices.begin(), indices.end(), 0);
  EXPECT_EQ(grb().GRBaddconstr(handle_, static_cast<int>(indices.size()), indices.data(), coefficients.data(), sense,
                               rhs, nullptr),
            0)
      << message();
}

void makeHard(const Model& model) {
  constexpr std::size_t kVars = 40;
  constexpr int kRows = 5;
  model.addVars(std::vector<double>(kVars, 0.0), std::vector<double>(kVars, 1.0), std::string(kVars, 'B'));
  std::minstd_rand random(7);
  for (int row = 0; row < kRows; ++row) {
    std::vector<double> weights(kVars);
    double sum = 0;
    for (double& weight : weights) sum += weight = static_cast<double>(random() % 100);
    model.addRow(weights, '=', static_cast<double>(static_cast<int>(sum / 2)));
  }
}

}  // namespace bridge_test
