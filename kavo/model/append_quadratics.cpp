#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <vector>

#include "kavo/error.h"
#include "kavo/model/append_nonlinear.h"
#include "kavo/model/append_parts.h"

namespace kavo {

namespace {

struct Term {
  int first, second;
  std::size_t position;  // so that the sums of equal pairs keep the order in which they were given

  auto key() const { return std::tie(first, second, position); }
  bool samePair(const Term& other) const { return first == other.first && second == other.second; }
};

// Fills terms with those of entry i, in the order of their pairs.
void sortTerms(const Place& place, const QuadraticData& data, std::size_t i, std::size_t columns,
               std::vector<Term>& terms) {
  terms.clear();
  for (std::size_t k = data.start[i]; k < data.start[i + 1]; ++k) {
    checkColumn(place, 0, k - data.start[i], data.first[k], columns);
    checkColumn(place, 0, k - data.start[i], data.second[k], columns);
    terms.push_back({std::min(data.first[k], data.second[k]), std::max(data.first[k], data.second[k]), k});
  }
  const auto less = [](const Term& a, const Term& b) { return a.key() < b.key(); };
  if (!std::is_sorted(terms.begin(), terms.end(), less)) std::sort(terms.begin(), terms.end(), less);
}

// Appends the sums of the terms of each pair; those that are 0 say nothing and are left out.
void appendSums(Quadratics& all, const QuadraticData& data, const Place& place, const std::vector<Term>& terms) {
  for (std::size_t k = 0; k < terms.size();) {
    const Term& pair = terms[k];
    double sum = 0;
    for (; k < terms.size() && terms[k].samePair(pair); ++k) sum += data.value[terms[k].position];
    if (!(std::fabs(sum) < kInfinity)) {
      place.fail(0, fmt::format("the coefficient {} of columns {} and {} must be a number below 1e20", sum, pair.first,
                                pair.second));
    }
    if (sum == 0) continue;
    all.first.push_back(pair.first);
    all.second.push_back(pair.second);
    all.value.push_back(sum);
  }
}

// Where a row or objective keeps the number of its quadratic terms.
int& numberOf(Model& model, int kind, std::size_t element) {
  return kind == KAVO_ROW ? model.rows.quadratic[element] : model.objectives[element].quadratic;
}

// terms: room to work in.
void appendElement(Model& model, const QuadraticData& data, std::size_t i, std::vector<Term>& terms) {
  const ExistingPlace place(model, data.kind, data.element[i]);
  int& number = numberOf(model, data.kind, place.index());
  if (number >= 0) place.fail("it has quadratic terms already");
  sortTerms(place, data, i, model.columns.size(), terms);
  Quadratics& all = model.quadratics;
  appendSums(all, data, place, terms);
  if (all.first.size() == all.start.back()) return;
  all.start.push_back(all.first.size());
  number = static_cast<int>(all.size()) - 1;
}

}  // namespace

int quadraticOf(const Model& model, int kind, std::size_t index) {
  const ExistingPlace place(model, kind, static_cast<long long>(index));
  if (kind == KAVO_OBJECTIVE) return model.objectives[index].quadratic;
  return model.rows.quadratic.empty() ? -1 : model.rows.quadratic[index];
}

void appendQuadratics(Model& model, const QuadraticData& data) {
  checkStarts("element", data.count, data.start);
  if (data.count > 0 && data.element == nullptr) throw Error(KAVO_INVALID, "the elements are null");
  if (data.count > 0 && data.start[data.count] > 0 && !(data.first && data.second && data.value)) {
    throw Error(KAVO_INVALID, "the columns or values of the quadratic terms are null");
  }
  Quadratics& all = model.quadratics;
  const std::size_t sums = all.size(), present = all.first.size();
  auto& rows = model.rows.quadratic;
  const bool isFirst = rows.empty();
  std::size_t done = 0;
  Rollback rollback([&] {
    // What was added so far belongs to elements that had none before.
    for (std::size_t i = 0; i < done; ++i) {
      numberOf(model, data.kind, static_cast<std::size_t>(data.element[i])) = -1;
    }
    if (isFirst) rows.clear();
    all.start.resize(sums + 1);
    all.first.resize(present);
    all.second.resize(present);
    all.value.resize(present);
  });
  if (isFirst && data.kind == KAVO_ROW) rows.assign(model.rows.size(), -1);
  std::vector<Term> terms;
  for (; done < data.count; ++done) appendElement(model, data, done, terms);
  rollback.keep();
}

}  // namespace kavo
