#pragma once

#include <cstddef>
#include <string>

namespace bench {

// Writes an LP with n columns, n rows and three terms in every column, at rows by chance, as `stem`-text.nl,
// `stem`-binary.nl, `stem`.mps and `stem`.lp: the same for the same n. Numbers have six digits. Throws when a file
// cannot be written.
void writeSyntheticFiles(std::size_t n, const std::string& stem);

}  // namespace bench
