// New numbers in a model that stands.

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <optional>

#include "kavo/error.h"
#include "kavo/model/append_parts.h"
#include "kavo/model/changes.h"
#include "kavo/model/element.h"

namespace kavo {

namespace {

// The new coefficient of one column in a row or objective.
struct NewTerm {
  int row, column;
  double value;
  std::size_t place = 0;  // where the term stands among all terms, or kNew

  static constexpr std::size_t kNew = static_cast<std::size_t>(-1);
};

void requireArrays(std::size_t count, const int* elements, const double* values) {
  if (count > 0 && (elements == nullptr || values == nullptr)) {
    throw Error(KAVO_INVALID, "the elements or values of the changes are null");
  }
}

// A row or column that the model has, for messages.
class Changed {
 public:
  Changed(const Model& model, int kind, int element)
      : word_(kind == KAVO_ROW ? "row" : "column"),
        index_(checked(model, kind, element)),
        name_(givenName(model, kind, index_)) {}
  Changed(const Changed&) = delete;
  Changed& operator=(const Changed&) = delete;
  operator Place() const { return {word_, index_, &name_}; }
  std::size_t index() const { return index_; }

 private:
  std::size_t checked(const Model& model, int kind, int element) const {
    const std::size_t count = elementCount(model, kind);
    if (element >= 0 && static_cast<std::size_t>(element) < count) return static_cast<std::size_t>(element);
    throw Error(KAVO_INVALID, fmt::format("there is no {} {}: the model has {}", word_, element, count));
  }

  const char* word_;
  std::size_t index_;
  const char* name_;
};

// Sorts by row and column; of several terms for one place the last stays.
void settle(std::vector<NewTerm>& terms) {
  const auto less = [](const NewTerm& a, const NewTerm& b) {
    return a.row != b.row ? a.row < b.row : a.column < b.column;
  };
  if (!std::is_sorted(terms.begin(), terms.end(), less)) std::stable_sort(terms.begin(), terms.end(), less);
  const auto same = [](const NewTerm& a, const NewTerm& b) { return a.row == b.row && a.column == b.column; };
  terms.erase(terms.begin(), std::unique(terms.rbegin(), terms.rend(), same).base());
}

// Finds where the columns of [first, last), which are those of one row in their order, stand among column[begin, end).
void locate(std::vector<NewTerm>::iterator first, std::vector<NewTerm>::iterator last, const std::vector<int>& column,
            std::size_t begin, std::size_t end) {
  for (auto term = first; term != last; ++term) term->place = NewTerm::kNew;
  const auto less = [](const NewTerm& term, int c) { return term.column < c; };
  for (std::size_t k = begin; k < end; ++k) {
    const auto term = std::lower_bound(first, last, column[k], less);
    if (term != last && term->column == column[k]) term->place = k;
  }
}

// Terms that are not there yet and would be 0 say nothing.
bool isAdded(const NewTerm& term) { return term.place == NewTerm::kNew && term.value != 0; }

std::size_t countAdded(const std::vector<NewTerm>& terms) {
  return static_cast<std::size_t>(std::count_if(terms.begin(), terms.end(), isAdded));
}

void replaceValues(const std::vector<NewTerm>& terms, std::vector<double>& value) {
  for (const NewTerm& term : terms) {
    if (term.place != NewTerm::kNew) value[term.place] = term.value;
  }
}

// Puts the terms that are new behind those that their rows have: from the last row to the first, so that each term
// moves once and no second copy of the matrix is needed. Memory has been asked for.
void insert(Rows& rows, const std::vector<NewTerm>& terms, std::size_t added) {
  std::size_t from = rows.column.size(), to = from + added, next = terms.size();
  rows.column.resize(to);
  rows.value.resize(to);
  for (std::size_t i = rows.size(); to != from; --i) {
    const std::size_t begin = rows.start[i - 1];
    rows.start[i] = to;
    for (; next > 0 && static_cast<std::size_t>(terms[next - 1].row) == i - 1; --next) {
      if (!isAdded(terms[next - 1])) continue;
      rows.column[--to] = terms[next - 1].column;
      rows.value[to] = terms[next - 1].value;
    }
    while (from > begin) {
      rows.column[--to] = rows.column[--from];
      rows.value[to] = rows.value[from];
    }
  }
}

std::vector<NewTerm> checkedTerms(const Model& model, const CoefficientChanges& data) {
  if (data.count > 0 && data.row == nullptr) throw Error(KAVO_INVALID, "the rows of the changes are null");
  requireArrays(data.count, data.column, data.value);
  std::vector<NewTerm> terms(data.count);
  for (std::size_t k = 0; k < data.count; ++k) {
    const Changed row(model, KAVO_ROW, data.row[k]);
    checkColumn(row, 0, k, data.column[k], model.columns.size());
    checkCoefficient(row, 0, data.value[k], data.column[k]);
    terms[k] = {data.row[k], data.column[k], data.value[k]};
  }
  return terms;
}

// That a column that switches rows, if it is this one, stays within 0 and 1.
void requireSwitchBounds(const Model& model, const Changed& column, double lower, double upper) {
  if (model.columns.type[column.index()] != KAVO_INTEGER || (lower >= 0 && upper <= 1)) return;
  const auto& switches = model.rows.indicator;
  if (std::find(switches.begin(), switches.end(), static_cast<int>(column.index())) == switches.end()) return;
  const Place place = column;
  place.fail(0, fmt::format("bounds {} and {} are not within 0 and 1, but it switches a row", lower, upper));
}

void checkLimits(const Model& model, int kind, const LimitChanges& data) {
  if (data.count > 0 && data.element == nullptr) {
    throw Error(KAVO_INVALID, fmt::format("the {}s of the changes are null", kind == KAVO_ROW ? "row" : "column"));
  }
  for (std::size_t k = 0; k < data.count; ++k) {
    const Changed element(model, kind, data.element[k]);
    if (data.lower != nullptr) checkLower(element, 0, data.lower[k]);
    if (data.upper != nullptr) checkUpper(element, 0, data.upper[k]);
    if (kind == KAVO_ROW) continue;
    requireSwitchBounds(model, element, data.lower ? data.lower[k] : model.columns.lower[element.index()],
                        data.upper ? data.upper[k] : model.columns.upper[element.index()]);
  }
}

// Notes the elements first, which may fail; the rest cannot.
void changeLimits(std::vector<double>& lower, std::vector<double>& upper, const LimitChanges& data, bool noted,
                  std::vector<int>& note) {
  if (noted) note.insert(note.end(), data.element, data.element + data.count);
  for (std::size_t k = 0; k < data.count; ++k) {
    const auto i = static_cast<std::size_t>(data.element[k]);
    if (data.lower != nullptr) lower[i] = data.lower[k];
    if (data.upper != nullptr) upper[i] = data.upper[k];
  }
}

}  // namespace

void changeCoefficients(Model& model, Changes& changes, const CoefficientChanges& data) {
  std::vector<NewTerm> terms = checkedTerms(model, data);
  settle(terms);
  Rows& rows = model.rows;
  for (auto first = terms.begin(); first != terms.end();) {
    const auto last = std::find_if(first, terms.end(), [row = first->row](const NewTerm& t) { return t.row != row; });
    const auto i = static_cast<std::size_t>(first->row);
    locate(first, last, rows.column, rows.start[i], rows.start[i + 1]);
    first = last;
  }
  const std::size_t added = countAdded(terms);
  reserveMore(rows.column, added);
  reserveMore(rows.value, added);
  if (!changes.structural()) {
    reserveMore(changes.coefficients, terms.size());
    for (const NewTerm& term : terms) changes.coefficients.push_back({term.row, term.column, term.value});
  }
  replaceValues(terms, rows.value);
  if (added > 0) insert(rows, terms, added);
}

void changeSides(Model& model, Changes& changes, const LimitChanges& data) {
  checkLimits(model, KAVO_ROW, data);
  changeLimits(model.rows.lower, model.rows.upper, data, !changes.structural(), changes.sides);
}

void changeBounds(Model& model, Changes& changes, const LimitChanges& data) {
  checkLimits(model, KAVO_COLUMN, data);
  changeLimits(model.columns.lower, model.columns.upper, data, !changes.structural(), changes.bounds);
}

void changeObjective(Model& model, Changes& changes, std::size_t solved, const ObjectiveChanges& data) {
  const ExistingPlace place(model, KAVO_OBJECTIVE, static_cast<long long>(data.objective));
  if (data.constant != nullptr) checkConstant(place, 0, *data.constant);
  requireArrays(data.count, data.column, data.value);
  std::vector<NewTerm> terms(data.count);
  for (std::size_t k = 0; k < data.count; ++k) {
    checkColumn(place, 0, k, data.column[k], model.columns.size());
    checkCoefficient(place, 0, data.value[k], data.column[k]);
    terms[k] = {0, data.column[k], data.value[k]};
  }
  settle(terms);
  Objective& objective = model.objectives[data.objective];
  locate(terms.begin(), terms.end(), objective.column, 0, objective.column.size());
  reserveMore(objective.column, countAdded(terms));
  reserveMore(objective.value, countAdded(terms));
  const bool isSolved = data.objective == solved;
  if (!changes.structural() && isSolved) {
    reserveMore(changes.costs, terms.size());
    for (const NewTerm& term : terms) changes.costs.push_back({term.column, term.value});
    changes.constant = changes.constant || data.constant != nullptr;
  }
  if (!changes.structural() && !isSolved) changes.others = true;
  replaceValues(terms, objective.value);
  for (const NewTerm& term : terms) {
    if (isAdded(term)) objective.column.push_back(term.column), objective.value.push_back(term.value);
  }
  if (data.constant != nullptr) objective.constant = *data.constant;
}

}  // namespace kavo
