#include <stdexcept>

#include "bench/read/readers.h"

extern "C" {
#include <asl.h>
}

namespace bench {

// As a solver for linear models reads: f_read keeps the linear parts and refuses nonlinear ones.
void readWithAmplLibrary(const std::string& path, std::size_t n) {
  ASL* const asl = ASL_alloc(ASL_read_f);
  // The library's macros work on a variable of the name asl.
  FILE* const file = jac0dim(const_cast<char*>(path.c_str()), static_cast<fint>(path.size()));
  const bool read = file != nullptr && static_cast<std::size_t>(n_var) == n && f_read(file, ASL_return_read_err) == 0;
  ASL_free(const_cast<ASL**>(&asl));
  if (!read) throw std::runtime_error(path + ": the AMPL library cannot read it");
}

}  // namespace bench
