#pragma once

#include <fmt/format.h>

#include <limits>

#include "kavo/reader/nl/draft.h"
#include "kavo/reader/nl/pieces.h"
#include "kavo/reader/nl/tree.h"

namespace kavo::reader::nl {

// The segments of expressions: F functions, V defined variables, C bodies of rows, L logical constraints, O objectives.
template <class Source>
class ExpressionSegments {
 public:
  ExpressionSegments(Source& source, Draft& draft)
      : source_(source), draft_(draft), header_(draft.header), model_(draft.model), tree_(source, draft) {}

  void readFunction() {
    const int i = number(source_, header_.functions, "the number of a function");
    Signature& signature = draft_.signatures[static_cast<std::size_t>(i)];
    once(source_, signature.declared);
    const int type = source_.integer("a type of function");
    if (type != 0 && type != 1) {
      source_.refuse(fmt::format("expected 0 (numbers) or 1 (also strings) as the type of a function, found {}", type));
    }
    const int arguments = source_.integer("a number of arguments");
    if (arguments == std::numeric_limits<int>::min()) source_.fail("a number of arguments");
    model_.functions[static_cast<std::size_t>(i)] = source_.name("the name of a function");
    source_.endLine();
    signature = {true, type == 1, arguments};
  }

  void readBody() {
    const int i = number(source_, header_.constraints, "the number of a constraint");
    once(source_, draft_.bodies[static_cast<std::size_t>(i)]);
    draft_.bodies[static_cast<std::size_t>(i)] = true;
    source_.endLine();
    double constant = 0;
    const int expression = readExpression(constant);
    if (constant != 0) draft_.constants.emplace_back(i, constant);
    if (expression < 0) return;
    auto& expressions = model_.rows.expression;
    if (expressions.empty()) expressions.assign(model_.rows.size(), -1);
    expressions[static_cast<std::size_t>(i)] = expression;
  }

  void readObjective() {
    const int i = number(source_, header_.objectives, "the number of an objective");
    once(source_, draft_.objectiveBodies[static_cast<std::size_t>(i)]);
    draft_.objectiveBodies[static_cast<std::size_t>(i)] = true;
    const int sense = source_.integer("a direction");
    if (sense != KAVO_MINIMIZE && sense != KAVO_MAXIMIZE) {
      source_.refuse(fmt::format("expected 0 (minimise) or 1 (maximise), found {}", sense));
    }
    source_.endLine();
    Objective& objective = model_.objectives[static_cast<std::size_t>(i)];
    objective.sense = sense;
    objective.expression = readExpression(objective.constant);
  }

  void readLogical() {
    const int i = number(source_, header_.logical, "the number of a logical constraint");
    once(source_, model_.logical[static_cast<std::size_t>(i)] >= 0);
    source_.endLine();
    tree_.read(header_.defined);
    model_.logical[static_cast<std::size_t>(i)] = model_.expressions.end();
  }

  // A defined variable: a sum of linear terms and a tree. The terms come first in the file and in the expression.
  void readDefined() {
    const int i = source_.integer("the number of a defined variable");
    if (i < header_.variables || i - header_.variables >= header_.defined) {
      source_.refuse(fmt::format("expected the number of a defined variable ({} of them, from {} on), found {}",
                                 header_.defined, header_.variables, i));
    }
    source_.setNumber(i);
    int& defined = model_.definedVariables[static_cast<std::size_t>(i - header_.variables)];
    once(source_, defined >= 0);
    const int linear = count(source_, header_.variables, "linear terms");
    // The constraint or objective that alone uses it (0: several do) is of no use here.
    if (source_.integer("the place of use of a defined variable") < 0) source_.fail("the place of use, 0 or more");
    source_.endLine();
    Expressions& nodes = model_.expressions;
    int terms = 0;
    for (int k = 0; k < linear; ++k) terms += pushLinearTerm();
    tree_.read(i - header_.variables);
    ++terms;
    if (terms > 1 && nodes.op.back() == KAVO_OP_NUMBER && nodes.value.back() == 0) {
      nodes.pop();
      --terms;
    }
    if (terms == 2) nodes.push(KAVO_OP_PLUS, 0, 0);
    if (terms > 2) nodes.push(KAVO_OP_SUM, terms, 0);
    defined = nodes.end();
  }

 private:
  // Reads a tree. A number alone is taken back and stored in `constant`, and the result is -1.
  int readExpression(double& constant) {
    Expressions& nodes = model_.expressions;
    tree_.read(header_.defined);
    if (nodes.op.size() == nodes.start.back() + 1 && nodes.op.back() == KAVO_OP_NUMBER) {
      constant = nodes.value.back();
      nodes.pop();
      return -1;
    }
    return nodes.end();
  }

  // Returns how many operands of a sum it made.
  int pushLinearTerm() {
    Expressions& nodes = model_.expressions;
    const int column = below(source_, header_.variables, "the number of a variable");
    const double value = coefficient(source_);
    source_.endLine();
    if (value == 0) return 0;
    if (value != 1) nodes.push(KAVO_OP_NUMBER, 0, value);
    nodes.push(KAVO_OP_VARIABLE, column, 0);
    if (value != 1) nodes.push(KAVO_OP_TIMES, 0, 0);
    return 1;
  }

  Source& source_;
  Draft& draft_;
  const Header& header_;
  Model& model_;
  TreeReader<Source> tree_;
};

}  // namespace kavo::reader::nl
