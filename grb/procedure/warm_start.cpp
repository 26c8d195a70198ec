#include "grb/procedure/warm_start.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "grb/gurobi/constants.h"
#include "grb/result/attribute_container.h"
#include "tav/idx/lib/list.h"
#include "tav/idx/lib/range.h"

namespace grb {
namespace {

using tav::attr::Container;
using tav::idx::lib::Range;

constexpr int kPresolved = 2;  // the value of "LPWarmStart" that keeps presolve

template <class T>
bool isFilled(const Container<T>& store, int count) {
  return count > 0 && store.itemCount() == count;
}

// Values that Gurobi gets for some of the variables.
struct Chosen {
  std::vector<int> positions;
  std::vector<double> values;
  int skipped = 0;

  void take(int position, double value) {
    positions.push_back(position);
    values.push_back(value);
  }
};

class BasisAndPoint {
 public:
  explicit BasisAndPoint(Data& data)
      : data_(data), columns_(Range(0, data.variables.count())), rows_(Range(0, data.linearRows.count())) {}

  void registerBoth() {
    const int mode = chosenMode();
    if (mode == 1 || mode == 2) registerBasis();
    if (mode == 1 || mode == 3) registerPoint();
  }

 private:
  bool hasBasis() const {
    return isFilled(data_.variableStores.basis, columns_.size()) && isFilled(data_.rowStores->basis, rows_.size());
  }
  bool hasPoint() const {
    return isFilled(data_.variableStores.level, columns_.size()) && isFilled(data_.rowStores->marginal, rows_.size());
  }

  int chosenMode() const {
    if (!data_.options.isGiven(IntOption::usebasis) && hasBasis() && hasPoint()) return 1;
    return data_.options.value(IntOption::usebasis);
  }

  bool keepsPresolve() { return data_.model->getIntParam("LPWarmStart") == kPresolved; }

  void log(std::initializer_list<const char*> lines) {
    for (const char* line : lines) data_.callbacks.log->writeLine(line);
  }

  void registerBasis() {
    if (!hasBasis()) return;
    std::vector<int> rows = data_.rowStores->basis.getValues(rows_);
    std::vector<int> columns = data_.variableStores.basis.getValues(columns_);
    int basic = 0;
    for (int& status : rows) {
      status = rowStatus(status);
      if (status == basis::kBasic) ++basic;
    }
    for (int& status : columns) {
      status = columnStatus(status, basic < rows_.size());
      if (status == basis::kBasic) ++basic;
    }
    if (basic != rows_.size()) return;
    if (keepsPresolve()) {
      log({"Registering advanced basis."});
    } else {
      log({"Registering advanced basis. This turns off presolve!",
           "In case of poor performance consider turning off advanced basis registration",
           "via KAVO option BRatio=1 or KAVO/Gurobi option UseBasis=0 or LPWarmStart=2."});
    }
    data_.model->setIntAttrArray("VBasis", columns_, columns);
    data_.model->setIntAttrArray("CBasis", rows_, rows);
  }

  void registerPoint() {
    if (!hasPoint()) return;
    if (keepsPresolve()) {
      log({"Registering primal dual solution."});
    } else {
      log({"Registering primal dual solution. This turns off presolve!",
           "In case of poor performance consider turning off primal dual solution",
           "registration via KAVO option BRatio=1 or KAVO/Gurobi option UseBasis=0", "or LPWarmStart=2."});
    }
    data_.model->setDblAttrArray("PStart", columns_, data_.variableStores.level.getValues(columns_));
    data_.model->setDblAttrArray("DStart", rows_, data_.rowStores->marginal.getValues(rows_));
  }

  static int rowStatus(int status) { return status == 1 || status == 2 ? -status : basis::kBasic; }
  static int columnStatus(int status, bool mayBeBasic) {
    if (status == 3 && mayBeBasic) return basis::kBasic;
    return status == 2 ? basis::kNonbasicUpper : basis::kNonbasicLower;
  }

  Data& data_;
  tav::idx::List columns_, rows_;
};

// Chooses from points what a MIP can do with.
class WholeValues {
 public:
  explicit WholeValues(Data& data) : data_(data), types_(static_cast<std::size_t>(data.variables.count()), '\0') {
    data.model->updateIfPending();
    data.model->getCharAttrArray("VType", all(), types_);
    if (!types_.empty() && types_.front() == '\0') failUnread("VType");
    tolerance_ = data.model->getDblParam("IntFeasTol");
  }

  // To the attribute of Gurobi; `where` is what the log calls it.
  void send(const std::vector<double>& point, const char* attribute, const char* where) {
    const Chosen chosen = chosenFrom(point);
    const std::size_t count = chosen.positions.size();
    if (count > 0) {
      data_.model->setDblAttrArray(attribute, std::make_shared<tav::idx::lib::List>(chosen.positions), chosen.values);
    }
    data_.callbacks.log->writeLine(fmt::format("Copy {} variables into {}.", count, where));
    if (chosen.skipped == 0) return;
    data_.callbacks.log->writeLine(
        fmt::format("Skipped {} integer variables for {} due to infeasibility.", chosen.skipped, where));
  }

  tav::idx::List all() const { return Range(0, static_cast<int>(types_.size())); }

 private:
  Chosen chosenFrom(const std::vector<double>& point) const {
    Chosen chosen;
    for (std::size_t i = 0; i < point.size(); ++i) {
      const double value = point[i];
      if (std::isnan(value)) continue;
      const bool isWhole = types_[i] != vartype::kContinuous && types_[i] != vartype::kSemiContinuous;
      const double near = isWhole ? std::round(value) : value;
      if (!isWhole || std::abs(value - near) <= tolerance_) {
        chosen.take(static_cast<int>(i), near);
      } else {
        ++chosen.skipped;
      }
    }
    return chosen;
  }

  Data& data_;
  std::vector<char> types_;
  double tolerance_ = 0;
};

// Gurobi branches first on the largest number, the framework on the smallest.
std::vector<int> turnedPriorities(const std::vector<double>& given) {
  double smallest = std::numeric_limits<double>::max();
  double largest = std::numeric_limits<double>::min();  // as small as above zero can be
  for (const double priority : given) {
    smallest = std::min(smallest, priority);
    largest = std::max(largest, priority);
  }
  const double range = largest - smallest;
  const double scale = range > 1 ? 1000 / range : 1000;
  std::vector<int> turned;
  for (const double priority : given) {
    const double value = (largest - priority) * scale;
    turned.push_back(std::isnan(value) ? 0 : static_cast<int>(value));  // not a number when the range overflows
  }
  return turned;
}

}  // namespace

void registerBasisAndPoint(Data& data) { BasisAndPoint(data).registerBoth(); }

void registerMipStarts(Data& data) {
  if (data.options.value(IntOption::mipstart) == 0) return;
  WholeValues values(data);
  data.beforeProcedure.emplace("startnumber", 0);
  data.model->setIntParam("StartNumber", -1);
  for (int start = 0; start < data.mipStarts->solutionCount(); ++start) {
    values.send(data.mipStarts->getValues(values.all(), start), "Start", "MIP Start");
  }
  data.model->setIntParam("StartNumber", 0);
  data.beforeProcedure.erase("startnumber");
}

void registerHints(Data& data) {
  if (data.options.value(IntOption::varhint) == 0) return;
  WholeValues values(data);
  values.send(data.variableStores.level.getValues(values.all()), "VarHintVal", "Variable Hint");
}

void registerPriorities(Data& data) {
  if (data.variableStores.priority.itemCount() == 0) return;
  const std::vector<double> all = data.variableStores.priority.getAll();
  Chosen chosen;
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (std::isfinite(all[i])) chosen.take(static_cast<int>(i), all[i]);
  }
  const std::size_t count = chosen.positions.size();
  if (count > 0) {
    data.model->setIntAttrArray("BranchPriority", std::make_shared<tav::idx::lib::List>(std::move(chosen.positions)),
                                turnedPriorities(chosen.values));
  }
  data.callbacks.log->writeLine(fmt::format("Copy {} variable branching priorities.", count));
}

}  // namespace grb
