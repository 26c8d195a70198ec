// Numbers are the nearest doubles, by the fast way and by the other one.
#include "kavo/reader/number.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>

namespace kavo::reader {
namespace {

TEST(Number, Forms) {
  const double inf = std::numeric_limits<double>::infinity();
  struct Case {
    const char* text;
    double value;
    const char* rest;  // nullptr: no number
  };
  const Case cases[] = {
      {"0", 0, ""},
      {"-0", -0.0, ""},
      {"+7", 7, ""},
      {"5.", 5, ""},
      {".5", 0.5, ""},
      {"1e3x", 1000, "x"},
      {"1e", 1, "e"},
      {"1e+", 1, "e+"},
      {"1E-2 ", 0.01, " "},
      {"1.5.2", 1.5, ".2"},
      {"Infinity", inf, ""},
      {"-inf", -inf, ""},
      {"1e400", inf, ""},
      {"-1e400", -inf, ""},
      {"1e-400", 0, ""},
      {"-1e-400", -0.0, ""},
      {"0.0001e309", 1e305, ""},
      {"12345678901234567890e-400", 0, ""},
      {"0.00000000000000000000000000000000000001e360", inf, ""},
      {"1e99999999999999999999", inf, ""},
      {"1e-99999999999999999999", 0, ""},
      {"0e99999999999999999999", 0, ""},
      {"9007199254740993", 9007199254740992., ""},
      {"", 0, nullptr},
      {"-", 0, nullptr},
      {".", 0, nullptr},
      {"+-1", 0, nullptr},
      {"--1", 0, nullptr},
      {"x", 0, nullptr},
      {"e5", 0, nullptr},
      {"0x10", 0, "x10"},
  };
  for (const Case& c : cases) {
    double value = 42;
    const char* end = parseNumber(c.text, c.text + std::strlen(c.text), value);
    ASSERT_EQ(end == nullptr, c.rest == nullptr) << c.text;
    if (end == nullptr) continue;
    EXPECT_STREQ(end, c.rest) << c.text;
    EXPECT_EQ(value, c.value) << c.text;
    EXPECT_EQ(std::signbit(value), std::signbit(c.value)) << c.text;
  }
}

TEST(Number, NearestDouble) {
  std::mt19937_64 random(17);
  for (int i = 0; i < 200000; ++i) {
    const int digits = 1 + static_cast<int>(random() % 21);
    std::string text = random() % 2 == 0 ? "-" : "";
    for (int k = 0; k < digits; ++k) text += static_cast<char>('0' + random() % 10);
    if (random() % 2 == 0) text.insert(text.size() - random() % static_cast<unsigned>(digits), 1, '.');
    if (random() % 2 == 0) text += fmt::format("e{}", static_cast<int>(random() % 60) - 30);
    double value = 0;
    const char* end = parseNumber(text.data(), text.data() + text.size(), value);
    ASSERT_EQ(end, text.data() + text.size()) << text;
    ASSERT_EQ(value, std::strtod(text.c_str(), nullptr)) << text;
  }
}

TEST(Number, Integers) {
  struct Case {
    const char* text;
    int value;
    const char* rest;
  };
  const Case cases[] = {{"12 ", 12, " "},
                        {"-3", -3, ""},
                        {"+4", 4, ""},
                        {"2147483647", 2147483647, ""},
                        {"-2147483647", -2147483647, ""},
                        {"2147483648", 0, nullptr},
                        {"99999999999999999999", 0, nullptr},
                        {"", 0, nullptr},
                        {"-", 0, nullptr},
                        {"1.5", 1, ".5"},
                        {"a", 0, nullptr}};
  for (const Case& c : cases) {
    int value = 0;
    const char* end = parseInteger(c.text, c.text + std::strlen(c.text), value);
    ASSERT_EQ(end == nullptr, c.rest == nullptr) << c.text;
    if (end == nullptr) continue;
    EXPECT_STREQ(end, c.rest);
    EXPECT_EQ(value, c.value);
  }
}

}  // namespace
}  // namespace kavo::reader
