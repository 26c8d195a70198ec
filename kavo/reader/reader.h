#pragma once

#include <string>

#include "kavo/model/model.h"

namespace kavo::reader {

// Reads a model file, choosing the format by the path's ending (see kavo_read). Throws Error with KAVO_FILE or
// KAVO_NOT_SUPPORTED; the model is made only when the whole file was read.
Model read(const std::string& path);

// The formats. Each reads the file once, front to back; nothing is taken on trust: counts, indices and numbers are
// checked where they stand, and the message of an Error names file, line (byte in a binary file), section and what was
// expected.
Model readNl(const std::string& path);
Model readMps(const std::string& path);
Model readLp(const std::string& path);

}  // namespace kavo::reader
