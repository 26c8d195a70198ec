#include "kavo/reader/nl/header.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <initializer_list>

#include "kavo/reader/nl/source.h"

namespace kavo::reader::nl {

namespace {

constexpr int kMostOptions = 9;

class HeaderReader {
 public:
  HeaderReader(const std::string& file, std::string_view text) : source_(file, text, 0) {}

  Header read() {
    readFormat();
    readSizes();
    int skipped[4] = {};  // counts of complementarity conditions and of network constraints: the segments tell them
    readLine(2,
             {&h_.nonlinearConstraints, &h_.nonlinearObjectives, &skipped[0], &skipped[1], &skipped[2], &skipped[3]});
    check(h_.nonlinearConstraints, h_.constraints, "nonlinear constraints", "constraints");
    check(h_.nonlinearObjectives, h_.objectives, "nonlinear objectives", "objectives");
    readLine(2, {&skipped[0], &skipped[1]});
    readNonlinearVariables();
    int flags = 0;
    readLine(2, {&h_.arcs, &h_.functions, &h_.arithmetic, &flags});
    checkRoom(h_.functions, 8, 14, "imported functions");
    readDiscrete();
    readLine(2, {&h_.nonzeros, &h_.gradients});
    checkRoom(h_.nonzeros, 4, 12, "nonzeros of constraints");
    checkRoom(h_.gradients, 4, 12, "nonzeros of objectives");
    readLine(2, {&skipped[0], &skipped[1]});  // lengths of names, which the name files tell
    readDefined();
    h_.length = source_.position();
    return std::move(h_);
  }

 private:
  void readFormat() {
    constexpr std::string_view kExpected = "a .nl file, which begins with \"g\" (text) or \"b\" (binary)";
    const char form = source_.letter(kExpected);
    if (form != 'g' && form != 'b') source_.fail(kExpected);
    h_.binary = form == 'b';
    if (source_.moreOnLine()) {
      const int options = source_.integer("the number of options");
      if (options < 0 || options > kMostOptions) source_.fail(fmt::format("0 to {} options", kMostOptions));
      while (static_cast<int>(h_.options.size()) < options && source_.moreOnLine()) {
        h_.options.push_back(source_.integer("an option"));
      }
      if (h_.options.size() > 1 && h_.options[1] == 3 && source_.moreOnLine()) {
        h_.tolerance = source_.number("a tolerance");
        if (!std::isfinite(h_.tolerance)) source_.fail("a finite tolerance");
      }
    }
    // Old writers put more numbers here, which nobody reads.
    while (source_.moreOnLine()) source_.number("a number");
    source_.endLine();
  }

  // Reads the counts of a line: the first `required` ones must be there, the others are 0 when left out.
  void readLine(int required, std::initializer_list<int*> counts) {
    int read = 0;
    for (int* count : counts) {
      if (read >= required && !source_.moreOnLine()) break;
      constexpr std::string_view kExpected = "a count from 0 to 2147483647";
      *count = source_.integer(kExpected);
      if (*count < 0) source_.fail(kExpected);
      ++read;
    }
    source_.endLine();
  }

  void readSizes() {
    readLine(3, {&h_.variables, &h_.constraints, &h_.objectives, &h_.ranges, &h_.equations, &h_.logical});
    checkRoom(h_.variables, 2, 1, "variables");
    checkRoom(h_.constraints, 2, 1, "constraints");
    checkRoom(h_.objectives, 8, 12, "objectives");
    checkRoom(h_.logical, 6, 8, "logical constraints");
  }

  void readNonlinearVariables() {
    readLine(2, {&h_.nonlinearInConstraints, &h_.nonlinearInObjectives, &h_.nonlinearInBoth});
    check(h_.nonlinearInConstraints, h_.variables, "nonlinear variables in constraints", "variables");
    check(h_.nonlinearInObjectives, h_.variables, "nonlinear variables in objectives", "variables");
    check(h_.nonlinearInBoth, h_.nonlinearInConstraints, "nonlinear variables in both", "of them in constraints");
    check(h_.nonlinearInBoth, h_.nonlinearInObjectives, "nonlinear variables in both", "of them in objectives");
  }

  void readDiscrete() {
    readLine(2, {&h_.binary01, &h_.integer, &h_.integerInBoth, &h_.integerInConstraints, &h_.integerInObjectives});
    check(h_.integerInBoth, h_.nonlinearInBoth, "nonlinear integer variables in both", "nonlinear variables in both");
    check(h_.integerInConstraints, h_.nonlinearOnlyInConstraints(), "nonlinear integer variables in constraints only",
          "nonlinear variables there");
    check(h_.integerInObjectives, h_.nonlinearOnlyInObjectives(), "nonlinear integer variables in objectives only",
          "nonlinear variables there");
    const long long sum =
        0LL + std::max(h_.nonlinearInConstraints, h_.nonlinearInObjectives) + h_.arcs + h_.binary01 + h_.integer;
    check(sum, h_.variables, "nonlinear, network, binary and integer variables", "variables");
  }

  void readDefined() {
    int sorts[5] = {};
    readLine(1, {&sorts[0], &sorts[1], &sorts[2], &sorts[3], &sorts[4]});
    long long sum = h_.variables;
    for (int sort : sorts) {
      checkRoom(sort, 10, 16, "defined variables");
      sum += sort;
    }
    // One number range for both, as trees name them.
    check(sum, 0x7fffffff, "variables and defined variables", "of them possible");
    h_.defined = static_cast<int>(sum - h_.variables);
  }

  void check(long long part, long long whole, std::string_view partName, std::string_view wholeName) {
    if (part > whole) source_.refuse(fmt::format("{} {}, but only {} {}", part, partName, whole, wholeName));
  }

  // least: the fewest bytes that one such element takes in a text and in a binary file. The last line of a text may
  // lack its end.
  void checkRoom(int count, std::size_t leastText, std::size_t leastBinary, std::string_view name) {
    const std::size_t least = h_.binary ? leastBinary : leastText;
    if (static_cast<std::size_t>(count) > (source_.size() + 1) / least) {
      source_.refuse(
          fmt::format("{} {} are announced, more than a file of {} bytes can hold", count, name, source_.size()));
    }
  }

  TextSource source_;
  Header h_;
};

}  // namespace

Header readHeader(const std::string& file, std::string_view text) { return HeaderReader(file, text).read(); }

}  // namespace kavo::reader::nl
