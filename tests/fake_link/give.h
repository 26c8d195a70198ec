#pragma once

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include "kavo/link.h"

namespace fake_link {

// By reference: the call that gives the array runs in an argument too.
template <class T>
void fill(int result, T* const& array, const std::size_t& count, const std::vector<double>& numbers) {
  if (result != KAVO_OK) return;
  for (std::size_t i = 0; i < count && i < numbers.size(); ++i) array[i] = static_cast<T>(numbers[i]);
}

// Gives results word by word: items end with ';', each is a word and its numbers.
//   values Q v...   the kavo_quantity Q, KAVO_OF_FIXED included      basis K s...      the statuses of a kind
//   pool F v...     a point with objective F                         objectives v...   of each objective
//   marks K m...    the kavo_conflict_marks of a kind                minimal M
//   fixed S T F     closes the fixed model: status, stop, objective
inline void give(trpRec* model, const std::string& script) {
  std::istringstream items(script);
  for (std::string item; std::getline(items, item, ';');) {
    std::istringstream words(item);
    std::string what, word;
    std::vector<double> numbers;
    for (words >> what; words >> word;) numbers.push_back(std::strtod(word.c_str(), nullptr));
    const double first = numbers.empty() ? 0 : numbers[0];
    const int key = static_cast<int>(first);
    const std::vector<double> rest(numbers.empty() ? numbers.end() : numbers.begin() + 1, numbers.end());
    double* values = nullptr;
    int* statuses = nullptr;
    unsigned char* marks = nullptr;
    std::size_t count = 0;
    if (what == "values") fill(kavo_link_result(model, key, &values, &count), values, count, rest);
    if (what == "basis") fill(kavo_link_result_basis(model, key, &statuses, &count), statuses, count, rest);
    if (what == "pool") fill(kavo_link_pool_point(model, first, &values, &count), values, count, rest);
    if (what == "objectives") fill(kavo_link_objective_values(model, &values, &count), values, count, numbers);
    if (what == "marks") fill(kavo_link_conflict(model, key, &marks, &count), marks, count, rest);
    if (what == "minimal") kavo_link_conflict_minimal(model, key);
    if (what == "fixed") {
      const double none = std::strtod("nan", nullptr);
      const kavo_finish finish{
          key, static_cast<int>(numbers[1]), numbers[2], none, none, none, none, 0.5, none, none, none, none};
      kavo_link_finish_fixed(model, &finish);
    }
  }
}

}  // namespace fake_link
