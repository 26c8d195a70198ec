#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "kavo/reader/lp/linear_terms.h"
#include "kavo/reader/lp/reading.h"

namespace kavo::reader::lp {

// Where a sum stands, which tells where it ends. A number that ends a line may be a coefficient of the variable on the
// next one; but on the right of a relation it is the side of the row, and the next line begins another row.
enum class Place { kObjective, kLeft, kRight, kRightOfNumber };

// What was read of a sum in one place.
struct Side {
  double constant = 0;
  std::size_t numbers = 0, variables = 0;  // terms of either kind
  std::size_t bareNames = 0;               // variables that could be numbers
};

// A sum of terms over several sides, with the sign that each side has.
class Sum {
 public:
  explicit Sum(Reading& reading) : reading_(reading), words_(reading.words) {}

  void clear();
  // Reads a sum up to what cannot belong to it, and adds its terms times `factor`; the constant stays with the side.
  Side read(Place place, double factor = 1);
  void negate();

  const LinearTerms& linear() const { return linear_; }
  bool hasProducts() const { return !value_.empty(); }
  // Puts the terms behind the arrays; those that sum up to 0 are left out.
  void moveLinear(std::vector<int>& column, std::vector<double>& value) const;
  // Gives the products, if there are any, to an element of the model: a row or an objective.
  void moveProducts(int kind, std::size_t element) const;

 private:
  bool goesOn(const Side& side) const;
  void readTerm(Side& side);
  double readSigns();
  bool isVariableOfNumber() const;
  void addVariable(Side& side, std::string_view name, double coefficient);
  bool addSpecial(std::string_view name, double coefficient);
  void requireNoNumber(std::string_view name) const;
  void addBareNumber(Side& side, std::string_view word, double value, double sign);
  void readBracket(Side& side, double sign);
  void readProduct(double sign);
  int columnInBracket();
  void readDivisor(std::size_t begin);

  Reading& reading_;
  Words& words_;
  Place place_ = Place::kLeft;
  double factor_ = 1;
  std::string_view bareNumber_;  // the first one of the side
  std::size_t bareLine_ = 0;
  LinearTerms linear_;
  std::vector<int> first_, second_;  // the products of two columns
  std::vector<double> value_;
};

}  // namespace kavo::reader::lp
