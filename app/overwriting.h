#pragma once

#include <string>

#include "app/run_files.h"

namespace app {

// Throws Failure unless nothing that is written overwrites a file that is read, or another output, and the outputs of
// the command line can be written. Files are compared, however their paths are spelled; devices may be named twice.
void checkOutputs(const RunFiles& files);

// Whether this is one of the files that are read.
bool isRead(const RunFiles& files, const std::string& path);

}  // namespace app
