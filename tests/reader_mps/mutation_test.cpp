// Whatever a file says, reading it ends in a sound model or in an Error.
#include <gtest/gtest.h>

#include "tests/reader_mps/mps_text.h"
#include "tests/readers/damage.h"

namespace kavo::reader {
namespace {

TEST(MpsMutation, DamagedFilesEndInASoundModelOrAnError) {
  static constexpr char kBytes[] = " \n\t\r*'.-+019eEdDNLGEx_\0\x01\x7f\xff";
  expectSoundOrError("model.mps", {kSample, kBlankSample, kBeyondSample}, {kBytes, sizeof kBytes});
}

}  // namespace
}  // namespace kavo::reader
