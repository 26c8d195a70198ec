#include "grb/option/link_options.h"

#include <limits>

#include "grb/option/catalogue.h"
#include "grb/option/rows.h"

namespace grb {
namespace {

constexpr NumberRow<int> kIntRows[] = {
    {"dofuncpieces", 0, -1, std::numeric_limits<int>::max(),
     "Accepted and kept for option files that set it; it has no effect. How functions are approximated is chosen with "
     "FuncPieces."},
    {"feasopt", 0, 0, 1,
     "1 relaxes the model as cheaply as possible and solves what comes out. Set it to see what it takes to repair an "
     "infeasible model; preferences of variables and rows say what may give way."},
    {"feasoptmode", 0, 0, 5,
     "What the relaxation of feasopt keeps small: 0 and 1 the sum of violations, 2 and 3 their number, 4 and 5 the sum "
     "of their squares. Even: nothing else counts; odd: of the cheapest relaxations the one with the best objective."},
    {"iis", 0, 0, 2,
     "1 tells, after a solve that ended infeasible, which bounds and rows contradict each other; 2 does this instead "
     "of solving."},
    {"kappa", 0, 0, 1,
     "1 logs an estimate of the condition number of the final basis of an LP. A large one explains inaccurate "
     "results."},
    {"kappaexact", 0, 0, 1,
     "1 logs the condition number of the final basis of an LP, computed exactly, which takes time."},
    {"mipstart", 0, 0, 1, "1 hands the start values of the model to Gurobi as starts of the MIP search."},
    {"names", 1, 0, 1,
     "0 keeps names of variables and rows from Gurobi, which saves time and memory; models that it writes then have "
     "made-up names."},
    {"rerun", -1, -1, 1,
     "1 solves again without presolve when a continuous model turns out to be infeasible or unbounded, to learn which "
     "of the two; otherwise only small models are solved again (up to 300 variables and 300 rows)."},
    {"usebasis", 0, 0, 3,
     "What an LP starts from: 0 nothing, 1 basis and point of the model, 2 only its basis, 3 only its point. Unless it "
     "is set, 1 for models that come with both."},
    {"varhint", 0, 0, 1,
     "1 hands the values of the variables to Gurobi as hints for the MIP search. Set it when they are likely to be "
     "close to a good solution."},
};

constexpr TextRow kFileRows[] = {
    {"readparams", nullptr,
     "A Gurobi parameter file to read before the solve. It overrides settings made elsewhere; a value that is not "
     "allowed is an error, names that Gurobi does not know are told in the log and skipped."},
    {"tuning", nullptr,
     "Names of model files: instead of solving, Gurobi looks for parameters that suit these models, and each set that "
     "it finds is written to an option file."},
    {"writeparams", nullptr,
     "A file to write after the solve with the parameters of Gurobi that differ from their defaults; texts are left "
     "out."},
    {"writeprob", nullptr,
     "A file to write the model to, as Gurobi has it, before the solve; its extension chooses the format, such as .lp "
     "or .mps."},
};

template <class Option, class Items>
auto& itemAt(Items& items, Option option) {
  return items[static_cast<std::size_t>(option)];
}

template <class Infos, class Items>
void makeItems(const Infos& infos, Items& items) {
  using T = typename Items::value_type::element_type;
  for (std::size_t i = 0; i < items.size(); ++i) items[i] = std::make_shared<T>(shared(infos[i]));
}

}  // namespace

std::span<const NumberRow<int>> intOptionRows() { return kIntRows; }
std::span<const TextRow> fileOptionRows() { return kFileRows; }

OptionSet::OptionSet() {
  static_assert(std::size(kIntRows) == kIntCount && std::size(kFileRows) == kFileCount);
  makeItems(intOptions(), ints_);
  makeItems(fileOptions(), files_);
}

const std::shared_ptr<OptionSet::IntItem>& OptionSet::item(IntOption option) const { return itemAt(ints_, option); }
const std::shared_ptr<OptionSet::FileItem>& OptionSet::item(FileOption option) const { return itemAt(files_, option); }

int OptionSet::value(IntOption option) const { return item(option)->get(0); }
std::string OptionSet::file(FileOption option) const { return item(option)->get(0); }

bool OptionSet::isGiven(IntOption option) const { return item(option)->isSet(); }
bool OptionSet::isSetTo(IntOption option, int value) const { return isGiven(option) && this->value(option) == value; }

}  // namespace grb
