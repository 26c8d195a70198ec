#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kavo::reader {

// Reads texts that are damaged at random, thousands of times, as a file of that name: every time it must end in a model
// that a link could take without checking it again, or in an Error of one line that names the file, and each of the two
// often. bytes and words: what is put in.
void expectSoundOrError(const std::string& name, const std::vector<std::string>& texts, std::string_view bytes,
                        const std::vector<std::string>& words = {});

}  // namespace kavo::reader
