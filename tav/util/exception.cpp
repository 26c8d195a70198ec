#include "tav/util/exception.h"

#include <fmt/format.h>

#include <utility>

namespace tav {

namespace {

std::string compose(const std::string& tag, const std::string& message, std::optional<int> code,
                    const std::string& context, const util::SourceLocation& location) {
  std::string text = tag;
  if (!tag.empty() && !message.empty()) text += ": ";
  text += message;
  std::string details = context;
  if (code) details += fmt::format("{}code {}", context.empty() ? "" : ", ", *code);
  if (!details.empty()) text += fmt::format("{}[{}]", text.empty() ? "" : " ", details);
  if (!location.file().empty())
    text += fmt::format("{}({}:{})", text.empty() ? "" : " ", location.file(), location.line());
  return text;
}

CheckException failed(std::string_view expression, const CheckException::Value& value, std::string_view relation,
                      const CheckException::Bound& bound, const util::SourceLocation& location) {
  return {fmt::format("'{}' (which is {}) must be {} {}.", expression, value.text, relation, bound.text), location};
}

}  // namespace

Exception::Exception(std::string tag, std::string message, std::optional<int> code, std::string context,
                     util::SourceLocation location)
    : tag_(std::move(tag)),
      message_(std::move(message)),
      code_(code),
      context_(std::move(context)),
      location_(location),
      what_(compose(tag_, message_, code_, context_, location_)) {}

Exception::Exception(std::string message, util::SourceLocation location)
    : Exception({}, std::move(message), std::nullopt, {}, location) {}

UserException::UserException(std::string message, util::SourceLocation location)
    : Exception({}, std::move(message), std::nullopt, {}, location) {}

CheckException::CheckException(std::string message, util::SourceLocation location)
    : Exception("Check", std::move(message), std::nullopt, {}, location) {}

CheckException CheckException::failedGreaterOrEqualTo(std::string_view expression, const Value& value,
                                                      const Bound& bound, Location location) {
  return failed(expression, value, "greater or equal to", bound, location);
}

CheckException CheckException::failedLessOrEqualTo(std::string_view expression, const Value& value, const Bound& bound,
                                                   Location location) {
  return failed(expression, value, "less or equal to", bound, location);
}

CheckException CheckException::failedLessThan(std::string_view expression, const Value& value, const Bound& bound,
                                              Location location) {
  return failed(expression, value, "less than", bound, location);
}

CheckException CheckException::failedGreaterThan(std::string_view expression, const Value& value, const Bound& bound,
                                                 Location location) {
  return failed(expression, value, "greater than", bound, location);
}

CheckException CheckException::failedEqualTo(std::string_view expression, const Value& value, const Bound& bound,
                                             Location location) {
  return failed(expression, value, "equal to", bound, location);
}

CheckException CheckException::failedTrue(std::string_view expression, Location location) {
  return {fmt::format("'{}' must be true.", expression), location};
}

CheckException CheckException::failedFalse(std::string_view expression, Location location) {
  return {fmt::format("'{}' must be false.", expression), location};
}

}  // namespace tav
