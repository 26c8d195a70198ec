#include "tests/brel/every_kind.h"

#include "tests/brel/formula.h"

namespace brel_test {
namespace {

void setExpression(trpRec* model, int row, const char* formula) {
  const int expression = addFormula(model, formula);
  EXPECT_EQ(kavo_set_expressions(model, KAVO_ROW, 1, &row, &expression), KAVO_OK) << kavo_last_error();
}

struct Product {
  int first, second;
  double value;
};

void addProducts(trpRec* model, int kind, int element, const std::vector<Product>& products) {
  const std::size_t start[] = {0, products.size()};
  std::vector<int> first, second;
  std::vector<double> value;
  for (const Product& p : products) first.push_back(p.first), second.push_back(p.second), value.push_back(p.value);
  EXPECT_EQ(kavo_add_quadratic_terms(model, kind, 1, &element, start, first.data(), second.data(), value.data()),
            KAVO_OK)
      << kavo_last_error();
}

}  // namespace

void fillEveryKind(HostModel& model) {
  model.add({{"x", 0, 4}, {"y", -2, 5}, {"b", 0, 1, KAVO_BINARY}, {"w", 0, 3}},
            {{"plain", 1, {{0, 1}, {1, 1}}, kNone},
             {"affine", -kNone, {{0, 2}}, 8},
             {"quadratic", -kNone, {{0, 1}}, 6},
             {"switched", -kNone, {{0, 1}, {3, 1}}, 2},
             {"sine", 1, {{3, 1}}, 1},
             {"size", 1, {}, 2}});
  setExpression(model, 1, "(plus x1 3)");
  addProducts(model, KAVO_ROW, 2, {{0, 1, 1}, {1, 1, 2}});
  const int switched = 3, switching = 2;
  const unsigned char off = 0;
  EXPECT_EQ(kavo_set_indicators(model, 1, &switched, &switching, &off), KAVO_OK) << kavo_last_error();
  const int lazyRows[] = {0, 1, 3};
  const double lazy[] = {1, 2, 3};
  EXPECT_EQ(kavo_set_suffix(model, KAVO_ROW, "lazy", 3, lazyRows, lazy), KAVO_OK) << kavo_last_error();
  setExpression(model, 4, "(sin x0)");
  setExpression(model, 5, "(abs x1)");
  const int either = addFormula(model, "(or (<= x0 1) (>= x1 3))");
  const char* const name = "either";
  EXPECT_EQ(kavo_add_logical(model, 1, &either, &name), KAVO_OK) << kavo_last_error();
  const unsigned char type[] = {1, 2};
  const std::size_t start[] = {0, 2, 5};
  const int column[] = {0, 3, 0, 1, 3};
  const double weight[] = {2, 5, 1, 2, 3};
  EXPECT_EQ(kavo_add_sets(model, 2, type, start, column, weight, nullptr), KAVO_OK) << kavo_last_error();
  model.addObjective(KAVO_MAXIMIZE, {1, 1}, 10);
  addProducts(model, KAVO_OBJECTIVE, 0, {{0, 0, -1}});
}

}  // namespace brel_test
