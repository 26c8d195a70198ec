// The binary form: the same model in either byte order as in the text form.
#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "kavo/error.h"
#include "tests/reader_nl/model_of_all.h"
#include "tests/reader_nl/plain.h"

namespace kavo::reader {
namespace {

TEST(NlBinary, SameModelAsText) {
  const std::string expected = plain(fromText(textOfAll())).text();
  EXPECT_EQ(plain(fromText(bytesOfAll(false))).text(), expected);
  EXPECT_EQ(plain(fromText(bytesOfAll(true))).text(), expected);
}

TEST(NlBinary, UnknownArithmetic) {
  // Files that do not tell their byte order are read in this machine's.
  std::string untold = header({.variables = 1, .arithmetic = 0}, 'b') + "b3";
  EXPECT_EQ(fromText(untold).columns.size(), 1u);
  try {
    fromText(header({.arithmetic = 5}, 'b'));
    FAIL();
  } catch (const Error& error) {
    EXPECT_EQ(error.status(), KAVO_NOT_SUPPORTED);
    EXPECT_STREQ(error.what(),
                 "m.nl, line 6: header: the file holds binary numbers of an unknown kind (5); write it in text form");
  }
}

TEST(NlBinary, Bad) {
  const std::string head = header({.variables = 1, .constraints = 1, .nonzeros = 1}, 'b');
  const std::size_t n = head.size();
  const auto bytes = [] { return Bytes({.variables = 1, .constraints = 1, .nonzeros = 1}, false); };
  struct Bad {
    std::string text, message;
  };
  const Bad cases[] = {
      {bytes().c('b').c('7').text(),
       fmt::format("m.nl, byte {}: segment b: expected a kind of bounds (0 to 4), found byte 0x37", n + 1)},
      {bytes().c('J').i(0).i(1).i(0).c('x').text(),
       fmt::format("m.nl, byte {}: segment J0: expected a coefficient, found the end of the file", n + 14)},
      {bytes().c('J').i(0).i(1).i(9).d(1).text(),
       fmt::format("m.nl, byte {}: segment J0: expected the number of a variable from 0 to 0, found 9", n + 9)},
      {bytes().c('J').i(0).i(2000000000).text(), "segment J0: expected 0 to 1 terms"},
      {bytes().c('S').i(0).i(0).i(-4).text(), "segment S0: expected the name of a suffix"},
      {bytes().c('S').i(0).i(0).i(1000).c('a').text(), "segment S0: expected the name of a suffix"},
      {bytes().c('C').i(0).c('h').i(77).text(), "segment C0: expected the text of a string"},
      {bytes().c('\n').text(), fmt::format("m.nl, byte {}: expected a segment", n)},
      {header({.nonzeros = 40}, 'b') + std::string(240, '\0'), "40 nonzeros of constraints are announced"},
  };
  for (const Bad& bad : cases) EXPECT_THAT(failure(bad.text), testing::HasSubstr(bad.message));
}

TEST(NlBinary, Truncated) {
  const std::string text = bytesOfAll(false);
  for (std::size_t length = 0; length < text.size(); ++length) EXPECT_NE(failure(text.substr(0, length)), "") << length;
}

}  // namespace
}  // namespace kavo::reader
