#include "tests/kavo/picture.h"

#include <gmock/gmock.h>

#include <sstream>

#include "kavo/link.h"
#include "tests/kavo/fixture.h"

namespace kavo_test {
namespace {

const char* nameOf(const kavo_names& names, std::size_t i) { return names.start ? names.text + names.start[i] : ""; }

class Painter {
 public:
  explicit Painter(const trpRec* model) : model_(model) {
    EXPECT_EQ(kavo_link_expressions(model, &expressions_), KAVO_OK);
    EXPECT_EQ(kavo_link_quadratics(model, &quadratics_), KAVO_OK);
  }

  std::string paint() {
    paintColumns();
    paintRows();
    paintObjectives();
    for (std::size_t e = 0; e < expressions_.count; ++e) {
      text_ << "= e" << e;
      for (std::size_t k = expressions_.start[e]; k < expressions_.start[e + 1]; ++k) paintNode(k);
      text_ << '\n';
    }
    for (std::size_t d = 0; d < expressions_.defined_count; ++d)
      text_ << "= d" << d << " e" << expressions_.defined[d] << '\n';
    paintOthers();
    return text_.str();
  }

 private:
  void paintColumns() {
    kavo_columns columns;
    EXPECT_EQ(kavo_link_columns(model_, &columns), KAVO_OK);
    for (std::size_t i = 0; i < columns.count; ++i) {
      text_ << nameOf(columns.names, i) << ':' << columns.lower[i] << ':' << columns.upper[i] << ':'
            << int(columns.type[i]) << '\n';
    }
  }

  void paintTerms(std::size_t count, const int* column, const double* value, int expression, int quadratic) {
    for (std::size_t k = 0; k < count; ++k) text_ << ' ' << value[k] << '*' << column[k];
    if (quadratic >= 0) {
      const std::size_t* start = quadratics_.start + quadratic;
      for (std::size_t k = start[0]; k < start[1]; ++k) {
        text_ << ' ' << quadratics_.value[k] << '*' << quadratics_.first[k] << '*' << quadratics_.second[k];
      }
    }
    if (expression >= 0) text_ << " e" << expression;
  }

  void paintRows() {
    kavo_rows rows;
    EXPECT_EQ(kavo_link_rows(model_, &rows), KAVO_OK);
    for (std::size_t i = 0; i < rows.count; ++i) {
      text_ << nameOf(rows.names, i) << ':' << rows.lower[i] << ':' << rows.upper[i];
      paintTerms(rows.start[i + 1] - rows.start[i], rows.column + rows.start[i], rows.value + rows.start[i],
                 rows.expression ? rows.expression[i] : -1, rows.quadratic ? rows.quadratic[i] : -1);
      if (rows.indicator && rows.indicator[i] >= 0)
        text_ << " if " << rows.indicator[i] << '=' << int(rows.indicator_value[i]);
      text_ << '\n';
    }
  }

  void paintObjectives() {
    kavo_objective objective;
    for (std::size_t i = 0; kavo_link_objective(model_, i, &objective) == KAVO_OK; ++i) {
      text_ << objective.name << ':' << objective.sense << ':' << objective.constant;
      paintTerms(objective.terms, objective.column, objective.value, objective.expression, objective.quadratic);
      text_ << '\n';
    }
  }

  void paintNode(std::size_t k) {
    const int op = expressions_.op[k];
    text_ << ' ' << kavo_operator_name(op) << '/' << expressions_.index[k] << '/' << expressions_.value[k];
  }

  void paintOthers() {
    kavo_logical logical;
    kavo_sets sets;
    EXPECT_EQ(kavo_link_logical(model_, &logical), KAVO_OK);
    EXPECT_EQ(kavo_link_sets(model_, &sets), KAVO_OK);
    for (std::size_t i = 0; i < logical.count; ++i) {
      text_ << "= logical " << nameOf(logical.names, i) << " e" << logical.expression[i] << '\n';
    }
    for (std::size_t s = 0; s < sets.count; ++s) {
      text_ << "= set " << nameOf(sets.names, s) << ' ' << int(sets.type[s]);
      for (std::size_t k = sets.start[s]; k < sets.start[s + 1]; ++k)
        text_ << ' ' << sets.column[k] << '@' << sets.weight[k];
      text_ << '\n';
    }
  }

  const trpRec* model_;
  kavo_expressions expressions_;
  kavo_quadratics quadratics_;
  std::ostringstream text_;
};

}  // namespace

std::string picture(const trpRec* model) { return Painter(model).paint(); }

void expectRefused(void (*fill)(trpRec*), const std::vector<BadCall>& calls) {
  for (const BadCall& bad : calls) {
    const Model model;
    fill(model);
    const std::string before = picture(model);
    EXPECT_EQ(bad.call(model), bad.status) << bad.message;
    EXPECT_THAT(kavo_last_error(), testing::HasSubstr(bad.message));
    EXPECT_EQ(picture(model), before) << bad.message;
  }
  const Model tried, fresh;
  fill(tried), fill(fresh);
  for (const BadCall& bad : calls) bad.call(tried);
  fill(tried), fill(fresh);
  EXPECT_EQ(picture(tried), picture(fresh)) << "nothing of a refused call is left behind";
}

}  // namespace kavo_test
