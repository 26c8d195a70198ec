#pragma once

#include <cstddef>
#include <vector>

#include "kavo/link.h"
#include "kavo/model/model.h"

namespace kavo {

// What has changed in a model since a solve that succeeded; the new numbers stand in the model. While it is structural
// nothing else is kept: the next solve starts from the model as it is.
class Changes {
 public:
  struct Coefficient {
    int row, column;
    double value;
  };
  struct Cost {
    int column;
    double value;
  };

  // More has changed than single numbers, or there is no solve to tell the difference from: the state at first.
  void becomeStructural();
  // The solver's model is that of the host, from here on.
  void forget();

  // Brings the entries of each kind into the order of their elements, each once, with its last value, for the view.
  void tidy();
  // What a link sees: the entries as they were when they were tidied, until they are forgotten; otherwise that the
  // changes are structural.
  const kavo_changes& view() const { return view_; }

  bool structural() const { return structural_; }
  bool any() const {
    return structural_ || constant || others || !coefficients.empty() || !sides.empty() || !bounds.empty() ||
           !costs.empty();
  }

  // In the order in which they came, an element maybe several times.
  std::vector<Coefficient> coefficients;
  std::vector<int> sides;   // rows
  std::vector<int> bounds;  // columns
  std::vector<Cost> costs;  // of the objective that is solved
  bool constant = false;    // of that objective
  bool others = false;      // something of another objective

 private:
  static kavo_changes allNew() {
    kavo_changes all{};
    all.structure = 1;
    return all;
  }

  bool structural_ = true;
  std::vector<int> coefficientRow_, coefficientColumn_, costColumn_;
  std::vector<double> coefficientValue_, costValue_;
  kavo_changes view_ = allNew();
};

// One new number each; count entries per array, null ones of sides and bounds: no change there.
struct CoefficientChanges {
  std::size_t count;
  const int *row, *column;
  const double* value;
};

struct LimitChanges {
  std::size_t count;
  const int* element;
  const double *lower, *upper;
};

struct ObjectiveChanges {
  std::size_t objective;
  const double* constant;  // null: no change
  std::size_t count;
  const int* column;
  const double* value;
};

// Check the data, then take it into the model and note it in the changes; when something is wrong (Error, KAVO_INVALID,
// with the element) or memory is short, both stay as they were. A call takes time linear in the numbers of the rows
// that it names; linear in the model when a row gets a column that it did not have.
void changeCoefficients(Model& model, Changes& changes, const CoefficientChanges& data);
void changeSides(Model& model, Changes& changes, const LimitChanges& data);
void changeBounds(Model& model, Changes& changes, const LimitChanges& data);
// solved: the index of the objective that is solved, or anything beyond the last.
void changeObjective(Model& model, Changes& changes, std::size_t solved, const ObjectiveChanges& data);

}  // namespace kavo
