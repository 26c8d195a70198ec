#include "brel/load/loader.h"

#include <fmt/core.h>

#include <span>

#include "brel/host.h"
#include "brel/load/beyond_blocks.h"
#include "brel/load/model_views.h"
#include "brel/load/names.h"
#include "brel/load/objective_block.h"
#include "brel/load/own_group.h"
#include "brel/load/starts.h"
#include "brel/rewrite/rewrite_beyond.h"
#include "tav/attr/lib/span_container.h"
#include "tav/idx/lib/range.h"
#include "tav/opt/quantities.h"
#include "tav/opt/support_exception.h"
#include "tav/opt/tags.h"

namespace brel::load {
namespace {

namespace tag = tav::opt::tag;
using tav::opt::BlockGroup;
using tav::opt::SupportException;

// A solver without the adder for a part of the model does not support that part.
template <class Adder>
std::shared_ptr<Adder> require(std::shared_ptr<Adder> adder, const char* part) {
  if (adder) return adder;
  throw SupportException(fmt::format("The solver does not take {}.", part), tav::util::SourceLocation::here());
}

void noteWithheldNames(trpRec* host, const SentNames& names, const char* kind) {
  if (names.withheld == 0) return;
  const bool one = names.withheld == 1;
  const auto line = fmt::format(
      "{} {} {} longer than 255 bytes or {} blanks or odd characters; {} not sent to the solver", names.withheld, kind,
      one ? "name is" : "names are", one ? "holds" : "hold", one ? "it is" : "they are");
  kavo_link_note(host, line.c_str());
}

void addNames(BlockGroup& group, int key, const SentNames& names) {
  if (!names.names.empty()) group.set(key, "name", tav::attr::lib::viewOf<const char*>(names.names));
}

template <class T>
void addValues(BlockGroup& group, int key, const char* name, const std::vector<T>& values) {
  if (!values.empty()) group.set(key, name, tav::attr::lib::viewOf<T>(values));
}

// One model on its way: everything that its blocks need, and the adders for all of them.
class Sender {
 public:
  Sender(TranslatedModel& model, tav::opt::AbstractSolver& solver, const Choices& choices)
      : model_(model),
        choices_(choices),
        user_(model.user),
        sent_(model.sent),
        beyond_(model.sent.beyond()),
        solver_(solver),
        ownTag_(solver.shortName()) {
    findAdders();
  }

  void send() {
    const rewrite::Starts start = startOf(model_);
    noteUnusedStarts(model_, start, choices_);
    sendColumns(start);
    sendRows(start);
    if (beyond_ != nullptr) sendBeyondRows(start);
    if (user_.sets.count > 0) sets_->add(setBlock(viewOf(user_.sets), space_));
    if (beyond_ != nullptr) sendBeyondConstraints();
    if (user_.objective) sendObjectives();
    sendMipStarts();
  }

 private:
  using ConstraintAdder = std::shared_ptr<tav::opt::AbstractConstraintAdder>;

  ConstraintAdder rowAdder(std::string_view function, const char* part) {
    return require(solver_.makeConstraintAdder(tag::kStaticBoundedDomain, function), part);
  }

  void findAdders() {
    variables_ = require(solver_.makeVariableAdder(tag::kIntervalDomain, std::nullopt), "variables");
    space_ = variables_->variableSpace();
    const std::size_t rows = sent_.rowCount() + (beyond_ != nullptr ? beyond_->linear.heads.size() : 0);
    const std::size_t sets = user_.sets.count + (beyond_ != nullptr ? beyond_->sets.type.size() : 0);
    if (rows > 0) model_.rowAdder = rows_ = rowAdder(tag::kLinearFunction, "linear rows");
    if (sets > 0) {
      sets_ = require(solver_.makeConstraintAdder(tag::kSosDomain, tag::kIdentityFunction), "special ordered sets");
    }
    if (beyond_ != nullptr) findBeyondAdders();
    // Results are asked for by the adder of linear objectives, whatever the objective is.
    model_.objectiveAdder = require(solver_.makeConstraintAdder(tag::kSenseDomain, tag::kLinearFunction), "objectives");
    objective_ =
        require(solver_.makeConstraintAdder(tag::kSenseDomain, objectiveFunction(beyond_)), "such an objective");
  }

  void findBeyondAdders() {
    if (beyond_->quadratic.heads.size() > 0) {
      model_.quadraticRowAdder = quadraticRows_ = rowAdder(tag::kQuadraticFunction, "quadratic rows");
    }
    if (beyond_->indicator.heads.size() > 0) {
      indicators_ = require(
          solver_.makeLinkAdder(tag::kStaticBoundedDomain, tag::kLinearFunction, tag::kConstraintLink), "indicators");
    }
    if (beyond_->nonlinear.heads.size() > 0) {
      nonlinearRows_ = rowAdder(tag::kIdentityFunction, "nonlinear rows");
    }
  }

  void sendColumns(const rewrite::Starts& start) {
    using Q = tav::opt::VariableQuantity;
    const SentNames names = sentNames(user_.columns.names, user_.columns.count, sent_.auxiliaryNames());
    noteWithheldNames(user_.host, names, "variable");
    const auto group = std::make_shared<BlockGroup>();
    group->set(Q::type, "type", tav::attr::BaseContainer(std::make_shared<ColumnTypes>(sent_)));
    group->set(Q::lower, "lower", tav::attr::lib::viewOf<double>(sent_.lower()));
    group->set(Q::upper, "upper", tav::attr::lib::viewOf<double>(sent_.upper()));
    addNames(*group, Q::name, names);
    addValues(*group, Q::level, "level", start.column);
    addValues(*group, Q::basis, "basis status", start.columnBasis);
    tav::opt::VariableContainer block;
    block.setGroup(tag::kVariable, group);
    block.setGroup(ownTag_, columnGroup({user_.host, KAVO_COLUMN, {}, sent_.columnCount(), columnPreferences()}));
    variables_->add(block);
  }

  void sendObjectives() {
    if (!choices_.allObjectives) {
      objective_->add(objectiveBlock(*user_.objective, beyond_, space_));
      return;
    }
    tav::opt::ConstraintContainer block = allObjectivesBlock(user_.host, space_);
    const OwnGroupSource source{user_.host, KAVO_OBJECTIVE, {}, objectiveCount(user_.host), {}};
    block.setGroup(ownTag_, objectiveGroup(source, choices_.objectiveAbsTol, choices_.objectiveRelTol));
    objective_->add(block);
  }

  // The names of the rows that are sent, in their order.
  SentNames rowNames() const {
    const SentNames all = sentNames(user_.rows.names, user_.rows.count, {});
    SentNames result;
    result.withheld = all.withheld;
    if (all.names.empty()) return result;
    result.names.reserve(sent_.rowCount());
    for (std::size_t r = 0; r < sent_.rowCount(); ++r) result.names.push_back(all.names[sent_.userRow(r)]);
    return result;
  }

  // The user's rows that are sent; empty when they are all of them.
  std::vector<int> sentUserRows() const {
    if (sent_.rowCount() == user_.rows.count) return {};
    std::vector<int> rows;
    for (std::size_t r = 0; r < sent_.rowCount(); ++r) rows.push_back(static_cast<int>(sent_.userRow(r)));
    return rows;
  }

  void sendRows(const rewrite::Starts& start) {
    using Q = tav::opt::RowQuantity;
    const SentNames names = rowNames();
    noteWithheldNames(user_.host, names, "row");
    if (sent_.rowCount() == 0) return;
    const auto group = std::make_shared<BlockGroup>();
    group->set(Q::type, "type", tav::attr::BaseContainer(std::make_shared<RowTypes>(sent_)));
    group->set(Q::function, "function", rowFunctions(sent_, user_.rows, space_));
    addNames(*group, Q::name, names);
    addValues(*group, Q::marginal, "marginal", start.row);
    addValues(*group, Q::basis, "basis status", start.rowBasis);
    const std::vector<int> users = sentUserRows();
    tav::opt::ConstraintContainer block;
    block.setGroup(tag::kConstraint, group);
    block.setGroup(ownTag_, rowGroup({user_.host, KAVO_ROW, users, sent_.rowCount(), rowPreferences()}));
    rows_->add(block);
  }

  void sendBeyondRows(const rewrite::Starts& start) {
    if (const auto& rows = beyond_->linear; rows.heads.size() > 0) {
      tav::opt::ConstraintContainer block = linearBlock(rows, space_, start);
      block.setGroup(ownTag_, rowGroup({user_.host, KAVO_ROW, rows.heads.user, rows.heads.size(), rowPreferences()}));
      rows_->add(block);
    }
    if (quadraticRows_) quadraticRows_->add(quadraticBlock(beyond_->quadratic, space_));
  }

  void sendBeyondConstraints() {
    if (!beyond_->sets.type.empty()) sets_->add(setBlock(viewOf(beyond_->sets), space_));
    if (indicators_) indicators_->add(indicatorBlock(beyond_->indicator, space_));
    if (nonlinearRows_) nonlinearRows_->add(nonlinearBlock(beyond_->nonlinear, ownTag_));
  }

  std::span<const double> columnPreferences() const {
    return choices_.preferences ? std::span<const double>(choices_.preferences->column) : std::span<const double>();
  }
  std::span<const double> rowPreferences() const {
    return choices_.preferences ? std::span<const double>(choices_.preferences->row) : std::span<const double>();
  }

  void sendMipStarts() {
    if (!choices_.usesMipStarts) return;
    const auto starts = solver_.makeVariableContainers({}).get(tav::opt::VariableQuantity::starts).as<double>();
    int number = 0;
    for (const auto& start : mipStartsOf(model_, choices_)) {
      starts.set(tav::idx::lib::Range(0, static_cast<int>(start.size())), start, number++);
    }
  }

  TranslatedModel& model_;
  const Choices& choices_;
  const UserModel& user_;
  const rewrite::SolverModel& sent_;
  const rewrite::Beyond* beyond_;
  tav::opt::AbstractSolver& solver_;
  std::string ownTag_;
  std::uint64_t space_ = 0;
  std::shared_ptr<tav::opt::AbstractVariableAdder> variables_;
  ConstraintAdder rows_, quadraticRows_, sets_, nonlinearRows_, objective_;
  std::shared_ptr<tav::opt::AbstractLinkedConstraintAdder> indicators_;
};

}  // namespace

TranslatedModel translate(trpRec* host, tav::opt::AbstractSolver& solver, rewrite::RewriteOptions options) {
  const UserModel user = userModel(host);
  std::shared_ptr<const rewrite::Beyond> beyond;
  if (user.isBeyondLinear()) {
    const auto adder = require(solver.makeVariableAdder(tag::kIntervalDomain, std::nullopt), "variables");
    beyond = rewrite::rewriteBeyond(user, adder->variableSpace(), options);
  }
  rewrite::Trail trail;
  rewrite::SolverModel sent = rewrite::rewrite(user, std::move(beyond), trail);
  return {user, std::move(sent), std::move(trail), nullptr, nullptr, nullptr};
}

void send(TranslatedModel& model, tav::opt::AbstractSolver& solver, const Choices& choices) {
  Sender(model, solver, choices).send();
}

}  // namespace brel::load
