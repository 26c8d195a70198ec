#pragma once

#include <cstddef>
#include <string>

#include "kavo/model/model.h"

namespace bench {

// Each reads a file once, puts the model away, and throws when the file cannot be read or has not n columns.
void readWithKavo(const std::string& path, std::size_t n);
void readWithAmplLibrary(const std::string& path, std::size_t n);  // .nl
void readWithCoinUtils(const std::string& path, std::size_t n);    // .mps and .lp

// The bytes of all arrays of a model.
std::size_t arrayBytes(const kavo::Model& model);

}  // namespace bench
