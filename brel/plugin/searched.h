#pragma once

#include <span>
#include <string>
#include <vector>

#include "brel/load/loader.h"
#include "brel/result/reader.h"

namespace brel::plugin {

// What a search has found, to hold the model against it that is solved with the integers of its point.
class Searched {
 public:
  // Reads from a reader of the search, which must have a point.
  Searched(const UserModel& user, result::Reader& reader);

  bool isInfinite() const;

  // Why a point of the fixed model, with its facts, cannot be that of the same integers; "" when it can. Its objective
  // is as good as the search's, or better when the search has left room for that: is no better than its bound.
  std::string whyNot(const kavo_finish& fixed, std::span<const double> point) const;
  // Whether the objective of the fixed model is better.
  bool isImproved(const kavo_finish& fixed) const;

 private:
  double improvement(double objective, double on) const;

  const UserModel& user_;
  kavo_finish facts_;
  std::vector<double> point_;
};

}  // namespace brel::plugin
