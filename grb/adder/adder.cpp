#include "grb/adder/adder.h"

#include <fmt/core.h>

namespace grb {

tav::util::SourceLocation adderLocation(const std::source_location& at) {
  return {"grb/adder", at.line(), at.column(), at.function_name()};
}

void failElement(int element, std::string_view what) {
  throw tav::opt::SupportException(fmt::format("Element {} of the block: {}.", element, what), adderLocation());
}

std::shared_ptr<Data> openRecord(const std::weak_ptr<Data>& data, const std::source_location& at) {
  auto record = data.lock();
  if (!record || !record->model->hasModel()) throw tav::opt::SupportException("Adder inactive", adderLocation(at));
  return record;
}

}  // namespace grb
