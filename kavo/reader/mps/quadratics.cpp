#include <fmt/format.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include "kavo/model/append_nonlinear.h"
#include "kavo/reader/mps/sections.h"

namespace kavo::reader::mps {

namespace {

class QuadraticReader {
 public:
  QuadraticReader(Reading& reading, QuadraticForm form) : reading_(reading), form_(form) {}

  void read(std::string_view element) {
    const std::size_t header = reading_.lines.number();
    find(element);
    const Lines& line = reading_.lines;
    while (reading_.lines.next(Fields::kUntyped)) {
      const std::size_t count = line.count();
      if (count != 3 && count != 5) reading_.failShape("column, column, number, and maybe another column and number");
      last_ = reading_.columnOf(line[0], last_);
      add(line[1], line[2]);
      if (count == 5) add(line[3], line[4]);
    }
    const std::size_t start[] = {0, value_.size()};
    forLine(header, [&] {
      if (form_ != QuadraticForm::kTriangle) requireSymmetry();
      appendQuadratics(reading_.model, {kind_, 1, &element_, start, first_.data(), second_.data(), value_.data()});
    });
  }

 private:
  // Settles whose terms they are.
  void find(std::string_view name) {
    const int objective = name.empty() ? 0 : reading_.objectiveOf(name);
    if (objective != NameIndex::kNone) {
      if (reading_.model.objectives.empty())
        reading_.fail("there is no objective (a row of type N) that could be quadratic");
      if (form_ == QuadraticForm::kWhole) {
        reading_.fail(fmt::format("{} is an objective; its quadratic terms stand in section QUADOBJ", quoted(name)));
      }
      kind_ = KAVO_OBJECTIVE;
      element_ = objective;
      return;
    }
    element_ = reading_.rowOf(name, NameIndex::kNone);
    if (element_ == NameIndex::kNone) {
      reading_.fail(fmt::format("row {} of type N is not the objective and cannot be quadratic", quoted(name)));
    }
  }

  void add(std::string_view column, std::string_view field) {
    const int other = reading_.columnOf(column, lastOther_ + 1);
    lastOther_ = other;
    const double value = reading_.finite(field);
    const bool halved = form_ == QuadraticForm::kHalf || (form_ == QuadraticForm::kTriangle && other == last_);
    first_.push_back(last_);
    second_.push_back(other);
    value_.push_back(halved ? value / 2 : value);
  }

  // Both halves of the matrix are there, so what one gives and the other does not is a mistake.
  void requireSymmetry() const {
    std::vector<std::size_t> order(value_.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    const auto pair = [this](std::size_t i) { return std::minmax(first_[i], second_[i]); };
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return pair(a) < pair(b); });
    for (std::size_t k = 0; k < order.size();) {
      const auto [low, high] = pair(order[k]);
      double above = 0, below = 0;
      for (; k < order.size() && pair(order[k]).first == low && pair(order[k]).second == high; ++k) {
        (first_[order[k]] == low ? above : below) += value_[order[k]];
      }
      if (low != high && above != below) failAt(low, high);
    }
  }

  [[noreturn]] void failAt(int first, int second) const {
    const Names& names = reading_.model.columns.names;
    const std::string one = quoted(names.at(static_cast<std::size_t>(first)));
    const std::string other = quoted(names.at(static_cast<std::size_t>(second)));
    throw Error(KAVO_FILE, fmt::format("the entries of {} {} and of {} {} must be the same, for the section lists both "
                                       "halves of its matrix",
                                       one, other, other, one));
  }

  Reading& reading_;
  QuadraticForm form_;
  int kind_ = KAVO_ROW;
  int element_ = 0;
  std::vector<int> first_, second_;
  std::vector<double> value_;
  int last_ = 0, lastOther_ = NameIndex::kNone;  // columns of the last line
};

}  // namespace

void readQuadratic(Reading& reading, QuadraticForm form, std::string_view element) {
  QuadraticReader(reading, form).read(element);
}

}  // namespace kavo::reader::mps
