#pragma once

#include <string>
#include <vector>

#include "kavo/setting/setting.h"

namespace kavo {

// The settings of an option file in their order, with the path as source and the number of their line.
//
// A line is "name value" or "name = value" with any blanks; empty lines and lines that begin with * or # say nothing.
// The value is the rest of the line without the blanks around it, or what stands between one pair of quotes ' or ".
// Line ends are LF or CR LF, and a byte-order mark is skipped. Names and values are not looked at otherwise.
//
// Throws Error (KAVO_FILE) naming the file, and the line where one is wrong. A line that is no text or longer than
// 64 KiB is wrong: reading something else than an option file ends soon, however large it is.
std::vector<Setting> readOptionFile(const std::string& path);

}  // namespace kavo
