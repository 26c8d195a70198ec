#include "tests/tav/expressions.h"

#include <fmt/core.h>

#include <cctype>
#include <cstdlib>

#include "tav/math/fn/catalogue.h"

namespace {

namespace fn = tav::math::fn;
using tav::math::LinearFunction;

class Parser {
 public:
  Parser(std::uint64_t space, std::string_view text) : space_(space), text_(text), rest_(text) {}

  std::shared_ptr<const tav::math::Expression<double>> run() {
    term();
    if (!rest_.empty()) fail();
    return target_;
  }

 private:
  [[noreturn]] void fail() const {
    fmt::print(stderr, "no expression: {} before '{}'\n", text_, rest_);
    std::abort();
  }

  void skip() {
    while (!rest_.empty() && (rest_.front() == ' ' || rest_.front() == ',')) rest_.remove_prefix(1);
  }

  bool take(char c) {
    skip();
    if (rest_.empty() || rest_.front() != c) return false;
    rest_.remove_prefix(1);
    return true;
  }

  double number() {
    skip();
    const std::string copy(rest_);
    char* end = nullptr;
    const double value = std::strtod(copy.c_str(), &end);
    if (end == copy.c_str()) fail();
    rest_.remove_prefix(static_cast<std::size_t>(end - copy.c_str()));
    return value;
  }

  std::string_view word() {
    std::size_t length = 0;
    while (length < rest_.size() && std::isalnum(static_cast<unsigned char>(rest_[length])) != 0) ++length;
    const auto result = rest_.substr(0, length);
    rest_.remove_prefix(length);
    return result;
  }

  void term() {
    if (take('x')) return target_->addVariable(space_, static_cast<int>(number()));
    if (take('y')) return target_->addVariable(space_ + 1000, static_cast<int>(number()));
    if (take('[')) return vector();
    if (rest_.starts_with("nan") || rest_.starts_with("inf") || !std::isalpha(static_cast<unsigned char>(rest_[0]))) {
      return target_->addConstant(number());
    }
    const std::string_view name = word();
    if (!take('(')) fail();
    if (name == "lin") return target_->addLinearCall(linear());
    if (name == "terms") return target_->addLinear(linear());
    call(name);
  }

  void vector() {
    std::vector<double> values;
    while (!take(']')) values.push_back(number());
    target_->addVector(std::make_shared<const tav::math::Vector<double>>(std::move(values)));
  }

  LinearFunction<double> linear() {
    std::vector<int> positions;
    std::vector<double> coefficients;
    double constant = 0;
    while (!take(')')) {
      const double value = number();
      if (take('x')) {
        positions.push_back(static_cast<int>(number()));
        coefficients.push_back(value);
      } else {
        constant = value;
      }
    }
    return LinearFunction<double>::owning(space_, std::move(positions), std::move(coefficients), constant);
  }

  void call(std::string_view name) {
    int count = 0;
    for (; !take(')'); ++count) term();
    for (const auto* function : fn::catalogue()) {
      const std::string_view identifier = function->identifier();
      if (identifier.substr(identifier.rfind(':') + 1) == name) return target_->addCall(*function, count);
    }
    fail();
  }

  std::uint64_t space_;
  std::string_view text_, rest_;
  std::shared_ptr<tav::math::Expression<double>> target_ = std::make_shared<tav::math::Expression<double>>();
};

}  // namespace

std::shared_ptr<const tav::math::Expression<double>> expression(std::uint64_t space, std::string_view text) {
  return Parser(space, text).run();
}
