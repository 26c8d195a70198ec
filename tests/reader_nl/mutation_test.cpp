// Whatever a file says, reading it ends in a sound model or in an Error.
#include <gtest/gtest.h>

#include "tests/reader_nl/model_of_all.h"
#include "tests/readers/damage.h"

namespace kavo::reader {
namespace {

TEST(NlMutation, DamagedFilesEndInASoundModelOrAnError) {
  static constexpr char kBytes[] = " \n#-.019enovfhlsbrkxdCOLVFSJG\0\x01\x7f\xff";
  const std::vector<std::string> texts = {textOfAll(), bytesOfAll(false), bytesOfAll(true), withBody("o5\nv0\nn2\n")};
  const std::vector<std::string> words = {"2147483647", "-2147483648", "1e20", "nan",      "o54\n2\n",
                                          "o64\n2\n",   "o65\n",       "v2\n", "V2 0 0\n", "\xff\xff\xff\x7f"};
  expectSoundOrError("m.nl", texts, {kBytes, sizeof kBytes}, words);
}

}  // namespace
}  // namespace kavo::reader
