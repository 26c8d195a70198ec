// Whatever a file says, reading it ends in a sound model or in an Error.
#include <gtest/gtest.h>

#include "tests/reader_lp/lp_text.h"
#include "tests/readers/damage.h"

namespace kavo::reader {
namespace {

TEST(LpMutation, DamagedFilesEndInASoundModelOrAnError) {
  static constexpr char kBytes[] = " \n\t\r\\:^[]()*/<>=.-+,0129eEsx_\0\x01\x7f\xff";
  expectSoundOrError("model.lp", {kSample, kSeveral}, {kBytes, sizeof kBytes});
}

}  // namespace
}  // namespace kavo::reader
