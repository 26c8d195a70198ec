#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "kavo/model/model.h"

// What the functions that append to a model (kavo/model/append.h) share.
namespace kavo {

// Calls undo on the way out unless the work was kept.
template <class Undo>
class Rollback {
 public:
  explicit Rollback(Undo undo) : undo_(std::move(undo)) {}
  ~Rollback() {
    if (!kept_) undo_();
  }
  Rollback(const Rollback&) = delete;
  Rollback& operator=(const Rollback&) = delete;
  void keep() { kept_ = true; }

 private:
  Undo undo_;
  bool kept_ = false;
};

// Says which element is checked, at no cost while nothing is wrong.
struct Place {
  const char* kind;
  std::size_t first;  // number of the first new element
  const char* const* names;

  [[noreturn]] void fail(std::size_t i, const std::string& what) const;
};

// An element that the model has: a row or an objective, named in messages.
class ExistingPlace {
 public:
  // Error when `kind` is another one, or there is no such element.
  ExistingPlace(const Model& model, int kind, long long element);
  ExistingPlace(const ExistingPlace&) = delete;
  ExistingPlace& operator=(const ExistingPlace&) = delete;

  std::size_t index() const { return index_; }
  operator Place() const { return {kind_ == KAVO_ROW ? "row" : "objective", index_, &name_}; }
  [[noreturn]] void fail(const std::string& what) const { Place(*this).fail(0, what); }

 private:
  int kind_;
  std::size_t index_;
  const char* name_;
};

// That a model can have so many more of something.
void checkCount(const char* what, std::size_t present, std::size_t more);
// That an array of count + 1 starts begins with 0 and does not decrease; what: whose starts, such as "row".
void checkStarts(const char* what, std::size_t count, const std::size_t* start);
// That term k of new element `element` names one of `columns` columns.
void checkColumn(const Place& place, std::size_t element, std::size_t k, int column, std::size_t columns);

// That a number can be a lower bound or side, an upper one, the coefficient of a column, the constant of an objective.
void checkLower(const Place& place, std::size_t element, double lower);
void checkUpper(const Place& place, std::size_t element, double upper);
void checkCoefficient(const Place& place, std::size_t element, double value, int column);
void checkConstant(const Place& place, std::size_t element, double constant);

// Room for so many more, asked for by the half of what is there at least, so that many small calls stay cheap.
template <class T>
void reserveMore(std::vector<T>& values, std::size_t more) {
  if (values.capacity() - values.size() < more) values.reserve(values.size() + std::max(more, values.size() / 2));
}

template <class T>
void extend(std::vector<T>& to, const T* from, std::size_t count, T fill) {
  from ? to.insert(to.end(), from, from + count) : to.insert(to.end(), count, fill);
}

void appendNames(Names& to, const char* const* names, std::size_t count, std::size_t present);

}  // namespace kavo
