#include "kavo/model/changes.h"

#include <algorithm>
#include <tuple>

namespace kavo {

namespace {

// Sorts by key; of equal ones the last stays.
template <class Entry, class Key>
void keepLast(std::vector<Entry>& entries, Key key) {
  const auto less = [key](const Entry& a, const Entry& b) { return key(a) < key(b); };
  std::stable_sort(entries.begin(), entries.end(), less);
  const auto same = [key](const Entry& a, const Entry& b) { return key(a) == key(b); };
  // unique keeps the first of equal ones, so it runs from the back.
  const auto kept = std::unique(entries.rbegin(), entries.rend(), same);
  entries.erase(entries.begin(), kept.base());
}

// One member of all entries.
template <class Entry, class Member, class T>
void collect(const std::vector<Entry>& entries, Member member, std::vector<T>& into) {
  into.clear();
  into.reserve(entries.size());
  for (const Entry& entry : entries) into.push_back(entry.*member);
}

}  // namespace

void Changes::becomeStructural() {
  forget();
  structural_ = true;
}

void Changes::forget() {
  coefficients.clear();
  sides.clear();
  bounds.clear();
  costs.clear();
  constant = others = structural_ = false;
  view_ = allNew();
}

void Changes::tidy() {
  keepLast(coefficients, [](const Coefficient& c) { return std::tuple(c.row, c.column); });
  keepLast(sides, [](int row) { return row; });
  keepLast(bounds, [](int column) { return column; });
  keepLast(costs, [](const Cost& cost) { return cost.column; });
  collect(coefficients, &Coefficient::row, coefficientRow_);
  collect(coefficients, &Coefficient::column, coefficientColumn_);
  collect(coefficients, &Coefficient::value, coefficientValue_);
  collect(costs, &Cost::column, costColumn_);
  collect(costs, &Cost::value, costValue_);
  view_ = {structural_ ? 1 : 0,
           coefficients.size(),
           coefficientRow_.data(),
           coefficientColumn_.data(),
           coefficientValue_.data(),
           sides.size(),
           sides.data(),
           bounds.size(),
           bounds.data(),
           costs.size(),
           costColumn_.data(),
           costValue_.data(),
           constant ? 1 : 0,
           others ? 1 : 0};
}

}  // namespace kavo
