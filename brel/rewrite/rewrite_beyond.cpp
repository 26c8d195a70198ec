#include "brel/rewrite/rewrite_beyond.h"

#include <fmt/format.h>

#include "brel/expr/host_expressions.h"
#include "brel/host.h"
#include "brel/rewrite/lowering.h"
#include "brel/rewrite/sides.h"
#include "tav/opt/support_exception.h"

namespace brel::rewrite {
namespace {

kavo_expressions expressionsOf(trpRec* host) {
  kavo_expressions expressions{};
  checkHost(kavo_link_expressions(host, &expressions));
  return expressions;
}

std::string elementName(const kavo_names& names, const char* kind, std::size_t i) {
  const std::string name = nameOf(names, i);
  return name.empty() ? fmt::format("{}[{}]", kind, i + 1) : name;
}

// Of an array that says -1 for "none" and may be missing.
bool has(const int* numbers, std::size_t i) { return numbers != nullptr && numbers[i] >= 0; }

class BeyondRewrite {
 public:
  BeyondRewrite(const UserModel& user, std::uint64_t space, RewriteOptions options)
      : user_(user),
        columns_(user.columns),
        rows_(user.rows),
        allExpressions_(expressionsOf(user.host)),
        beyond_(std::make_shared<Beyond>(rows_.count)),
        graph_(std::make_shared<Graph>()),
        expressions_(user.host, columns_, allExpressions_, *graph_,
                     options.ignoresBounds ? expr::Bounds::ignored : expr::Bounds::known),
        hasNames_(columns_.names.start != nullptr || rows_.names.start != nullptr),
        rewriter_(*graph_, *beyond_, {space, static_cast<int>(columns_.count)}, hasNames_, options) {}

  std::shared_ptr<const Beyond> run();

 private:
  // An element of the user's and its function: of a row, a logical constraint or the objective.
  struct Work {
    std::size_t row;
    std::string element;  // its name, or one that tells its number
    NodeId node;          // kNoNode: there is nothing left to do
  };

  void noteElements();
  bool isMoved(std::size_t row) const {
    return has(rows_.expression, row) || has(rows_.quadratic, row) || isSwitched(row);
  }
  bool isSwitched(std::size_t row) const { return has(rows_.indicator, row); }
  kavo_suffix rowSuffix(const char* name) const;
  bool isPlainQuadratic(std::size_t row) const;
  void collectRows();
  void collectLogical();
  void collectObjective();
  NodeId sumOf(std::size_t terms, const int* column, const double* value, double constant);
  NodeId withBeyond(NodeId linear, int quadratic, int expression, const std::string& element);
  void requireBinary(std::size_t row) const;
  void copyQuadratic(std::size_t row);
  void lower(Lowering& lowering);
  bool joinResult(const Work& work, Lowering& lowering);
  void addUserRow(std::size_t row, NodeId lowered);
  void addUserIndicator(std::size_t row, NodeId lowered);
  void markTryNonlinear();
  void noteLazyRows();

  const UserModel& user_;
  const kavo_columns& columns_;
  const kavo_rows& rows_;
  kavo_expressions allExpressions_;
  std::shared_ptr<Beyond> beyond_;
  std::shared_ptr<Graph> graph_;
  expr::HostExpressions expressions_;
  bool hasNames_;
  Rewriter rewriter_;
  std::vector<Work> rowWork_, logicalWork_;
  Work objective_{0, "objective", kNoNode};
};

NodeId BeyondRewrite::sumOf(std::size_t terms, const int* column, const double* value, double constant) {
  std::vector<expr::Term> sum(terms);
  for (std::size_t k = 0; k < terms; ++k) sum[k] = {expressions_.column(column[k]), value[k]};
  return graph_->sum(constant, sum);
}

NodeId BeyondRewrite::withBeyond(NodeId linear, int quadratic, int expression, const std::string& element) {
  std::vector<expr::Term> sum{{linear, 1}};
  if (quadratic >= 0) {
    const auto q = static_cast<std::size_t>(quadratic);
    for (std::size_t k = user_.quadratics.start[q]; k < user_.quadratics.start[q + 1]; ++k) {
      const NodeId first = expressions_.column(user_.quadratics.first[k]);
      const NodeId second = expressions_.column(user_.quadratics.second[k]);
      sum.push_back({graph_->product(first, second), user_.quadratics.value[k]});
    }
  }
  if (expression >= 0) sum.push_back({expressions_.number(expression, element), 1});
  return graph_->sum(0, sum);
}

// Quadratic terms and nothing else, with one side: sent as they stand.
bool BeyondRewrite::isPlainQuadratic(std::size_t row) const {
  if (!has(rows_.quadratic, row) || has(rows_.expression, row) || isSwitched(row)) return false;
  return !Sides(rows_, row).areNone() && !Sides(rows_, row).areRange();
}

void BeyondRewrite::copyQuadratic(std::size_t row) {
  QuadraticRows& to = beyond_->quadratic;
  const auto q = static_cast<std::size_t>(rows_.quadratic[row]);
  for (std::size_t k = rows_.start[row]; k < rows_.start[row + 1]; ++k) to.terms.push(rows_.column[k], rows_.value[k]);
  to.terms.end();
  for (std::size_t k = user_.quadratics.start[q]; k < user_.quadratics.start[q + 1]; ++k) {
    to.quadratic.push(user_.quadratics.first[k], user_.quadratics.second[k], user_.quadratics.value[k]);
  }
  to.quadratic.end();
  const Sides sides(rows_, row);
  to.heads.type.push_back(sides.type());
  to.heads.side.push_back(sides.side());
  to.heads.user.push_back(static_cast<int>(row));
  to.heads.rangeColumn.push_back(-1);
  to.heads.maker.emplace_back();
  if (hasNames_) to.heads.names.push_back(nameOf(rows_.names, row));
}

// A row "y = f(...)" where f needs a column for its result: y is that column, and the row is no more than that.
bool BeyondRewrite::joinResult(const Work& work, Lowering& lowering) {
  const NodeId node = work.node;
  if (rows_.lower[work.row] != rows_.upper[work.row] || isSwitched(work.row)) return false;
  if (graph_->op(node) != Op::sum || graph_->value(node) != rows_.lower[work.row]) return false;
  const auto children = graph_->children(node);
  const auto factors = graph_->coefficients(node);
  if (children.size() != 2 || factors[0] != -factors[1]) return false;
  for (std::size_t k = 0; k < 2; ++k) {
    const NodeId column = children[k], function = children[1 - k];
    if (!graph_->isVariable(column) || !lowering.setResult(function, column)) continue;
    lowering.needValue(function);
    return true;
  }
  return false;
}

void BeyondRewrite::addUserRow(std::size_t row, NodeId lowered) {
  const Sides sides(rows_, row);
  if (sides.areNone()) return;
  const RowOrigin origin{static_cast<int>(row), nameOf(rows_.names, row)};
  const auto against = [&](double side) { return graph_->sum(-side, {{{lowered, 1}}}); };
  if (!sides.areRange()) return rewriter_.addRow(against(sides.side()), sides.type(), origin);
  if (graph_->degree(lowered) == expr::Degree::quadratic) {  // an equality would be convex on neither side
    rewriter_.addRow(against(sides.lower), RowType::greaterOrEqual, origin);
    return rewriter_.addRow(against(sides.upper), RowType::lessOrEqual, origin);
  }
  const NodeId slack = rewriter_.addColumn({sides.lower, sides.upper}, false, lowered, "range");
  rewriter_.addRow(graph_->subtract(lowered, slack), RowType::equal, {origin.user, origin.name, graph_->column(slack)});
}

void BeyondRewrite::addUserIndicator(std::size_t row, NodeId lowered) {
  const Sides sides(rows_, row);
  const RowOrigin origin{static_cast<int>(row), nameOf(rows_.names, row)};
  const Literal when{rows_.indicator[row], rows_.indicator_value[row] != 0};
  const NodeId affine = rewriter_.asAffine(lowered);
  const auto add = [&](double side, RowType type) {
    rewriter_.addIndicator(when, graph_->sum(-side, {{{affine, 1}}}), type, origin);
  };
  if (sides.areNone()) return;
  if (!sides.areRange()) return add(sides.side(), sides.type());
  add(sides.lower, RowType::greaterOrEqual);
  add(sides.upper, RowType::lessOrEqual);
}

void BeyondRewrite::requireBinary(std::size_t row) const {
  const auto column = static_cast<std::size_t>(rows_.indicator[row]);
  const bool isBinary = columns_.type[column] == KAVO_BINARY;
  const bool isWithin =
      columns_.type[column] == KAVO_INTEGER && columns_.lower[column] >= 0 && columns_.upper[column] <= 1;
  if (isBinary || isWithin) return;
  throw tav::opt::SupportException(
      fmt::format("row {} is switched on by {}, which is not a binary variable", elementName(rows_.names, "_scon", row),
                  elementName(columns_.names, "_svar", column)),
      tav::util::SourceLocation::here());
}

kavo_suffix BeyondRewrite::rowSuffix(const char* name) const {
  kavo_suffix suffix{};
  checkHost(kavo_link_suffix(user_.host, KAVO_ROW, name, &suffix));
  return suffix;
}

// Rows that the user marked 0 are not tried as general nonlinear constraints.
void BeyondRewrite::markTryNonlinear() {
  const kavo_suffix marks = rowSuffix("trynonlin");
  if (marks.count == 0) return;
  std::vector<int> markOf(rows_.count, 1);
  for (std::size_t k = 0; k < marks.count; ++k) {
    markOf[static_cast<std::size_t>(marks.index[k])] = marks.value[k] == 1 ? 1 : 0;
  }
  NonlinearRows& rows = beyond_->nonlinear;
  for (std::size_t i = 0; i < rows.heads.size(); ++i) {
    const int user = rows.heads.user[i];
    if (user != kNoUserRow) rows.tryNonlinear[i] = markOf[static_cast<std::size_t>(user)];
  }
}

// The solver takes lazy marks on linear rows only.
void BeyondRewrite::noteLazyRows() {
  const kavo_suffix marks = rowSuffix("lazy");
  if (marks.count == 0) return;
  std::vector<unsigned char> isElsewhere = beyond_->moved;
  for (const int user : beyond_->linear.heads.user) {
    if (user != kNoUserRow) isElsewhere[static_cast<std::size_t>(user)] = 0;
  }
  std::size_t left = 0;
  for (std::size_t k = 0; k < marks.count; ++k) {
    left += marks.value[k] != 0 && isElsewhere[static_cast<std::size_t>(marks.index[k])] != 0 ? 1 : 0;
  }
  if (left > 0)
    beyond_->notes.push_back(fmt::format("the suffix lazy is ignored on {} rows that are not linear", left));
}

void BeyondRewrite::collectRows() {
  for (std::size_t i = 0; i < rows_.count; ++i) {
    if (!isMoved(i)) continue;
    beyond_->moved[i] = 1;
    if (isSwitched(i)) requireBinary(i);
    if (isPlainQuadratic(i)) {
      copyQuadratic(i);
      continue;
    }
    const std::size_t first = rows_.start[i];
    const std::string element = elementName(rows_.names, "_scon", i);
    const NodeId linear = sumOf(rows_.start[i + 1] - first, rows_.column + first, rows_.value + first, 0);
    const int quadratic = has(rows_.quadratic, i) ? rows_.quadratic[i] : -1;
    const int expression = has(rows_.expression, i) ? rows_.expression[i] : -1;
    rowWork_.push_back({i, element, withBeyond(linear, quadratic, expression, "row " + element)});
  }
}

void BeyondRewrite::collectLogical() {
  for (std::size_t i = 0; i < user_.logical.count; ++i) {
    const std::string element = elementName(user_.logical.names, "_slogcon", i);
    const NodeId node = expressions_.truth(user_.logical.expression[i], "logical constraint " + element);
    logicalWork_.push_back({i, element, node});
  }
}

void BeyondRewrite::collectObjective() {
  if (!user_.objective || (user_.objective->expression < 0 && user_.objective->quadratic < 0)) return;
  const kavo_objective& given = *user_.objective;
  if (*given.name != '\0') objective_.element = given.name;
  const NodeId linear = sumOf(given.terms, given.column, given.value, given.constant);
  objective_.node = withBeyond(linear, given.quadratic, given.expression,
                               *given.name == '\0' ? objective_.element : "objective " + objective_.element);
}

// In the order in which they are lowered.
void BeyondRewrite::noteElements() {
  for (const Work& work : rowWork_) beyond_->elements.push_back({KAVO_ROW, work.row, work.node});
  for (const Work& work : logicalWork_) beyond_->elements.push_back({KAVO_LOGICAL, work.row, work.node});
  beyond_->elements.push_back({KAVO_OBJECTIVE, 0, objective_.node});
}

void BeyondRewrite::lower(Lowering& lowering) {
  for (Work& work : rowWork_) {
    lowering.setElement(work.element);
    if (joinResult(work, lowering)) {
      work.node = kNoNode;
    } else {
      lowering.needValue(work.node);
    }
  }
  for (const Work& work : logicalWork_) {
    lowering.setElement(work.element);
    lowering.needTrue(work.node);
  }
  lowering.setElement(objective_.element, true);
  if (objective_.node != kNoNode) lowering.needValue(objective_.node);
  lowering.run();
}

std::shared_ptr<const Beyond> BeyondRewrite::run() {
  collectRows();
  collectLogical();
  collectObjective();
  noteElements();
  Lowering lowering(rewriter_);
  lower(lowering);
  for (std::size_t k = 0; k < rowWork_.size(); ++k) {
    const Work& work = rowWork_[k];
    if (work.node == kNoNode) continue;
    rewriter_.setElement(work.element);
    rewriter_.setMaker({static_cast<int>(k), work.node});
    const NodeId lowered = lowering.lowered(work.node);
    isSwitched(work.row) ? addUserIndicator(work.row, lowered) : addUserRow(work.row, lowered);
  }
  markTryNonlinear();
  noteLazyRows();
  rewriter_.setElement(objective_.element);
  rewriter_.setMaker({static_cast<int>(beyond_->elements.size()) - 1, objective_.node});
  if (objective_.node != kNoNode) rewriter_.setObjective(lowering.lowered(objective_.node));
  beyond_->graph = graph_;
  return beyond_;
}

}  // namespace

std::shared_ptr<const Beyond> rewriteBeyond(const UserModel& user, std::uint64_t space, RewriteOptions options) {
  return BeyondRewrite(user, space, options).run();
}

}  // namespace brel::rewrite
