#include "grb/option/rows.h"

namespace grb {
namespace {

constexpr TextRow kRows[] = {
    {"NodefileDir", ".", "The folder for the node files of NodefileStart. Choose one on a fast disk with room."},
    {"SolFiles", "",
     "Each solution of a MIP is written, when it is found, to a file whose name is this text, an underscore, its "
     "number and .sol. Empty: none is written."},
    {"WorkerPassword", nullptr,
     "The password of the cluster of workers. It is shown nowhere: reading it gives *** once it is set."},
    {"ResultFile", nullptr,
     "A file that Gurobi writes at the end of the solve; its extension tells what, such as .sol for the solution, .bas "
     "for the basis or .lp for the model."},
};

}  // namespace

std::span<const TextRow> stringRows() { return kRows; }

}  // namespace grb
