#pragma once

#include <functional>
#include <string>

#include "kavo/writer/text.h"

namespace kavo::writer {

// Writes a file through `fill` so that at no time a half-written one stands at `path`: the text goes to a temporary
// file in the same folder, which is flushed to the disk and renamed. Devices and pipes are written as they are. Throws
// Error (KAVO_FILE) naming the path; an earlier file stays intact then.
void writeFile(const std::string& path, const std::function<void(Text&)>& fill);

// Throws what writeFile would throw for a path that cannot be written, as far as one can tell without data; leaves
// nothing behind.
void checkWritable(const std::string& path);

// Throws the Error for a path and a value of errno.
[[noreturn]] void failToWrite(const std::string& path, int error);

}  // namespace kavo::writer
