// Whatever a file says, reading it ends in a sound model or in an Error.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "kavo/error.h"
#include "tests/reader_mps/mps_text.h"

namespace kavo::reader {
namespace {

class Chance {
 public:
  std::size_t below(std::size_t limit) { return generator_() % limit; }

 private:
  std::mt19937 generator_{22};
};

std::string damaged(std::string text, Chance& chance) {
  static constexpr char kBytes[] = " \n\t\r*'.-+019eEdDNLGEx_\0\x01\x7f\xff";
  for (std::size_t k = 1 + chance.below(4); k > 0 && !text.empty(); --k) {
    const std::size_t at = chance.below(text.size());
    const std::size_t length = 1 + chance.below(12);
    switch (chance.below(5)) {
      case 0:
        text[at] = kBytes[chance.below(sizeof kBytes)];
        break;
      case 1:
        text.erase(at, length);
        break;
      case 2:
        text.insert(at, text.substr(chance.below(text.size()), 5 * length));
        break;
      case 3:
        text.insert(at, 1, kBytes[chance.below(sizeof kBytes)]);
        break;
      default:
        text.resize(chance.below(8) == 0 ? at : text.size());
    }
  }
  return text;
}

// A model that a link could take without checking it again.
void expectSound(const Model& model) {
  const auto columns = model.columns.size(), rows = model.rows.size();
  ASSERT_EQ(model.columns.upper.size(), columns);
  ASSERT_EQ(model.columns.names.size(), columns);
  ASSERT_EQ(model.rows.start.size(), rows + 1);
  ASSERT_EQ(model.rows.start[rows], model.rows.column.size());
  ASSERT_EQ(model.rows.value.size(), model.rows.column.size());
  for (std::size_t i = 0; i < rows; ++i) {
    ASSERT_FALSE(std::isnan(model.rows.lower[i]) || std::isnan(model.rows.upper[i]));
    ASSERT_FALSE(model.rows.lower[i] >= kInfinity || model.rows.upper[i] <= -kInfinity);
    for (std::size_t k = model.rows.start[i]; k < model.rows.start[i + 1]; ++k) {
      ASSERT_TRUE(model.rows.column[k] >= 0 && static_cast<std::size_t>(model.rows.column[k]) < columns);
      ASSERT_TRUE(k == model.rows.start[i] || model.rows.column[k - 1] < model.rows.column[k]);
      ASSERT_LT(std::abs(model.rows.value[k]), kInfinity);
    }
  }
}

TEST(MpsMutation, DamagedFilesEndInASoundModelOrAnError) {
  Chance chance;
  int read = 0, refused = 0;
  for (int round = 0; round < 8000; ++round) {
    const std::string text = damaged(round % 2 == 0 ? kSample : kBlankSample, chance);
    try {
      expectSound(readText(text));
      ++read;
    } catch (const Error&) {
      ++refused;
    }
    if (HasFatalFailure()) FAIL() << text;
  }
  EXPECT_GT(read, 500);
  EXPECT_GT(refused, 500);
}

}  // namespace
}  // namespace kavo::reader
