// A host's model, and the road of a solve: host, forward link, brel::Link, grb::Solver, double.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "brel/link_def.h"
#include "kavo/kavo.h"
#include "tests/double/gurobi_double.h"

namespace brel_test {

inline constexpr double kNone = 1e20;  // no bound, no side

struct Column {
  const char* name;
  double lower, upper;
  unsigned char type = KAVO_CONTINUOUS;
};

struct Row {
  const char* name;
  double lower;
  std::vector<std::pair<int, double>> terms;
  double upper;
};

/// A host's model, freed with the test. Names of "" stand for none.
class HostModel {
 public:
  HostModel() { EXPECT_EQ(kavo_create(&handle_), KAVO_OK); }
  ~HostModel() { EXPECT_EQ(kavo_free(&handle_), KAVO_OK); }
  HostModel(const HostModel&) = delete;
  HostModel& operator=(const HostModel&) = delete;
  operator trpRec*() const { return handle_; }

  void add(const std::vector<Column>& columns, const std::vector<Row>& rows);
  void addObjective(int sense, const std::vector<double>& coefficients, double constant = 0);
  std::vector<std::string> notes() const;
  /// Outcome and all results as text, one quantity per line; without the time.
  std::string results() const;

 private:
  trpRec* handle_ = nullptr;
};

/// A model with rows of all kinds, z of a type. What is sent: three columns and a fourth for the ranged row; rows 0,
/// 1, 3.
void fill(HostModel& model, unsigned char type);

/// While it lives, links opened at FORWARD_LINK are brel::Link over a solver on this double.
class LinkOverDouble {
 public:
  LinkOverDouble();
  ~LinkOverDouble();
  LinkOverDouble(const LinkOverDouble&) = delete;
  LinkOverDouble& operator=(const LinkOverDouble&) = delete;

  /// What the double answers after a solve: an optimal LP, or MIP, with these values of the solver's columns and rows.
  void scriptLp(const std::vector<double>& point, const std::vector<double>& slacks);
  void scriptMip(const std::vector<double>& point, const std::vector<double>& slacks);

  /// Of the links that are opened; the writing back of results is on.
  brel::LinkDef definition;
  std::shared_ptr<gurobi_double::GurobiDouble> gurobi = gurobi_double::GurobiDouble::make();
};

/// A link over the double, and a model to be solved by it.
class LinkFixture : public testing::Test {
 protected:
  LinkOverDouble link;
  HostModel model;
};

/// Opens the link and solves; the status of the first that fails.
inline int openAndSolve(trpRec* model) {
  const int opened = kavo_open_link(model, FORWARD_LINK);
  return opened == KAVO_OK ? kavo_solve(model) : opened;
}

}  // namespace brel_test
